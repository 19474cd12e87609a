#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <cmath>

#include "report/LineTextView.h"

namespace kelvane {

// Draws the lines on screen; rows found on the way widen the scroll range.
// Only a line's rows in the area to paint are drawn: one long line can wrap
// into more rows than the screen holds.
void LineTextView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::Text));
    const QRectF area(event->rect());
    ForEachLineOnScreen([&](int line, const QTextLayout& layout, int y) {
        layout.draw(&painter, QPointF(TextMargin, y), SelectionIn(line), area);
    });
    UpdateScrollRange();
}

// The lines from the top row down to the viewport's bottom, each laid out as
// it comes, with the y of its first row.
void LineTextView::ForEachLineOnScreen(
    const std::function<void(int, const QTextLayout&, int)>& visit) {
    const int rowHeight = lines_.RowHeight();
    const WrappedLines::Row top = lines_.RowAt(TopRow());
    int y = TextMargin - top.inLine * rowHeight;
    for (int line = top.line; line < lines_.LineCount() && y < viewport()->height(); ++line) {
        const QTextLayout& layout = lines_.Layout(line);
        visit(line, layout, y);
        y += layout.lineCount() * rowHeight;
    }
}

// The selection's stretch on the line, in the palette's highlight colours.
// A selected line break counts too: the layout marks it after the text.
QList<QTextLayout::FormatRange> LineTextView::SelectionIn(int line) const {
    const qsizetype start = lines_.LineStart(line);
    const qsizetype from = std::max(selectionStart(), start);
    const qsizetype to = std::min(selectionEnd(), lines_.LineStop(line));
    if (from >= to) {
        return {};
    }
    QTextLayout::FormatRange range;
    range.start = static_cast<int>(from - start);
    range.length = static_cast<int>(to - from);
    range.format.setBackground(palette().brush(QPalette::Highlight));
    range.format.setForeground(palette().brush(QPalette::HighlightedText));
    return {range};
}

// Lays the line out where it may be off screen: a line above the top that
// turns out to wrap would push the lines on screen down, so the scroll bar
// moves by as many rows and they stay where they are.
const QTextLayout& LineTextView::LayoutInPlace(int line) {
    const WrappedLines::Row top = lines_.RowAt(TopRow());
    const QTextLayout& layout = lines_.Layout(line);
    const int topRow = lines_.FirstRow(top.line) + top.inLine;
    if (topRow != TopRow()) {
        UpdateScrollRange();
        verticalScrollBar()->setValue(topRow);
    }
    return layout;
}

QRect LineTextView::CharacterRect(qsizetype offset) {
    if (offset < 0 || offset > lines_.Text().size()) {
        return {};
    }
    const int line = lines_.LineAt(offset);
    const auto inLine = static_cast<int>(offset - lines_.LineStart(line));
    const QTextLayout& layout = LayoutInPlace(line);
    const QTextLine row = layout.lineForTextPosition(inLine);
    if (!row.isValid()) {
        return {};
    }
    const qreal left = row.cursorToX(inLine);
    const qreal right = inLine < layout.text().size() ? row.cursorToX(inLine + 1) : left;
    const int y =
        TextMargin + (lines_.FirstRow(line) + row.lineNumber() - TopRow()) * lines_.RowHeight();
    const int x = TextMargin + static_cast<int>(std::floor(std::min(left, right)));
    const int width = std::max(1, static_cast<int>(std::ceil(std::abs(right - left))));
    return QRect(x, y, width, lines_.RowHeight());
}

WrappedLines::Span LineTextView::RowAround(qsizetype offset) {
    const int line = lines_.LineAt(std::clamp<qsizetype>(offset, 0, lines_.Text().size()));
    const qsizetype start = lines_.LineStart(line);
    const QTextLayout& layout = LayoutInPlace(line);
    const QTextLine row = layout.lineForTextPosition(static_cast<int>(offset - start));
    if (!row.isValid() || row.lineNumber() == layout.lineCount() - 1) {
        return {row.isValid() ? start + row.textStart() : start, lines_.LineStop(line)};
    }
    return {start + row.textStart(), start + row.textStart() + row.textLength()};
}

qsizetype LineTextView::OffsetAt(QPoint point, QTextLine::CursorPosition at) {
    const auto fromTop = static_cast<int>(
        std::floor(static_cast<double>(point.y() - TextMargin) / lines_.RowHeight()));
    const int row = TopRow() + fromTop;
    if (row < 0) {
        return 0;
    }
    if (row >= lines_.RowCount()) {
        return lines_.Text().size();
    }
    const WrappedLines::Row found = lines_.RowAt(row);
    const QTextLayout& layout = lines_.Layout(found.line);
    const QTextLine textRow = layout.lineAt(std::min(found.inLine, layout.lineCount() - 1));
    return lines_.LineStart(found.line) + textRow.xToCursor(point.x() - TextMargin, at);
}

}  // namespace kelvane
