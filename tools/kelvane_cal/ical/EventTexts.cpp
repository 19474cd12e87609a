#include "kelvane_cal/ical/EventTexts.h"

#include <QCryptographicHash>
#include <QList>
#include <QSet>

#include <algorithm>

namespace kelvane::cal {

namespace {

const QByteArray kICalLineEnd = "\r\n";

// The lines of an iCalendar text, folded lines joined again.
QList<QByteArray> UnfoldedLines(const QByteArray& text) {
    QList<QByteArray> lines;
    for (QByteArray line : text.split('\n')) {
        if (line.endsWith('\r')) {
            line.chop(1);
        }
        if ((line.startsWith(' ') || line.startsWith('\t')) && !lines.isEmpty()) {
            lines.last() += line.mid(1);
        } else if (!line.isEmpty()) {
            lines.append(line);
        }
    }
    return lines;
}

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

QByteArray EventHash(const QByteArray& text) {
    QList<QByteArray> lines;
    for (const QByteArray& line : UnfoldedLines(text)) {
        if (!line.toUpper().startsWith("DTSTAMP")) {
            lines.append(line);
        }
    }
    std::sort(lines.begin(), lines.end());
    return QCryptographicHash::hash(Joined(lines), QCryptographicHash::Sha256).toHex();
}

std::vector<EventText> SplitEvents(const QByteArray& calendar) {
    std::vector<EventText> events;
    QList<QByteArray> header;
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
                EventText text;
                text.Text = Joined(header) + Joined(event) + "END:VCALENDAR" + kICalLineEnd;
                text.Hash = EventHash(Joined(event));
                for (const QByteArray& property : UnfoldedLines(Joined(event))) {
                    if (property.startsWith("UID:")) {
                        text.Uid = QString::fromUtf8(property.mid(4));
                    }
                }
                events.push_back(std::move(text));
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
