#include "calendar/GridKeys.h"

#include <algorithm>

namespace kelvane {

namespace {

const MonthInfo& MonthOf(const std::array<MonthInfo, 12>& months, int month) {
    return months[static_cast<std::size_t>(month - 1)];
}

int DaysLaidOut(const std::array<MonthInfo, 12>& months) {
    int days = 0;
    for (const MonthInfo& month : months) {
        days += month.Days;
    }
    return days;
}

int DayOfYearIn(const std::array<MonthInfo, 12>& months, const CalDate& date) {
    YearMonthDays monthDays{};
    std::transform(months.begin(), months.end(), monthDays.begin(),
                   [](const MonthInfo& month) { return month.Days; });
    return DayOfYear(monthDays, date.Month, date.Day);
}

CalDate DateOfDayInYear(const std::array<MonthInfo, 12>& months, int day, qint16 year) {
    const int daysInYear = DaysLaidOut(months);
    day = ((day - 1) % daysInYear + daysInYear) % daysInYear + 1;
    qint16 month = 1;
    while (month < 12 && day > MonthOf(months, month).Days) {
        day -= MonthOf(months, month).Days;
        ++month;
    }
    return CalDate{year, static_cast<qint16>(day), month};
}

CalDate SameDayIn(const std::array<MonthInfo, 12>& months, const CalDate& from, qint16 month) {
    const qint16 day = std::min(from.Day, MonthOf(months, month).Days);
    return CalDate{from.Year, day, month};
}

}  // namespace

qint16 WrapMonth(int month) {
    return static_cast<qint16>((month + 11) % 12 + 1);
}

CalDate DateAfterKey(GridKey key, const CalDate& from, qint16 shownMonth,
                     const std::array<MonthInfo, 12>& months) {
    shownMonth = std::clamp<qint16>(shownMonth, 1, 12);
    const MonthInfo& shown = MonthOf(months, shownMonth);
    const bool inView = from.Month == shownMonth && from.Day >= 1 && from.Day <= shown.Days;
    const CalDate start = inView ? from : CalDate{from.Year, 1, shownMonth};
    if (DaysLaidOut(months) <= 0) {
        return start;
    }
    switch (key) {
        case GridKey::Left:
        case GridKey::Right:
        case GridKey::Up:
        case GridKey::Down: {
            if (!inView) {
                return start;
            }
            const int step = key == GridKey::Left    ? -1
                             : key == GridKey::Right ? 1
                             : key == GridKey::Up    ? -7
                                                     : 7;
            return DateOfDayInYear(months, DayOfYearIn(months, start) + step, start.Year);
        }
        case GridKey::Home:
            return CalDate{start.Year, 1, shownMonth};
        case GridKey::End:
            return CalDate{start.Year, shown.Days, shownMonth};
        case GridKey::PageUp:
            return SameDayIn(months, start, WrapMonth(shownMonth - 1));
        case GridKey::PageDown:
            return SameDayIn(months, start, WrapMonth(shownMonth + 1));
    }
    return start;
}

}  // namespace kelvane
