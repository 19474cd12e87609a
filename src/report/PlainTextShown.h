#pragma once

#include <QString>

class QPlainTextEdit;

namespace kelvane {

// Puts `text` into a plain text box that shows `shown` (what the box was last
// given), leaving the box as setPlainText(text) does: the text, no selection,
// the caret at the start and in view, no undo step, not modified. Only the
// stretch where the two texts differ is replaced: the box keeps the blocks of
// the lines they share instead of making every line anew. A box whose document
// does not hold `shown` gets the whole text.
void ShowPlainText(QPlainTextEdit& box, const QString& shown, const QString& text);

}  // namespace kelvane
