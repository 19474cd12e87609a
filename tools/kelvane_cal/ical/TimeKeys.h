#pragma once

#include <QtGlobal>

#include "kelvane_cal/ical/LibIcal.h"

// Times as keys: the seconds since 1970 an iCalendar time stands for, in its
// zone or on the wall clock, and back.
namespace kelvane::cal {

inline constexpr qint64 kSecondsInADay = 24 * 60 * 60;
// The Gregorian calendar repeats itself, weekdays and leap days, every 400 years.
inline constexpr qint64 kDaysIn400Years = 146097;

// A point in time to tell occurrences apart: seconds since 1970 for times
// with a zone, the same count for floating times and dates as if in UTC.
qint64 TimeKey(const icaltimetype& time);

// The UTC time at `key` (seconds since 1970), as libical's
// icaltime_from_timet_with_zone gives it in the UTC zone, worked out without
// the C library's time functions, which take a lock on every call.
icaltimetype UtcTimeAt(qint64 key);

// The fields of the instant `key` in `zone`, or in UTC for a floating time
// without one, as libical's icaltime_from_timet_with_zone gives them.
icaltimetype FieldsInZoneAt(qint64 key, const icaltimezone* zone, bool isDate);

// The offset from UTC in seconds that `zone` has at the instant `key`.
int UtcOffsetAt(const icaltimezone* zone, qint64 key);

// The instant (seconds since 1970) of a wall-clock time in `zone`, given as
// seconds since 1970 as if in UTC: a time the clocks skip is read with the
// offset before the gap, a time they show twice is the first of the two.
qint64 InstantOfWallClock(qint64 wallClock, const icaltimezone* zone);

// `time` in the frame of an event's start: with the start's zone when it has
// none of its own and the start has one; without any zone when the start is
// floating or a date, so that wall-clock times are compared with wall-clock
// times.
icaltimetype InFrameOf(icaltimetype time, const icaltimetype& start);

// The time at `key` (seconds since 1970) in `zone`, or floating without one.
icaltimetype TimeInZoneAt(qint64 key, const icaltimezone* zone, bool isDate = false);

// The time `key` (a TimeKey) stands for in the frame of `start`.
icaltimetype TimeAtKey(qint64 key, const icaltimetype& start);

}  // namespace kelvane::cal
