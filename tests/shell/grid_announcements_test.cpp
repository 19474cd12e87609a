#include <QAccessible>
#include <QApplication>
#include <QCoreApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include "editor/frmEdit.h"
#include "gui/MonthGridAccessible.h"
#include "shell/GridScreenReader.h"
#include "support/MainWindowWorld.h"

// What a screen reader is told when the month grid changes. Today is Saturday
// 7 March 2026, selected at start-up: row 0, column 6 (both from 0); 17 March
// is in row 2, column 2.
namespace kelvane::testing {
namespace {

void ShowWithTheKeyboardOnTheGrid(MainWindowWorld& w) {
    w.ShowWindow();
    w.main.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&w.main));
    w.main.CalenderView().setFocus(Qt::TabFocusReason);
    QCoreApplication::processEvents();
}

void Retitle(MainWindowWorld& w, qint16 day, const QString& title) {
    w.main.Calender1().Months[2].Dates[day].Title = title;
    w.main.Calender1().Display();
}

// Qt tells readers that the table took the focus when the focus-in event is
// over; the selected cell's focus has to follow it, or readers are left on
// the table and never hear the day.
TEST(GridAnnouncements, TheSelectedCellsFocusFollowsTheTablesOwn) {
    MainWindowWorld w;
    w.ShowWindow();
    w.main.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&w.main));
    ScreenReader reader(w);
    w.main.CalenderView().setFocus(Qt::TabFocusReason);
    EXPECT_FALSE(reader.Heard(QAccessible::Focus, CellIndex(0, 6)));
    QCoreApplication::processEvents();
    const HeardEvent focus = reader.Last(QAccessible::Focus);
    EXPECT_EQ(focus.child, CellIndex(0, 6));
    EXPECT_EQ(focus.name, QStringLiteral("Saturday 7 March"));
}

// Shift+Tab from a panel the person clicked brings the keyboard back the same way.
TEST(GridAnnouncements, ShiftTabBackToTheGridEndsOnTheDay) {
    MainWindowWorld w;
    ShowWithTheKeyboardOnTheGrid(w);
    QWidget* panel = w.main.CalenderView().nextInFocusChain();
    panel->setFocus(Qt::MouseFocusReason);
    ASSERT_FALSE(w.main.CalenderView().hasFocus());
    ScreenReader reader(w);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    ASSERT_TRUE(w.main.CalenderView().hasFocus());
    EXPECT_FALSE(reader.Heard(QAccessible::Focus, CellIndex(0, 6)));
    QCoreApplication::processEvents();
    EXPECT_EQ(reader.Last(QAccessible::Focus).child, CellIndex(0, 6));
}

TEST(GridAnnouncements, AMovedSelectionLeavesTheOldCellAndTakesTheNewOne) {
    MainWindowWorld w;
    ShowWithTheKeyboardOnTheGrid(w);
    ScreenReader reader(w);
    QTest::keyClick(&w.main.CalenderView(), Qt::Key_Right);
    EXPECT_TRUE(reader.Heard(QAccessible::SelectionRemove, CellIndex(0, 6)));
    EXPECT_TRUE(reader.Heard(QAccessible::Selection, CellIndex(1, 0)));
    EXPECT_FALSE(Grid(w)->tableInterface()->cellAt(0, 6)->state().selected);
    EXPECT_EQ(reader.Last(QAccessible::Focus).child, CellIndex(1, 0));
    EXPECT_EQ(Grid(w)->tableInterface()->selectedCellCount(), 1);
    EXPECT_EQ(Grid(w)->tableInterface()->selectedCells().value(0),
              Grid(w)->tableInterface()->cellAt(1, 0));
}

TEST(GridAnnouncements, AChangedCellSendsItsNewNameAndNoOtherCellDoes) {
    MainWindowWorld w;
    w.ShowWindow();
    ScreenReader reader(w);
    Retitle(w, 17, QStringLiteral("Sprint review"));
    EXPECT_EQ(reader.Count(QAccessible::NameChanged), 1);
    ASSERT_TRUE(reader.Heard(QAccessible::NameChanged, CellIndex(2, 2)));
    EXPECT_EQ(reader.Last(QAccessible::NameChanged).name,
              QStringLiteral("Tuesday 17 March, Sprint review"));
    reader.events.clear();
    w.main.Calender1().Display();
    EXPECT_EQ(reader.Count(QAccessible::NameChanged), 0);
}

TEST(GridAnnouncements, AnotherMonthRenamesTheTableAndItsCells) {
    MainWindowWorld w;
    w.ShowWindow();
    ScreenReader reader(w);
    w.main.ShowMonth(4);
    EXPECT_TRUE(reader.Heard(QAccessible::NameChanged, -1));
    EXPECT_EQ(Grid(w)->text(QAccessible::Name), QStringLiteral("April"));
    // April 2026 starts on a Wednesday; the cell that read 7 March now reads
    // 11 April, and the leading cells that had days have none.
    EXPECT_TRUE(reader.Heard(QAccessible::NameChanged, CellIndex(1, 6)));
    EXPECT_TRUE(reader.Heard(QAccessible::NameChanged, CellIndex(0, 0)));
    EXPECT_EQ(Grid(w)->tableInterface()->cellAt(0, 0)->text(QAccessible::Name), QString());
}

// Showing another month leaves the selected date where it was: no cell of the
// month shown is selected, and none is announced as selected or focused.
TEST(GridAnnouncements, AMonthWithoutTheSelectedDateSelectsNoCell) {
    MainWindowWorld w;
    ShowWithTheKeyboardOnTheGrid(w);
    ScreenReader reader(w);
    w.main.ShowMonth(4);
    EXPECT_TRUE(reader.Heard(QAccessible::SelectionRemove, CellIndex(0, 6)));
    EXPECT_EQ(reader.Count(QAccessible::Selection), 0);
    EXPECT_EQ(reader.Count(QAccessible::Focus), 0);
    EXPECT_EQ(Grid(w)->tableInterface()->selectedCellCount(), 0);
    EXPECT_EQ(Grid(w)->focusChild(), nullptr);
}

// The selected cell renamed while the grid has the keyboard is announced as
// focused again with its new name, so a reader on it reads it afresh.
TEST(GridAnnouncements, TheFocusedCellRenamedIsAnnouncedWithItsNewName) {
    MainWindowWorld w;
    ShowWithTheKeyboardOnTheGrid(w);
    ScreenReader reader(w);
    Retitle(w, 7, QStringLiteral("Sprint review"));
    EXPECT_TRUE(reader.Heard(QAccessible::NameChanged, CellIndex(0, 6)));
    const HeardEvent focus = reader.Last(QAccessible::Focus);
    EXPECT_EQ(focus.child, CellIndex(0, 6));
    EXPECT_EQ(focus.name, QStringLiteral("Saturday 7 March, Sprint review"));
}

TEST(GridAnnouncements, ReturningFromTheEditorEndsOnTheDayWithItsNewTitle) {
    MainWindowWorld w;
    ShowWithTheKeyboardOnTheGrid(w);
    ScreenReader reader(w);
    w.WhenEditorOpens([](frmEdit& editor) {
        editor.txtTitle->setText(QStringLiteral("Sprint review"));
        editor.cmdOK->click();
    });
    QTest::keyClick(&w.main.CalenderView(), Qt::Key_Return);
    // The window manager gives the main window the keyboard back.
    w.main.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&w.main));
    ASSERT_TRUE(w.main.CalenderView().hasFocus());
    QCoreApplication::processEvents();
    EXPECT_TRUE(reader.Heard(QAccessible::NameChanged, CellIndex(0, 6)));
    const HeardEvent focus = reader.Last(QAccessible::Focus);
    EXPECT_EQ(focus.child, CellIndex(0, 6));
    EXPECT_EQ(focus.name, QStringLiteral("Saturday 7 March, Sprint review"));
}

// Names a reader has read before it listened here are the ones it knows: the
// first change it hears about is still sent.
TEST(GridAnnouncements, AReaderThatComesLateHearsTheNextChange) {
    MainWindowWorld w;
    w.ShowWindow();
    w.main.ShowMonth(4);
    w.main.ShowMonth(3);
    ScreenReader reader(w);
    Retitle(w, 18, QStringLiteral("Lunch"));
    EXPECT_TRUE(reader.Heard(QAccessible::NameChanged, CellIndex(2, 3)));
}

}  // namespace
}  // namespace kelvane::testing
