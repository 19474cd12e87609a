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

void LineTextView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    const QPoint point = event->position().toPoint();
    const qsizetype at = OffsetAt(point);
    if (tripleClick_.isActive() && (point - tripleClickPoint_).manhattanLength() <
                                       QGuiApplication::styleHints()->startDragDistance()) {
        tripleClick_.stop();
        SelectLineAt(at);
        return;
    }
    SetSelection(event->modifiers().testFlag(Qt::ShiftModifier) ? anchor_ : at, at);
    dragging_ = true;
}

// Moves the selection's end to the mouse, scrolling while it is beyond the
// viewport's top or bottom.
void LineTextView::mouseMoveEvent(QMouseEvent* event) {
    if (!dragging_ || !event->buttons().testFlag(Qt::LeftButton)) {
        return;
    }
    dragPoint_ = event->position().toPoint();
    SetSelection(anchor_, OffsetAt(dragPoint_));
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
    autoScroll_.stop();
    if (dragging_) {
        dragging_ = false;
        ShareSelection();
    }
}

// Selects the word under the mouse; a press soon after selects its line.
void LineTextView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    dragging_ = false;
    tripleClickPoint_ = event->position().toPoint();
    SelectWordAt(OffsetAt(tripleClickPoint_, QTextLine::CursorOnCharacter));
    tripleClick_.start(QGuiApplication::styleHints()->mouseDoubleClickInterval(), this);
}

// One line's scroll towards the drag point, and the selection's end after it.
void LineTextView::DragTo(QPoint point) {
    QScrollBar* bar = verticalScrollBar();
    if (point.y() < 0) {
        bar->triggerAction(QAbstractSlider::SliderSingleStepSub);
    } else if (point.y() >= viewport()->height()) {
        bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    }
    SetSelection(anchor_, OffsetAt(point));
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

// Past a line's end, the line's last word.
void LineTextView::SelectWordAt(qsizetype offset) {
    const int line = lines_.LineAt(offset);
    if (offset == lines_.LineEnd(line) && offset > lines_.LineStart(line)) {
        --offset;
    }
    const WrappedLines::Span word = lines_.SegmentAt(QTextBoundaryFinder::Word, offset);
    SetSelection(word.start, word.end);
    ShareSelection();
}

// The whole line and its line break, as a triple click selects.
void LineTextView::SelectLineAt(qsizetype offset) {
    const int line = lines_.LineAt(offset);
    SetSelection(lines_.LineStart(line), lines_.LineStop(line));
    ShareSelection();
}

}  // namespace kelvane
