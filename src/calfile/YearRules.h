#pragma once

#include <QString>
#include <QtGlobal>

#include <array>

// The rules of the calendar's year: which years are leap, the weekday of 1
// January, the months' lengths, the day of the year and the names of the
// weekdays and months.
namespace kelvane {

// The leap-year rule of the calendar: divisible by 4 is leap, then divisible
// by 300 is not, then divisible by 1000 is again (so 2000 and 2200 are leap
// years, 1800, 2100 and 2400 are not). 1 for a leap year, 0 otherwise.
qint16 LeapYearRule(int year);

// Days in a year by the calendar's own leap-year rule: 365 or 366.
int DaysInCalendarYear(int year);

// The weekday of 1 January of a year, 1 = Sunday .. 7 = Saturday, counted
// from 1 January 2000 (a Saturday) over years as long as the calendar's own
// leap-year rule makes them; it differs from the common calendar's before
// 1901 and after 2200.
qint16 FirstWeekdayOfCalendarYear(int year);

// The weekday of 1 January of a year of the common (Gregorian) calendar,
// 1 = Sunday .. 7 = Saturday, for the years 1 to 9999 that QDate knows (the
// iCalendar import takes 1902 to 9998); year 0 gives 1.
qint16 FirstWeekdayOfGregorianYear(int year);

// The lengths of the twelve months of a year, January first.
using YearMonthDays = std::array<qint16, 12>;

// The month lengths of a year: February has 29 days in a leap year, else 28;
// the other months have as many days as a calendar file has slots for them.
YearMonthDays MonthDaysOf(bool leap);

// The day of the year of `day` in `month`, 1 January being 1: the day plus
// the lengths of the months before it. Nothing is checked, so 31 February
// counts on into March.
int DayOfYear(const YearMonthDays& monthDays, int month, int day);

// "Sunday" for 1 .. "Saturday" for 7, "No Day" for any other number.
QString WeekdayName(qint16 weekday);

// "January" for 1 .. "December" for 12, empty for any other number. The
// program's texts are English whatever the system's language.
QString MonthName(int month);

}  // namespace kelvane
