#include "calfile/NoteText.h"

#include <QStringList>

#include <algorithm>

#include "calfile/Conversions.h"
#include "calfile/Records.h"

namespace kelvane {

namespace {

// The first `c` at or after `from`; the text's size when there is none. Qt
// looks for it many units at a time.
qsizetype NextOf(QStringView text, char16_t c, qsizetype from) {
    const qsizetype at = text.indexOf(QChar(c), from);
    return at < 0 ? text.size() : at;
}

// Calls `line` with each line of `note` in turn: CR LF, a lone CR and a lone LF
// each end one, as WithCrLfBreaks makes them all CR LF. The next CR and the
// next LF are each looked for again only once passed.
template <typename LineFunction>
void ForEachNoteLine(QStringView note, LineFunction&& line) {
    qsizetype start = 0;
    qsizetype cr = NextOf(note, u'\r', 0);
    qsizetype lf = NextOf(note, u'\n', 0);
    for (qsizetype end = std::min(cr, lf); end < note.size(); end = std::min(cr, lf)) {
        line(note.sliced(start, end - start));
        const bool crLf = end == cr && lf == end + 1 && lf < note.size();
        start = end + (crLf ? 2 : 1);
        if (cr < start) {
            cr = NextOf(note, u'\r', start);
        }
        if (lf < start) {
            lf = NextOf(note, u'\n', start);
        }
    }
    line(note.sliced(start));
}

// The lines ForEachNoteLine finds, counted with no branch on the text: one
// more than the breaks, where CR LF is one break and every other CR or LF one.
qint64 CountNoteLines(QStringView note) {
    const char16_t* const text = note.utf16();
    const qsizetype size = note.size();
    qsizetype breaks = 0;
    for (qsizetype i = 0; i < size; ++i) {
        breaks += (text[i] == u'\r') + (text[i] == u'\n');
    }
    for (qsizetype i = 1; i < size; ++i) {
        breaks -= (text[i] == u'\n') & (text[i - 1] == u'\r');
    }
    return breaks + 1;
}

}  // namespace

QString WithCrLfBreaks(const QString& text) {
    QString normal = text;
    normal.replace(kNoteLineBreak, QStringLiteral("\n"));
    normal.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    normal.replace(QLatin1Char('\n'), kNoteLineBreak);
    return normal;
}

QStringList NoteLines(const QString& note) {
    QStringList lines;
    ForEachNoteLine(note, [&lines](QStringView line) { lines.append(line.toString()); });
    return lines;
}

QString NoteFromLfBreaks(QString text) {
    return text.replace(QLatin1Char('\n'), kNoteLineBreak);
}

QString NoteWithLfBreaks(QString note) {
    return note.replace(kNoteLineBreak, QLatin1String("\n"));
}

void WriteNoteSection(LineWriter& out, const QString& note) {
    const QStringView text = TrimmedView(note);
    if (text.isEmpty()) {
        out.WriteNumber(0);
        return;
    }
    out.WriteNumber(1);
    out.WriteNumber(CountNoteLines(text) - 1);
    ForEachNoteLine(text, [&out](QStringView line) { out.WriteText(line); });
}

bool ReadNoteSection(LineReader& in, QString& note) {
    qint16 present = 0;
    if (!in.ReadNumber16(present)) {
        return false;
    }
    if (present < 1) {
        note.clear();
        return true;
    }
    qint16 breaks = 0;
    if (!in.ReadNumber16(breaks)) {
        return false;
    }
    // A note of n line breaks has n + 1 lines, so a count below 0 leaves no
    // lines to read: the note is empty and the next line is what follows it.
    QString text;
    text.reserve(NoteLength + kNoteLineBreak.size());  // room for a whole note at once
    QString line;
    for (int i = 0; i <= breaks; ++i) {
        if (!in.ReadLine(line)) {
            return false;
        }
        // Lines past the note's length are read past but not kept.
        if (text.size() <= NoteLength) {
            if (i > 0) {
                text += kNoteLineBreak;
            }
            text += line;
        }
    }
    note = CutText(text, NoteLength);
    return true;
}

}  // namespace kelvane
