#pragma once

#include <QString>

#include "calfile/ColourList.h"
#include "calfile/Records.h"

// Colour resolution, date formatting and day stepping shared by the month
// view, the editor, the reports and the colour fill.
namespace kelvane {

// A colour from its three channels, each clamped to 0..255.
ColourValue MakeColour(int red, int green, int blue);

// Adds an offset to each channel of `base` (higher bits ignored), clamped to 0..255.
ColourValue ShiftColour(ColourValue base, int dr, int dg, int db);

// `base` as `choice` colours it: unchanged when the choice is not Enabled, the
// fixed colour when Absolute, otherwise `base` shifted by the choice's channels.
ColourValue ResolveColour(ColourValue base, const ColourChoice& choice);

// "Day-Month-Year" without padding: 7 March 2000 is "7-3-2000".
QString FormatCalDate(const CalDate& date);

// Steps `days` days forward from `start` inside its year, using the real month
// lengths `yearMonthLengths`; stops at 31 December. A count below 1, or a start
// month outside 1..12, gives `start` unchanged.
void AddDaysInYear(CalDate& result, const CalDate& start, int days,
                   const MonthLengths& yearMonthLengths);

// True when `a` comes before `b` in the year, by month and then day.
bool DateBefore(const CalDate& a, const CalDate& b);

// True for 31 December, where stepping through the year stops.
bool IsLastDayOfYear(const CalDate& date);

// The working copy of one date's entry and the colour scheme, shared by the
// month views, the editor, the colour fill and the calendar file.
class CalenderMOD {
  public:
    CalenderMOD() { BuildColourList(ColourList); }
    CalenderMOD(const CalenderMOD&) = delete;
    CalenderMOD& operator=(const CalenderMOD&) = delete;

    // The entry of the date last loaded from a month view, and that date.
    DateEntry CurrentEntry;
    CalDate CurrentEntryDate;

    ColourListTable ColourList;
};

}  // namespace kelvane
