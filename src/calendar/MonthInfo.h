#pragma once

#include <array>

#include "calfile/Records.h"
#include "calfile/YearRules.h"

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

}  // namespace kelvane
