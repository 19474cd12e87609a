#include "kelvane_cal/ical/FileYear.h"

#include "calendar/MonthInfo.h"

namespace kelvane::cal {

namespace {

int DaysInYear(int year) {
    return 365 + LeapYearRule(year);
}

// The weekday of 1 January of `year` by the calendar's own leap-year rule,
// counted from 1 January 2000, a Saturday.
int FirstWeekdayOf(int year) {
    int shift = 0;
    for (int y = 2000; y < year; ++y) {
        shift += DaysInYear(y);
    }
    for (int y = year; y < 2000; ++y) {
        shift -= DaysInYear(y);
    }
    return ((6 + shift) % 7 + 7) % 7 + 1;
}

}  // namespace

FileYear::FileYear(const CalendarFileSettings& settings, int todayYear) {
    int computedFirst = 0;
    if (settings.Year != 0) {
        leap_ = settings.Year > 0;
    } else {
        leap_ = LeapYearRule(todayYear) == 1;
        computedFirst = FirstWeekdayOf(todayYear);
    }
    if (settings.FirstDay >= 1 && settings.FirstDay <= 7) {
        firstWeekday_ = settings.FirstDay;
    } else {
        firstWeekday_ = static_cast<qint16>(computedFirst >= 1 ? computedFirst : 1);
    }
}

qint16 FileYear::Weekday(int month, int day) const {
    int dayOfYear = day;
    for (int m = 1; m < month; ++m) {
        dayOfYear += SlotsPerMonth[static_cast<std::size_t>(m - 1)] - (m == 2 && !leap_ ? 1 : 0);
    }
    if (month == 2 && day == 29 && !leap_) {
        return 0;
    }
    return static_cast<qint16>((firstWeekday_ - 1 + dayOfYear - 1) % 7 + 1);
}

}  // namespace kelvane::cal
