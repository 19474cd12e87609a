#pragma once

#include <QString>
#include <QtGlobal>

// The rules of the calendar's year: which years are leap and the weekdays' names.
namespace kelvane {

// The leap-year rule of the calendar: divisible by 4 is leap, then divisible
// by 300 is not, then divisible by 1000 is again (so 2000 and 2200 are leap
// years, 1800, 2100 and 2400 are not). 1 for a leap year, 0 otherwise.
qint16 LeapYearRule(int year);

// "Sunday" for 1 .. "Saturday" for 7, "No Day" for any other number.
QString WeekdayName(qint16 weekday);

}  // namespace kelvane
