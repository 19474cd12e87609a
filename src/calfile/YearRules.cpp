#include "calfile/YearRules.h"

#include <QDate>

#include <algorithm>

#include "calfile/Records.h"

namespace kelvane {

namespace {

// 1 January 2000 was a Saturday.
constexpr int kKnownYear = 2000;
constexpr int kKnownWeekday = 7;

}  // namespace

qint16 LeapYearRule(int year) {
    qint16 leap = (year % 4 == 0) ? 1 : 0;
    if (year % 300 == 0) {
        leap = 0;
    }
    if (year % 1000 == 0) {
        leap = 1;
    }
    return leap;
}

int DaysInCalendarYear(int year) {
    return 365 + LeapYearRule(year);
}

// Counted from the known weekday over the lengths of the years between.
qint16 FirstWeekdayOfCalendarYear(int year) {
    qint64 shift = 0;
    for (int y = kKnownYear; y < year; ++y) {
        shift += DaysInCalendarYear(y);
    }
    for (int y = year; y < kKnownYear; ++y) {
        shift -= DaysInCalendarYear(y);
    }
    return static_cast<qint16>(((kKnownWeekday - 1 + shift) % 7 + 7) % 7 + 1);
}

qint16 FirstWeekdayOfGregorianYear(int year) {
    // QDate counts Monday as 1 and Sunday as 7.
    return static_cast<qint16>(QDate(year, 1, 1).dayOfWeek() % 7 + 1);
}

YearMonthDays MonthDaysOf(bool leap) {
    YearMonthDays days = SlotsPerMonth;
    if (!leap) {
        days[1] = static_cast<qint16>(days[1] - 1);  // the file's February always has 29 slots
    }
    return days;
}

int DayOfYear(const YearMonthDays& monthDays, int month, int day) {
    const int monthsBefore = std::clamp(month - 1, 0, 12);
    for (int m = 0; m < monthsBefore; ++m) {
        day += monthDays[static_cast<std::size_t>(m)];
    }
    return day;
}

QString WeekdayName(qint16 weekday) {
    static const char* const kNames[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                         "Thursday", "Friday", "Saturday"};
    if (weekday < 1 || weekday > 7) {
        return QStringLiteral("No Day");
    }
    return QString::fromLatin1(kNames[weekday - 1]);
}

QString MonthName(int month) {
    static const char* const kNames[] = {"January",   "February", "March",    "April",
                                         "May",       "June",     "July",     "August",
                                         "September", "October",  "November", "December"};
    if (month < 1 || month > 12) {
        return QString();
    }
    return QString::fromLatin1(kNames[month - 1]);
}

}  // namespace kelvane
