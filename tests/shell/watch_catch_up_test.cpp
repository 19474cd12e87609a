#include <QDialog>
#include <QListWidget>

#include <gtest/gtest.h>

#include "support/MainWindowWorld.h"
#include "support/ModalDialogs.h"
#include "support/NineOClockWorld.h"

// What the watch puts off while it is held, it does as soon as the last hold
// ends: the rebuild of today's schedule and the announcements. Minutes that it
// could not look at are caught up by the first rebuild that can, each once.
namespace kelvane::testing {
namespace {

TEST(WatchCatchUp, WhatTheEditorHeldIsShownAndRebuiltAsSoonAsItCloses) {
    NineOClockWorld world;
    MainWindowWorld& w = world.w;
    w.ClickDay(25);
    w.WhenEditorOpens([&](frmEdit& editor) {
        w.TickAt(9, 0, 10);
        w.TickAt(9, 1, 30);
        editor.cmdCancel->click();
    });
    w.main.mnuEditDate_Click();
    w.RunPostedWork();

    EXPECT_EQ(w.ShownTexts(), QStringList{kNineOClock});
    EXPECT_EQ(w.watch.WatchTime, (ClockTime{9, 30}));
    EXPECT_TRUE(w.ScheduleLines().contains(QStringLiteral("Time to watch:9:30 am")));
    w.TickAt(9, 2, 10);
    EXPECT_EQ(w.ShownTexts(), QStringList{kNineOClock});
}

TEST(WatchCatchUp, TheHeldBoxOfTheDeleteQuestionIsShownAsSoonAsItIsAnswered) {
    NineOClockWorld world;
    MainWindowWorld& w = world.w;
    w.store.diary.NoteBuffer = QStringLiteral("Call the plumber");
    w.store.diary.SaveNote(MakeDateKey(3, 25));
    w.ClickDay(25);
    w.platform.Messages.WhileShown = [&](const MessageBoxRequest& box) {
        if (box.Text == QStringLiteral("Delete Date?")) {
            w.TickAt(9, 0, 10);
        }
    };
    w.platform.Messages.Answer(MessageAnswer::Yes);
    w.main.Toolbar().Buttons[6]->trigger();
    w.platform.Messages.WhileShown = nullptr;
    w.RunPostedWork();

    EXPECT_EQ(w.ShownTexts(), (QStringList{"Delete Date?", kNineOClock}));
    EXPECT_EQ(w.watch.WatchTime, (ClockTime{9, 30}));
}

TEST(WatchCatchUp, EditingTodayUnderAHoldShowsTheEditAndTheHeldBoxAtOnce) {
    NineOClockWorld world;
    MainWindowWorld& w = world.w;
    w.ClickDay(7);
    w.WhenEditorOpens([&](frmEdit& editor) {
        w.TickAt(9, 0, 10);
        editor.tabEdit->setCurrentIndex(1);
        const QList<QListWidgetItem*> early =
            editor.lstSchedule->findItems(QStringLiteral("Early shift"), Qt::MatchContains);
        ASSERT_EQ(early.size(), 1);
        editor.lstSchedule->setCurrentItem(early.first());
        editor.cmdDelete->click();
        editor.cmdOK->click();
    });
    w.main.mnuEditDate_Click();
    EXPECT_FALSE(w.ScheduleLines().contains(QStringLiteral("Early shift")));
    w.RunPostedWork();

    EXPECT_EQ(w.ShownTexts(), QStringList{kNineOClock});
    EXPECT_FALSE(w.ScheduleLines().contains(QStringLiteral("Early shift")));
    EXPECT_TRUE(w.ScheduleLines().contains(QStringLiteral("* Stand-up")));
}

// A modal window that no command of the main window opened holds the watch
// from the first tick that finds it until it closes.
TEST(WatchCatchUp, AnyModalWindowHoldsTheWatchUntilItClosesAndThenWhatItHeldRuns) {
    NineOClockWorld world;
    MainWindowWorld& w = world.w;
    bool heldAfterTheTick = false;
    WhenModalOpens([&](QWidget* dialog) {
        w.TickAt(9, 0, 10);
        heldAfterTheTick = w.watch.Held();
        dialog->close();
    });
    QDialog stranger(&w.main);
    stranger.exec();
    EXPECT_TRUE(heldAfterTheTick);
    EXPECT_FALSE(w.watch.Held());
    EXPECT_TRUE(w.ShownTexts().isEmpty());
    w.RunPostedWork();
    EXPECT_EQ(w.ShownTexts(), QStringList{kNineOClock});
}

TEST(WatchCatchUp, AModalWindowOverAnotherHoldsUntilTheLastOneCloses) {
    NineOClockWorld world;
    MainWindowWorld& w = world.w;
    QDialog below(&w.main);
    QDialog above(&below);
    bool heldBetween = false;
    WhenModalOpens([&](QWidget*) {
        WhenModalOpens([&](QWidget*) {
            w.TickAt(9, 0, 10);
            above.close();
        });
        above.exec();
        w.RunPostedWork();
        heldBetween = w.watch.Held();
        below.close();
    });
    below.exec();
    w.RunPostedWork();
    EXPECT_TRUE(heldBetween);
    EXPECT_FALSE(w.watch.Held());
    EXPECT_EQ(w.ShownTexts(), QStringList{kNineOClock});
}

// 7 March at 23:59, with a late shift listed as today's.
struct LateShiftWorld {
    LateShiftWorld() : w(2026, 3, 7, 23, 59) {
        w.AddActivity(3, 7, QStringLiteral("Late shift"), 22, 0, 23, 59);
        w.watch.BuildTodaysSchedule();
    }
    MainWindowWorld w;
};

TEST(WatchCatchUp, ErasingTheListedDateWhileTheQuestionWaitsOverMidnightTakesItOffAtOnce) {
    LateShiftWorld world;
    MainWindowWorld& w = world.w;
    w.ClickDay(7);
    w.platform.Messages.WhileShown = [&](const MessageBoxRequest& box) {
        if (box.Text == QStringLiteral("Delete Date?")) {
            w.MoveClockTo(2026, 3, 8, 0, 0, 10);
        }
    };
    w.platform.Messages.Answer(MessageAnswer::Yes);
    w.main.Toolbar().Buttons[6]->trigger();
    w.platform.Messages.WhileShown = nullptr;
    w.RunPostedWork();

    const QStringList lines = w.ScheduleLines();
    EXPECT_EQ(lines.at(1), QStringLiteral("Today: 8-3-2026 (Sunday)"));
    EXPECT_FALSE(lines.contains(QStringLiteral("* Late shift")));
}

TEST(WatchCatchUp, EditingTheListedDateInAnEditorOpenOverMidnightShowsTheEditAtOnce) {
    LateShiftWorld world;
    MainWindowWorld& w = world.w;
    w.ClickDay(7);
    w.WhenEditorOpens([&](frmEdit& editor) {
        w.MoveClockTo(2026, 3, 8, 0, 0, 10);
        editor.tabEdit->setCurrentIndex(1);
        editor.lstSchedule->setCurrentRow(0);
        editor.cmdDelete->click();
        editor.cmdOK->click();
    });
    w.main.mnuEditDate_Click();
    w.store.appointments.LoadAppointments(MakeDateKey(3, 7));
    ASSERT_EQ(w.store.appointments.CountAppointments(), 0);
    w.RunPostedWork();

    const QStringList lines = w.ScheduleLines();
    EXPECT_EQ(lines.at(1), QStringLiteral("Today: 8-3-2026 (Sunday)"));
    EXPECT_FALSE(lines.contains(QStringLiteral("* Late shift")));
}

TEST(WatchCatchUp, AHoldOverMidnightAnnouncesTheNewDaysStartsAndEndsOnceAfterIt) {
    MainWindowWorld w(2026, 3, 7, 23, 58);
    w.AddActivity(3, 7, QStringLiteral("Old table"), 0, 1, 0, 2);
    w.AddActivity(3, 8, QStringLiteral("Bells"), 0, 0);
    w.AddActivity(3, 8, QStringLiteral("Night call"), 0, 1, 0, 2);
    w.watch.BuildTodaysSchedule();
    w.ClickDay(12);
    w.WhenEditorOpens([&](frmEdit& editor) {
        w.TickAt(23, 59, 30);
        w.MoveClockTo(2026, 3, 8, 0, 0, 10);
        w.WalkTo(0, 3);
        editor.cmdCancel->click();
    });
    w.main.mnuEditDate_Click();
    EXPECT_TRUE(w.ShownTexts().isEmpty());
    w.RunPostedWork();

    const QStringList once{
        "Activities Starting/Ending\rstarting Bells\rstarting Night call\rending Night call"};
    EXPECT_EQ(w.ShownTexts(), once);
    EXPECT_EQ(w.ScheduleLines().at(1), QStringLiteral("Today: 8-3-2026 (Sunday)"));
    w.WalkTo(0, 5);
    EXPECT_EQ(w.ShownTexts(), once);
}

TEST(WatchCatchUp, TheFirstTickOfANewDayAnnouncesWhatStartedAtMidnight) {
    MainWindowWorld w(2026, 3, 7, 23, 59);
    w.AddActivity(3, 8, QStringLiteral("Bells"), 0, 0);
    w.watch.BuildTodaysSchedule();
    w.TickAt(23, 59, 30);
    w.MoveClockTo(2026, 3, 8, 0, 0, 10);
    EXPECT_EQ(w.ShownTexts(), QStringList{"Activities Starting/Ending\rstarting Bells"});
    w.TickAt(0, 0, 50);
    EXPECT_EQ(w.ShownTexts().size(), 1);
}

// The tick's own box waits for the person; the minutes that pass meanwhile are
// looked at when it is closed.
TEST(WatchCatchUp, MinutesThatPassWhileAnAnnouncementWaitsAreCaughtUp) {
    NineOClockWorld world;
    MainWindowWorld& w = world.w;
    w.AddActivity(3, 7, QStringLiteral("Coffee"), 9, 5, 9, 6);
    w.watch.BuildTodaysSchedule();
    w.platform.Messages.WhileShown = [&](const MessageBoxRequest&) {
        w.platform.Clock.Now.setTime(QTime(9, 10, 20));
    };
    w.TickAt(9, 0, 10);
    w.platform.Messages.WhileShown = nullptr;
    w.TickAt(9, 10, 30);
    EXPECT_EQ(
        w.ShownTexts(),
        (QStringList{kNineOClock, "Activities Starting/Ending\rstarting Coffee\rending Coffee"}));
    w.WalkTo(9, 12);
    EXPECT_EQ(w.ShownTexts().size(), 2);
}

// What the old date's table still held for its last minutes is announced
// before the new date's table replaces it.
TEST(WatchCatchUp, AnAnnouncementLeftOpenOverMidnightCatchesUpBothDates) {
    MainWindowWorld w(2026, 3, 7, 23, 49);
    w.AddActivity(3, 7, QStringLiteral("Wind down"), 23, 50);
    w.AddActivity(3, 7, QStringLiteral("Lights out"), 23, 55);
    w.AddActivity(3, 8, QStringLiteral("Bells"), 0, 0);
    w.watch.BuildTodaysSchedule();
    w.platform.Messages.WhileShown = [&](const MessageBoxRequest&) {
        w.platform.Clock.Set(2026, 3, 8, 0, 10, 20);
    };
    w.TickAt(23, 50, 10);
    w.platform.Messages.WhileShown = nullptr;
    w.TickAt(0, 10, 30);
    EXPECT_EQ(w.ShownTexts(),
              (QStringList{"Activities Starting/Ending\rstarting Wind down",
                           "Activities Starting/Ending\rstarting Lights out\rstarting Bells"}));
    EXPECT_EQ(w.ScheduleLines().at(1), QStringLiteral("Today: 8-3-2026 (Sunday)"));
}

// No tick comes while the machine sleeps: what started and ended meanwhile is
// not announced hours late, but the minute it wakes in is.
TEST(WatchCatchUp, AMachineThatSleptAnnouncesOnlyTheMinuteItWakesIn) {
    NineOClockWorld world;
    MainWindowWorld& w = world.w;
    w.AddActivity(3, 7, QStringLiteral("Lunch"), 12, 0);
    w.watch.BuildTodaysSchedule();
    w.TickAt(8, 59, 30);
    w.TickAt(12, 0, 10);
    EXPECT_EQ(w.ShownTexts(), QStringList{"Activities Starting/Ending\rstarting Lunch"});
    w.TickAt(12, 0, 50);
    EXPECT_EQ(w.ShownTexts().size(), 1);
}

TEST(WatchCatchUp, AMachineThatSleptOverMidnightAnnouncesNeitherDaysMissedMinutes) {
    MainWindowWorld w(2026, 3, 7, 22, 0);
    w.AddActivity(3, 7, QStringLiteral("Lights out"), 23, 30);
    w.AddActivity(3, 8, QStringLiteral("Bells"), 0, 0);
    w.AddActivity(3, 8, QStringLiteral("Alarm"), 7, 0, 7, 5);
    w.watch.BuildTodaysSchedule();
    w.TickAt(22, 0, 30);
    w.MoveClockTo(2026, 3, 8, 7, 5, 10);
    EXPECT_EQ(w.ShownTexts(), QStringList{"Activities Starting\rending Alarm"});
    EXPECT_EQ(w.ScheduleLines().at(1), QStringLiteral("Today: 8-3-2026 (Sunday)"));
}

// Midnight passes between the reading of the time and of the date.
TEST(WatchCatchUp, ATickThatReadsTheTimeJustBeforeMidnightStillAnnouncesTheNewDay) {
    MainWindowWorld w(2026, 3, 7, 23, 59);
    w.AddActivity(3, 8, QStringLiteral("Bells"), 0, 0);
    w.watch.BuildTodaysSchedule();
    w.TickAt(23, 59, 20);
    w.platform.Clock.Now.setTime(QTime(23, 59, 59));
    w.platform.Clock.AfterTimeRead = [&w] {
        w.platform.Clock.AfterTimeRead = nullptr;
        w.platform.Clock.Set(2026, 3, 8, 0, 0, 0);
    };
    w.main.Timer1_Timer();
    w.TickAt(0, 0, 40);
    EXPECT_EQ(w.ShownTexts(), QStringList{"Activities Starting/Ending\rstarting Bells"});
}

}  // namespace
}  // namespace kelvane::testing
