#pragma once

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QString>

#include <functional>

// Boxes that stop taking text at the length of the field their text is stored
// in, so that nothing typed is cut away later without a word.
namespace kelvane {

// How many characters (UTF-16 code units) a box's text takes where it is stored.
using StoredLength = std::function<qsizetype(QStringView)>;

// Where `after` differs from `before`: the text that went in at `Start`,
// `Length` code units long (in place of whatever it replaced). Never starts or
// ends inside a surrogate pair.
struct Insertion {
    qsizetype Start = 0;
    qsizetype Length = 0;
};
Insertion FindInsertion(QStringView before, QStringView after);

// How much of the inserted text may stay so that `after` takes at most `limit`
// characters as `length` counts them: a start of it that ends between
// graphemes (0 when not even its first grapheme fits).
qsizetype FittingLength(QStringView after, const Insertion& insertion, qsizetype limit,
                        const StoredLength& length);

// The box takes at most `limit` code units: a key pressed at the limit does
// nothing, and of a longer paste only the graphemes that fit go in.
void LimitInput(QLineEdit* box, qsizetype limit);

// The same for a text box, with its text counted by `length`.
void LimitInput(QPlainTextEdit* box, qsizetype limit, StoredLength length);

}  // namespace kelvane
