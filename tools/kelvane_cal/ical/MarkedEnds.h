#pragma once

#include "kelvane_cal/ical/LibIcal.h"

// Activities without an end, and those that end as they start. Some servers
// (Cyrus) refuse a timed event with DTSTART alone or with DURATION:PT0S, and
// calcurse refuses an end equal to the start, so such an event goes one
// second long (12:00-12:00 to a person), marked with a property of Kelvane's
// own that an import reads back as what it was.
namespace kelvane::cal {

inline constexpr const char* kNoEndProperty = "X-KELVANE-NO-END";
inline constexpr const char* kZeroLengthProperty = "X-KELVANE-ZERO-LENGTH";
// The length of a marked event, in seconds.
inline constexpr int kMarkedLength = 1;

enum class MarkedEnd { None, NoEnd, ZeroLength };

// `event` made one second long and marked as `mark` says (not None).
void MarkEnd(icalcomponent* event, MarkedEnd mark);

// What the mark of an event says; None when it has no mark.
MarkedEnd MarkedEndOf(icalcomponent* event);

}  // namespace kelvane::cal
