#include "kelvane_cal/ical/TimeLines.h"

#include <QByteArrayView>
#include <QDate>

#include <algorithm>

namespace kelvane::cal {

namespace {

int NumberAt(QByteArrayView text, qsizetype at, qsizetype count) {
    int number = 0;
    for (qsizetype i = at; i < at + count; ++i) {
        if (text[i] < '0' || text[i] > '9') {
            return -1;
        }
        number = number * 10 + (text[i] - '0');
    }
    return number;
}

// "20260105": a real date in the years the import reads, or false.
bool ReadDate(QByteArrayView text, icaltimetype& time) {
    time = icaltime_null_time();
    time.is_date = 1;
    time.year = NumberAt(text, 0, 4);
    time.month = NumberAt(text, 4, 2);
    time.day = NumberAt(text, 6, 2);
    return time.year >= 1902 && time.year <= 2582 &&
           QDate::isValid(time.year, time.month, time.day);
}

}  // namespace

bool ReadDateTime(QByteArrayView text, bool utc, icaltimetype& time) {
    if (text.size() != (utc ? 16 : 15) || text[8] != 'T' || (utc && text[15] != 'Z') ||
        !ReadDate(text, time)) {
        return false;
    }
    time.is_date = 0;
    time.hour = NumberAt(text, 9, 2);
    time.minute = NumberAt(text, 11, 2);
    time.second = NumberAt(text, 13, 2);
    time.zone = utc ? icaltimezone_get_utc_timezone() : nullptr;
    return time.hour >= 0 && time.hour <= 23 && time.minute >= 0 && time.minute <= 59 &&
           time.second >= 0 && time.second <= 59;
}

namespace {

bool IsPlainZoneName(QByteArrayView name) {
    return !name.isEmpty() && std::all_of(name.begin(), name.end(), [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
               c == '/' || c == '_' || c == '-' || c == '+';
    });
}

PropertyPtr NewTimeProperty(icalproperty_kind kind, const icaltimetype& time) {
    PropertyPtr property(icalproperty_new(kind));
    icalproperty_set_value(property.get(),
                           time.is_date ? icalvalue_new_date(time) : icalvalue_new_datetime(time));
    return property;
}

}  // namespace

PropertyPtr PlainTimeProperty(const QByteArray& line) {
    const QByteArrayView view(line);
    const bool start = view.startsWith("DTSTART");
    if (!start && !view.startsWith("DTEND")) {
        return nullptr;
    }
    const icalproperty_kind kind = start ? ICAL_DTSTART_PROPERTY : ICAL_DTEND_PROPERTY;
    const qsizetype nameEnd = start ? 7 : 5;
    const qsizetype colon = view.indexOf(':');
    if (colon < nameEnd) {
        return nullptr;
    }
    const QByteArrayView parameters = view.sliced(nameEnd, colon - nameEnd);
    const QByteArrayView value = view.sliced(colon + 1);
    icaltimetype time;
    if (parameters.isEmpty()) {
        const bool utc = value.endsWith('Z');
        return ReadDateTime(value, utc, time) ? NewTimeProperty(kind, time) : nullptr;
    }
    if (parameters == ";VALUE=DATE") {
        if (value.size() != 8 || !ReadDate(value, time)) {
            return nullptr;
        }
        PropertyPtr property = NewTimeProperty(kind, time);
        icalproperty_add_parameter(property.get(), icalparameter_new_value(ICAL_VALUE_DATE));
        return property;
    }
    const QByteArrayView zone = parameters.sliced(std::min<qsizetype>(6, parameters.size()));
    if (!parameters.startsWith(";TZID=") || !IsPlainZoneName(zone) ||
        !ReadDateTime(value, false, time)) {
        return nullptr;
    }
    PropertyPtr property = NewTimeProperty(kind, time);
    icalproperty_add_parameter(property.get(),
                               icalparameter_new_tzid(zone.toByteArray().constData()));
    return property;
}

bool MayBeTimeLine(const QByteArray& line, icalproperty_kind kind) {
    const char* name = kind == ICAL_DTSTART_PROPERTY ? "DTSTART" : "DTEND";
    const qsizetype length = qstrlen(name);
    return line.size() >= length && qstrnicmp(line.constData(), name, length) == 0;
}

}  // namespace kelvane::cal
