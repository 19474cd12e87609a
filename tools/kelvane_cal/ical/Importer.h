#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <QStringList>

#include <bitset>
#include <vector>

#include "kelvane_cal/ical/ICalImport.h"
#include "kelvane_cal/ical/ICalReader.h"
#include "kelvane_cal/ical/LibIcal.h"
#include "kelvane_cal/ical/Occurrences.h"
#include "kelvane_cal/ical/WarningTally.h"
#include "kelvane_cal/ical/ZoneBook.h"

// The import's reader of events and its placing of their occurrences; see
// ImportICalendar.
namespace kelvane::cal {

// A RECURRENCE-ID read before all the file's zones are known.
struct MovedOccurrence {
    QByteArray Uid;
    icaltimetype Time;
    QByteArray Zone;
};

// The days of the year (numbered from 1) an all-day event is placed on.
struct DaysPlaced {
    std::bitset<367> Days{1};  // day 0 is none, and counts as placed
};

// When an event starts and how long it lasts, in seconds. An event without
// an end, or with one that makes no sense, has no length: 0, not below, so
// that the search for its occurrences starts where it should.
struct EventShape {
    icaltimetype Start;
    bool HasLength = false;
    qint64 Length = 0;
};

class Importer {
  public:
    Importer(const ImportRequest& request, ImportedDates& dates, ImportReport& report);

    // False when the file cannot be read or an event stops the import; the
    // report then tells why.
    bool Import(QIODevice& file);
    // The warnings about the file's text first, then the others by their first line.
    void ReportWarnings() {
        report_.Warnings << textWarnings_;
        tally_.Report(report_.Warnings);
    }

  private:
    bool Failed(const ICalendarReader& reader);
    bool ReadAndPlace(ICalendarReader& reader);
    bool PlaceEvents(QIODevice& file);
    // False when the event stops the import.
    bool TakeEvent(const ICalendarReader& reader, icalcomponent* event, int line);
    void TakeReaderWarnings(const ICalendarReader& reader);
    // True when the event moves an occurrence of another.
    bool NoteMove(icalcomponent* event);
    void ResolveMoves();
    // False when the event cannot be placed and the import stops.
    bool PlaceEvent(icalcomponent* event, int line);
    // An import that leaves out some of an event's occurrences in the year is
    // no import of the year.
    void StopAtARuleCutShort(int line);
    bool ShapeOf(icalcomponent* event, int line, EventShape& shape);
    void TakeEnd(icalproperty* start, icalproperty* end, int line, bool& unknownZone,
                 EventShape& shape);
    void TakeDuration(icalproperty* duration, int line, EventShape& shape);
    // False once every day of the year has the event.
    bool PlaceAllDay(icalcomponent* event, const EventShape& shape, const Occurrence& occurrence,
                     DaysPlaced& placed);
    void PlaceTimed(icalcomponent* event, const EventShape& shape, const Occurrence& occurrence);
    void AddTimedDescription(icalcomponent* event, const icaltimetype& local,
                             const ClockTime& begin, const QString& summary);
    // The time at `key` (a TimeKey in the frame of `start`) where the dates go.
    icaltimetype LocalAt(qint64 key, const icaltimetype& start) const;

    const ImportRequest& request_;
    ImportedDates& dates_;
    ImportReport& report_;
    // 1 January of the year and of the next, as floating TimeKeys.
    qint64 yearStart_;
    qint64 nextYearStart_;
    ZoneBook zones_;
    // Set when a zone or a move is found after an event: the events are then
    // placed in a second reading.
    bool placeAgain_ = false;
    std::vector<MovedOccurrence> pendingMoves_;
    MovedOccurrences moved_;
    WarningTally tally_;
    // The DURATION of the event being placed as the file writes it: libical
    // wraps a number too large for it, so the length is read from this text.
    QString writtenDuration_;
    QStringList textWarnings_;
};

}  // namespace kelvane::cal
