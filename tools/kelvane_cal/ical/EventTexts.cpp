#include "kelvane_cal/ical/EventTexts.h"

#include <QCryptographicHash>
#include <QList>
#include <QSet>

#include <algorithm>

namespace kelvane::cal {

namespace {

const QByteArray kICalLineEnd = "\r\n";

// The lines of a text as they stand, folds kept, without their line ends.
QList<QByteArray> RawLines(const QByteArray& text) {
    QList<QByteArray> lines;
    for (QByteArray line : text.split('\n')) {
        if (line.endsWith('\r')) {
            line.chop(1);
        }
        if (!line.isEmpty()) {
            lines.append(line);
        }
    }
    return lines;
}

bool IsFolded(const QByteArray& line) {
    return line.startsWith(' ') || line.startsWith('\t');
}

QByteArray Joined(const QList<QByteArray>& lines) {
    QByteArray text;
    for (const QByteArray& line : lines) {
        text += line + kICalLineEnd;
    }
    return text;
}

}  // namespace

namespace {

// Lines as RawLines gives them, folded lines joined again.
QList<QByteArray> Unfolded(const QList<QByteArray>& raw) {
    QList<QByteArray> lines;
    lines.reserve(raw.size());
    for (const QByteArray& line : raw) {
        if (IsFolded(line) && !lines.isEmpty()) {
            lines.last() += line.mid(1);
        } else {
            lines.append(line);
        }
    }
    return lines;
}

// The lines of an iCalendar text, folded lines joined again.
QList<QByteArray> UnfoldedLines(const QByteArray& text) {
    return Unfolded(RawLines(text));
}

// Whether a property is the stamp, whatever the case of its name.
bool IsStamp(const QByteArray& line) {
    static constexpr char kStamp[] = "DTSTAMP";
    const qsizetype length = sizeof(kStamp) - 1;
    if (line.size() < length) {
        return false;
    }
    for (qsizetype index = 0; index < length; ++index) {
        // The name's letters in either case; the mask folds nothing else onto them.
        if ((static_cast<unsigned char>(line[index]) & 0xdfU) !=
            static_cast<unsigned char>(kStamp[index])) {
            return false;
        }
    }
    return true;
}

QByteArray HashOfUnfolded(QList<QByteArray> lines) {
    lines.removeIf(IsStamp);
    std::sort(lines.begin(), lines.end());
    return QCryptographicHash::hash(Joined(lines), QCryptographicHash::Sha256).toHex();
}

// One event, from its raw lines, as a calendar of its own under `header`.
EventText OneEvent(const QByteArray& header, const QList<QByteArray>& raw) {
    EventText text;
    text.Text = header + Joined(raw) + "END:VCALENDAR" + kICalLineEnd;
    const QList<QByteArray> lines = Unfolded(raw);
    for (const QByteArray& property : lines) {
        if (property.startsWith("UID:")) {
            text.Uid = QString::fromUtf8(property.mid(4));
        }
    }
    text.Hash = HashOfUnfolded(lines);
    return text;
}

}  // namespace

QByteArray EventHash(const QByteArray& text) {
    return HashOfUnfolded(UnfoldedLines(text));
}

std::vector<EventText> SplitEvents(const QByteArray& calendar) {
    std::vector<EventText> events;
    QList<QByteArray> header;
    QByteArray headerText;  // the header joined, once the first event is read
    QList<QByteArray> event;
    bool inEvent = false;
    for (const QByteArray& line : RawLines(calendar)) {
        if (line == "BEGIN:VEVENT") {
            inEvent = true;
            event = {line};
        } else if (inEvent) {
            event.append(line);
            if (line == "END:VEVENT") {
                inEvent = false;
                if (events.empty()) {
                    headerText = Joined(header);
                }
                events.push_back(OneEvent(headerText, event));
            }
        } else if (events.empty() && line != "END:VCALENDAR") {
            header.append(line);
        }
    }
    return events;
}

QByteArray JoinCalendars(const std::vector<QByteArray>& calendars) {
    QByteArray joined = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Kelvane//kelvane-cal//EN\r\n";
    QSet<QByteArray> zones;
    for (const QByteArray& calendar : calendars) {
        int depth = 0;
        QList<QByteArray> component;
        for (const QByteArray& line : RawLines(calendar)) {
            if (!IsFolded(line) && line.startsWith("BEGIN:")) {
                ++depth;
            }
            if (depth >= 2) {
                component.append(line);
            }
            if (!IsFolded(line) && line.startsWith("END:")) {
                --depth;
                if (depth == 1) {
                    const QByteArray text = Joined(component);
                    const bool zone = component.first() == "BEGIN:VTIMEZONE";
                    QByteArray zoneId;
                    for (const QByteArray& property : UnfoldedLines(text)) {
                        if (property.startsWith("TZID")) {
                            zoneId = property;
                            break;
                        }
                    }
                    if (!zone) {
                        joined += text;
                    } else if (!zones.contains(zoneId)) {
                        joined += text;
                        zones.insert(zoneId);
                    }
                    component.clear();
                }
            }
        }
    }
    return joined + "END:VCALENDAR\r\n";
}

}  // namespace kelvane::cal
