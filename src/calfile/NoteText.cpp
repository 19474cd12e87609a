#include "calfile/NoteText.h"

#include <QStringList>

#include "calfile/Conversions.h"
#include "calfile/Records.h"

namespace kelvane {

namespace {

// Calls `line` with each line of `note` in turn: CR LF, a lone CR and a lone LF
// each end one, as WithCrLfBreaks makes them all CR LF.
template <typename LineFunction>
void ForEachNoteLine(QStringView note, LineFunction&& line) {
    qsizetype start = 0;
    for (qsizetype i = 0; i < note.size(); ++i) {
        const QChar c = note[i];
        if (c != u'\r' && c != u'\n') {
            continue;
        }
        line(note.sliced(start, i - start));
        if (c == u'\r' && i + 1 < note.size() && note[i + 1] == u'\n') {
            ++i;
        }
        start = i + 1;
    }
    line(note.sliced(start));
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
    qint64 lineCount = 0;
    ForEachNoteLine(text, [&lineCount](QStringView) { ++lineCount; });
    out.WriteNumber(1);
    out.WriteNumber(lineCount - 1);
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
