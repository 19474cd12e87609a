#include "report/PlainTextShown.h"

#include <QPlainTextEdit>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

namespace kelvane {

namespace {

// The stretch of the old text that differs from the new, and its replacement.
struct Difference {
    qsizetype start = 0;
    qsizetype oldEnd = 0;
    qsizetype newEnd = 0;
};

Difference Differing(QStringView before, QStringView after) {
    const qsizetype shorter = std::min(before.size(), after.size());
    const auto head = std::mismatch(before.begin(), before.begin() + shorter, after.begin());
    const qsizetype start = head.first - before.begin();
    // The tail shared by both, never reaching back into the shared head.
    const auto tail =
        std::mismatch(before.rbegin(), before.rend() - start, after.rbegin(), after.rend() - start);
    const qsizetype shared = std::min(tail.first - before.rbegin(), tail.second - after.rbegin());
    return {start, before.size() - shared, after.size() - shared};
}

// The same stretch widened to whole lines, so that no cut falls inside a line
// (or between the halves of a surrogate pair).
Difference WholeLines(const Difference& change, QStringView before) {
    const qsizetype lineStart = before.first(change.start).lastIndexOf(u'\n') + 1;
    qsizetype lineEnd = before.indexOf(u'\n', change.oldEnd);
    if (lineEnd < 0) {
        lineEnd = before.size();
    }
    return {lineStart, lineEnd, change.newEnd + (lineEnd - change.oldEnd)};
}

// Whether replacing only the stretch is worth it: a fresh document is quicker
// to make than most of the old one is to take apart.
bool WorthKeeping(const Difference& change, qsizetype oldSize) {
    return change.oldEnd - change.start <= oldSize / 2;
}

void ReplaceStretch(QTextDocument& document, const Difference& change, const QString& text) {
    const bool undo = document.isUndoRedoEnabled();
    document.setUndoRedoEnabled(false);  // also empties the undo stack
    QTextCursor edit(&document);
    edit.setPosition(static_cast<int>(change.start));
    edit.setPosition(static_cast<int>(change.oldEnd), QTextCursor::KeepAnchor);
    edit.insertText(text.sliced(change.start, change.newEnd - change.start));
    document.setUndoRedoEnabled(undo);
}

}  // namespace

void ShowPlainText(QPlainTextEdit& box, const QString& shown, const QString& text) {
    QTextDocument& document = *box.document();
    // An empty text, before or after, goes the way setPlainText clears a box.
    if (shown.isEmpty() || text.isEmpty() || document.characterCount() != shown.size() + 1) {
        box.setPlainText(text);
        return;
    }
    const Difference change = Differing(shown, text);
    if (!WorthKeeping(change, shown.size())) {
        box.setPlainText(text);
        return;
    }
    if (change.oldEnd != change.start || change.newEnd != change.start) {
        ReplaceStretch(document, WholeLines(change, shown), text);
    }
    document.setModified(false);
    box.setTextCursor(QTextCursor(&document));
    box.ensureCursorVisible();
}

}  // namespace kelvane
