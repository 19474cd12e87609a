#include "report/LineTextView.h"

#include <QAccessible>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QScrollBar>
#include <QStyleHints>

#include <algorithm>

#include "report/LineTextAccessible.h"

namespace kelvane {

namespace {

// A menu entry's text as Qt's text boxes write it, with its shortcut after a
// tab where the platform shows shortcuts in context menus.
QString MenuText(const char* text, QKeySequence::StandardKey key) {
    QString entry = QCoreApplication::translate("QWidgetTextControl", text);
    if (!QCoreApplication::testAttribute(Qt::AA_DontShowShortcutsInContextMenus) &&
        QGuiApplication::styleHints()->showShortcutsInContextMenus()) {
        entry += u'\t' + QKeySequence(key).toString(QKeySequence::NativeText);
    }
    return entry;
}

}  // namespace

LineTextView::LineTextView(QWidget* parent) : QAbstractScrollArea(parent) {
    InstallLineTextAccessible();
    setFocusPolicy(Qt::WheelFocus);
    setAttribute(Qt::WA_InputMethodEnabled, false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setBackgroundRole(QPalette::Base);
    viewport()->setAutoFillBackground(true);
    viewport()->setCursor(Qt::IBeamCursor);
    verticalScrollBar()->setSingleStep(1);
    TakeFormat();
}

void LineTextView::setPlainText(const QString& text) {
    const QString before = lines_.Text();
    lines_.SetText(text);
    anchor_ = 0;
    position_ = 0;
    dragUnit_ = DragUnit::Character;
    dragging_ = false;
    autoScroll_.stop();
    UpdateScrollRange();
    verticalScrollBar()->setValue(0);
    viewport()->update();
    if (QAccessible::isActive()) {
        QAccessibleTextUpdateEvent event(this, 0, before, text);
        QAccessible::updateAccessibility(&event);
    }
}

QString LineTextView::selectedText() const {
    return lines_.Text().sliced(selectionStart(), selectionEnd() - selectionStart());
}

void LineTextView::select(qsizetype anchor, qsizetype position) {
    const qsizetype size = lines_.Text().size();
    SetSelection(std::clamp<qsizetype>(anchor, 0, size), std::clamp<qsizetype>(position, 0, size));
}

void LineTextView::selectAll() {
    SetSelection(0, lines_.Text().size());
}

void LineTextView::copy() const {
    if (hasSelection()) {
        QGuiApplication::clipboard()->setText(selectedText());
    }
}

QMenu* LineTextView::createStandardContextMenu() {
    auto* menu = new QMenu(this);
    QAction* copyAction =
        menu->addAction(MenuText("&Copy", QKeySequence::Copy), this, [this] { copy(); });
    copyAction->setObjectName(QStringLiteral("edit-copy"));
    copyAction->setEnabled(hasSelection());
    menu->addSeparator();
    QAction* all = menu->addAction(MenuText("Select All", QKeySequence::SelectAll), this,
                                   [this] { selectAll(); });
    all->setObjectName(QStringLiteral("select-all"));
    all->setEnabled(!lines_.Text().isEmpty());
    return menu;
}

void LineTextView::ScrollToOffset(qsizetype offset) {
    const int line = lines_.LineAt(std::clamp<qsizetype>(offset, 0, lines_.Text().size()));
    const int rows = lines_.Layout(line).lineCount();
    const int first = lines_.FirstRow(line);
    UpdateScrollRange();
    QScrollBar* bar = verticalScrollBar();
    if (first < bar->value()) {
        bar->setValue(first);
    } else if (first + rows > bar->value() + VisibleRows()) {
        bar->setValue(first + rows - VisibleRows());
    }
}

void LineTextView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    TakeFormat();
}

void LineTextView::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        TakeFormat();
    }
}

void LineTextView::scrollContentsBy(int, int) {
    viewport()->update();
}

// Lays the text out anew for the widget's font and the viewport's width,
// keeping the line at the top in its place. The lines on screen are laid out
// at once: the scroll range then counts their rows at the new width, and
// showing or hiding the scroll bar for it does not flip back at the next paint.
void LineTextView::TakeFormat() {
    const int topLine = lines_.RowAt(TopRow()).line;
    const qreal width = std::max(1, viewport()->width() - 2 * TextMargin);
    if (lines_.SetFormat(font(), width)) {
        verticalScrollBar()->setValue(lines_.FirstRow(topLine));
        ForEachLineOnScreen([](int, const QTextLayout&, int) {});
        UpdateScrollRange();
        verticalScrollBar()->setValue(lines_.FirstRow(topLine));
        viewport()->update();
    }
}

// The range lets the last row come up to the bottom, and no further.
void LineTextView::UpdateScrollRange() {
    QScrollBar* bar = verticalScrollBar();
    const int visible = VisibleRows();
    bar->setPageStep(visible);
    bar->setRange(0, std::max(0, lines_.RowCount() - visible));
}

int LineTextView::VisibleRows() const {
    return std::max(1, (viewport()->height() - 2 * TextMargin) / lines_.RowHeight());
}

int LineTextView::TopRow() const {
    return verticalScrollBar()->value();
}

// Lays out the last page's lines first, so that the end really is the end.
void LineTextView::ScrollToEnd() {
    const int visible = VisibleRows();
    int rows = 0;
    for (int line = lines_.LineCount() - 1; line >= 0 && rows < visible; --line) {
        rows += lines_.Layout(line).lineCount();
    }
    UpdateScrollRange();
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

void LineTextView::keyPressEvent(QKeyEvent* event) {
    if (event == QKeySequence::Copy) {
        copy();
        return;
    }
    if (event == QKeySequence::SelectAll) {
        selectAll();
        ShareSelection();
        return;
    }
    QScrollBar* bar = verticalScrollBar();
    const bool back = event->modifiers().testFlag(Qt::ShiftModifier);
    switch (event->key()) {
        case Qt::Key_Up:
            return bar->triggerAction(QAbstractSlider::SliderSingleStepSub);
        case Qt::Key_Down:
            return bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
        case Qt::Key_PageUp:
            return bar->triggerAction(QAbstractSlider::SliderPageStepSub);
        case Qt::Key_PageDown:
            return bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
        case Qt::Key_Space:
            return bar->triggerAction(back ? QAbstractSlider::SliderPageStepSub
                                           : QAbstractSlider::SliderPageStepAdd);
        case Qt::Key_Home:
            return bar->setValue(0);
        case Qt::Key_End:
            return ScrollToEnd();
        default:
            event->ignore();
    }
}

void LineTextView::contextMenuEvent(QContextMenuEvent* event) {
    QMenu* menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(event->globalPos());
}

void LineTextView::timerEvent(QTimerEvent* event) {
    if (event->timerId() == autoScroll_.timerId()) {
        DragTo(dragPoint_);
    } else if (event->timerId() == tripleClick_.timerId()) {
        tripleClick_.stop();
    } else {
        QAbstractScrollArea::timerEvent(event);
    }
}

}  // namespace kelvane
