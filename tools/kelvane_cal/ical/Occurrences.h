#pragma once

#include <QByteArray>
#include <QHash>
#include <QStringList>

#include <vector>

#include "kelvane_cal/ical/LibIcal.h"
#include "kelvane_cal/ical/TimeKeys.h"
#include "kelvane_cal/ical/ZoneBook.h"

namespace kelvane::cal {

// The occurrences that events with a RECURRENCE-ID have taken out of the
// series of their UID.
using MovedOccurrences = QHash<QByteArray, std::vector<icaltimetype>>;

// The most occurrences one event may have in the window, and the most steps a
// repeat rule is followed: a rule that repeats every second stops there.
inline constexpr int kMostOccurrences = 100000;
inline constexpr int kMostRuleSteps = 1000000;

// libical follows no repeat rule past this year.
inline constexpr int kLastRuleYear = 2582;

// The start of one of an event's occurrences, in the frame of the event's
// start, and its TimeKey.
struct Occurrence {
    icaltimetype Start;
    qint64 Key = 0;
};

// The starts of an event's occurrences between `from` and `to` (keys of
// TimeKey in the frame of `start`): DTSTART, the RRULEs' and RDATEs'
// occurrences, less the EXDATEs and the `moved` occurrences. `start` is
// DTSTART with its zone. Problems such as a rule followed for too many steps
// go to `warnings`; `cutShort` tells that a rule could be followed up to
// kLastRuleYear only, leaving out occurrences in the window.
std::vector<Occurrence> OccurrencesBetween(icalcomponent* event, const icaltimetype& start,
                                           const ZoneBook& zones,
                                           const std::vector<icaltimetype>& moved, qint64 from,
                                           qint64 to, QStringList& warnings, bool& cutShort);

}  // namespace kelvane::cal
