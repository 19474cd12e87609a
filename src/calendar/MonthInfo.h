#pragma once

#include <array>

#include "store/Records.h"

namespace kelvane {

inline constexpr int MonthNameLength = 10;
inline constexpr int DateSlotsPerMonth = 36;

// One month of the year the month view lays out.
struct MonthInfo {
    FixedText<MonthNameLength> Name;
    qint16 Days = 0;      // length in the current year
    qint16 FirstDay = 0;  // weekday of the 1st, 1 = Sunday .. 7 = Saturday
    // Slot n holds day n in every year (so 29 February always has one); slot 0 is never shown.
    std::array<DateEntry, DateSlotsPerMonth> Dates;
};

// The leap-year rule of the calendar: divisible by 4 is leap, then divisible
// by 300 is not, then divisible by 1000 is again (so 2000 and 2200 are leap
// years, 1800, 2100 and 2400 are not). 1 for a leap year, 0 otherwise.
qint16 LeapYearRule(int year);

}  // namespace kelvane
