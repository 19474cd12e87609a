// Where the keyboard is when the date editor opens: in Title, so that typing
// at once goes there, with the page shown still Outlook.
#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

#include "support/EditorWorld.h"

namespace kelvane::testing {
namespace {

// The cursor is at the end of the title and nothing is selected, so a key
// typed at once adds to the title and never wipes it; Tab and Shift+Tab go on
// from the box as before.
TEST(EditorOpening, TheDateEditorOpensWithTheCursorAtTheEndOfTheTitle) {
    EditorWorld w;
    w.view.calender->SetDate(2000, 7, 17);
    w.world.calender.CurrentEntry.Title = QStringLiteral("Birthday");
    w.view.calender->UpdateSelectedDate(false);
    frmEdit& dialog = w.Open(7, 17);
    ASSERT_TRUE(EditorWorld::Activate(&dialog));
    EXPECT_EQ(QApplication::focusWidget(), dialog.txtTitle);
    EXPECT_FALSE(dialog.txtTitle->hasSelectedText());
    EXPECT_EQ(dialog.txtTitle->cursorPosition(), 8);
    EXPECT_EQ(dialog.tabEdit->currentIndex(), 0);
    EXPECT_TRUE(dialog.Picture1[0]->isVisible());
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral(" party"));
    EXPECT_EQ(dialog.txtTitle->text(), QStringLiteral("Birthday party"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), dialog.Colours->cmdFontCol);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    EXPECT_EQ(QApplication::focusWidget(), dialog.tabEdit);
}

TEST(EditorOpening, AnEmptyTitleStillTakesTheKeyboardFirst) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    ASSERT_TRUE(EditorWorld::Activate(&dialog));
    EXPECT_EQ(QApplication::focusWidget(), dialog.txtTitle);
    QTest::keyClicks(dialog.txtTitle, QStringLiteral("Dentist"));
    EXPECT_EQ(dialog.txtTitle->text(), QStringLiteral("Dentist"));
}

}  // namespace
}  // namespace kelvane::testing
