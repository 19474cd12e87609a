#include <algorithm>

#include "kelvane_cal/ical/CalendarFacts.h"
#include "kelvane_cal/ical/Importer.h"

// Where the import puts an event's occurrences in the year: all-day events
// on their days, timed ones as activities.
namespace kelvane::cal {

namespace {

// Times with a zone are at most this far from the same wall-clock time in UTC.
constexpr qint64 kZoneMargin = 2 * kSecondsInADay;

// Whether a wall-clock time `length` seconds after `local` is on its day.
bool EndsOnItsDay(const icaltimetype& local, qint64 length) {
    return local.hour * 3600 + local.minute * 60 + local.second + length < kSecondsInADay;
}

ClockTime ClockTimeAfter(const ClockTime& begin, qint64 length) {
    const qint64 minutes = begin.Hour * 60 + begin.Minute + length / 60;
    return ClockTime{static_cast<qint16>(minutes / 60), static_cast<qint16>(minutes % 60)};
}

}  // namespace

bool Importer::PlaceEvent(icalcomponent* event, int line) {
    if (icalcomponent_get_status(event) == ICAL_STATUS_CANCELLED) {
        return true;
    }
    EventShape shape;
    if (!ShapeOf(event, line, shape)) {
        return true;
    }
    const qint64 from = yearStart_ - kZoneMargin - shape.Length;
    const char* uid = icalcomponent_get_uid(event);
    // Occurrences moved elsewhere are the master's to leave out, not the moved event's.
    const bool isMaster =
        icalcomponent_get_first_property(event, ICAL_RECURRENCEID_PROPERTY) == nullptr;
    const std::vector<icaltimetype> noMoves;
    const auto found =
        isMaster && uid != nullptr ? moved_.constFind(QByteArray(uid)) : moved_.cend();
    const std::vector<icaltimetype>& moved = found != moved_.cend() ? *found : noMoves;
    QStringList problems;
    bool cutShort = false;
    const std::vector<Occurrence> starts =
        OccurrencesBetween(event, shape.Start, zones_, moved, from,
                           nextYearStart_ - 1 + kZoneMargin, problems, cutShort);
    if (cutShort) {
        StopAtARuleCutShort(line);
        return false;
    }
    for (const QString& problem : problems) {
        tally_.Add(problem, line);
    }
    // Occurrences of a long all-day event overlap; each day is placed once.
    DaysPlaced placed;
    for (const Occurrence& start : starts) {
        if (!shape.Start.is_date) {
            PlaceTimed(event, shape, start);
        } else if (!PlaceAllDay(event, shape, start, placed)) {
            break;
        }
    }
    return true;
}

bool Importer::PlaceAllDay(icalcomponent* event, const EventShape& shape,
                           const Occurrence& occurrence, DaysPlaced& placed) {
    const icaltimetype& start = occurrence.Start;
    const qint64 days = shape.HasLength ? std::max<qint64>(shape.Length / kSecondsInADay, 1) : 1;
    // Only the days in the year are visited, however long the event.
    const qint64 startKey = occurrence.Key;
    const qint64 firstDay = std::max<qint64>((yearStart_ - startKey) / kSecondsInADay, 0);
    const qint64 endDay = std::min<qint64>((nextYearStart_ - startKey) / kSecondsInADay, days);
    const QString summary = FromIcal(icalcomponent_get_summary(event));
    const QString description = FromIcal(icalcomponent_get_description(event));
    for (qint64 offset = firstDay; offset < endDay; ++offset) {
        icaltimetype date = start;
        icaltime_adjust(&date, static_cast<int>(offset), 0, 0, 0);
        const int dayOfYear = icaltime_day_of_year(date);
        if (placed.Days.test(static_cast<std::size_t>(dayOfYear))) {
            continue;
        }
        placed.Days.set(static_cast<std::size_t>(dayOfYear));
        ++report_.Occurrences;
        dates_.AddTitle(date.month, date.day, summary);
        dates_.AddNote(date.month, date.day, description);
    }
    return placed.Days.count() < static_cast<std::size_t>(icaltime_days_in_year(request_.Year)) + 1;
}

icaltimetype Importer::LocalAt(qint64 key, const icaltimetype& start) const {
    if (start.is_date || start.zone == nullptr || request_.LocalZone == nullptr) {
        return TimeAtKey(key, start);
    }
    // From the instant: a wall-clock time of the event's zone may stand for
    // two instants, and libical's own conversion reads it as the later one.
    return TimeInZoneAt(key, request_.LocalZone);
}

void Importer::PlaceTimed(icalcomponent* event, const EventShape& shape,
                          const Occurrence& occurrence) {
    const icaltimetype& start = occurrence.Start;
    const icaltimetype local = LocalAt(occurrence.Key, start);
    if (local.year != request_.Year) {
        return;
    }
    ClockTime end{-1, 0};
    if (shape.HasLength) {
        const icaltimetype finish = LocalAt(occurrence.Key + shape.Length, start);
        const bool sameDay =
            finish.year == local.year && finish.month == local.month && finish.day == local.day;
        // An end after midnight still reads as a clock time; the end of an event of a
        // day or longer would read as its start (an activity of no length), or before it.
        if (sameDay || shape.Length < kSecondsInADay) {
            end = ClockTime{static_cast<qint16>(finish.hour), static_cast<qint16>(finish.minute)};
        }
    }
    ++report_.Occurrences;
    const ClockTime begin{static_cast<qint16>(local.hour), static_cast<qint16>(local.minute)};
    if (end.Hour >= 0 && shape.Length > 0 && CompareClockTime(end, begin) <= 0 &&
        shape.Length < kSecondsInADay && EndsOnItsDay(local, shape.Length)) {
        // The clocks went back while it ran: an end before the start would
        // read as past midnight, one at the start as no length, so the end
        // keeps the event's length instead.
        end = ClockTimeAfter(begin, shape.Length);
    }
    const QString summary = FromIcal(icalcomponent_get_summary(event));
    dates_.AddActivity(local.month, local.day, summary, begin, end);
    AddTimedDescription(event, local, begin, summary);
}

void Importer::AddTimedDescription(icalcomponent* event, const icaltimetype& local,
                                   const ClockTime& begin, const QString& summary) {
    // An activity holds no text of its own, so the description goes to the
    // date's note, named by the activity's time and title.
    const QString description = FromIcal(icalcomponent_get_description(event)).trimmed();
    if (description.isEmpty()) {
        return;
    }
    QString title = summary.simplified();
    if (title.isEmpty()) {
        title = QStringLiteral("(no title)");
    }
    dates_.AddNote(local.month, local.day,
                   QStringLiteral("%1 %2: %3").arg(Time24(begin), title, description));
}

}  // namespace kelvane::cal
