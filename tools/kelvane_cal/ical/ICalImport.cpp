#include "kelvane_cal/ical/ICalImport.h"

#include "kelvane_cal/ical/EventLengths.h"
#include "kelvane_cal/ical/Importer.h"
#include "kelvane_cal/ical/MarkedEnds.h"

namespace kelvane::cal {

namespace {

// The kinds of the warnings that name what they saw, by which they are counted.
const QString kEndsBeforeStart = QStringLiteral("ends before it starts");
const QString kEndlessDuration = QStringLiteral("lasts longer than libical counts");

// A property's value as libical read it, for a warning to show.
QString ValueOf(icalproperty* property) {
    return FromIcal(icalproperty_get_value_as_string(property));
}

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

}  // namespace

Importer::Importer(const ImportRequest& request, ImportedDates& dates, ImportReport& report)
    : request_(request),
      dates_(dates),
      report_(report),
      yearStart_(TimeKey(FirstOfJanuary(request.Year))),
      nextYearStart_(TimeKey(FirstOfJanuary(request.Year + 1))) {}

bool Importer::Failed(const ICalendarReader& reader) {
    if (!reader.Failed()) {
        return false;
    }
    report_.ProblemLine = reader.ProblemLine();
    report_.Problem = reader.Problem();
    return true;
}

// One reading places the events as they come. A zone or a moved occurrence
// found once an event has been read could change what that event became, so
// then the events are placed again in a second reading, with every zone and
// move known. A file the reader cannot read imports nothing, and one that
// cannot be read twice neither, whichever way it was read.
bool Importer::Import(QIODevice& file) {
    const ImportedDates datesBefore = dates_;
    const ImportReport reportBefore = report_;
    ICalendarReader reader(file, ICalendarReader::Lines::ForImport);
    const bool placedAll = ReadAndPlace(reader);
    const bool readable = !reader.Failed() && file.seek(0);
    if (!readable || placeAgain_) {
        dates_ = datesBefore;
        report_ = reportBefore;
        tally_ = WarningTally();
    }
    if (Failed(reader) || !readable) {
        return false;
    }
    ResolveMoves();
    if (placeAgain_) {
        return PlaceEvents(file);
    }
    TakeReaderWarnings(reader);
    return placedAll;
}

// False when the placing stopped at a rule cut short; the file is read to
// its end all the same, for its zones, its moves and its problems.
bool Importer::ReadAndPlace(ICalendarReader& reader) {
    ComponentPtr component;
    int line = 0;
    bool sawEvent = false;
    bool placing = true;
    while (reader.Next(component, line)) {
        const icalcomponent_kind kind = icalcomponent_isa(component.get());
        if (kind == ICAL_VTIMEZONE_COMPONENT) {
            placeAgain_ = placeAgain_ || sawEvent;
            zones_.Add(std::move(component));
        } else if (kind == ICAL_VEVENT_COMPONENT) {
            sawEvent = true;
            placeAgain_ = NoteMove(component.get()) || placeAgain_;
            placing = placing && (placeAgain_ || TakeEvent(reader, component.get(), line));
        }
    }
    return placing;
}

void Importer::ResolveMoves() {
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
}

bool Importer::NoteMove(icalcomponent* event) {
    icalproperty* id = icalcomponent_get_first_property(event, ICAL_RECURRENCEID_PROPERTY);
    if (id == nullptr || icalcomponent_get_uid(event) == nullptr) {
        return false;
    }
    icalparameter* zone = icalproperty_get_first_parameter(id, ICAL_TZID_PARAMETER);
    pendingMoves_.push_back(
        {QByteArray(icalcomponent_get_uid(event)), icalproperty_get_recurrenceid(id),
         zone == nullptr ? QByteArray() : QByteArray(icalparameter_get_tzid(zone))});
    return true;
}

bool Importer::TakeEvent(const ICalendarReader& reader, icalcomponent* event, int line) {
    ++report_.Events;
    writtenDuration_ = icalcomponent_get_first_property(event, ICAL_DURATION_PROPERTY) != nullptr
                           ? reader.RawValue("DURATION")
                           : QString();
    return PlaceEvent(event, line);
}

bool Importer::PlaceEvents(QIODevice& file) {
    ICalendarReader reader(file, ICalendarReader::Lines::ForImport);
    ComponentPtr component;
    int line = 0;
    while (reader.Next(component, line)) {
        if (icalcomponent_isa(component.get()) == ICAL_VEVENT_COMPONENT &&
            !TakeEvent(reader, component.get(), line)) {
            return false;
        }
    }
    TakeReaderWarnings(reader);
    return !Failed(reader);
}

void Importer::TakeReaderWarnings(const ICalendarReader& reader) {
    textWarnings_ = reader.TextWarnings();
    for (const auto& [number, warning] : reader.Warnings()) {
        tally_.Add(warning + QStringLiteral("; the line is left out"), number);
    }
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

bool ImportICalendar(QIODevice& file, const ImportRequest& request, ImportedDates& dates,
                     ImportReport& report) {
    icalerror_set_errors_are_fatal(0);
    Importer importer(request, dates, report);
    if (!importer.Import(file)) {
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
