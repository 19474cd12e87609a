#pragma once

#include "kelvane_cal/ical/LibIcal.h"
#include "kelvane_cal/ical/Occurrences.h"

// Following a repeat rule where libical cannot: a rule outside the years it
// follows well is followed in a frame within them, whole calendar cycles or
// whole steps of the rule away, and its occurrences moved back.
namespace kelvane::cal {

// libical counts every fourth year up to 1752 as a leap year, 1700 too, so
// the days it steps across 1700 come out one off; a rule is followed from
// this year on only, and up to kLastRuleYear.
inline constexpr int kFirstRuleYear = 1753;

// Where a rule is followed from: its start moved back by `DaysBack` days,
// the days by which the occurrences are then moved forward again.
struct RuleFrame {
    icaltimetype Start;
    qint64 DaysBack = 0;
    // Whether the start was brought up to the window already.
    bool StartIsNear = false;
};

// By the Gregorian calendar: libical's own adjustment takes 1700 for a leap year.
icaltimetype MovedByDays(icaltimetype time, qint64 days);

// The frame in which libical follows a rule over the window ending at
// `windowEnd`, past the year it stops at; see StepFrameFor and CycleFrameFor.
bool FrameFor(icalrecurrencetype& rule, const icaltimetype& start, const icaltimetype& near,
              const icaltimetype& windowEnd, RuleFrame& frame, bool& none);

// An iterator over `rule` from `start`, brought to `near` when the rule
// allows it. A rule repeating more often than daily keeps its step from
// DTSTART only when followed from there, and one with a count must be counted
// from there.
RecurIteratorPtr IteratorNear(const icalrecurrencetype& rule, const icaltimetype& start,
                              const icaltimetype& near, bool startIsNear);

}  // namespace kelvane::cal
