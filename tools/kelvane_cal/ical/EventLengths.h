#pragma once

#include <QString>

#include "kelvane_cal/ical/LibIcal.h"
#include "kelvane_cal/ical/TimeKeys.h"

// The lengths of events in seconds, read beyond what libical counts.
namespace kelvane::cal {

// The longest an event may last: from the first to the last year libical counts.
inline constexpr qint64 kLongestLength = qint64{9999 - 1902 + 1} * 366 * kSecondsInADay;

// A DURATION in seconds, counted in 64 bits: libical's own count is an int,
// which a DURATION of 5000 weeks already overflows into a negative one.
qint64 SecondsOf(const icaldurationtype& duration);

// The seconds of a DURATION as the file writes it ("P1W", "-PT90M",
// "P2DT3H"); `tooLong` when it passes kLongestLength. False for a text that is
// no DURATION, which libical's own reading then stands in for.
bool SecondsOfText(const QString& text, qint64& seconds, bool& tooLong);

}  // namespace kelvane::cal
