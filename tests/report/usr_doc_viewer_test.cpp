#include <QTest>

#include <gtest/gtest.h>

#include <memory>

#include "report/DocViewerFixture.h"

namespace kelvane::doc_viewer_test {
namespace {

// --- the control ---

TEST_F(DocViewerTest, HoldsAReadOnlyTextBoxNamedTxtDocument) {
    LineTextView* box = Box();
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(box->isReadOnly());
    EXPECT_EQ(box->parentWidget(), &viewer);
    EXPECT_TRUE(viewer.objectName().isEmpty());
    EXPECT_TRUE(viewer.Initialize());
    EXPECT_EQ(viewer.GetLineCount(), 0);
    EXPECT_TRUE(viewer.OverflowFilePath().isEmpty());
    EXPECT_EQ(viewer.OverflowFileNumber(), 0);
}

TEST_F(DocViewerTest, TheViewerAndItsBoxAreNamedReportUntilGivenAName) {
    EXPECT_EQ(viewer.accessibleName(), "Report");
    EXPECT_EQ(Box()->accessibleName(), "Report");
    viewer.SetSpokenName(QStringLiteral("Comming up"));
    EXPECT_EQ(viewer.accessibleName(), "Comming up");
    EXPECT_EQ(Box()->accessibleName(), "Comming up");
}

TEST_F(DocViewerTest, TheBoxFillsTheControlAtEverySize) {
    viewer.resize(300, 200);
    viewer.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&viewer));
    EXPECT_EQ(Box()->geometry(), QRect(0, 0, 300, 200));
    viewer.resize(420, 150);
    EXPECT_EQ(Box()->geometry(), QRect(0, 0, 420, 150));
}

// --- lines in memory ---

TEST_F(DocViewerTest, ALongLineKeepsItsFirst80Characters) {
    const QString line = QString(60, QLatin1Char('a')) + QString(40, QLatin1Char('b'));
    ASSERT_TRUE(viewer.AddLine(line));
    EXPECT_EQ(viewer.GetLine(1), line.left(80));
    EXPECT_EQ(viewer.GetLine(1).size(), 80);
}

TEST_F(DocViewerTest, ACutInsideAnEmojiDropsIt) {
    ASSERT_TRUE(viewer.AddLine(QString(79, u'a') + QStringLiteral("\U0001F389")));
    EXPECT_EQ(viewer.GetLine(1), QString(79, u'a') + QLatin1Char(' '));
}

TEST_F(DocViewerTest, TextInEveryScriptIsKeptAndShown) {
    ASSERT_TRUE(viewer.AddLine(kEveryScript));
    EXPECT_EQ(viewer.GetLine(1), Padded(kEveryScript));
    viewer.RefreshDisplay();
    EXPECT_EQ(Shown(), kEveryScript);
}

TEST_F(DocViewerTest, AShortLineIsPaddedAndShownTrimmed) {
    ASSERT_TRUE(viewer.AddLine(QStringLiteral("Hello")));
    EXPECT_EQ(viewer.GetLine(1), Padded(QStringLiteral("Hello")));
    viewer.RefreshDisplay();
    EXPECT_EQ(Shown(), QStringLiteral("Hello"));
}

TEST_F(DocViewerTest, AddingCountsLinesButDoesNotRedraw) {
    ASSERT_TRUE(viewer.AddLine(QStringLiteral("one")));
    ASSERT_TRUE(viewer.AddLine(QString()));
    EXPECT_EQ(viewer.GetLineCount(), 2);
    EXPECT_EQ(viewer.GetLine(2), Padded(QString()));
    EXPECT_EQ(Shown(), QString());
}

TEST_F(DocViewerTest, NumbersOutsideTheLinesGiveNothing) {
    AddNumberedLines(3);
    EXPECT_EQ(viewer.GetLine(0), QString());
    EXPECT_EQ(viewer.GetLine(-1), QString());
    EXPECT_EQ(viewer.GetLine(4), QString());
    EXPECT_EQ(viewer.GetLine(usrDocViewer::MostLines), QString());
    EXPECT_EQ(viewer.GetLine(3), Padded(QStringLiteral("line 3")));
}

// --- the display ---

TEST_F(DocViewerTest, TheLastLineShownHasNoLineBreakAfterIt) {
    AddNumberedLines(3);
    viewer.RefreshDisplay();
    EXPECT_EQ(Shown(), QStringLiteral("line 1\nline 2\nline 3"));
    EXPECT_FALSE(Shown().endsWith(QLatin1Char('\n')));
}

TEST_F(DocViewerTest, LinesAreShownWithoutLeadingAndTrailingBlanks) {
    ASSERT_TRUE(viewer.AddLine(QStringLiteral("   indented   ")));
    ASSERT_TRUE(viewer.AddLine(QStringLiteral("  a  b  ")));
    viewer.RefreshDisplay();
    EXPECT_EQ(Shown(), QStringLiteral("indented\na  b"));
}

TEST_F(DocViewerTest, BlankLinesStayAsEmptyLines) {
    ASSERT_TRUE(viewer.AddLine(QStringLiteral("top")));
    ASSERT_TRUE(viewer.AddLine(QStringLiteral("     ")));
    ASSERT_TRUE(viewer.AddLine(QStringLiteral("bottom")));
    viewer.RefreshDisplay();
    EXPECT_EQ(Shown(), QStringLiteral("top\n\nbottom"));
}

TEST_F(DocViewerTest, OneLineIsShownWithoutABreak) {
    ASSERT_TRUE(viewer.AddLine(QStringLiteral("only")));
    viewer.RefreshDisplay();
    EXPECT_EQ(Shown(), QStringLiteral("only"));
}

TEST_F(DocViewerTest, NoLinesShowNothing) {
    viewer.RefreshDisplay();
    EXPECT_EQ(Shown(), QString());
    ASSERT_TRUE(viewer.AddLine(QStringLiteral("gone")));
    viewer.RefreshDisplay();
    viewer.ClearLines();
    viewer.RefreshDisplay();
    EXPECT_EQ(Shown(), QString());
}

// --- clearing ---

TEST_F(DocViewerTest, ClearingForgetsTheLinesButLeavesTheBox) {
    AddNumberedLines(2);
    viewer.RefreshDisplay();
    viewer.ClearLines();
    EXPECT_EQ(viewer.GetLineCount(), 0);
    EXPECT_EQ(viewer.GetLine(1), QString());
    EXPECT_EQ(Shown(), QStringLiteral("line 1\nline 2"));
    viewer.RefreshDisplay();
    EXPECT_EQ(Shown(), QString());
}

TEST_F(DocViewerTest, LinesAddedAfterClearingReplaceTheOldOnes) {
    AddNumberedLines(2);
    viewer.ClearLines();
    ASSERT_TRUE(viewer.AddLine(QStringLiteral("new")));
    EXPECT_EQ(viewer.GetLineCount(), 1);
    EXPECT_EQ(viewer.GetLine(1), Padded(QStringLiteral("new")));
    EXPECT_EQ(viewer.GetLine(2), QString());
}

}  // namespace
}  // namespace kelvane::doc_viewer_test
