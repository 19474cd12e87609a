// The line view shows, wraps and scrolls its text as a read-only plain text
// box does.
#include <QLineEdit>
#include <QVBoxLayout>

#include "report/LineTextViewFixture.h"

namespace kelvane::line_text_view_test {
namespace {

// --- the text ---

TEST_F(LineTextViewTest, ShowsTheTextItIsGivenAndThenTheNext) {
    EXPECT_EQ(view.toPlainText(), QString());
    EXPECT_TRUE(view.isReadOnly());
    EXPECT_EQ(view.focusPolicy(), Qt::WheelFocus);
    EXPECT_FALSE(view.testAttribute(Qt::WA_InputMethodEnabled));
    view.setPlainText(QStringLiteral("first\nsecond"));
    EXPECT_EQ(view.toPlainText(), "first\nsecond");
    EXPECT_EQ(view.Lines().LineCount(), 2);
    view.setPlainText(QStringLiteral("other"));
    EXPECT_EQ(view.toPlainText(), "other");
    EXPECT_EQ(view.Lines().LineCount(), 1);
}

TEST_F(LineTextViewTest, ANewTextIsShownFromTheTopWithNothingSelected) {
    view.setPlainText(NumberedLines(200));
    Key(Qt::Key_End);
    view.selectAll();
    ASSERT_GT(Bar()->value(), 0);
    view.setPlainText(NumberedLines(150));
    EXPECT_EQ(Bar()->value(), 0);
    EXPECT_FALSE(view.hasSelection());
    EXPECT_EQ(view.selectionStart(), 0);
    EXPECT_EQ(view.cursorPosition(), 0);
}

TEST_F(LineTextViewTest, EmptyLinesAndALastLineBreakAreLines) {
    view.setPlainText(QStringLiteral("a\n\nb\n"));
    ASSERT_EQ(view.Lines().LineCount(), 4);
    EXPECT_EQ(view.Lines().LineStart(2), 3);
    EXPECT_EQ(view.Lines().LineEnd(1), 2);
    EXPECT_EQ(view.Lines().LineStart(3), 5);
    EXPECT_EQ(view.Lines().LineEnd(3), 5);
}

TEST_F(LineTextViewTest, ThirtyThousandLinesAreTakenAndTheLastReached) {
    const QString text = NumberedLines(30000);
    view.setPlainText(text);
    EXPECT_EQ(view.toPlainText(), text);
    EXPECT_EQ(view.Lines().LineCount(), 30000);
    Key(Qt::Key_End, Qt::ControlModifier);
    Paint();
    const QRect last = view.CharacterRect(text.size() - 1);
    EXPECT_GT(last.top(), 0);
    EXPECT_LE(last.bottom(), Port()->height());
    EXPECT_EQ(view.OffsetAt(OnRow(0)), view.Lines().LineStart(30000 - Bar()->pageStep()));
}

// --- wrapping ---

TEST_F(LineTextViewTest, ALongLineWrapsAtWordsWithinTheWidth) {
    view.resize(120, 200);
    const QString text = QStringLiteral("alpha beta gamma delta epsilon zeta eta theta iota");
    view.setPlainText(text);
    Paint();
    const QTextLayout& layout = view.Lines().Layout(0);
    ASSERT_GT(layout.lineCount(), 2);
    EXPECT_EQ(view.Lines().RowCount(), layout.lineCount());
    for (int i = 0; i + 1 < layout.lineCount(); ++i) {
        const QTextLine row = layout.lineAt(i);
        EXPECT_LE(row.naturalTextWidth(), Port()->width() - 2 * LineTextView::TextMargin);
        EXPECT_EQ(text.at(row.textStart() + row.textLength() - 1), u' ');
    }
    EXPECT_FALSE(view.horizontalScrollBar()->isVisible());
}

TEST_F(LineTextViewTest, AWordWiderThanTheBoxBreaksAnywhere) {
    view.resize(120, 200);
    view.setPlainText(QString(200, u'x'));
    Paint();
    EXPECT_GT(view.Lines().Layout(0).lineCount(), 3);
}

TEST_F(LineTextViewTest, WideningTheBoxUnwrapsTheLines) {
    view.resize(120, 200);
    view.setPlainText(QStringLiteral("alpha beta gamma delta epsilon zeta eta"));
    Paint();
    ASSERT_GT(view.Lines().RowCount(), 1);
    view.resize(600, 200);
    Paint();
    EXPECT_EQ(view.Lines().RowCount(), 1);
}

TEST_F(LineTextViewTest, ABiggerFontMakesTallerRows) {
    const int before = RowHeight();
    QFont font = view.font();
    font.setPointSize(font.pointSize() * 2);
    view.setFont(font);
    EXPECT_GT(RowHeight(), before);
}

// Counts the paints of a widget.
class PaintCounter : public QObject {
  public:
    int paints = 0;

  protected:
    bool eventFilter(QObject*, QEvent* event) override {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

// Lets the posted layout and paint events run, a few rounds.
void Settle() {
    for (int round = 0; round < 4; ++round) {
        QCoreApplication::processEvents();
    }
}

TEST_F(LineTextViewTest, EveryWidthSettlesWithTheScrollBarShownOrNot) {
    QStringList lines;
    for (int i = 0; i < 9; ++i) {
        lines << QStringLiteral("word %1 and some more words to wrap at narrow widths").arg(i);
    }
    view.setPlainText(lines.join(u'\n'));
    PaintCounter counter;
    Port()->installEventFilter(&counter);
    for (int width = 80; width <= 600; width += 13) {
        view.resize(width, 200);
        Settle();
        counter.paints = 0;
        Settle();
        ASSERT_EQ(counter.paints, 0) << width;
    }
}

// --- scrolling ---

TEST_F(LineTextViewTest, TheScrollRangeBringsTheLastLineToTheBottom) {
    view.setPlainText(NumberedLines(100));
    EXPECT_EQ(Bar()->pageStep(), (Port()->height() - 2 * LineTextView::TextMargin) / RowHeight());
    EXPECT_EQ(Bar()->maximum(), 100 - Bar()->pageStep());
    EXPECT_EQ(Bar()->singleStep(), 1);
    Bar()->setValue(Bar()->maximum());
    EXPECT_EQ(view.OffsetAt(OnRow(Bar()->pageStep() - 1)), view.Lines().LineStart(99));
}

TEST_F(LineTextViewTest, WrappedLastLinesAreReachedByEnd) {
    view.resize(120, 200);
    view.setPlainText(NumberedLines(50) + u'\n' + QString(300, u'y'));
    Key(Qt::Key_End);
    Paint();
    const QRect last = view.CharacterRect(view.toPlainText().size() - 1);
    EXPECT_LE(last.bottom(), Port()->height());
    EXPECT_EQ(Bar()->value(), Bar()->maximum());
    EXPECT_EQ(Bar()->maximum(), view.Lines().RowCount() - Bar()->pageStep());
}

TEST_F(LineTextViewTest, KeysScrollByLinesAndPages) {
    view.setPlainText(NumberedLines(100));
    const int page = Bar()->pageStep();
    Key(Qt::Key_Down);
    EXPECT_EQ(Bar()->value(), 1);
    Key(Qt::Key_Up);
    EXPECT_EQ(Bar()->value(), 0);
    Key(Qt::Key_PageDown);
    EXPECT_EQ(Bar()->value(), page);
    Key(Qt::Key_Space);
    EXPECT_EQ(Bar()->value(), 2 * page);
    Key(Qt::Key_Space, Qt::ShiftModifier);
    EXPECT_EQ(Bar()->value(), page);
    Key(Qt::Key_PageUp);
    EXPECT_EQ(Bar()->value(), 0);
    Key(Qt::Key_End);
    EXPECT_EQ(Bar()->value(), Bar()->maximum());
    Key(Qt::Key_Home);
    EXPECT_EQ(Bar()->value(), 0);
    Key(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(Bar()->value(), Bar()->maximum());
    Key(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(Bar()->value(), 0);
}

TEST_F(LineTextViewTest, TheWheelScrollsThreeLines) {
    view.setPlainText(NumberedLines(100));
    const QPoint at = OnRow(1);
    QWheelEvent wheel(at, Port()->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(Port(), &wheel);
    EXPECT_EQ(Bar()->value(), QApplication::wheelScrollLines());
}

TEST_F(LineTextViewTest, TabMovesTheFocusOn) {
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* box = new LineTextView;
    auto* next = new QLineEdit;
    layout->addWidget(box);
    layout->addWidget(next);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    box->setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(box->hasFocus());
    QTest::keyClick(box, Qt::Key_Tab);
    EXPECT_TRUE(next->hasFocus());
}

}  // namespace
}  // namespace kelvane::line_text_view_test
