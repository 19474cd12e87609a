#include <QAccessible>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <vector>

#include "shell/GridScreenReader.h"
#include "shell/ToolbarIcons.h"
#include "support/CalendarFiles.h"
#include "support/MainWindowWorld.h"

// What a screen reader hears of the month grid. Today is Saturday 7 March 2026;
// March starts on a Sunday, so 17 March, a Tuesday, is in row 2, column 2
// (both counted from 0).
namespace kelvane::testing {
namespace {

QString CellName(MainWindowWorld& w, int row, int column) {
    return Grid(w)->tableInterface()->cellAt(row, column)->text(QAccessible::Name);
}

QAccessible::State CellState(MainWindowWorld& w, int row, int column) {
    return Grid(w)->tableInterface()->cellAt(row, column)->state();
}

void PlanTuesday(MainWindowWorld& w) {
    w.main.Calender1().Months[2].Dates[17].Title = QStringLiteral("Stand-up day");
    w.AddActivity(3, 17, QStringLiteral("Stand-up"), 9, 0, 9, 15);
    w.AddActivity(3, 17, QStringLiteral("Review"), 14, 0);
    w.store.diary.NoteBuffer = QStringLiteral("Bring the slides");
    w.store.diary.SaveNote(MakeDateKey(3, 17));
    w.main.Calender1().Display();
}

TEST(GridAccessibility, TheGridIsATableOfSevenColumnsByFiveRowsUnderItsHeader) {
    MainWindowWorld w;
    w.ShowWindow();
    QAccessibleInterface* grid = Grid(w);
    ASSERT_NE(grid, nullptr);
    EXPECT_EQ(grid->role(), QAccessible::Table);
    EXPECT_EQ(grid->text(QAccessible::Name), QStringLiteral("March"));
    ASSERT_NE(grid->tableInterface(), nullptr);
    EXPECT_EQ(grid->tableInterface()->columnCount(), 7);
    EXPECT_EQ(grid->tableInterface()->rowCount(), 5);
    EXPECT_EQ(grid->childCount(), 42);
    EXPECT_EQ(grid->child(0)->role(), QAccessible::ColumnHeader);
    EXPECT_EQ(grid->child(0)->text(QAccessible::Name), QStringLiteral("Sunday"));
    EXPECT_EQ(grid->child(6)->text(QAccessible::Name), QStringLiteral("Saturday"));
    QAccessibleInterface* cell = grid->tableInterface()->cellAt(2, 2);
    EXPECT_EQ(cell->role(), QAccessible::Cell);
    EXPECT_EQ(grid->indexOfChild(cell), CellIndex(2, 2));
    EXPECT_EQ(cell->parent(), grid);
    EXPECT_EQ(cell->tableCellInterface()->columnHeaderCells().value(0), grid->child(2));
}

TEST(GridAccessibility, ACellReadsItsDateTitleActivitiesAndNote) {
    MainWindowWorld w;
    PlanTuesday(w);
    w.ShowWindow();
    EXPECT_EQ(CellName(w, 2, 2),
              QStringLiteral("Tuesday 17 March, Stand-up day, 2 activities, a note"));
    EXPECT_EQ(CellName(w, 2, 3), QStringLiteral("Wednesday 18 March"));
    w.AddActivity(3, 18, QStringLiteral("Lunch"), 12, 0);
    EXPECT_EQ(CellName(w, 2, 3), QStringLiteral("Wednesday 18 March, 1 activity"));
}

TEST(GridAccessibility, EmptyCellsHaveNoDayAndNoName) {
    MainWindowWorld w;
    w.ShowWindow();
    // May 2026 starts on a Friday and needs six weeks: 31 May goes into the
    // first row's leading cells, and the Monday before 1 May stays empty.
    w.main.ShowMonth(5);
    EXPECT_EQ(CellName(w, 0, 5), QStringLiteral("Friday 1 May"));
    EXPECT_EQ(CellName(w, 0, 0), QStringLiteral("Sunday 31 May"));
    EXPECT_EQ(CellName(w, 4, 6), QStringLiteral("Saturday 30 May"));
    EXPECT_EQ(CellName(w, 0, 1), QString());
    EXPECT_FALSE(CellState(w, 0, 1).selectable);
    // February 2026 fills exactly four rows.
    w.main.ShowMonth(2);
    EXPECT_EQ(CellName(w, 4, 6), QString());
}

TEST(GridAccessibility, TodayAndTheSelectedDateAreMarkedInTheirStates) {
    MainWindowWorld w;
    w.ShowWindow();
    // 7 March is today and selected at start-up: row 0, column 6.
    EXPECT_TRUE(CellState(w, 0, 6).active);
    EXPECT_TRUE(CellState(w, 0, 6).selected);
    w.main.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&w.main));
    w.ClickDay(12);
    EXPECT_TRUE(CellState(w, 0, 6).active);
    EXPECT_FALSE(CellState(w, 0, 6).selected);
    EXPECT_TRUE(CellState(w, 1, 4).selected);
    EXPECT_TRUE(CellState(w, 1, 4).focused);
    EXPECT_FALSE(CellState(w, 1, 5).active);
    EXPECT_EQ(Grid(w)->tableInterface()->selectedCellCount(), 1);
    EXPECT_EQ(Grid(w)->focusChild(), Grid(w)->tableInterface()->cellAt(1, 4));
}

TEST(GridAccessibility, KeyboardMovesAreAnnouncedAsSelectionAndFocus) {
    MainWindowWorld w;
    ScreenReader reader(w);
    w.ShowWindow();
    w.main.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&w.main));
    w.main.CalenderView().setFocus(Qt::TabFocusReason);
    reader.events.clear();
    QTest::keyClick(&w.main.CalenderView(), Qt::Key_Right);
    // 8 March: row 1, column 0.
    EXPECT_TRUE(reader.Heard(QAccessible::Selection, CellIndex(1, 0)));
    EXPECT_TRUE(reader.Heard(QAccessible::Focus, CellIndex(1, 0)));
    EXPECT_TRUE(CellState(w, 1, 0).selected);
    EXPECT_TRUE(CellState(w, 1, 0).focused);

    reader.events.clear();
    QTest::keyClick(&w.main.CalenderView(), Qt::Key_PageDown);
    EXPECT_EQ(Grid(w)->text(QAccessible::Name), QStringLiteral("April"));
    EXPECT_EQ(Grid(w)->focusChild()->text(QAccessible::Name), QStringLiteral("Wednesday 8 April"));
    EXPECT_TRUE(reader.Heard(QAccessible::TableModelChanged, -1));
    EXPECT_TRUE(reader.Heard(QAccessible::Focus, Grid(w)->indexOfChild(Grid(w)->focusChild())));
}

TEST(GridAccessibility, CellsHaveTheirPlaceOnTheScreen) {
    MainWindowWorld w;
    w.ShowWindow();
    SurfaceWidget& view = w.main.CalenderView();
    const QRect cell = Grid(w)->tableInterface()->cellAt(2, 2)->rect();
    const QPoint middle = view.mapFromGlobal(cell.center());
    EXPECT_GT(middle.y(), w.main.Calender1().GridTop);
    EXPECT_EQ(Grid(w)->childAt(cell.center().x(), cell.center().y()),
              Grid(w)->tableInterface()->cellAt(2, 2));
}

// A leap year whose 1 January is a Wednesday lays March out as 2026 does.
TEST(GridAccessibility, ALoadedFileIsReadOutAsItsDatesHoldThem) {
    QTemporaryDir folder;
    CalendarFileContent content = EmptyCalendar(4);
    CalendarFileDate tuesday = TitledDate(3, 17, QStringLiteral("Stand-up day"));
    Appointment standUp;
    standUp.Description = QStringLiteral("Stand-up");
    standUp.StartTime = ClockTime{9, 0};
    standUp.EndTime = ClockTime{9, 15};
    Appointment review;
    review.Description = QStringLiteral("Review");
    review.StartTime = ClockTime{14, 0};
    review.EndTime = ClockTime{-1, -1};
    tuesday.Schedule = {standUp, review};
    tuesday.Note = QStringLiteral("Bring the slides");
    content.Dates = {tuesday};
    const QString path = folder.filePath(QStringLiteral("plan.cal"));
    ASSERT_TRUE(WriteCalendarFileNamed(path, content));

    MainWindowWorld w;
    w.ShowWindow();
    w.platform.FileDialog.Choose(path);
    w.main.Menu().mnuFileOpen->trigger();
    ASSERT_EQ(w.main.sbStatusBar().Message(), QStringLiteral("Successful Load"));
    EXPECT_EQ(CellName(w, 2, 2),
              QStringLiteral("Tuesday 17 March, Stand-up day, 2 activities, a note"));
    // The load keeps today, the date selected before it, selected.
    EXPECT_FALSE(CellState(w, 2, 2).selected);
    EXPECT_TRUE(CellState(w, 0, 6).active);
    EXPECT_TRUE(CellState(w, 0, 6).selected);
}

TEST(ToolbarAccessibility, ButtonsAreNamedAfterTheirToolTips) {
    MainWindowWorld w;
    w.ShowWindow();
    const MainToolbar& toolbar = w.main.Toolbar();
    const auto name = [&toolbar](int index) {
        QWidget* button = toolbar.tbMain->widgetForAction(toolbar.Buttons[index]);
        return QAccessible::queryAccessibleInterface(button)->text(QAccessible::Name);
    };
    EXPECT_EQ(name(1), QStringLiteral("New"));
    EXPECT_EQ(name(2), QStringLiteral("Open"));
    EXPECT_EQ(name(9), QStringLiteral("Previous Month"));
    EXPECT_EQ(name(15), QStringLiteral("Comming Up"));
    EXPECT_EQ(toolbar.Buttons[1]->toolTip(), QString());
}

TEST(ToolbarImages, AreDrawnForScreensScaledUpToThreeTimes) {
    const QIcon icon = ToolbarIcon(ToolbarImage::Edit);
    for (const int size : {16, 24, 32, 48}) {
        EXPECT_TRUE(icon.availableSizes().contains(QSize(size, size))) << size;
    }
    EXPECT_EQ(icon.pixmap(QSize(16, 16), 2.0).size(), QSize(32, 32));
    EXPECT_EQ(icon.pixmap(QSize(16, 16), 1.5).size(), QSize(24, 24));
}

}  // namespace
}  // namespace kelvane::testing
