// A box given a new text through ShowPlainText ends as one given it through
// setPlainText: same text, formats, blocks, caret, selection and scrolling.
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>

#include <gtest/gtest.h>

#include "report/PlainTextShown.h"
#include "support/EveryScript.h"

namespace kelvane {
namespace {

using testing::kEveryScript;

QString NumberedLines(int first, int last) {
    QStringList lines;
    for (int i = first; i <= last; ++i) {
        lines << QStringLiteral("line %1").arg(i);
    }
    return lines.join(QLatin1Char('\n'));
}

class PlainTextShownTest : public ::testing::Test {
  protected:
    PlainTextShownTest() {
        for (QPlainTextEdit* box : {&updated, &remade}) {
            box->setReadOnly(true);
            box->resize(300, 200);
            box->show();
        }
    }

    // Both boxes show `before`, scrolled down with some text selected, then
    // get `after`: one the quick way, the other through setPlainText.
    void Change(const QString& before, const QString& after) {
        for (QPlainTextEdit* box : {&updated, &remade}) {
            box->setPlainText(before);
            QTextCursor selection(box->document());
            selection.setPosition(static_cast<int>(before.size() / 2));
            selection.setPosition(static_cast<int>(before.size()), QTextCursor::KeepAnchor);
            box->setTextCursor(selection);
        }
        ShowPlainText(updated, before, after);
        remade.setPlainText(after);
    }

    void ExpectTheSame() const {
        EXPECT_EQ(updated.toPlainText(), remade.toPlainText());
        EXPECT_EQ(updated.document()->toHtml(), remade.document()->toHtml());
        EXPECT_EQ(updated.blockCount(), remade.blockCount());
        for (QTextBlock a = updated.document()->begin(), b = remade.document()->begin();
             a.isValid() && b.isValid(); a = a.next(), b = b.next()) {
            ASSERT_EQ(a.text(), b.text());
            ASSERT_EQ(a.blockFormat(), b.blockFormat());
            ASSERT_EQ(a.charFormat(), b.charFormat());
        }
        EXPECT_EQ(updated.textCursor().position(), remade.textCursor().position());
        EXPECT_EQ(updated.textCursor().anchor(), remade.textCursor().anchor());
        EXPECT_EQ(updated.textCursor().charFormat(), remade.textCursor().charFormat());
        EXPECT_EQ(updated.document()->isModified(), remade.document()->isModified());
        EXPECT_EQ(updated.document()->isUndoAvailable(), remade.document()->isUndoAvailable());
        EXPECT_EQ(updated.verticalScrollBar()->value(), remade.verticalScrollBar()->value());
        EXPECT_EQ(updated.verticalScrollBar()->maximum(), remade.verticalScrollBar()->maximum());
        EXPECT_EQ(updated.horizontalScrollBar()->value(), remade.horizontalScrollBar()->value());
    }

    QPlainTextEdit updated;
    QPlainTextEdit remade;
};

TEST_F(PlainTextShownTest, TheSameTextLeavesTheBoxAsIfGivenAgain) {
    Change(NumberedLines(1, 200), NumberedLines(1, 200));
    ExpectTheSame();
}

TEST_F(PlainTextShownTest, OneChangedLineInTheMiddle) {
    QString after = NumberedLines(1, 200);
    after.replace(QStringLiteral("line 100\n"), QStringLiteral("changed\n"));
    Change(NumberedLines(1, 200), after);
    ExpectTheSame();
}

TEST_F(PlainTextShownTest, LinesAddedAtTheEnd) {
    Change(NumberedLines(1, 150), NumberedLines(1, 200));
    ExpectTheSame();
}

TEST_F(PlainTextShownTest, LinesTakenFromTheEnd) {
    Change(NumberedLines(1, 200), NumberedLines(1, 150));
    ExpectTheSame();
}

TEST_F(PlainTextShownTest, TheFirstAndLastLinesChanged) {
    Change(NumberedLines(1, 200),
           QStringLiteral("top\n") + NumberedLines(2, 199) + QStringLiteral("\nbottom"));
    ExpectTheSame();
}

TEST_F(PlainTextShownTest, AnEmptyLineAddedAndOneTaken) {
    Change(QStringLiteral("a\nb\n\nc\nd\ne\nf"), QStringLiteral("a\n\nb\nc\nd\ne\nf"));
    ExpectTheSame();
}

TEST_F(PlainTextShownTest, TextInEveryScriptWithAnEmojiChangedInItsSecondHalf) {
    const QString before = NumberedLines(1, 5) + QLatin1Char('\n') + kEveryScript;
    QString after = before;
    after.replace(QStringLiteral("\U0001F389"), QStringLiteral("\U0001F38A"));
    Change(before, after);
    ExpectTheSame();
}

TEST_F(PlainTextShownTest, AWhollyNewText) {
    Change(NumberedLines(1, 200), NumberedLines(301, 350));
    ExpectTheSame();
}

TEST_F(PlainTextShownTest, ToAndFromNothing) {
    Change(NumberedLines(1, 20), QString());
    ExpectTheSame();
    Change(QString(), NumberedLines(1, 20));
    ExpectTheSame();
}

TEST_F(PlainTextShownTest, ABoxThatDoesNotHoldTheShownTextGetsTheWholeText) {
    updated.setPlainText(QStringLiteral("something else"));
    ShowPlainText(updated, NumberedLines(1, 3), NumberedLines(1, 4));
    EXPECT_EQ(updated.toPlainText(), NumberedLines(1, 4));
}

}  // namespace
}  // namespace kelvane
