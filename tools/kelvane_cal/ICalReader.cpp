#include "kelvane_cal/ICalReader.h"

#include <QSet>

namespace kelvane::cal {

namespace {

// Longer lines are not iCalendar that anyone writes; they are refused rather
// than read into memory.
constexpr qint64 kLongestLine = 16 * 1024 * 1024;

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
    const QByteArray text = "BEGIN:" + kind + "\r\n" + line + "\r\nEND:" + kind + "\r\n";
    ComponentPtr parsed(icalparser_parse_string(text.constData()));
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

// "DESCRIPTION:" and the like: many programs write properties without a
// value, which libical refuses. They say nothing, so they are passed over.
bool HasNoValue(const QByteArray& line) {
    return line.endsWith(':') && !DecidesTimes(line);
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

ICalendarReader::ICalendarReader(QIODevice& device) : device_(device), parser_(icalparser_new()) {}

bool ICalendarReader::Fail(int line, const QString& problem) {
    if (problemLine_ == 0) {
        problemLine_ = std::max(line, 1);
        problem_ = problem;
    }
    return false;
}

bool ICalendarReader::ReadPhysicalLine(QByteArray& line, int& number) {
    if (Failed() || device_.atEnd()) {
        return false;
    }
    number = ++physicalLine_;
    line.clear();
    // Read in pieces, so that a line costs what it holds.
    char piece[8192];
    while (!line.endsWith('\n')) {
        const qint64 length = device_.readLine(piece, sizeof piece);
        if (length <= 0) {
            break;
        }
        line.append(piece, length);
        if (line.size() > kLongestLine) {
            return Fail(number, QStringLiteral("the line is longer than 16 MB"));
        }
    }
    while (line.endsWith('\n') || line.endsWith('\r')) {
        line.chop(1);
    }
    if (line.contains('\r')) {
        return Fail(number, QStringLiteral("the lines end in CR alone; save the file with CR LF "
                                           "or LF line ends"));
    }
    if (number == 1 && line.startsWith("\xEF\xBB\xBF")) {
        line.remove(0, 3);  // a byte order mark
    }
    return true;
}

// Lines that begin with a blank or a tab continue the line before them.
bool ICalendarReader::NextContentLine(QByteArray& line, int& number) {
    if (!havePending_ && !ReadPhysicalLine(pending_, pendingNumber_)) {
        return false;
    }
    line = pending_;
    number = pendingNumber_;
    havePending_ = false;
    QByteArray next;
    int nextNumber = 0;
    while (ReadPhysicalLine(next, nextNumber)) {
        if (!next.startsWith(' ') && !next.startsWith('\t')) {
            pending_ = next;
            pendingNumber_ = nextNumber;
            havePending_ = true;
            break;
        }
        if (line.size() + next.size() > kLongestLine) {
            return Fail(number, QStringLiteral("the line is longer than 16 MB"));
        }
        line += next.mid(1);
    }
    return !Failed();
}

bool ICalendarReader::Next(ComponentPtr& component, int& line) {
    QByteArray content;
    int number = 0;
    while (NextContentLine(content, number)) {
        lastLine_ = number;
        if (content.trimmed().isEmpty()) {
            continue;
        }
        if (TakeLine(content, number, component, line)) {
            return true;
        }
        if (Failed()) {
            return false;
        }
    }
    return Failed() ? false : FailAtEnd();
}

bool ICalendarReader::FailAtEnd() {
    switch (place_) {
        case Place::BeforeCalendar:
            return Fail(1, QStringLiteral("not an iCalendar file: there is no BEGIN:VCALENDAR"));
        case Place::InCalendar:
            return Fail(lastLine_, QStringLiteral("the file ends before END:VCALENDAR"));
        case Place::InComponent:
            return Fail(lastLine_, QStringLiteral("the file ends inside the %1 begun on line %2")
                                       .arg(QString::fromUtf8(open_.back().first),
                                            QString::number(open_.back().second)));
        case Place::AfterCalendar:
            break;
    }
    return false;
}

// True when `line` finished a component, which is then in `component`.
bool ICalendarReader::TakeLine(const QByteArray& line, int number, ComponentPtr& component,
                               int& begunOn) {
    switch (place_) {
        case Place::BeforeCalendar:
        case Place::AfterCalendar:
            if (NameAfter(line, "BEGIN") == "VCALENDAR") {
                place_ = Place::InCalendar;
                return false;
            }
            return Fail(number, place_ == Place::BeforeCalendar
                                    ? QStringLiteral("not an iCalendar file: it does not start "
                                                     "with BEGIN:VCALENDAR")
                                    : QStringLiteral("there is text after END:VCALENDAR"));
        case Place::InCalendar:
            return TakeCalendarLine(line, number);
        case Place::InComponent:
            return TakeComponentLine(line, number, component, begunOn);
    }
    return false;
}

// A line of the VCALENDAR itself: a property such as VERSION, the start of a
// component, or the end of the calendar.
bool ICalendarReader::TakeCalendarLine(const QByteArray& line, int number) {
    if (NameAfter(line, "END") == "VCALENDAR") {
        place_ = Place::AfterCalendar;
        return false;
    }
    if (!NameAfter(line, "END").isEmpty()) {
        return Fail(number, QStringLiteral("END:%1 without its BEGIN")
                                .arg(QString::fromUtf8(NameAfter(line, "END"))));
    }
    const QByteArray begin = NameAfter(line, "BEGIN");
    if (begin.isEmpty()) {
        if (!HasNoValue(line)) {
            TakeError(number, line, LineError("VCALENDAR", line));
        }
        return false;
    }
    place_ = Place::InComponent;
    open_.clear();
    componentLines_.clear();
    QByteArray copy = line;
    open_.emplace_back(begin, number);
    componentLines_.emplace_back(number, line);
    icalparser_add_line(parser_.get(), copy.data());
    return false;
}

bool ICalendarReader::TakeComponentLine(const QByteArray& line, int number, ComponentPtr& component,
                                        int& begunOn) {
    if (HasNoValue(line)) {
        return false;
    }
    componentLines_.emplace_back(number, line);
    const QByteArray begin = NameAfter(line, "BEGIN");
    const QByteArray end = NameAfter(line, "END");
    if (!begin.isEmpty()) {
        open_.emplace_back(begin, number);
    } else if (!end.isEmpty()) {
        if (end != open_.back().first) {
            return Fail(number,
                        QStringLiteral("END:%1 does not close the %2 begun on line %3")
                            .arg(QString::fromUtf8(end), QString::fromUtf8(open_.back().first),
                                 QString::number(open_.back().second)));
        }
        begunOn = open_.front().second;
        open_.pop_back();
    }
    QByteArray copy = line;
    icalcomponent* parsed = icalparser_add_line(parser_.get(), copy.data());
    if (!open_.empty()) {
        if (parsed != nullptr) {
            icalcomponent_free(parsed);
            return Fail(number, QStringLiteral("libical ended the component early"));
        }
        return false;
    }
    place_ = Place::InCalendar;
    return FinishComponent(parsed, component, begunOn);
}

bool ICalendarReader::FinishComponent(icalcomponent* parsed, ComponentPtr& component,
                                      int& begunOn) {
    ComponentPtr finished(parsed);
    const QByteArray kind = componentLines_.front().second.mid(6).trimmed().toUpper();
    if (finished == nullptr) {
        parser_.reset(icalparser_new());
        return Fail(begunOn,
                    QStringLiteral("libical cannot read the %1").arg(QString::fromUtf8(kind)));
    }
    if (FirstParseError(finished.get()).isEmpty()) {
        component = std::move(finished);
        return true;
    }
    // libical keeps no line numbers: each line is read again on its own.
    bool found = false;
    for (const NumberedLine& numbered : componentLines_) {
        if (NameAfter(numbered.second, "BEGIN").isEmpty() &&
            NameAfter(numbered.second, "END").isEmpty()) {
            const QString error = LineError(kind, numbered.second);
            found = found || !error.isEmpty();
            if (!TakeError(numbered.first, numbered.second, error)) {
                return false;
            }
        }
    }
    if (!found) {
        return Fail(begunOn, FirstParseError(finished.get()));
    }
    component = std::move(finished);
    return true;
}

bool ICalendarReader::TakeError(int number, const QByteArray& line, const QString& error) {
    if (error.isEmpty()) {
        return true;
    }
    if (DecidesTimes(line)) {
        return Fail(number, error);
    }
    warnings_.emplace_back(number, error);
    return true;
}

}  // namespace kelvane::cal
