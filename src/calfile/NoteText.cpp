#include "calfile/NoteText.h"

#include <QStringList>

#include "calfile/Conversions.h"
#include "calfile/Records.h"

namespace kelvane {

namespace {

bool IsBreak(char16_t c) {
    return c == u'\r' || c == u'\n';
}

// Where the first CR or LF at or after `from` is; `size` when there is none.
// Whole blocks are checked first, in a loop the compiler vectorises, and only
// the block holding a break is looked through unit by unit.
qsizetype NextBreak(const char16_t* text, qsizetype from, qsizetype size) {
    constexpr qsizetype kBlock = 16;
    qsizetype i = from;
    for (; i + kBlock <= size; i += kBlock) {
        bool found = false;
        for (qsizetype k = 0; k < kBlock; ++k) {
            found |= IsBreak(text[i + k]);
        }
        if (found) {
            break;
        }
    }
    while (i < size && !IsBreak(text[i])) {
        ++i;
    }
    return i;
}

// Calls `line` with each line of `note` in turn: CR LF, a lone CR and a lone LF
// each end one, as WithCrLfBreaks makes them all CR LF.
template <typename LineFunction>
void ForEachNoteLine(QStringView note, LineFunction&& line) {
    const char16_t* const text = note.utf16();
    const qsizetype size = note.size();
    qsizetype start = 0;
    for (qsizetype i = NextBreak(text, 0, size); i < size; i = NextBreak(text, start, size)) {
        line(note.sliced(start, i - start));
        const bool crLf = text[i] == u'\r' && i + 1 < size && text[i + 1] == u'\n';
        start = i + (crLf ? 2 : 1);
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
