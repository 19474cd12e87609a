#include "report/LineTextAccessible.h"

#include <algorithm>

#include "report/LineTextView.h"

namespace kelvane {

namespace {

// What the text at an offset outside the text reports.
constexpr WrappedLines::Span kNoUnit{-1, -1};

// The character, word, sentence, row or line around `offset`, or the whole
// text. A line is a row as wrapped on screen, as in Qt's text boxes; a
// paragraph is a line of the text.
WrappedLines::Span UnitAround(LineTextView& view, qsizetype offset,
                              QAccessible::TextBoundaryType type) {
    const WrappedLines& lines = view.Lines();
    switch (type) {
        case QAccessible::CharBoundary:
            return lines.SegmentAt(QTextBoundaryFinder::Grapheme, offset);
        case QAccessible::WordBoundary:
            return lines.SegmentAt(QTextBoundaryFinder::Word, offset);
        case QAccessible::SentenceBoundary:
            return lines.SegmentAt(QTextBoundaryFinder::Sentence, offset);
        case QAccessible::LineBoundary:
            return view.RowAround(offset);
        case QAccessible::ParagraphBoundary: {
            const int line = lines.LineAt(offset);
            return {lines.LineStart(line), lines.LineStop(line)};
        }
        case QAccessible::NoBoundary:
            break;
    }
    return {0, lines.Text().size()};
}

QAccessibleInterface* LineTextFactory(const QString&, QObject* object) {
    if (auto* view = dynamic_cast<LineTextView*>(object)) {
        return new LineTextAccessible(view);
    }
    return nullptr;
}

}  // namespace

void InstallLineTextAccessible() {
    static const bool installed = [] {
        QAccessible::installFactory(&LineTextFactory);
        return true;
    }();
    static_cast<void>(installed);
}

LineTextAccessible::LineTextAccessible(LineTextView* view)
    : QAccessibleWidget(view, QAccessible::EditableText) {}

LineTextView* LineTextAccessible::View() const {
    return static_cast<LineTextView*>(widget());
}

QAccessible::State LineTextAccessible::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.readOnly = true;
    state.editable = false;
    state.multiLine = true;
    state.selectableText = true;
    return state;
}

QString LineTextAccessible::text(QAccessible::Text type) const {
    if (type == QAccessible::Value) {
        return View()->toPlainText();
    }
    return QAccessibleWidget::text(type);
}

void* LineTextAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TextInterface) {
        return static_cast<QAccessibleTextInterface*>(this);
    }
    return QAccessibleWidget::interface_cast(type);
}

void LineTextAccessible::selection(int selectionIndex, int* startOffset, int* endOffset) const {
    const bool exists = selectionIndex == 0 && View()->hasSelection();
    *startOffset = exists ? static_cast<int>(View()->selectionStart()) : 0;
    *endOffset = exists ? static_cast<int>(View()->selectionEnd()) : 0;
}

int LineTextAccessible::selectionCount() const {
    return View()->hasSelection() ? 1 : 0;
}

void LineTextAccessible::addSelection(int startOffset, int endOffset) {
    setSelection(0, startOffset, endOffset);
}

void LineTextAccessible::removeSelection(int selectionIndex) {
    if (selectionIndex == 0) {
        View()->select(View()->cursorPosition(), View()->cursorPosition());
    }
}

void LineTextAccessible::setSelection(int selectionIndex, int startOffset, int endOffset) {
    if (selectionIndex == 0) {
        View()->select(startOffset, endOffset);
    }
}

int LineTextAccessible::cursorPosition() const {
    return static_cast<int>(View()->cursorPosition());
}

void LineTextAccessible::setCursorPosition(int position) {
    View()->select(position, position);
}

QString LineTextAccessible::text(int startOffset, int endOffset) const {
    const QString& all = View()->toPlainText();
    const qsizetype start = std::clamp<qsizetype>(startOffset, 0, all.size());
    const qsizetype end = std::clamp<qsizetype>(endOffset, start, all.size());
    return all.sliced(start, end - start);
}

// The unit around `offset`; for an offset outside the text, none.
std::optional<WrappedLines::Span> LineTextAccessible::UnitAt(
    int offset, QAccessible::TextBoundaryType boundaryType) const {
    if (offset < 0 || offset > View()->toPlainText().size()) {
        return std::nullopt;
    }
    return UnitAround(*View(), offset, boundaryType);
}

QString LineTextAccessible::textBeforeOffset(int offset, QAccessible::TextBoundaryType boundaryType,
                                             int* startOffset, int* endOffset) const {
    const std::optional<WrappedLines::Span> at = UnitAt(offset, boundaryType);
    if (!at || at->start == 0) {
        return Give(at ? WrappedLines::Span{} : kNoUnit, startOffset, endOffset);
    }
    return Give(UnitAround(*View(), at->start - 1, boundaryType), startOffset, endOffset);
}

QString LineTextAccessible::textAfterOffset(int offset, QAccessible::TextBoundaryType boundaryType,
                                            int* startOffset, int* endOffset) const {
    const std::optional<WrappedLines::Span> at = UnitAt(offset, boundaryType);
    const qsizetype size = View()->toPlainText().size();
    if (!at || at->end >= size) {
        return Give(at ? WrappedLines::Span{size, size} : kNoUnit, startOffset, endOffset);
    }
    return Give(UnitAround(*View(), at->end, boundaryType), startOffset, endOffset);
}

QString LineTextAccessible::textAtOffset(int offset, QAccessible::TextBoundaryType boundaryType,
                                         int* startOffset, int* endOffset) const {
    return Give(UnitAt(offset, boundaryType).value_or(kNoUnit), startOffset, endOffset);
}

// The unit's text, its ends given back; no text for kNoUnit.
QString LineTextAccessible::Give(WrappedLines::Span unit, int* startOffset, int* endOffset) const {
    *startOffset = static_cast<int>(unit.start);
    *endOffset = static_cast<int>(unit.end);
    return unit.start < 0 ? QString()
                          : View()->toPlainText().sliced(unit.start, unit.end - unit.start);
}

int LineTextAccessible::characterCount() const {
    return static_cast<int>(View()->toPlainText().size());
}

QRect LineTextAccessible::characterRect(int offset) const {
    const QRect rect = View()->CharacterRect(offset);
    return rect.translated(View()->viewport()->mapToGlobal(QPoint(0, 0)));
}

int LineTextAccessible::offsetAtPoint(const QPoint& point) const {
    const QPoint local = View()->viewport()->mapFromGlobal(point);
    if (!View()->viewport()->rect().contains(local)) {
        return -1;
    }
    return static_cast<int>(View()->OffsetAt(local));
}

void LineTextAccessible::scrollToSubstring(int startIndex, int) {
    View()->ScrollToOffset(startIndex);
}

QString LineTextAccessible::attributes(int offset, int* startOffset, int* endOffset) const {
    *startOffset = offset;
    *endOffset = offset;
    return QString();
}

}  // namespace kelvane
