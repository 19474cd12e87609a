#pragma once

#include <QStringView>

#include <vector>

// Where a text may be cut: between graphemes, the characters a reader sees as
// one. A letter with its combining marks, an emoji sequence joined by ZWJ, a
// flag, a Hangul syllable written in jamo and a CR LF line break are each one
// grapheme of several UTF-16 code units; a cut never falls inside them.
namespace kelvane {

// The length of the longest start of `text` that is at most `length` code
// units and ends between two graphemes (0 when the first grapheme is longer).
qsizetype GraphemeCut(QStringView text, qsizetype length);

// Where each grapheme ends, in order; the last is the text's size.
std::vector<qsizetype> GraphemeEnds(QStringView text);

// Whether `position` (0..size) lies between two graphemes. The text's two
// ends do.
bool IsGraphemeBoundary(QStringView text, qsizetype position);

// Where the grapheme that holds the code unit at `position` ends.
qsizetype NextGraphemeEnd(QStringView text, qsizetype position);

// Where the grapheme that holds the code unit before `position` starts.
qsizetype PreviousGraphemeStart(QStringView text, qsizetype position);

// True when every code unit is a grapheme of its own: text of letters below
// U+0300 (Latin, without combining marks) and no CR LF. Such text can be cut
// anywhere, and the rules above need not be looked up.
bool IsOneUnitPerGrapheme(QStringView text);

}  // namespace kelvane
