#include <gtest/gtest.h>

#include "support/MainWindowWorld.h"

// Left running over midnight, the program follows the date: the first tick on
// a new date rebuilds today's schedule and moves today's mark.
namespace kelvane::testing {
namespace {

// The day whose cell carries today's colour: more red than the grid's grey.
qint16 MarkedToday(MainWindowWorld& w) {
    w.ShowWindow();
    const Calender& calender = w.main.Calender1();
    const QImage& image = w.main.CalenderView().Surface().Image();
    const double rowHeight = (image.height() - calender.GridTop) / 5.0;
    const double columnWidth = image.width() / 7.0;
    for (int row = 1; row <= 5; ++row) {
        for (int column = 1; column <= 7; ++column) {
            const QColor pixel =
                image.pixelColor(static_cast<int>(column * columnWidth) - 5,
                                 static_cast<int>(calender.GridTop + row * rowHeight) - 5);
            if (calender.CellMap[row][column] > 0 && pixel.red() >= pixel.blue() + 10) {
                return calender.CellMap[row][column];
            }
        }
    }
    return 0;
}

TEST(NewDay, TheFirstTickAfterMidnightListsAndWatchesTheNewDay) {
    MainWindowWorld w(2026, 3, 7, 23, 58);
    w.AddActivity(3, 8, QStringLiteral("Night call"), 0, 1, 0, 30);
    w.watch.BuildTodaysSchedule();
    ASSERT_EQ(w.ScheduleLines().last(), QStringLiteral("No Schedule Defined"));
    w.TickAt(23, 59, 30);

    w.MoveClockTo(2026, 3, 8, 0, 0, 10);
    EXPECT_EQ(w.ScheduleLines().mid(1, 2),
              (QStringList{"Today: 8-3-2026 (Sunday)", "Time to watch:12:01 am"}));
    EXPECT_EQ(w.watch.WatchTime, (ClockTime{0, 1}));
    EXPECT_TRUE(w.watch.AlertsEnabled);

    w.TickAt(0, 1, 5);
    EXPECT_EQ(w.ShownTexts(), QStringList{"Activities Starting/Ending\rstarting Night call"});
}

TEST(NewDay, TodaysMarkMovesAndTheSelectionStays) {
    MainWindowWorld w(2026, 3, 7, 23, 59);
    w.ClickDay(20);
    ASSERT_EQ(MarkedToday(w), 7);
    w.MoveClockTo(2026, 3, 8, 0, 0, 10);
    EXPECT_EQ(MarkedToday(w), 8);
    EXPECT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 20, 3}));
    EXPECT_EQ(w.HighlightedDay(), 20);
}

TEST(NewDay, ANewMonthIsShownWhenTheOldOneWas) {
    MainWindowWorld w(2026, 3, 31, 23, 59);
    w.MoveClockTo(2026, 4, 1, 0, 0, 10);
    EXPECT_EQ(w.main.Calender1().GetDisplayMonth(), 4);
    EXPECT_TRUE(w.main.Menu().Months[4]->isChecked());
    EXPECT_FALSE(w.main.Menu().Months[3]->isChecked());
    EXPECT_EQ(MarkedToday(w), 1);
}

TEST(NewDay, AnotherShownMonthStaysShown) {
    MainWindowWorld w(2026, 3, 31, 23, 59);
    w.main.ShowMonth(6);
    w.MoveClockTo(2026, 4, 1, 0, 0, 10);
    EXPECT_EQ(w.main.Calender1().GetDisplayMonth(), 6);
    EXPECT_TRUE(w.main.Menu().Months[6]->isChecked());
}

TEST(NewDay, AnExaminedDateStaysBesideTheNewToday) {
    MainWindowWorld w(2026, 3, 7, 23, 59);
    w.AddActivity(3, 20, QStringLiteral("Trip"), 10, 0);
    w.AddActivity(3, 8, QStringLiteral("Brunch"), 11, 0);
    w.ClickDay(20);
    w.main.Menu().mnuEditExamineDate_Selected->trigger();
    w.MoveClockTo(2026, 3, 8, 0, 0, 10);
    const QStringList lines = w.ScheduleLines();
    EXPECT_EQ(lines.mid(1, 2),
              (QStringList{"Today: 8-3-2026 (Sunday)", "Other: 20-3-2000(Friday)"}));
    EXPECT_TRUE(lines.contains(QStringLiteral("Trip")));
    EXPECT_TRUE(lines.contains(QStringLiteral("Brunch")));
}

TEST(NewDay, ExaminingTheDateThatBecomesTodayEndsTheExamination) {
    MainWindowWorld w(2026, 3, 7, 23, 59);
    w.AddActivity(3, 8, QStringLiteral("Brunch"), 11, 0);
    w.ClickDay(8);
    w.main.Menu().mnuEditExamineDate_Selected->trigger();
    ASSERT_TRUE(w.watch.ExamineActive);
    w.MoveClockTo(2026, 3, 8, 0, 0, 10);
    EXPECT_FALSE(w.watch.ExamineActive);
    EXPECT_EQ(w.ScheduleLines().count(QStringLiteral("Brunch")), 1);
    w.TickAt(11, 0, 5);
    EXPECT_EQ(w.ShownTexts(), QStringList{"Activities Starting/Ending\rstarting Brunch"});
}

TEST(NewDay, WhileTheEditorIsOpenTheNewDayWaitsForItToClose) {
    MainWindowWorld w(2026, 3, 7, 23, 59);
    w.AddActivity(3, 8, QStringLiteral("Night call"), 0, 1);
    w.ClickDay(12);
    QStringList linesWhileOpen;
    w.WhenEditorOpens([&](frmEdit& editor) {
        w.MoveClockTo(2026, 3, 8, 0, 0, 10);
        linesWhileOpen = w.ScheduleLines();
        editor.cmdCancel->click();
    });
    w.main.mnuEditDate_Click();
    EXPECT_EQ(linesWhileOpen.at(1), QStringLiteral("Today: 7-3-2026 (Saturday)"));
    w.TickAt(0, 0, 50);
    EXPECT_EQ(w.ScheduleLines().at(1), QStringLiteral("Today: 8-3-2026 (Sunday)"));
    w.TickAt(0, 1, 30);
    EXPECT_EQ(w.ShownTexts(), QStringList{"Activities Starting/Ending\rstarting Night call"});
}

TEST(NewDay, ACommandThatRebuildsFirstAfterMidnightStartsTheNewDayToo) {
    MainWindowWorld w(2026, 3, 31, 23, 59);
    w.AddActivity(4, 1, QStringLiteral("Brunch"), 11, 0);
    w.ClickDay(20);
    w.main.Menu().mnuEditExamineDate_Selected->trigger();
    w.platform.Clock.Set(2026, 4, 1, 9, 0, 0);  // no tick has seen the new date yet
    w.main.Menu().mnuToolsExamine_CancelExamine->trigger();
    EXPECT_EQ(w.ScheduleLines().at(1), QStringLiteral("Today: 1-4-2026 (Wednesday)"));
    EXPECT_EQ(w.watch.WatchTime, (ClockTime{11, 0}));  // from the clock of the new day
    EXPECT_EQ(w.main.Calender1().GetDisplayMonth(), 4);
    EXPECT_TRUE(w.main.Menu().Months[4]->isChecked());
    w.TickAt(11, 0, 5);
    EXPECT_EQ(w.ShownTexts(), QStringList{"Activities Starting/Ending\rstarting Brunch"});
}

TEST(NewDay, ExaminingTheNewTodayEndsAlsoWhenACommandRebuildsFirst) {
    MainWindowWorld w(2026, 3, 7, 23, 59);
    w.AddActivity(3, 8, QStringLiteral("Brunch"), 11, 0);
    w.ClickDay(8);
    w.main.Menu().mnuEditExamineDate_Selected->trigger();
    w.platform.Clock.Set(2026, 3, 8, 9, 0, 0);
    w.main.Menu().mnuViewRefresh->trigger();
    EXPECT_FALSE(w.watch.ExamineActive);
    EXPECT_EQ(w.ScheduleLines().count(QStringLiteral("Brunch")), 1);
}

}  // namespace
}  // namespace kelvane::testing
