#pragma once

#include <array>

#include "calendar/MonthInfo.h"

namespace kelvane {

// The keys that move the selection about the month grid.
enum class GridKey { Left, Right, Up, Down, Home, End, PageUp, PageDown };

// A month number brought into 1..12 the way the calendar's one year wraps:
// 0 is December, 13 is January.
qint16 WrapMonth(int month);

// Where a key moves the selection in a year laid out as `months`: by a day
// (Left, Right) or a week (Up, Down), across months and round from 31
// December to 1 January and back, since the calendar holds one year; to the
// first or last day of the shown month (Home, End); or to the same day of the
// month before or after, wrapping the same way, or that month's last day when
// it is shorter (Page Up, Page Down). A selection outside the shown month
// starts from the shown month's first day, and an arrow then only brings it
// there. The year is left as it is.
CalDate DateAfterKey(GridKey key, const CalDate& from, qint16 shownMonth,
                     const std::array<MonthInfo, 12>& months);

}  // namespace kelvane
