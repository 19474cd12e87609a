#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyleHints>

#include "report/LineTextView.h"

namespace kelvane {

namespace {

// How often a drag beyond the viewport scrolls it by a line.
constexpr int kAutoScrollMs = 50;

}  // namespace

// A press selects from where it is; with Shift, it moves the selection's end
// there (by words or lines after a double or triple click); soon after a
// double click, it selects the line.
void LineTextView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    const QPoint point = event->position().toPoint();
    const qsizetype at = OffsetAt(point);
    dragging_ = true;
    if (tripleClick_.isActive() && (point - tripleClickPoint_).manhattanLength() <
                                       QGuiApplication::styleHints()->startDragDistance()) {
        tripleClick_.stop();
        dragUnit_ = DragUnit::Line;
        unitClicked_ = UnitAround(at);
        SetSelection(unitClicked_.start, unitClicked_.end);
    } else if (event->modifiers() == Qt::ShiftModifier) {
        ExtendSelectionTo(at);
    } else {
        dragUnit_ = DragUnit::Character;
        SetSelection(at, at);
    }
}

// Moves the selection's end to the mouse, scrolling while it is beyond the
// viewport's top or bottom.
void LineTextView::mouseMoveEvent(QMouseEvent* event) {
    if (!dragging_ || !event->buttons().testFlag(Qt::LeftButton)) {
        return;
    }
    dragPoint_ = event->position().toPoint();
    ExtendSelectionTo(OffsetAt(dragPoint_));
    if (dragPoint_.y() < 0 || dragPoint_.y() >= viewport()->height()) {
        if (!autoScroll_.isActive()) {
            autoScroll_.start(kAutoScrollMs, this);
        }
    } else {
        autoScroll_.stop();
    }
}

void LineTextView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    EndDrag();
}

void LineTextView::EndDrag() {
    autoScroll_.stop();
    if (dragging_) {
        dragging_ = false;
        ShareSelection();
    }
}

// Selects the word under the mouse (nothing on an empty line); a drag from
// there goes by words, and a press soon after selects the line.
void LineTextView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    tripleClickPoint_ = event->position().toPoint();
    const qsizetype at = OffsetAt(tripleClickPoint_, QTextLine::CursorOnCharacter);
    const int line = lines_.LineAt(at);
    dragUnit_ = DragUnit::Word;
    unitClicked_ = lines_.LineStart(line) == lines_.LineEnd(line) ? WrappedLines::Span{at, at}
                                                                  : UnitAround(at);
    SetSelection(unitClicked_.start, unitClicked_.end);
    ShareSelection();
    dragging_ = true;
    tripleClick_.start(QGuiApplication::styleHints()->mouseDoubleClickInterval(), this);
}

// One line's scroll towards the drag point, and the selection's end after it.
// A button let go where the view did not hear it (over a window that came up
// meanwhile) ends the drag.
void LineTextView::DragTo(QPoint point) {
    if (!QGuiApplication::mouseButtons().testFlag(Qt::LeftButton)) {
        EndDrag();
        return;
    }
    QScrollBar* bar = verticalScrollBar();
    if (point.y() < 0) {
        bar->triggerAction(QAbstractSlider::SliderSingleStepSub);
    } else if (point.y() >= viewport()->height()) {
        bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    }
    ExtendSelectionTo(OffsetAt(point));
}

// Moves the selection's end to `offset`; after a double or triple click the
// selection keeps the word or line clicked and grows by whole words or lines.
void LineTextView::ExtendSelectionTo(qsizetype offset) {
    if (dragUnit_ == DragUnit::Character) {
        SetSelection(anchor_, offset);
        return;
    }
    const WrappedLines::Span at = UnitAround(offset);
    if (at.start < unitClicked_.start) {
        SetSelection(unitClicked_.end, at.start);
    } else if (at.end > unitClicked_.end) {
        SetSelection(unitClicked_.start, at.end);
    } else {
        SetSelection(unitClicked_.start, unitClicked_.end);
    }
}

// The word, or the line with its line break, that holds `offset`; past a
// line's end, the line's last word.
WrappedLines::Span LineTextView::UnitAround(qsizetype offset) const {
    const int line = lines_.LineAt(offset);
    if (dragUnit_ == DragUnit::Line) {
        return {lines_.LineStart(line), lines_.LineStop(line)};
    }
    if (offset == lines_.LineEnd(line) && offset > lines_.LineStart(line)) {
        --offset;
    }
    return lines_.SegmentAt(QTextBoundaryFinder::Word, offset);
}

void LineTextView::SetSelection(qsizetype anchor, qsizetype position) {
    if (anchor == anchor_ && position == position_) {
        return;
    }
    anchor_ = anchor;
    position_ = position;
    viewport()->update();
    if (QAccessible::isActive()) {
        QAccessibleTextSelectionEvent event(this, static_cast<int>(selectionStart()),
                                            static_cast<int>(selectionEnd()));
        event.setCursorPosition(static_cast<int>(position_));
        QAccessible::updateAccessibility(&event);
    }
}

// Where the system has a selection clipboard, the selection goes there too.
void LineTextView::ShareSelection() const {
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (hasSelection() && clipboard->supportsSelection()) {
        clipboard->setText(selectedText(), QClipboard::Selection);
    }
}

}  // namespace kelvane
