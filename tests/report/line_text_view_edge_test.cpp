// The line view at the edges: texts that are huge or odd, boxes that are tiny,
// and a new text arriving while the mouse is busy.
#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>

#include "report/LineTextViewFixture.h"

namespace kelvane::line_text_view_test {
namespace {

// Many words, enough to wrap into several rows in the fixture's box.
QString LongLine(int words) {
    QStringList list;
    for (int i = 0; i < words; ++i) {
        list << QStringLiteral("word%1").arg(i);
    }
    return list.join(u' ');
}

TEST_F(LineTextViewTest, OneLineOfThirtyTwoThousandCharactersWrapsAtEverySize) {
    const QString text(32000, u'x');
    view.setPlainText(text);
    Paint();
    Key(Qt::Key_End);
    Paint();
    Key(Qt::Key_PageUp);
    Paint();
    EXPECT_GT(view.Lines().RowCount(), 100);
    view.resize(40, 40);
    Paint();
    view.resize(0, 0);
    Paint();
    view.selectAll();
    Paint();
    EXPECT_EQ(view.selectedText(), text);
}

TEST_F(LineTextViewTest, TheMostLinesInABoxOfOnePixelScrollToTheirEnd) {
    view.setPlainText(NumberedLines(32767) + u'\n');
    view.resize(1, 1);
    Paint();
    Key(Qt::Key_End, Qt::ControlModifier);
    Paint();
    Key(Qt::Key_Home, Qt::ControlModifier);
    Paint();
    view.resize(300, 200);
    Key(Qt::Key_End);
    Paint();
    EXPECT_EQ(Bar()->value(), Bar()->maximum());
}

TEST_F(LineTextViewTest, ANewTextInTheMiddleOfADragEndsIt) {
    view.setPlainText(NumberedLines(300));
    Paint();
    Press(OnRow(1));
    DragTo(QPoint(10, Port()->height() + 30));
    QTest::qWait(120);
    view.setPlainText(QStringLiteral("short"));
    DragTo(QPoint(10, Port()->height() + 30));
    QTest::qWait(120);
    Release(QPoint(10, 10));
    EXPECT_LE(view.selectionEnd(), 5);
    QTest::mouseDClick(Port(), Qt::LeftButton, {}, OnRow(0, 20));
    view.setPlainText(QString());
    Press(OnRow(0));
    DragTo(OnRow(3));
    Release(OnRow(3));
    EXPECT_FALSE(view.hasSelection());
}

TEST_F(LineTextViewTest, AButtonLetGoOverAnotherWindowStopsTheScrolling) {
    view.setPlainText(NumberedLines(300));
    Paint();
    Press(OnRow(0));
    DragTo(QPoint(20, Port()->height() + 20));
    QTRY_VERIFY(Bar()->value() >= 2);
    QWidget other;
    other.resize(50, 50);
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
    QTest::mouseRelease(&other, Qt::LeftButton, {}, QPoint(10, 10));
    QTest::qWait(120);
    Bar()->setValue(0);
    QTest::qWait(150);
    EXPECT_EQ(Bar()->value(), 0);
}

TEST_F(LineTextViewTest, AScreenReaderAsksAtEveryOffsetAndBeyond) {
    const QString text = QStringLiteral("a\u0301b \U0001F600x\n\nend. more\n");
    for (const QString& each : {QString(), text}) {
        view.setPlainText(each);
        QAccessibleTextInterface* face =
            QAccessible::queryAccessibleInterface(&view)->textInterface();
        const int size = static_cast<int>(each.size());
        for (int offset = -2; offset <= size + 2; ++offset) {
            for (auto type : {QAccessible::CharBoundary, QAccessible::WordBoundary,
                              QAccessible::SentenceBoundary, QAccessible::ParagraphBoundary,
                              QAccessible::LineBoundary, QAccessible::NoBoundary}) {
                int start = 0;
                int end = 0;
                face->textAtOffset(offset, type, &start, &end);
                EXPECT_LE(start, end);
                face->textBeforeOffset(offset, type, &start, &end);
                EXPECT_LE(start, end);
                face->textAfterOffset(offset, type, &start, &end);
                EXPECT_LE(start, end);
            }
            static_cast<void>(face->characterRect(offset));
        }
    }
}

TEST_F(LineTextViewTest, AScreenReaderLookingAboveTheBoxLeavesWhatIsShown) {
    QStringList lines;
    for (int i = 0; i < 200; ++i) {
        lines << LongLine(12);
    }
    view.setPlainText(lines.join(u'\n'));
    Paint();
    Bar()->setValue(150);
    Paint();
    const qsizetype top = view.OffsetAt(OnRow(0));
    QAccessibleTextInterface* face = QAccessible::queryAccessibleInterface(&view)->textInterface();
    static_cast<void>(face->characterRect(static_cast<int>(view.Lines().LineStart(100))));
    Paint();
    EXPECT_EQ(view.OffsetAt(OnRow(0)), top);
}

TEST_F(LineTextViewTest, ABiggerFontKeepsTheTopLineInPlace) {
    view.setPlainText(NumberedLines(500));
    Paint();
    Bar()->setValue(200);
    Paint();
    const qsizetype top = view.OffsetAt(OnRow(0));
    QFont font = view.font();
    font.setPointSize(font.pointSize() * 2);
    view.setFont(font);
    Paint();
    EXPECT_EQ(view.OffsetAt(OnRow(0)), top);
}

TEST_F(LineTextViewTest, AScreenReaderReadsAWrappedLineRowByRow) {
    const QString wrapped = LongLine(20);
    view.setPlainText(wrapped + QStringLiteral("\nnext"));
    Paint();
    const QTextLayout& layout = view.Lines().Layout(0);
    ASSERT_GT(layout.lineCount(), 1);
    const QTextLine first = layout.lineAt(0);
    const QTextLine last = layout.lineAt(layout.lineCount() - 1);
    const auto firstEnd = first.textLength();
    QAccessibleTextInterface* face = QAccessible::queryAccessibleInterface(&view)->textInterface();
    int start = -1;
    int end = -1;
    EXPECT_EQ(face->textAtOffset(2, QAccessible::LineBoundary, &start, &end),
              wrapped.first(firstEnd));
    EXPECT_EQ(start, 0);
    EXPECT_EQ(end, firstEnd);
    EXPECT_EQ(face->textAfterOffset(2, QAccessible::LineBoundary, &start, &end),
              layout.lineCount() == 2 ? wrapped.sliced(firstEnd) + u'\n'
                                      : wrapped.sliced(firstEnd, layout.lineAt(1).textLength()));
    EXPECT_EQ(start, firstEnd);
    EXPECT_EQ(face->textAtOffset(static_cast<int>(wrapped.size()), QAccessible::LineBoundary,
                                 &start, &end),
              wrapped.sliced(last.textStart()) + u'\n');
    EXPECT_EQ(face->textAfterOffset(static_cast<int>(wrapped.size()), QAccessible::LineBoundary,
                                    &start, &end),
              "next");
    EXPECT_EQ(face->textBeforeOffset(static_cast<int>(wrapped.size()) + 2,
                                     QAccessible::LineBoundary, &start, &end),
              wrapped.sliced(last.textStart()) + u'\n');
    EXPECT_EQ(face->textAtOffset(2, QAccessible::ParagraphBoundary, &start, &end), wrapped + u'\n');
}

TEST_F(LineTextViewTest, CtrlAAlsoFillsTheSelectionClipboard) {
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (!clipboard->supportsSelection()) {
        GTEST_SKIP() << "no selection clipboard here";
    }
    clipboard->setText(QStringLiteral("before"), QClipboard::Selection);
    view.setPlainText(QStringLiteral("all of it\nand more"));
    Key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(clipboard->text(QClipboard::Selection), "all of it\nand more");
}

}  // namespace
}  // namespace kelvane::line_text_view_test
