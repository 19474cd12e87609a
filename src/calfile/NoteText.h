#pragma once

#include <QString>

#include "calfile/LineReader.h"
#include "calfile/LineWriter.h"

// A date's note as a calendar file holds it.
namespace kelvane {

// Every line break of a note, whether CR LF, a lone CR or a lone LF, as CR LF.
QString WithCrLfBreaks(const QString& text);

// The note section of a date in a calendar file: 0 for an empty note, or 1,
// the number of line breaks, and the note's lines. The note is trimmed first.
void WriteNoteSection(LineWriter& out, const QString& note);
// Reads a note section into `note` (line breaks as CR LF, cut to 800
// characters; a break count below 0 gives an empty note). False, with `note`
// untouched, when the section is damaged or the file ends inside it.
bool ReadNoteSection(LineReader& in, QString& note);

}  // namespace kelvane
