#pragma once

#include <QString>
#include <QtGlobal>

#include <optional>

// The number and text conversions every part of Kelvane shares: how typed
// text becomes a number, how numbers are rounded, and the form numbers take in
// display lines.
namespace kelvane {

// The numeric value at the start of a text. Blanks, tabs and line feeds are
// skipped wherever they stand; an optional sign, digits with an optional
// decimal point and an optional exponent (E or D) are read up to the first
// character that does not fit. Text that does not start with a number gives 0.
// A value too large for a double gives plus or minus infinity.
double Val(const QString& text);

// True when the whole text, apart from surrounding blanks and tabs, is one
// finite number: optional sign, digits with an optional decimal point (at least
// one digit), optional exponent. An empty text is not numeric.
bool IsNumeric(const QString& text);

// Rounds to the nearest integer, halves to the even neighbour (2.5 -> 2, 3.5 -> 4).
double RoundHalfEven(double value);

// The rounded value as a 16-bit or 32-bit integer; empty when it does not fit
// (or is not a number), where a plain conversion would overflow.
std::optional<qint16> ToInteger16(double value);
std::optional<qint32> ToInteger32(double value);

// Val rounded to a 16-bit integer; 0 when the value does not fit.
qint16 Val16(const QString& text);

// A number as display lines join it: a leading blank for values that are not
// negative, a minus sign otherwise (" 3", "-3").
QString Str(qint64 value);

// Blank removal as the document does it: only the space character counts as
// blank; tabs and line breaks are kept.
QString Trim(const QString& text);
QString LTrim(const QString& text);
QString RTrim(const QString& text);
// The same without a copy: the stretch of `text` between its end blanks.
QStringView TrimmedView(QStringView text);

// The first `length` characters (UTF-16 code units) of a text, as every
// fixed-length field keeps them. A cut never splits a grapheme: when the last
// one that would be kept reaches past `length` (an emoji's second code unit, a
// combining accent, the rest of a ZWJ sequence or a flag) it is left out whole,
// and the text is that much shorter than `length`.
QString CutText(const QString& text, qsizetype length);

}  // namespace kelvane
