#include "kelvane_cal/ical/ICalReader.h"

#include <algorithm>

namespace kelvane::cal {

ICalendarReader::ICalendarReader(QIODevice& device, Lines lines)
    : device_(device), lines_(lines), parser_(icalparser_new()) {}

bool ICalendarReader::Fail(int line, const QString& problem) {
    if (problemLine_ == 0) {
        problemLine_ = std::max(line, 1);
        problem_ = problem;
    }
    return false;
}

bool ICalendarReader::Next(ComponentPtr& component, int& line) {
    QByteArray content;
    int number = 0;
    while (NextContentLine(content, number)) {
        lastLine_ = number;
        if (IsBlank(content)) {
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
                                    ? NotCalendarStart()
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
    madeTimes_.clear();
    timeKindsSeen_ = 0;
    open_.emplace_back(begin, number);
    componentLines_.emplace_back(number, line);
    AddToParser(line);
    return false;
}

icalcomponent* ICalendarReader::AddToParser(const QByteArray& line) {
    // libical takes the line as changeable; a copy kept for it spares an
    // allocation for every line.
    lineForParser_.assign(line.constData(), static_cast<std::size_t>(line.size()));
    return icalparser_add_line(parser_.get(), lineForParser_.data());
}

// Whether a line of an event is left out of libical's parsing, for the
// import: one it never reads, or a time line made into its property here.
bool ICalendarReader::LeavesOutOfParsing(const QByteArray& line) {
    return lines_ == Lines::ForImport && open_.size() == 1 && open_.front().first == "VEVENT" &&
           (IsUnreadAndSound(line) || TakeTimeLine(line));
}

// Only the first time line of each kind is made here, so that the properties
// of a kind keep the order of their lines.
bool ICalendarReader::TakeTimeLine(const QByteArray& line) {
    const int kind = MayBeTimeLine(line, ICAL_DTSTART_PROPERTY) ? 1
                     : MayBeTimeLine(line, ICAL_DTEND_PROPERTY) ? 2
                                                                : 0;
    const bool first = kind != 0 && (timeKindsSeen_ & kind) == 0;
    timeKindsSeen_ |= kind;
    PropertyPtr property = first ? PlainTimeProperty(line) : nullptr;
    if (property == nullptr) {
        return false;
    }
    madeTimes_.push_back(std::move(property));
    return true;
}

// Each made property goes before the ones of its kind libical parsed from
// later lines.
void ICalendarReader::AddMadeTimes(icalcomponent* component) {
    for (PropertyPtr& made : madeTimes_) {
        const icalproperty_kind kind = icalproperty_isa(made.get());
        std::vector<icalproperty*> later;
        for (icalproperty* property = icalcomponent_get_first_property(component, kind);
             property != nullptr; property = icalcomponent_get_next_property(component, kind)) {
            later.push_back(property);
        }
        for (icalproperty* property : later) {
            icalcomponent_remove_property(component, property);
        }
        icalcomponent_add_property(component, made.release());
        for (icalproperty* property : later) {
            icalcomponent_add_property(component, property);
        }
    }
    madeTimes_.clear();
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
    if (LeavesOutOfParsing(line)) {
        return false;
    }
    icalcomponent* parsed = AddToParser(line);
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
    if (parsed != nullptr) {
        AddMadeTimes(parsed);
    }
    ComponentPtr finished(parsed);
    if (finished != nullptr && FirstParseError(finished.get()).isEmpty()) {
        component = std::move(finished);
        return true;
    }
    const QByteArray kind = componentLines_.front().second.mid(6).trimmed().toUpper();
    if (finished == nullptr) {
        parser_.reset(icalparser_new());
        return Fail(begunOn,
                    QStringLiteral("libical cannot read the %1").arg(QString::fromUtf8(kind)));
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
