#include "kelvane_cal/ical/EventTexts.h"

#include <QCryptographicHash>
#include <QList>
#include <QSet>

#include <algorithm>
#include <cstring>
#include <list>

namespace kelvane::cal {

namespace {

const QByteArray kICalLineEnd = "\r\n";

// Calls `use` with each line of a text as it stands, folds kept, without its
// line end; empty lines are left out.
template <typename Use>
void ForEachRawLine(QByteArrayView text, const Use& use) {
    const char* const data = text.data();
    for (qsizetype start = 0; start < text.size();) {
        const void* found = std::memchr(data + start, '\n', text.size() - start);
        const qsizetype end =
            found != nullptr ? static_cast<const char*>(found) - data : text.size();
        QByteArrayView line(data + start, end - start);
        if (line.endsWith('\r')) {
            line.chop(1);
        }
        if (!line.isEmpty()) {
            use(line);
        }
        start = end + 1;
    }
}

// The lines of a text as they stand, folds kept, without their line ends.
QList<QByteArray> RawLines(const QByteArray& text) {
    QList<QByteArray> lines;
    ForEachRawLine(text, [&lines](QByteArrayView line) { lines.append(line.toByteArray()); });
    return lines;
}

bool IsFolded(QByteArrayView line) {
    return line.startsWith(' ') || line.startsWith('\t');
}

void AppendLine(QByteArray& text, QByteArrayView line) {
    text.append(line).append(kICalLineEnd);
}

QByteArray Joined(const QList<QByteArray>& lines) {
    QByteArray text;
    for (const QByteArray& line : lines) {
        AppendLine(text, line);
    }
    return text;
}

// Lines as ForEachRawLine gives them, folded lines joined again. A line that
// is not folded stays a view of the text; one that is points into `joined`.
std::vector<QByteArrayView> Unfolded(const std::vector<QByteArrayView>& raw,
                                     std::list<QByteArray>& joined) {
    std::vector<QByteArrayView> lines;
    lines.reserve(raw.size());
    bool lastJoined = false;
    for (const QByteArrayView line : raw) {
        if (IsFolded(line) && !lines.empty()) {
            if (!lastJoined) {
                joined.push_back(lines.back().toByteArray());
                lastJoined = true;
            }
            joined.back().append(line.sliced(1));
            lines.back() = joined.back();
        } else {
            lines.push_back(line);
            lastJoined = false;
        }
    }
    return lines;
}

// The lines of an iCalendar text, folded lines joined again.
QList<QByteArray> UnfoldedLines(const QByteArray& text) {
    std::vector<QByteArrayView> raw;
    ForEachRawLine(text, [&raw](QByteArrayView line) { raw.push_back(line); });
    std::list<QByteArray> joined;
    QList<QByteArray> lines;
    for (const QByteArrayView line : Unfolded(raw, joined)) {
        lines.append(line.toByteArray());
    }
    return lines;
}

// Whether a property is the stamp, whatever the case of its name.
bool IsStamp(QByteArrayView line) {
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

// The hash of the lines without the stamp, sorted, each with its line end.
QByteArray HashOfUnfolded(std::vector<QByteArrayView> lines) {
    lines.erase(std::remove_if(lines.begin(), lines.end(), IsStamp), lines.end());
    std::sort(lines.begin(), lines.end());
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const QByteArrayView line : lines) {
        hash.addData(line);
        hash.addData(kICalLineEnd);
    }
    return hash.result().toHex();
}

// One event, from its raw lines, as a calendar of its own under `header`.
EventText OneEvent(const QByteArray& header, const std::vector<QByteArrayView>& raw) {
    static const QByteArray kEnd = "END:VCALENDAR" + kICalLineEnd;
    EventText text;
    qsizetype size = header.size() + kEnd.size();
    for (const QByteArrayView line : raw) {
        size += line.size() + kICalLineEnd.size();
    }
    text.Text.reserve(size);
    text.Text.append(QByteArrayView(header));
    for (const QByteArrayView line : raw) {
        AppendLine(text.Text, line);
    }
    text.Text.append(kEnd);
    std::list<QByteArray> joined;
    const std::vector<QByteArrayView> lines = Unfolded(raw, joined);
    for (const QByteArrayView property : lines) {
        if (property.startsWith("UID:")) {
            text.Uid = QString::fromUtf8(property.sliced(4));
        }
    }
    text.Hash = HashOfUnfolded(lines);
    return text;
}

}  // namespace

QByteArray EventHash(const QByteArray& text) {
    std::vector<QByteArrayView> raw;
    ForEachRawLine(text, [&raw](QByteArrayView line) { raw.push_back(line); });
    std::list<QByteArray> joined;
    return HashOfUnfolded(Unfolded(raw, joined));
}

std::vector<EventText> SplitEvents(const QByteArray& calendar) {
    std::vector<EventText> events;
    QByteArray header;  // the lines before the first event, with their line ends
    std::vector<QByteArrayView> event;
    bool inEvent = false;
    ForEachRawLine(calendar, [&](QByteArrayView line) {
        if (line == QByteArrayView("BEGIN:VEVENT")) {
            inEvent = true;
            event.assign(1, line);
        } else if (inEvent) {
            event.push_back(line);
            if (line == QByteArrayView("END:VEVENT")) {
                inEvent = false;
                events.push_back(OneEvent(header, event));
            }
        } else if (events.empty() && line != QByteArrayView("END:VCALENDAR")) {
            AppendLine(header, line);
        }
    });
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
