#include "kelvane_cal/ical/ICalImport.h"

#include <QMap>
#include <QRegularExpression>

#include <algorithm>
#include <bitset>
#include <vector>

#include "kelvane_cal/ical/CalendarFacts.h"
#include "kelvane_cal/ical/ICalExport.h"
#include "kelvane_cal/ical/ICalReader.h"
#include "kelvane_cal/ical/MarkedEnds.h"
#include "kelvane_cal/ical/Occurrences.h"
#include "kelvane_cal/ical/ZoneBook.h"

namespace kelvane::cal {

namespace {

// Times with a zone are at most this far from the same wall-clock time in UTC.
constexpr qint64 kZoneMargin = 2 * kSecondsInADay;
// The longest an event may last: from the first to the last year libical counts.
constexpr qint64 kLongestLength = qint64{9999 - 1902 + 1} * 366 * kSecondsInADay;

// The kinds of the warnings that name what they saw, by which they are counted.
const QString kEndsBeforeStart = QStringLiteral("ends before it starts");
const QString kEndlessDuration = QStringLiteral("lasts longer than libical counts");

// A DURATION in seconds, counted in 64 bits: libical's own count is an int,
// which a DURATION of 5000 weeks already overflows into a negative one.
qint64 SecondsOf(const icaldurationtype& duration) {
    const qint64 days = qint64{duration.weeks} * 7 + qint64{duration.days};
    const qint64 seconds =
        ((days * 24 + qint64{duration.hours}) * 60 + qint64{duration.minutes}) * 60 +
        qint64{duration.seconds};
    return duration.is_neg != 0 ? -seconds : seconds;
}

// Adds `count` units of `unitSeconds` to `total`; false, leaving it, when the
// sum would pass kLongestLength (or overflow on the way there).
bool AddUnits(qint64 count, qint64 unitSeconds, qint64& total) {
    if (count > (kLongestLength - total) / unitSeconds) {
        return false;
    }
    total += count * unitSeconds;
    return true;
}

// The seconds of a DURATION as the file writes it ("P1W", "-PT90M",
// "P2DT3H"); `tooLong` when it passes kLongestLength. False for a text that is
// no DURATION, which libical's own reading then stands in for.
bool SecondsOfText(const QString& text, qint64& seconds, bool& tooLong) {
    static const QRegularExpression kDuration(QStringLiteral(
        R"(^([+-]?)P(?:(\d+)W|(?:(\d+)D)?(?:T(?:(\d+)H)?(?:(\d+)M)?(?:(\d+)S)?)?)$)"));
    const QRegularExpressionMatch match = kDuration.match(text.toUpper());
    if (!match.hasMatch()) {
        return false;
    }
    static const qint64 kUnits[] = {7 * kSecondsInADay, kSecondsInADay, 60 * 60, 60, 1};
    qint64 total = 0;
    bool anyUnit = false;
    tooLong = false;
    for (int unit = 0; unit < 5; ++unit) {
        const QString digits = match.captured(unit + 2);
        if (digits.isEmpty()) {
            continue;
        }
        anyUnit = true;
        bool fits = false;
        const qint64 count = digits.toLongLong(&fits);
        if (!fits || !AddUnits(count, kUnits[unit], total)) {
            tooLong = true;
        }
    }
    if (!anyUnit) {
        return false;  // "P" or "PT" alone
    }
    seconds = match.captured(1) == QStringLiteral("-") ? -total : total;
    return true;
}

// A property's value as libical read it, for a warning to show.
QString ValueOf(icalproperty* property) {
    return FromIcal(icalproperty_get_value_as_string(property));
}

// Warnings of one kind, counted, with the line and the text of the first.
// A warning that names what it saw differs from event to event, so it is
// counted by its kind, which the plain warnings are on their own.
class WarningTally {
  public:
    void Add(const QString& warning, int line) { Add(warning, warning, line); }
    void Add(const QString& kind, const QString& warning, int line) {
        Entry& entry = entries_[kind];
        if (entry.Count++ == 0) {
            entry.Line = line;
            entry.Text = warning;
            order_ << kind;
        }
    }
    void Report(QStringList& warnings) const {
        for (const QString& kind : order_) {
            const Entry& entry = entries_[kind];
            QString text = QStringLiteral("line %1: %2").arg(entry.Line).arg(entry.Text);
            if (entry.Count > 1) {
                text += QStringLiteral(" (and %1 more like it)").arg(entry.Count - 1);
            }
            warnings << text;
        }
    }

  private:
    struct Entry {
        int Count = 0;
        int Line = 0;
        QString Text;
    };
    QMap<QString, Entry> entries_;
    QStringList order_;
};

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

int DaysInYear(int year) {
    return icaltime_days_in_year(year);
}

// When an event starts and how long it lasts, in seconds. An event without
// an end, or with one that makes no sense, has no length: 0, not below, so
// that the search for its occurrences starts where it should.
struct EventShape {
    icaltimetype Start;
    bool HasLength = false;
    qint64 Length = 0;
};

// An event made one second long in place of no end or a zero length
// reads back as what it was; one made longer since then keeps its length.
void TakeEndMark(icalcomponent* event, EventShape& shape) {
    if (!shape.HasLength || shape.Length != kMarkedLength) {
        return;
    }
    switch (MarkedEndOf(event)) {
        case MarkedEnd::NoEnd:
            shape.HasLength = false;
            shape.Length = 0;
            break;
        case MarkedEnd::ZeroLength:
            shape.Length = 0;
            break;
        case MarkedEnd::None:
            break;
    }
}

// Whether a wall-clock time `length` seconds after `local` is on its day.
bool EndsOnItsDay(const icaltimetype& local, qint64 length) {
    return local.hour * 3600 + local.minute * 60 + local.second + length < kSecondsInADay;
}

ClockTime ClockTimeAfter(const ClockTime& begin, qint64 length) {
    const qint64 minutes = begin.Hour * 60 + begin.Minute + length / 60;
    return ClockTime{static_cast<qint16>(minutes / 60), static_cast<qint16>(minutes % 60)};
}

icaltimetype FirstOfJanuary(int year) {
    icaltimetype date = icaltime_null_date();
    date.year = year;
    date.month = 1;
    date.day = 1;
    return date;
}

// libical reads some texts that are no date at all into months and days
// that do not exist.
bool IsRealTime(const icaltimetype& time) {
    return time.month >= 1 && time.month <= 12 && time.day >= 1 &&
           time.day <= icaltime_days_in_month(time.month, time.year) && time.hour >= 0 &&
           time.hour <= 23 && time.minute >= 0 && time.minute <= 59;
}

class Importer {
  public:
    Importer(const ImportRequest& request, ImportedDates& dates, ImportReport& report)
        : request_(request),
          dates_(dates),
          report_(report),
          yearStart_(TimeKey(FirstOfJanuary(request.Year))),
          nextYearStart_(TimeKey(FirstOfJanuary(request.Year + 1))) {}

    bool ReadZonesAndMoves(QIODevice& file);
    bool PlaceEvents(QIODevice& file);
    // The warnings about the file's text first, then the others by their first line.
    void ReportWarnings() {
        report_.Warnings << textWarnings_;
        tally_.Report(report_.Warnings);
    }

  private:
    bool Failed(const ICalendarReader& reader);
    void NoteMove(icalcomponent* event);
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
    bool PlaceAllDay(icalcomponent* event, const EventShape& shape, const icaltimetype& start,
                     DaysPlaced& placed);
    void PlaceTimed(icalcomponent* event, const EventShape& shape, const icaltimetype& start);
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
    std::vector<MovedOccurrence> pendingMoves_;
    MovedOccurrences moved_;
    WarningTally tally_;
    // The DURATION of the event being placed as the file writes it: libical
    // wraps a number too large for it, so the length is read from this text.
    QString writtenDuration_;
    QStringList textWarnings_;
};

bool Importer::Failed(const ICalendarReader& reader) {
    if (!reader.Failed()) {
        return false;
    }
    report_.ProblemLine = reader.ProblemLine();
    report_.Problem = reader.Problem();
    return true;
}

bool Importer::ReadZonesAndMoves(QIODevice& file) {
    ICalendarReader reader(file);
    ComponentPtr component;
    int line = 0;
    while (reader.Next(component, line)) {
        const icalcomponent_kind kind = icalcomponent_isa(component.get());
        if (kind == ICAL_VTIMEZONE_COMPONENT) {
            zones_.Add(std::move(component));
        } else if (kind == ICAL_VEVENT_COMPONENT) {
            NoteMove(component.get());
        }
    }
    if (Failed(reader)) {
        return false;
    }
    // Every zone is known by now; none is added later, so Find's answers stay valid.
    for (MovedOccurrence& move : pendingMoves_) {
        if (!move.Time.is_date && !icaltime_is_utc(move.Time) && !move.Zone.isEmpty()) {
            if (icaltimezone* zone = zones_.Find(move.Zone.constData())) {
                move.Time = icaltime_set_timezone(&move.Time, zone);
            }
        }
        moved_[move.Uid].push_back(move.Time);
    }
    pendingMoves_.clear();
    return true;
}

void Importer::NoteMove(icalcomponent* event) {
    icalproperty* id = icalcomponent_get_first_property(event, ICAL_RECURRENCEID_PROPERTY);
    if (id == nullptr || icalcomponent_get_uid(event) == nullptr) {
        return;
    }
    icalparameter* zone = icalproperty_get_first_parameter(id, ICAL_TZID_PARAMETER);
    pendingMoves_.push_back(
        {QByteArray(icalcomponent_get_uid(event)), icalproperty_get_recurrenceid(id),
         zone == nullptr ? QByteArray() : QByteArray(icalparameter_get_tzid(zone))});
}

bool Importer::PlaceEvents(QIODevice& file) {
    ICalendarReader reader(file);
    ComponentPtr component;
    int line = 0;
    while (reader.Next(component, line)) {
        if (icalcomponent_isa(component.get()) == ICAL_VEVENT_COMPONENT) {
            ++report_.Events;
            writtenDuration_ =
                icalcomponent_get_first_property(component.get(), ICAL_DURATION_PROPERTY) != nullptr
                    ? reader.RawValue("DURATION")
                    : QString();
            if (!PlaceEvent(component.get(), line)) {
                return false;
            }
        }
    }
    textWarnings_ = reader.TextWarnings();
    for (const auto& [number, warning] : reader.Warnings()) {
        tally_.Add(warning + QStringLiteral("; the line is left out"), number);
    }
    return !Failed(reader);
}

void Importer::StopAtARuleCutShort(int line) {
    report_.ProblemLine = line;
    report_.Problem =
        QStringLiteral("a repeat rule can be followed up to the year %1 only, not in the year %2")
            .arg(kLastRuleYear)
            .arg(request_.Year);
}

bool Importer::ShapeOf(icalcomponent* event, int line, EventShape& shape) {
    icalproperty* start = icalcomponent_get_first_property(event, ICAL_DTSTART_PROPERTY);
    if (start == nullptr) {
        tally_.Add(QStringLiteral("an event without DTSTART is left out"), line);
        return false;
    }
    bool unknownZone = false;
    shape.Start = zones_.TimeOf(start, icalproperty_get_dtstart(start), unknownZone);
    if (!IsRealTime(shape.Start)) {
        tally_.Add(QStringLiteral("an event with an impossible start is left out"), line);
        return false;
    }
    if (icalproperty* end = icalcomponent_get_first_property(event, ICAL_DTEND_PROPERTY)) {
        TakeEnd(start, end, line, unknownZone, shape);
    } else if (icalproperty* length =
                   icalcomponent_get_first_property(event, ICAL_DURATION_PROPERTY)) {
        TakeDuration(length, line, shape);
    }
    TakeEndMark(event, shape);
    if (unknownZone) {
        tally_.Add(QStringLiteral("a time zone nobody knows is taken as local time"), line);
    }
    return true;
}

void Importer::TakeEnd(icalproperty* start, icalproperty* end, int line, bool& unknownZone,
                       EventShape& shape) {
    // Start and end may be in different zones; the length is between the instants.
    const icaltimetype endTime = zones_.TimeOf(end, icalproperty_get_dtend(end), unknownZone);
    const qint64 length = TimeKey(InFrameOf(endTime, shape.Start)) - TimeKey(shape.Start);
    if (length < 0) {
        tally_.Add(kEndsBeforeStart,
                   QStringLiteral("an event that ends (DTEND %1) before it starts (DTSTART %2) "
                                  "is taken as having no end")
                       .arg(ValueOf(end), ValueOf(start)),
                   line);
        return;
    }
    shape.Length = length;
    shape.HasLength = true;
}

void Importer::TakeDuration(icalproperty* duration, int line, EventShape& shape) {
    qint64 length = 0;
    bool tooLong = false;
    if (!SecondsOfText(writtenDuration_, length, tooLong)) {
        length = SecondsOf(icalproperty_get_duration(duration));
    }
    const QString written = writtenDuration_.isEmpty() ? ValueOf(duration) : writtenDuration_;
    if (length < 0) {
        tally_.Add(kEndsBeforeStart,
                   QStringLiteral("an event with a DURATION below zero (%1) is taken as having "
                                  "no end")
                       .arg(written),
                   line);
        return;
    }
    if (tooLong || length > kLongestLength) {
        tally_.Add(kEndlessDuration,
                   QStringLiteral("an event with a DURATION of %1, longer than the years 1902 to "
                                  "9999, is taken as having no end")
                       .arg(written),
                   line);
        return;
    }
    shape.Length = length;
    shape.HasLength = true;
}

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
    const std::vector<icaltimetype> starts =
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
    for (const icaltimetype& start : starts) {
        if (!shape.Start.is_date) {
            PlaceTimed(event, shape, start);
        } else if (!PlaceAllDay(event, shape, start, placed)) {
            break;
        }
    }
    return true;
}

bool Importer::PlaceAllDay(icalcomponent* event, const EventShape& shape, const icaltimetype& start,
                           DaysPlaced& placed) {
    const qint64 days = shape.HasLength ? std::max<qint64>(shape.Length / kSecondsInADay, 1) : 1;
    // Only the days in the year are visited, however long the event.
    const qint64 startKey = TimeKey(start);
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
    return placed.Days.count() < static_cast<std::size_t>(DaysInYear(request_.Year)) + 1;
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
                          const icaltimetype& start) {
    const icaltimetype local = LocalAt(TimeKey(start), start);
    if (local.year != request_.Year) {
        return;
    }
    ClockTime end{-1, 0};
    if (shape.HasLength) {
        const icaltimetype finish = LocalAt(TimeKey(start) + shape.Length, start);
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

}  // namespace

bool ImportICalendar(QIODevice& file, const ImportRequest& request, ImportedDates& dates,
                     ImportReport& report) {
    icalerror_set_errors_are_fatal(0);
    Importer importer(request, dates, report);
    if (!importer.ReadZonesAndMoves(file) || !file.seek(0) || !importer.PlaceEvents(file)) {
        if (report.ProblemLine == 0) {
            report.ProblemLine = 1;
            report.Problem =
                QStringLiteral("the file cannot be read twice: %1").arg(file.errorString());
        }
        return false;
    }
    importer.ReportWarnings();
    return true;
}

}  // namespace kelvane::cal
