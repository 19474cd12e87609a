#pragma once

#include <QString>
#include <QStringList>

#include "calfile/LineReader.h"
#include "calfile/LineWriter.h"

// A date's note as a calendar file holds it.
namespace kelvane {

// The line break of a stored note.
inline constexpr QLatin1String kNoteLineBreak{"\r\n"};

// Every line break of a note, whether CR LF, a lone CR or a lone LF, as CR LF.
QString WithCrLfBreaks(const QString& text);

// The note's lines, split at its line breaks of any kind: one empty line for
// an empty note, and an empty last line after a trailing break.
QStringList NoteLines(const QString& note);

// A text whose line breaks are single LFs, as a text box holds it, in the
// stored form: each LF a note's line break (a lone CR is left as it is).
QString NoteFromLfBreaks(QString text);
// The stored note with each of its line breaks a single LF, for a text box.
QString NoteWithLfBreaks(QString note);

// The note section of a date in a calendar file: 0 for an empty note, or 1,
// the number of line breaks, and the note's lines. The note is trimmed first.
void WriteNoteSection(LineWriter& out, const QString& note);
// Reads a note section into `note` (line breaks as CR LF, cut to 800
// characters; a break count below 0 gives an empty note). False, with `note`
// untouched, when the section is damaged or the file ends inside it.
bool ReadNoteSection(LineReader& in, QString& note);

}  // namespace kelvane
