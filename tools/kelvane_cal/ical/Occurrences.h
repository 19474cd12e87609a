#pragma once

#include <QByteArray>
#include <QHash>
#include <QStringList>

#include <vector>

#include "kelvane_cal/ical/LibIcal.h"
#include "kelvane_cal/ical/ZoneBook.h"

namespace kelvane::cal {

inline constexpr qint64 kSecondsInADay = 24 * 60 * 60;

// A point in time to tell occurrences apart: seconds since 1970 for times
// with a zone, the same count for floating times and dates as if in UTC.
qint64 TimeKey(const icaltimetype& time);

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

// The occurrences that events with a RECURRENCE-ID have taken out of the
// series of their UID.
using MovedOccurrences = QHash<QByteArray, std::vector<icaltimetype>>;

// The most occurrences one event may have in the window, and the most steps a
// repeat rule is followed: a rule that repeats every second stops there.
inline constexpr int kMostOccurrences = 100000;
inline constexpr int kMostRuleSteps = 1000000;

// libical follows no repeat rule past this year.
inline constexpr int kLastRuleYear = 2582;

// The starts of an event's occurrences between `from` and `to` (keys of
// TimeKey in the frame of `start`): DTSTART, the RRULEs' and RDATEs'
// occurrences, less the EXDATEs and the `moved` occurrences. `start` is
// DTSTART with its zone. Problems such as a rule followed for too many steps
// go to `warnings`; `cutShort` tells that a rule could be followed up to
// kLastRuleYear only, leaving out occurrences in the window.
std::vector<icaltimetype> OccurrencesBetween(icalcomponent* event, const icaltimetype& start,
                                             const ZoneBook& zones,
                                             const std::vector<icaltimetype>& moved, qint64 from,
                                             qint64 to, QStringList& warnings, bool& cutShort);

}  // namespace kelvane::cal
