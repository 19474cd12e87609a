#include "kelvane_cal/ical/ICalReader.h"

#include <QByteArrayView>
#include <QSet>

#include <algorithm>

#include "store/Cp1252.h"

namespace kelvane::cal {

namespace {

// Longer lines are not iCalendar that anyone writes; they are refused rather
// than read into memory.
constexpr qint64 kLongestLine = 16 * 1024 * 1024;

const QString kNotCalendarStart =
    QStringLiteral("not an iCalendar file: it does not start with BEGIN:VCALENDAR");

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

// `line` read by libical on its own, as a property of a `kind` component.
ComponentPtr ParseAlone(const QByteArray& kind, const QByteArray& line) {
    const QByteArray text = "BEGIN:" + kind + "\r\n" + line + "\r\nEND:" + kind + "\r\n";
    return ComponentPtr(icalparser_parse_string(text.constData()));
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

// "RDATE: " and the like: a value of blanks alone.
bool HasBlankValue(const QByteArray& line) {
    const qsizetype start = ValueStart(line);
    return start >= 0 && line.mid(start).trimmed().isEmpty();
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
    if (number == 1 && line.startsWith("\xEF\xBB\xBF")) {
        line.remove(0, 3);  // a byte order mark
    }
    // The first text decides whether this is iCalendar at all: a binary file
    // is refused as such, not for the CRs it happens to hold.
    if (!sawText_ && !line.trimmed().isEmpty()) {
        sawText_ = true;
        const qsizetype firstCr = line.indexOf('\r');
        if (NameAfter(firstCr < 0 ? line : line.left(firstCr), "BEGIN") != "VCALENDAR") {
            return Fail(number, kNotCalendarStart);
        }
    }
    if (line.contains('\r')) {
        return Fail(number, QStringLiteral("the lines end in CR alone; save the file with CR LF "
                                           "or LF line ends"));
    }
    return true;
}

bool ICalendarReader::ReadNonBlankLine(QByteArray& line, int& number) {
    while (ReadPhysicalLine(line, number)) {
        if (!line.isEmpty()) {
            return true;
        }
    }
    return false;
}

// Lines that begin with a blank or a tab continue the line before them. Blank
// lines between such pieces, which some older programs write, are skipped and
// counted; blank lines between properties are skipped silently.
bool ICalendarReader::NextContentLine(QByteArray& line, int& number) {
    if (!havePending_ && !ReadNonBlankLine(pending_, pendingNumber_)) {
        return false;
    }
    line = pending_;
    number = pendingNumber_;
    havePending_ = false;
    QByteArray next;
    int nextNumber = 0;
    LineTally blanks;  // the blank lines since the last piece
    while (ReadPhysicalLine(next, nextNumber)) {
        if (next.isEmpty()) {
            blanks.Add(nextNumber);
            continue;
        }
        if (!next.startsWith(' ') && !next.startsWith('\t')) {
            pending_ = next;
            pendingNumber_ = nextNumber;
            havePending_ = true;
            break;
        }
        if (line.size() + next.size() > kLongestLine) {
            return Fail(number, QStringLiteral("the line is longer than 16 MB"));
        }
        blankInFold_.Add(blanks.First, blanks.Count);
        blanks = {};
        line += next.mid(1);
    }
    MakeUtf8(line, number);
    return !Failed();
}

// A line that is not UTF-8 comes from an older program that wrote
// Windows-1252; libical is given it in UTF-8.
void ICalendarReader::MakeUtf8(QByteArray& line, int number) {
    if (!QByteArrayView(line).isValidUtf8()) {
        line = DecodeCp1252(line).toUtf8();
        notUtf8_.Add(number);
    }
}

void ICalendarReader::LineTally::Add(int line, int count) {
    if (count > 0 && Count == 0) {
        First = line;
    }
    Count += count;
}

void ICalendarReader::LineTally::Report(const QString& what, QStringList& warnings) const {
    if (Count == 0) {
        return;
    }
    QString text = QStringLiteral("line %1: %2").arg(First).arg(what);
    if (Count > 1) {
        text += QStringLiteral(" (and %1 more like it)").arg(Count - 1);
    }
    warnings << text;
}

QStringList ICalendarReader::TextWarnings() const {
    std::vector<std::pair<const LineTally*, QString>> kinds = {
        {&blankInFold_, QStringLiteral("a blank line inside a folded line is skipped")},
        {&notUtf8_, QStringLiteral("a line that is not UTF-8 is read as Windows-1252")}};
    // In the order of the lines they name.
    std::sort(kinds.begin(), kinds.end(),
              [](const auto& a, const auto& b) { return a.first->First < b.first->First; });
    QStringList warnings;
    for (const auto& [tally, words] : kinds) {
        tally->Report(words, warnings);
    }
    return warnings;
}

// A property without a value says nothing: many programs write
// "DESCRIPTION:", which libical refuses, so it is passed over. An empty RDATE
// or EXDATE adds or takes away no date and is passed over with a warning; any
// other empty property that says when an event happens stops the reading.
bool ICalendarReader::PassesOverEmpty(const QByteArray& line, int number) {
    const QByteArray name = PropertyName(line);
    const bool listsDates = name == "RDATE" || name == "EXDATE";
    if (!HasNoValue(line) && !(listsDates && HasBlankValue(line))) {
        return false;
    }
    if (listsDates) {
        warnings_.emplace_back(number,
                               QStringLiteral("%1 has no value").arg(QString::fromUtf8(name)));
        return true;
    }
    return !DecidesTimes(line);
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
                                    ? kNotCalendarStart
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
        if (!PassesOverEmpty(line, number)) {
            TakeError("VCALENDAR", number, line, LineError("VCALENDAR", line));
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
    if (PassesOverEmpty(line, number)) {
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

QString ICalendarReader::RawValue(const QByteArray& name) const {
    int depth = 0;
    for (const NumberedLine& numbered : componentLines_) {
        const QByteArray& line = numbered.second;
        if (!NameAfter(line, "BEGIN").isEmpty()) {
            ++depth;
        } else if (!NameAfter(line, "END").isEmpty()) {
            --depth;
        } else if (depth == 1 && PropertyName(line) == name) {
            return QString::fromUtf8(line.mid(ValueStart(line))).trimmed();
        }
    }
    return {};
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
            if (!TakeError(kind, numbered.first, numbered.second, error)) {
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

bool ICalendarReader::TakeError(const QByteArray& kind, int number, const QByteArray& line,
                                const QString& error) {
    if (error.isEmpty()) {
        return true;
    }
    if (DecidesTimes(line)) {
        return Fail(number, StopReason(kind, line));
    }
    warnings_.emplace_back(number, error);
    return true;
}

}  // namespace kelvane::cal
