#pragma once

#include <QIODevice>
#include <QString>
#include <QStringList>

#include "kelvane_cal/ical/ImportedDates.h"
#include "kelvane_cal/ical/LibIcal.h"

namespace kelvane::cal {

struct ImportRequest {
    int Year = 0;
    // The zone times with a zone are turned into; floating times and dates stay.
    icaltimezone* LocalZone = nullptr;
};

struct ImportReport {
    int ProblemLine = 0;  // above 0 when the file cannot be read
    QString Problem;
    QStringList Warnings;
    int Events = 0;       // VEVENTs read
    int Occurrences = 0;  // their occurrences in the year
};

// Reads an iCalendar file's time zones, the occurrences that other events
// move, and the events, whose occurrences in the year become titles (all-day
// events, with their descriptions as notes) and activities (timed events) of
// `dates`: in one reading when every zone comes before the first event and
// no event moves another's occurrence, else in a second reading with all
// zones and moves known. False when libical rejects the file.
bool ImportICalendar(QIODevice& file, const ImportRequest& request, ImportedDates& dates,
                     ImportReport& report);

}  // namespace kelvane::cal
