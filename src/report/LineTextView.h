#pragma once

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QPoint>
#include <QString>
#include <QTextLayout>
#include <QTextLine>

#include <algorithm>
#include <functional>

#include "report/WrappedLines.h"

class QMenu;

namespace kelvane {

// A read-only box of plain text that a person reads, scrolls and selects in,
// as in a read-only QPlainTextEdit: lines wrap at the box's width (at word
// boundaries where they can), the keyboard scrolls and the mouse selects, and
// the selection can be copied. The text is kept as one string with the starts
// of its lines; only the lines on screen are laid out, when they are drawn.
class LineTextView : public QAbstractScrollArea {
  public:
    // The gap between the frame and the text, as a text document's margin.
    static constexpr int TextMargin = 4;

    explicit LineTextView(QWidget* parent = nullptr);

    // Nothing in the box can be changed; always true.
    bool isReadOnly() const { return true; }
    QString toPlainText() const { return lines_.Text(); }
    // Shows `text` from its top, with nothing selected.
    void setPlainText(const QString& text);

    // The selection as offsets into the text; start == end when there is none.
    qsizetype selectionStart() const { return std::min(anchor_, position_); }
    qsizetype selectionEnd() const { return std::max(anchor_, position_); }
    bool hasSelection() const { return anchor_ != position_; }
    // The selected text, its line breaks as '\n'.
    QString selectedText() const;
    // Where the selection ends up, where a caret would be: its moving end.
    qsizetype cursorPosition() const { return position_; }
    // Selects from `anchor` to `position` (offsets are kept within the text).
    void select(qsizetype anchor, qsizetype position);
    void selectAll();
    // Puts the selection on the clipboard; nothing without a selection.
    void copy() const;
    // Copy and Select All, as Qt's read-only text boxes offer; the caller
    // owns the menu.
    QMenu* createStandardContextMenu();

    // The text's lines as laid out at the box's width.
    WrappedLines& Lines() { return lines_; }
    // The place of the character at `offset`, in the viewport's coordinates.
    QRect CharacterRect(qsizetype offset);
    // The offset at a point of the viewport: the place between characters
    // nearest to it, or the character under it.
    qsizetype OffsetAt(QPoint point,
                       QTextLine::CursorPosition at = QTextLine::CursorBetweenCharacters);
    // The row (a line as wrapped on screen) holding `offset`; a line's last
    // row takes its line break with it.
    WrappedLines::Span RowAround(qsizetype offset);
    // Scrolls the least that brings the line holding `offset` into view.
    void ScrollToOffset(qsizetype offset);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

  private:
    void TakeFormat();
    const QTextLayout& LayoutInPlace(int line);
    void ForEachLineOnScreen(const std::function<void(int, const QTextLayout&, int)>& visit);
    void UpdateScrollRange();
    int VisibleRows() const;
    int TopRow() const;
    void ScrollToEnd();
    QList<QTextLayout::FormatRange> SelectionIn(int line) const;
    void SetSelection(qsizetype anchor, qsizetype position);
    void ShareSelection() const;
    void DragTo(QPoint point);
    void EndDrag();
    void ExtendSelectionTo(qsizetype offset);
    WrappedLines::Span UnitAround(qsizetype offset) const;

    WrappedLines lines_;
    qsizetype anchor_ = 0;
    qsizetype position_ = 0;
    // What a drag selects by: characters, or after a double or triple click
    // whole words or lines, keeping the one clicked.
    enum class DragUnit { Character, Word, Line };
    DragUnit dragUnit_ = DragUnit::Character;
    WrappedLines::Span unitClicked_;
    bool dragging_ = false;
    QPoint dragPoint_;
    QBasicTimer autoScroll_;
    // Runs for a double-click's time after one: a press in it is a triple click.
    QBasicTimer tripleClick_;
    QPoint tripleClickPoint_;
};

}  // namespace kelvane
