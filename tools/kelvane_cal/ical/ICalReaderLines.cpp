#include <QByteArrayView>

#include <algorithm>
#include <utility>

#include "kelvane_cal/ical/ContentLines.h"
#include "kelvane_cal/ical/ICalReader.h"

#include "calfile/Cp1252.h"

// The reader's lines: read one by one, unfolded, and made UTF-8.
namespace kelvane::cal {

namespace {

// Longer lines are not iCalendar that anyone writes; they are refused rather
// than read into memory.
constexpr qint64 kLongestLine = 16 * 1024 * 1024;

constexpr qint64 kChunkSize = 16 * 1024;

}  // namespace

// The bytes of the next line with its line end, read from the file in
// chunks: false when a line is longer than kLongestLine.
bool ICalendarReader::TakeRawLine(QByteArray& line) {
    line.clear();
    for (;;) {
        if (chunkAt_ >= chunk_.size()) {
            chunk_ = device_.read(kChunkSize);
            chunkAt_ = 0;
            if (chunk_.isEmpty()) {
                return true;
            }
        }
        const qsizetype newline = chunk_.indexOf('\n', chunkAt_);
        const qsizetype end = newline < 0 ? chunk_.size() : newline + 1;
        if (line.isEmpty()) {
            line = QByteArray(chunk_.constData() + chunkAt_, end - chunkAt_);
        } else {
            line.append(chunk_.constData() + chunkAt_, end - chunkAt_);
        }
        chunkAt_ = end;
        if (line.size() > kLongestLine) {
            return false;
        }
        if (newline >= 0) {
            return true;
        }
    }
}

bool ICalendarReader::ReadPhysicalLine(QByteArray& line, int& number) {
    if (Failed() || (chunkAt_ >= chunk_.size() && device_.atEnd())) {
        return false;
    }
    number = ++physicalLine_;
    // Read in chunks, so that a line costs what it holds.
    if (!TakeRawLine(line)) {
        return Fail(number, QStringLiteral("the line is longer than 16 MB"));
    }
    while (line.endsWith('\n') || line.endsWith('\r')) {
        line.chop(1);
    }
    if (number == 1 && line.startsWith("\xEF\xBB\xBF")) {
        line.remove(0, 3);  // a byte order mark
    }
    // The first text decides whether this is iCalendar at all: a binary file
    // is refused as such, not for the CRs it happens to hold.
    if (!sawText_ && !IsBlank(line)) {
        sawText_ = true;
        const qsizetype firstCr = line.indexOf('\r');
        if (NameAfter(firstCr < 0 ? line : line.left(firstCr), "BEGIN") != "VCALENDAR") {
            return Fail(number, NotCalendarStart());
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
    line = std::move(pending_);
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
            pending_ = std::move(next);
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
    // Most lines have a value, and their names are not needed.
    if (!HasNoValue(line) && !HasBlankValue(line)) {
        return false;
    }
    const QByteArray name = PropertyName(line);
    const bool listsDates = name == "RDATE" || name == "EXDATE";
    if (!HasNoValue(line) && !listsDates) {
        return false;
    }
    if (listsDates) {
        warnings_.emplace_back(number,
                               QStringLiteral("%1 has no value").arg(QString::fromUtf8(name)));
        return true;
    }
    return !DecidesTimes(line);
}

}  // namespace kelvane::cal
