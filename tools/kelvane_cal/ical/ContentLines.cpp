#include "kelvane_cal/ical/ContentLines.h"

#include "kelvane_cal/ical/TimeLines.h"

#include <QSet>

#include <algorithm>

namespace kelvane::cal {

namespace {

// `line` read by libical on its own, as a property of a `kind` component.
ComponentPtr ParseAlone(const QByteArray& kind, const QByteArray& line) {
    const QByteArray text = "BEGIN:" + kind + "\r\n" + line + "\r\nEND:" + kind + "\r\n";
    return ComponentPtr(icalparser_parse_string(text.constData()));
}

// What a property that says when an event happens must hold, for the message
// that stops the reading.
QString WhatItHolds(const QByteArray& name) {
    if (name == "RRULE") {
        return QStringLiteral("a repeat rule");
    }
    if (name == "DURATION") {
        return QStringLiteral("a length of time");
    }
    if (name == "RDATE") {
        return QStringLiteral("a date, a date and time or a period");
    }
    return QStringLiteral("a date or a date and time");
}

// The kind of the first error libical marks in `line` read as a property of a
// `kind` component.
icalparameter_xlicerrortype LineErrorType(const QByteArray& kind, const QByteArray& line) {
    const ComponentPtr parsed = ParseAlone(kind, line);
    icalproperty* error =
        parsed == nullptr ? nullptr
                          : icalcomponent_get_first_property(parsed.get(), ICAL_XLICERROR_PROPERTY);
    icalparameter* type =
        error == nullptr ? nullptr
                         : icalproperty_get_first_parameter(error, ICAL_XLICERRORTYPE_PARAMETER);
    return type == nullptr ? ICAL_XLICERRORTYPE_NONE : icalparameter_get_xlicerrortype(type);
}

}  // namespace

QString FirstParseError(icalcomponent* component) {
    icalproperty* error = icalcomponent_get_first_property(component, ICAL_XLICERROR_PROPERTY);
    if (error != nullptr) {
        return FromIcal(icalproperty_get_xlicerror(error)).trimmed();
    }
    for (icalcomponent* part = icalcomponent_get_first_component(component, ICAL_ANY_COMPONENT);
         part != nullptr; part = icalcomponent_get_next_component(component, ICAL_ANY_COMPONENT)) {
        const QString found = FirstParseError(part);
        if (!found.isEmpty()) {
            return found;
        }
    }
    return {};
}

QString NotCalendarStart() {
    return QStringLiteral("not an iCalendar file: it does not start with BEGIN:VCALENDAR");
}

// The component name of a "BEGIN:NAME" or "END:NAME" line, in capitals, or
// nothing for any other line.
QByteArray NameAfter(const QByteArray& line, const char* keyword) {
    const qsizetype length = qstrlen(keyword);
    if (line.size() <= length + 1 || line[length] != ':' ||
        qstrnicmp(line.constData(), keyword, length) != 0) {
        return {};
    }
    return line.mid(length + 1).trimmed().toUpper();
}

// The error libical marks in `line` read as a property of a `kind` component,
// or nothing.
QString LineError(const QByteArray& kind, const QByteArray& line) {
    const ComponentPtr parsed = ParseAlone(kind, line);
    return parsed == nullptr ? QStringLiteral("libical cannot read this line")
                             : FirstParseError(parsed.get());
}

// The name of the property a line holds, in capitals; nothing for a line that
// is no property at all.
QByteArray PropertyName(const QByteArray& line) {
    const qsizetype end = line.indexOf(':');
    if (end <= 0) {
        return {};
    }
    const qsizetype parameters = line.indexOf(';');
    return line.left(parameters > 0 && parameters < end ? parameters : end).trimmed().toUpper();
}

// The properties that say when an event happens. An error in one of them, or
// a line that is no property, makes the file unreadable; libical leaves out
// any other property it cannot read, and so does the import, with a warning.
bool DecidesTimes(const QByteArray& line) {
    static const QSet<QByteArray> kTimeProperties = {"DTSTART", "DTEND",  "DURATION",     "RRULE",
                                                     "RDATE",   "EXDATE", "RECURRENCE-ID"};
    const QByteArray name = PropertyName(line);
    return name.isEmpty() || kTimeProperties.contains(name);
}

// Where the value of a line begins: just after the first colon outside the
// quotes of a parameter value (ALTREP="cid:x" holds one); -1 without a colon.
qsizetype ValueStart(const QByteArray& line) {
    bool quoted = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        if (line[i] == '"') {
            quoted = !quoted;
        } else if (line[i] == ':' && !quoted) {
            return i + 1;
        }
    }
    return -1;
}

// "DESCRIPTION:" and the like: a property whose value is empty. A value that
// only ends in a colon ("SUMMARY:To do:") is not empty.
bool HasNoValue(const QByteArray& line) {
    return ValueStart(line) == line.size();
}

bool IsBlank(QByteArrayView text) {
    return std::all_of(text.begin(), text.end(), [](char c) {
        return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
    });
}

// "RDATE: " and the like: a value of blanks alone.
bool HasBlankValue(const QByteArray& line) {
    const qsizetype start = ValueStart(line);
    return start >= 0 && IsBlank(QByteArrayView(line).sliced(start));
}

namespace {

// "20260101T000000Z": a real date and time of day.
bool IsFullUtcTime(QByteArrayView value) {
    icaltimetype time;
    return ReadDateTime(value, true, time);
}

// libical refuses a value of blanks alone as no value.
bool IsPlainText(QByteArrayView value) {
    return !IsBlank(value) && std::none_of(value.begin(), value.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
    });
}

}  // namespace

bool IsUnreadAndSound(const QByteArray& line) {
    const QByteArrayView view(line);
    for (const char* name : {"DTSTAMP:", "CREATED:", "LAST-MODIFIED:"}) {
        if (view.startsWith(name)) {
            return IsFullUtcTime(view.sliced(qstrlen(name)));
        }
    }
    return view.startsWith("LOCATION:") && IsPlainText(view.sliced(9));
}

// Why a line stops the reading, in Kelvane's words rather than libical's,
// whose "Removing entire property" is not what happens then.
QString StopReason(const QByteArray& kind, const QByteArray& line) {
    const QByteArray name = PropertyName(line);
    if (name.isEmpty()) {
        return QStringLiteral("the line '%1' is neither a property nor a BEGIN or END")
            .arg(QString::fromUtf8(line));
    }
    const QString property = QString::fromUtf8(name);
    const qsizetype valueStart = ValueStart(line);
    const icalparameter_xlicerrortype type = LineErrorType(kind, line);
    const qsizetype nameEnd = line.indexOf(';');
    const bool inParameters = type == ICAL_XLICERRORTYPE_PARAMETERNAMEPARSEERROR ||
                              type == ICAL_XLICERRORTYPE_PARAMETERVALUEPARSEERROR;
    if (inParameters && nameEnd > 0 && nameEnd < valueStart) {
        return QStringLiteral("the parameters of %1 cannot be read: '%2'")
            .arg(property, QString::fromUtf8(line.mid(nameEnd + 1, valueStart - nameEnd - 2)));
    }
    return QStringLiteral("the %1 value '%2' is not %3")
        .arg(property, QString::fromUtf8(line.mid(valueStart)), WhatItHolds(name));
}

}  // namespace kelvane::cal
