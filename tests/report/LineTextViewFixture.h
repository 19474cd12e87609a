#pragma once

#include <QApplication>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

#include "report/LineTextView.h"

// A line view on screen at a fixed size, and the mouse and keys to use it.
namespace kelvane::line_text_view_test {

// "line 1" up to "line `count`", one a line.
inline QString NumberedLines(int count) {
    QStringList lines;
    for (int i = 1; i <= count; ++i) {
        lines << QStringLiteral("line %1").arg(i);
    }
    return lines.join(u'\n');
}

class LineTextViewTest : public ::testing::Test {
  protected:
    LineTextViewTest() {
        view.resize(300, 200);
        view.show();
        static_cast<void>(QTest::qWaitForWindowExposed(&view));
    }

    QWidget* Port() const { return view.viewport(); }
    QScrollBar* Bar() const { return view.verticalScrollBar(); }
    int RowHeight() { return view.Lines().RowHeight(); }
    // A point on the row `row` counted from the top of the viewport.
    QPoint OnRow(int row, int x = LineTextView::TextMargin) {
        return {x, LineTextView::TextMargin + row * RowHeight() + RowHeight() / 2};
    }
    // Just inside the left edge of the character at `offset`, half way down.
    QPoint OnCharacter(qsizetype offset) {
        const QRect rect = view.CharacterRect(offset);
        return {rect.left() + 1, rect.center().y()};
    }
    // Draws the view now, laying out the lines on screen.
    void Paint() { static_cast<void>(view.grab()); }

    void Press(QPoint at, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::mousePress(Port(), Qt::LeftButton, modifiers, at);
    }
    // A move with the left button held down.
    void DragTo(QPoint to) {
        QMouseEvent move(QEvent::MouseMove, to, Port()->mapToGlobal(to), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(Port(), &move);
    }
    void Release(QPoint at) { QTest::mouseRelease(Port(), Qt::LeftButton, {}, at); }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(&view, key, modifiers);
    }

    LineTextView view;
};

}  // namespace kelvane::line_text_view_test
