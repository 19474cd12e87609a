#pragma once

#include <QString>

#include "gui/DrawingSurface.h"

// How the month grid fits texts into its cells, measured in the surface's
// current font.
namespace kelvane {

// The longest start of `text` whose width is at most `width` (the text itself
// when it fits, an empty text when not even one character does). A width of 0
// or less leaves the text as it is. The cut falls between graphemes: a letter
// keeps its combining marks, an emoji sequence or a flag stays whole.
QString FitText(const DrawingSurface& surface, const QString& text, double width);

// The same cut made the plain way, one grapheme at a time from the end. Slow
// on long texts; kept to check FitText against.
QString FitTextByCharacters(const DrawingSurface& surface, const QString& text, double width);

// Whether the whole text is at most `width` wide. Long texts that do not fit
// are told apart without measuring all of them.
bool TextFits(const DrawingSurface& surface, const QString& text, double width);

// The text up to and including its last blank (one that carries no combining
// mark); the whole text when it has no such blank; "0" for an empty text.
QString CutAtLastBlank(const QString& text);

// Where a text starts to be centred in `width`: width / 2 - text width / 2,
// rounded to the nearest integer, halves to even.
double CentreOffset(const DrawingSurface& surface, double width, const QString& text);

}  // namespace kelvane
