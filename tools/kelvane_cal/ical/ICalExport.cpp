#include "kelvane_cal/ical/ICalExport.h"

#include <QCryptographicHash>
#include <QDate>
#include <QFileInfo>

#include "kelvane_cal/ical/CalendarFacts.h"
#include "kelvane_cal/ical/LibIcal.h"
#include "kelvane_cal/ical/MarkedEnds.h"
#include "kelvane_cal/ical/TimeKeys.h"

#include "calfile/Conversions.h"
#include "calfile/NoteText.h"

namespace kelvane::cal {

namespace {

// Appends `value` with at least `width` digits, zeros in front, as
// QString::arg(value, width, 10, '0') writes a number that is not negative;
// false, appending nothing, for a negative one.
bool AppendDigits(QByteArray& text, int value, int width) {
    if (value < 0) {
        return false;
    }
    char digits[16];
    int count = 0;
    do {
        digits[count++] = static_cast<char>('0' + value % 10);
        value /= 10;
    } while (value > 0);
    for (int zeros = width - count; zeros > 0; --zeros) {
        text += '0';
    }
    while (count > 0) {
        text += digits[--count];
    }
    return true;
}

// The texts of dates and times are made here: libical 3.0 writes every year
// after 3000 as "00000000T000000", and a date in year 1 without VALUE=DATE.
QByteArray DateText(const QDate& date) {
    QByteArray text;
    text.reserve(24);
    if (AppendDigits(text, date.year(), 4) && AppendDigits(text, date.month(), 2) &&
        AppendDigits(text, date.day(), 2)) {
        return text;
    }
    return QStringLiteral("%1%2%3")
        .arg(date.year(), 4, 10, QLatin1Char('0'))
        .arg(date.month(), 2, 10, QLatin1Char('0'))
        .arg(date.day(), 2, 10, QLatin1Char('0'))
        .toLatin1();
}

QByteArray FloatingTimeText(const QDate& date, const ClockTime& time) {
    QByteArray text = DateText(date);
    text += 'T';
    if (AppendDigits(text, time.Hour, 2) && AppendDigits(text, time.Minute, 2)) {
        return text + "00";
    }
    return DateText(date) +
           QStringLiteral("T%1%2")
               .arg(time.Hour, 2, 10, QLatin1Char('0'))
               .arg(time.Minute, 2, 10, QLatin1Char('0'))
               .toLatin1() +
           "00";
}

// A DTSTART or DTEND holding a date, marked VALUE=DATE as RFC 5545 wants.
icalproperty* DateProperty(icalproperty_kind kind, const QDate& date) {
    icalproperty* property = icalproperty_new(kind);
    icalproperty_set_value(property,
                           icalvalue_new_from_string(ICAL_DATE_VALUE, DateText(date).constData()));
    if (icalproperty_get_first_parameter(property, ICAL_VALUE_PARAMETER) == nullptr) {
        icalproperty_add_parameter(property, icalparameter_new_value(ICAL_VALUE_DATE));
    }
    return property;
}

// A DTSTART or DTEND holding a time in floating local time.
icalproperty* FloatingTimeProperty(icalproperty_kind kind, const QDate& date,
                                   const ClockTime& time) {
    icalproperty* property = icalproperty_new(kind);
    icalproperty_set_value(
        property,
        icalvalue_new_from_string(ICAL_DATETIME_VALUE, FloatingTimeText(date, time).constData()));
    return property;
}

bool HasEnd(icalcomponent* event) {
    return icalcomponent_get_first_property(event, ICAL_DTEND_PROPERTY) != nullptr ||
           icalcomponent_get_first_property(event, ICAL_DURATION_PROPERTY) != nullptr;
}

// Note lines are kept apart by CR LF; iCalendar texts by LF.
QByteArray DescriptionOf(const QString& note) {
    return NoteLines(note).join(QLatin1Char('\n')).toUtf8();
}

class CalendarBuilder {
  public:
    CalendarBuilder(const ExportRequest& request, ExportResult& result)
        : request_(request),
          result_(result),
          root_(icalcomponent_new_vcalendar()),
          uidEnding_(EventUidEnding(UidSeedOf(request.FileName, request.UidSeed))) {
        icalcomponent_add_property(root_.get(), icalproperty_new_version("2.0"));
        icalcomponent_add_property(
            root_.get(),
            icalproperty_new_prodid("-//Marrowby//kelvane-cal " KELVANE_VERSION "//EN"));
        icalcomponent_add_property(root_.get(), icalproperty_new_calscale("GREGORIAN"));
        stamp_ = icaltime_from_timet_with_zone(request.Stamp.toSecsSinceEpoch(), 0,
                                               icaltimezone_get_utc_timezone());
    }

    void AddDate(const CalendarFileDate& date);
    QByteArray Text() const;

  private:
    icalcomponent* NewEvent(int month, int day, int slot);
    void AddAllDayEvent(const CalendarFileDate& date, const QString& title, const QString& note);
    void AddActivity(const CalendarFileDate& date, const NumberedActivity& activity);
    void AddEnd(icalcomponent* event, const QString& where, const QDate& day,
                const Appointment& entry);

    const ExportRequest& request_;
    ExportResult& result_;
    ComponentPtr root_;
    QString uidEnding_;  // the same for every event
    icaltimetype stamp_;
};

icalcomponent* CalendarBuilder::NewEvent(int month, int day, int slot) {
    icalcomponent* event = icalcomponent_new_vevent();
    const QByteArray uid = EventUidWithEnding(uidEnding_, request_.Year, month, day, slot).toUtf8();
    icalcomponent_add_property(event, icalproperty_new_uid(uid.constData()));
    icalcomponent_add_property(event, icalproperty_new_dtstamp(stamp_));
    icalcomponent_add_component(root_.get(), event);
    return event;
}

void CalendarBuilder::AddDate(const CalendarFileDate& date) {
    const QString title = date.Entry.Title.Trimmed();
    const QString note = NoteOf(date);
    const std::vector<NumberedActivity> activities = ActivitiesOf(date);
    if (title.isEmpty() && note.isEmpty() && activities.empty()) {
        return;  // colours alone have nowhere to go
    }
    if (date.Month == 2 && date.Day == 29 && !QDate::isLeapYear(request_.Year)) {
        result_.Warnings
            << QStringLiteral("29 February is left out: %1 has no 29 February").arg(request_.Year);
        return;
    }
    if (!title.isEmpty() || !note.isEmpty()) {
        AddAllDayEvent(date, title, note);
    }
    for (const NumberedActivity& activity : activities) {
        AddActivity(date, activity);
    }
}

void CalendarBuilder::AddAllDayEvent(const CalendarFileDate& date, const QString& title,
                                     const QString& note) {
    icalcomponent* event = NewEvent(date.Month, date.Day, 0);
    const QDate day(request_.Year, date.Month, date.Day);
    icalcomponent_add_property(event, DateProperty(ICAL_DTSTART_PROPERTY, day));
    // 31 December 9999 cannot end on the next day, which has no iCalendar date.
    if (day.year() < kLastExportYear || day.month() < 12 || day.day() < 31) {
        icalcomponent_add_property(event, DateProperty(ICAL_DTEND_PROPERTY, day.addDays(1)));
    } else {
        icalcomponent_add_property(
            event, icalproperty_new_duration(icaldurationtype_from_int(kSecondsInADay)));
    }
    // Every event has a summary, empty without a title: calcurse fails on an
    // event without one.
    icalcomponent_add_property(event, icalproperty_new_summary(title.toUtf8().constData()));
    if (!note.isEmpty()) {
        icalcomponent_add_property(event,
                                   icalproperty_new_description(DescriptionOf(note).constData()));
    }
    icalcomponent_add_property(event, icalproperty_new_transp(ICAL_TRANSP_TRANSPARENT));
    ++result_.AllDayEvents;
}

void CalendarBuilder::AddActivity(const CalendarFileDate& date, const NumberedActivity& activity) {
    const Appointment& entry = activity.Entry;
    const QString where = QStringLiteral("%1: activity %2 (\"%3\")")
                              .arg(DayAndMonth(date.Month, date.Day))
                              .arg(activity.Slot)
                              .arg(entry.Description.Trimmed());
    if (!IsTimeOfDay(entry.StartTime)) {
        result_.Warnings << QStringLiteral("%1 starts at %2, which is no time of day; left out")
                                .arg(where, Time24(entry.StartTime));
        return;
    }
    icalcomponent* event = NewEvent(date.Month, date.Day, activity.Slot);
    const QDate day(request_.Year, date.Month, date.Day);
    icalcomponent_add_property(event,
                               FloatingTimeProperty(ICAL_DTSTART_PROPERTY, day, entry.StartTime));
    if (entry.EndTime.Hour >= 0) {
        AddEnd(event, where, day, entry);
    }
    if (request_.EndEveryActivity && !HasEnd(event)) {
        MarkEnd(event, MarkedEnd::NoEnd);
    }
    const QByteArray summary = entry.Description.Trimmed().toUtf8();
    icalcomponent_add_property(event, icalproperty_new_summary(summary.constData()));
    ++result_.TimedEvents;
}

void CalendarBuilder::AddEnd(icalcomponent* event, const QString& where, const QDate& day,
                             const Appointment& entry) {
    if (!IsTimeOfDay(entry.EndTime)) {
        result_.Warnings << QStringLiteral(
                                "%1 ends at %2, which is no time of day; exported without an end")
                                .arg(where, Time24(entry.EndTime));
        return;
    }
    const int order = CompareClockTime(entry.EndTime, entry.StartTime);
    if (order == 0) {
        // khal would lengthen an event without an end to an hour.
        MarkEnd(event, MarkedEnd::ZeroLength);
        return;
    }
    // An end before the start is past midnight: on the next day, as an import reads it.
    const QDate endDay = order < 0 ? day.addDays(1) : day;
    if (endDay.year() > kLastExportYear) {
        result_.Warnings << QStringLiteral(
                                "%1 ends at %2 on the next day, which is past the year %3; "
                                "exported without an end")
                                .arg(where, Time24(entry.EndTime))
                                .arg(kLastExportYear);
        return;
    }
    icalcomponent_add_property(event,
                               FloatingTimeProperty(ICAL_DTEND_PROPERTY, endDay, entry.EndTime));
}

QByteArray CalendarBuilder::Text() const {
    char* text = icalcomponent_as_ical_string_r(root_.get());
    QByteArray bytes(text);
    icalmemory_free_buffer(text);
    return bytes;
}

}  // namespace

QString ExportYears() {
    return QStringLiteral("%1 to %2").arg(kFirstExportYear).arg(kLastExportYear);
}

QString EventUid(const QString& seed, int year, int month, int day, int slot) {
    return EventUidWithEnding(EventUidEnding(seed), year, month, day, slot);
}

// Written digit by digit when no number is negative, as for every date an
// export writes; through QString::arg otherwise.
QString EventUidWithEnding(const QString& ending, int year, int month, int day, int slot) {
    QByteArray start;
    start.reserve(24);
    if (slot >= 0 && AppendDigits(start, year, 4) && AppendDigits(start, month, 2) &&
        AppendDigits(start, day, 2)) {
        start += slot == 0 ? "-day" : "-a";
        if (slot > 0) {
            AppendDigits(start, slot, 0);
        }
        return QString::fromLatin1(start) + ending;
    }
    const QString where = slot == 0 ? QStringLiteral("day") : QStringLiteral("a%1").arg(slot);
    return QStringLiteral("%1%2%3-%4%5")
        .arg(EventUidYear(year))
        .arg(month, 2, 10, QLatin1Char('0'))
        .arg(day, 2, 10, QLatin1Char('0'))
        .arg(where, ending);
}

QString UidSeedOf(const QString& fileName, const QString& uidSeed) {
    return uidSeed.isEmpty() ? QFileInfo(fileName).fileName() : uidSeed;
}

QString EventUidEnding(const QString& seed) {
    const QString hash = QString::fromLatin1(
        QCryptographicHash::hash(seed.toUtf8(), QCryptographicHash::Sha1).toHex().left(16));
    return QStringLiteral("-%1@kelvane").arg(hash);
}

QString EventUidYear(int year) {
    return QStringLiteral("%1").arg(year, 4, 10, QLatin1Char('0'));
}

QDate DateOfEventUid(const QString& uid) {
    return QDate::fromString(uid.left(8), QStringLiteral("yyyyMMdd"));
}

ExportResult ExportToICalendar(const CalendarFileContent& content, const ExportRequest& request) {
    ExportResult result;
    CalendarBuilder builder(request, result);
    for (const CalendarFileDate& date : content.Dates) {
        builder.AddDate(date);
    }
    result.Text = builder.Text();
    return result;
}

}  // namespace kelvane::cal
