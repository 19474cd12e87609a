#pragma once

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QStringList>

#include <vector>

#include "kelvane_cal/LibIcal.h"
#include "kelvane_cal/ZoneBook.h"

namespace kelvane::cal {

// A point in time to tell occurrences apart: seconds since 1970 for times
// with a zone, the same count for floating times and dates as if in UTC.
qint64 TimeKey(const icaltimetype& time);

// The occurrences that events with a RECURRENCE-ID have taken out of the
// series of their UID.
using MovedOccurrences = QHash<QByteArray, QSet<qint64>>;

// The most occurrences one event may have in a year; a rule that repeats every
// second or minute stops there.
inline constexpr int kMostOccurrences = 100000;

// The starts of an event's occurrences between `from` and `to` (keys of
// TimeKey): DTSTART, the RRULEs' and RDATEs' occurrences, less the EXDATEs
// and the moved occurrences. `start` is DTSTART with its zone. Problems such
// as a rule cut short are added to `warnings`.
std::vector<icaltimetype> OccurrencesBetween(icalcomponent* event, const icaltimetype& start,
                                             const ZoneBook& zones, const QSet<qint64>& moved,
                                             qint64 from, qint64 to, QStringList& warnings);

}  // namespace kelvane::cal
