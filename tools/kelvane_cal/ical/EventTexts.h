#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace kelvane::cal {

// One event of an exported calendar, as a calendar of its own.
struct EventText {
    QString Uid;
    QByteArray Text;  // a whole VCALENDAR holding the one VEVENT
    QByteArray Hash;  // of what the event says, leaving out its stamp
};

// Splits an iCalendar text that `export` wrote into one calendar per event.
std::vector<EventText> SplitEvents(const QByteArray& calendar);

// A hash of what a VEVENT says: its unfolded lines without DTSTAMP, sorted,
// so that a server that writes the same event out in another order or with
// other folds gives the same hash.
QByteArray EventHash(const QByteArray& text);

// One calendar holding every component of `calendars` (a time zone defined
// in several of them only once), for reading as one iCalendar file.
QByteArray JoinCalendars(const std::vector<QByteArray>& calendars);

}  // namespace kelvane::cal
