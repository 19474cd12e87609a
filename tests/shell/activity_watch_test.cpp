#include <gtest/gtest.h>

#include "support/MainWindowWorld.h"

namespace kelvane {
namespace {

using testing::MainWindowWorld;

const QString kHeading = QStringLiteral("T O D A Y S   S C H E D U L E");
const QString kToday = QStringLiteral("Today: 7-3-2026 (Saturday)");

QLabel* WarnPanel(MainWindowWorld& w) {
    return w.main.sbStatusBar().Panel(2);
}

TEST(ActivityWatch, NoActivityShowsNoScheduleAndHidesWarn) {
    MainWindowWorld w;
    w.watch.BuildTodaysSchedule();
    EXPECT_EQ(w.ScheduleLines(), (QStringList{kHeading, kToday, "No Schedule Defined"}));
    EXPECT_FALSE(w.watch.AlertsEnabled);
    EXPECT_TRUE(WarnPanel(w)->isHidden());
    EXPECT_EQ(w.watch.WatchTime, (ClockTime{23, 59}));
}

TEST(ActivityWatch, TheRebuildSelectsTodayIn2000) {
    MainWindowWorld w;
    w.watch.BuildTodaysSchedule();
    qint16 year = 0, month = 0, day = 0;
    w.main.Calender1().GetDate(year, month, day);
    EXPECT_EQ(year, 2000);
    EXPECT_EQ(month, 3);
    EXPECT_EQ(day, 7);
}

TEST(ActivityWatch, ACurrentActivityIsListedWithItsEndAsTheWatchTime) {
    MainWindowWorld w(2026, 3, 7, 9, 30);
    w.AddActivity(3, 7, QStringLiteral("Dentist"), 9, 0, 10, 0);
    w.watch.BuildTodaysSchedule();
    EXPECT_EQ(w.ScheduleLines(),
              (QStringList{kHeading, kToday, "Time to watch:10:00 am", "", "CURRENT ACTIVITIES",
                           "* Dentist", "From 9:00 am to 10:00 am"}));
    EXPECT_EQ(w.watch.WatchTime, (ClockTime{10, 0}));
    EXPECT_TRUE(w.watch.AlertsEnabled);
    EXPECT_FALSE(WarnPanel(w)->isHidden());
    EXPECT_EQ(WarnPanel(w)->text(), QStringLiteral("warn"));
}

TEST(ActivityWatch, TheCurrentLineKeepsAllFiftyCharactersOfTheDescription) {
    MainWindowWorld w(2026, 3, 7, 9, 30);
    w.AddActivity(3, 7, QStringLiteral("Dentist"), 9, 0, 10, 0);
    w.watch.BuildTodaysSchedule();
    const QString stored = QStringLiteral("* Dentist").leftJustified(52);
    EXPECT_EQ(w.main.usrTodaysSchedule().GetLine(6), stored.leftJustified(80));
}

TEST(ActivityWatch, EveryCurrentActivityHasItsOwnHeadingWhileDueAndDoneShareOne) {
    MainWindowWorld w(2026, 3, 7, 12, 0);
    w.AddActivity(3, 7, QStringLiteral("Lunch"), 11, 30, 13, 0);
    w.AddActivity(3, 7, QStringLiteral("Call"), 12, 0, 12, 15);
    w.AddActivity(3, 7, QStringLiteral("Tea"), 15, 0, 15, 30);
    w.AddActivity(3, 7, QStringLiteral("Dinner"), 18, 0, 19, 0);
    w.AddActivity(3, 7, QStringLiteral("Run"), 7, 0, 8, 0);
    w.AddActivity(3, 7, QStringLiteral("Post"), 10, 0, 10, 5);
    w.watch.BuildTodaysSchedule();
    EXPECT_EQ(w.ScheduleLines(), (QStringList{kHeading,
                                              kToday,
                                              "Time to watch:12:15 pm",
                                              "",
                                              "CURRENT ACTIVITIES",
                                              "* Call",
                                              "From 12:00 pm to 12:15 pm",
                                              "",
                                              "CURRENT ACTIVITIES",
                                              "* Lunch",
                                              "From 11:30 am to 1:00 pm",
                                              "",
                                              "ACTIVITIES DUE",
                                              "Tea",
                                              "From 3:00 pm to 3:30 pm",
                                              "-",
                                              "Dinner",
                                              "From 6:00 pm to 7:00 pm",
                                              "",
                                              "ACTIVITIES DONE",
                                              "Run",
                                              "From 7:00 am to 8:00 am",
                                              "-",
                                              "Post",
                                              "From 10:00 am to 10:05 am"}));
}

TEST(ActivityWatch, AnActivityWithoutEndIsDueBeforeItsStartAndDoneFromItsStartMinute) {
    MainWindowWorld w(2026, 3, 7, 8, 59);
    w.AddActivity(3, 7, QStringLiteral("Pills"), 9, 0);
    w.watch.BuildTodaysSchedule();
    EXPECT_EQ(w.ScheduleLines(), (QStringList{kHeading, kToday, "Time to watch:9:00 am", "",
                                              "ACTIVITIES DUE", "Pills", "From 9:00 am"}));

    w.platform.Clock.Now.setTime(QTime(9, 0));
    w.store.module1.ReadClock();
    w.watch.BuildTodaysSchedule();
    EXPECT_EQ(w.ScheduleLines(),
              (QStringList{kHeading, kToday, "", "ACTIVITIES DONE", "Pills", "From 9:00 am"}));
}

TEST(ActivityWatch, AnEndInTheHourZeroIsNeverTheWatchTime) {
    MainWindowWorld w(2026, 3, 7, 0, 10);
    w.AddActivity(3, 7, QStringLiteral("Midnight"), 0, 0, 0, 30);
    w.watch.BuildTodaysSchedule();
    EXPECT_EQ(w.watch.WatchTime, (ClockTime{23, 59}));
    EXPECT_FALSE(w.ScheduleLines().contains(QStringLiteral("Time to watch:12:30 am")));
    EXPECT_EQ(w.ScheduleLines().mid(2, 4),
              (QStringList{"", "CURRENT ACTIVITIES", "* Midnight", "From 12:00 am to 12:30 am"}));
}

TEST(ActivityWatch, TheSortPutsTheLaterEndFirstAmongEqualStarts) {
    MainWindowWorld w(2026, 3, 7, 6, 0);
    w.AddActivity(3, 7, QStringLiteral("Short"), 9, 0, 9, 30);
    w.AddActivity(3, 7, QStringLiteral("Long"), 9, 0, 11, 0);
    w.watch.BuildTodaysSchedule();
    EXPECT_EQ(w.watch.ScheduleSlots[1].Description.Trimmed(), QStringLiteral("Long"));
    EXPECT_EQ(w.watch.ScheduleSlots[2].Description.Trimmed(), QStringLiteral("Short"));
    EXPECT_EQ(w.ScheduleLines().mid(3),
              (QStringList{"", "ACTIVITIES DUE", "Short", "From 9:00 am to 9:30 am", "-", "Long",
                           "From 9:00 am to 11:00 am"}));
}

TEST(ActivityWatch, AnActivityEndingBeforeItStartsIsDueBeforeItsStartAndDoneAfter) {
    MainWindowWorld w(2026, 3, 7, 10, 30);
    w.AddActivity(3, 7, QStringLiteral("Odd"), 11, 0, 10, 0);
    w.watch.BuildTodaysSchedule();
    EXPECT_EQ(w.ScheduleLines(),
              (QStringList{kHeading, kToday, "Time to watch:11:00 am", "", "ACTIVITIES DUE", "Odd",
                           "From 11:00 am to 10:00 am"}));
    w.platform.Clock.Now.setTime(QTime(11, 0));
    w.store.module1.ReadClock();
    w.watch.BuildTodaysSchedule();
    EXPECT_EQ(w.ScheduleLines(), (QStringList{kHeading, kToday, "", "ACTIVITIES DONE", "Odd",
                                              "From 11:00 am to 10:00 am"}));
}

TEST(ActivityWatch, AStartAndAnEndInOneMinuteMakeOneBoxHeadedStartingEnding) {
    MainWindowWorld w(2026, 3, 7, 8, 30);
    w.AddActivity(3, 7, QStringLiteral("Breakfast"), 8, 0, 9, 0);
    w.AddActivity(3, 7, QStringLiteral("Work"), 9, 0, 12, 0);
    w.watch.BuildTodaysSchedule();
    w.TickAt(9, 0, 10);
    ASSERT_EQ(w.platform.Messages.Shown.size(), 1);
    const MessageBoxRequest& box = w.platform.Messages.Shown[0];
    EXPECT_EQ(box.Text,
              QStringLiteral("Activities Starting/Ending\rstarting Work\rending Breakfast"));
    EXPECT_EQ(box.Title, QStringLiteral("Kelvane"));
    EXPECT_EQ(box.Icon, MessageIcon::Exclamation);
    EXPECT_EQ(box.Buttons, MessageButtons::Ok);
    EXPECT_TRUE(w.watch.PendingAlertText.isEmpty());
    EXPECT_FALSE(w.watch.AlertAnnounced);
    EXPECT_EQ(w.watch.WatchTime, (ClockTime{12, 0}));

    w.TickAt(9, 0, 50);
    EXPECT_EQ(w.platform.Messages.Shown.size(), 1);
}

TEST(ActivityWatch, AnEndAloneIsHeadedStarting) {
    MainWindowWorld w(2026, 3, 7, 9, 30);
    w.AddActivity(3, 7, QStringLiteral("Class"), 9, 0, 10, 0);
    w.watch.BuildTodaysSchedule();
    w.TickAt(10, 0);
    EXPECT_EQ(w.ShownTexts(), (QStringList{"Activities Starting\rending Class"}));
}

TEST(ActivityWatch, AWholeDayWalkedMinuteByMinuteAnnouncesEachStartAndEndOnce) {
    MainWindowWorld w(2026, 3, 7, 0, 0);
    w.AddActivity(3, 7, QStringLiteral("Swim"), 7, 15, 8, 0);
    w.AddActivity(3, 7, QStringLiteral("  Standup"), 9, 0, 9, 15);
    w.AddActivity(3, 7, QStringLiteral("Lunch"), 12, 30, 13, 30);
    w.AddActivity(3, 7, QStringLiteral("Pills"), 13, 30);
    w.AddActivity(3, 7, QStringLiteral("Film"), 22, 0, 23, 30);
    w.watch.BuildTodaysSchedule();
    for (int minute = 0; minute < 24 * 60; ++minute) {
        w.TickAt(minute / 60, minute % 60, 5);
        w.TickAt(minute / 60, minute % 60, 45);
    }
    EXPECT_EQ(
        w.ShownTexts(),
        (QStringList{
            "Activities Starting/Ending\rstarting Swim", "Activities Starting\rending Swim",
            "Activities Starting/Ending\rstarting Standup", "Activities Starting\rending Standup",
            "Activities Starting/Ending\rstarting Lunch",
            "Activities Starting/Ending\rstarting Pills\rending Lunch",
            "Activities Starting/Ending\rstarting Film", "Activities Starting\rending Film"}));
    EXPECT_EQ(w.main.Timer1.interval(), frmMain::Timer1Interval);
    EXPECT_TRUE(w.main.Timer1.isActive());
}

TEST(ActivityWatch, AnAlertWhileAlertsAreOffIsShownOnTheFirstTickAfterTheyAreOn) {
    MainWindowWorld w(2026, 3, 7, 8, 59);
    w.AddActivity(3, 7, QStringLiteral("Work"), 9, 0, 12, 0);
    w.watch.BuildTodaysSchedule();
    w.watch.AlertsOff();  // as the date editor does while it is open
    w.TickAt(9, 0, 10);
    EXPECT_TRUE(w.platform.Messages.Shown.isEmpty());
    EXPECT_EQ(w.watch.PendingAlertText,
              QStringLiteral("Activities Starting/Ending\rstarting Work"));
    EXPECT_TRUE(w.watch.AlertAnnounced);

    w.watch.AlertsOn();
    w.TickAt(9, 1, 0);
    EXPECT_EQ(w.ShownTexts(), (QStringList{"Activities Starting/Ending\rstarting Work"}));
    EXPECT_TRUE(w.watch.PendingAlertText.isEmpty());
    EXPECT_FALSE(w.watch.AlertAnnounced);
}

TEST(ActivityWatch, AppendAlertStartsAfreshWhenThePendingTextIsBlank) {
    MainWindowWorld w;
    w.watch.PendingAlertText = QStringLiteral("   ");
    w.watch.AppendAlert(QStringLiteral("one"));
    w.watch.AppendAlert(QStringLiteral("two"));
    EXPECT_EQ(w.watch.PendingAlertText, QStringLiteral("one\rtwo"));
}

TEST(ActivityWatch, AnExaminedDateIsListedAndWatchedBesideToday) {
    MainWindowWorld w(2026, 3, 7, 8, 0);
    w.AddActivity(3, 7, QStringLiteral("Today one"), 9, 0, 9, 30);
    w.AddActivity(3, 7, QStringLiteral("Today two"), 11, 0);
    w.AddActivity(3, 7, QStringLiteral("Today three"), 14, 0, 15, 0);
    w.AddActivity(3, 10, QStringLiteral("Other one"), 10, 0, 10, 45);
    w.AddActivity(3, 10, QStringLiteral("Other two"), 16, 0);
    w.watch.ExamineDate = CalDate{2026, 10, 3};
    w.watch.ExamineActive = true;
    w.watch.BuildTodaysSchedule();

    EXPECT_EQ(
        w.ScheduleLines().mid(0, 4),
        (QStringList{kHeading, kToday, "Other: 10-3-2026(Tuesday)", "Time to watch:9:00 am"}));
    QStringList table;
    for (int slot = 1; slot <= ActivityWatch::SlotCount; ++slot) {
        if (w.watch.ScheduleSlots[slot].StartTime.Hour >= 0) {
            table << w.watch.ScheduleSlots[slot].Description.Trimmed();
        }
    }
    EXPECT_EQ(table,
              (QStringList{"Other two", "Today three", "Today two", "Other one", "Today one"}));

    w.WalkTo(16, 30);
    EXPECT_EQ(w.ShownTexts(), (QStringList{"Activities Starting/Ending\rstarting Today one",
                                           "Activities Starting\rending Today one",
                                           "Activities Starting/Ending\rstarting Other one",
                                           "Activities Starting\rending Other one",
                                           "Activities Starting/Ending\rstarting Today two",
                                           "Activities Starting/Ending\rstarting Today three",
                                           "Activities Starting\rending Today three",
                                           "Activities Starting/Ending\rstarting Other two"}));
}

TEST(ActivityWatch, TheTableHoldsBothDatesSortedAndNothingElse) {
    MainWindowWorld w(2026, 3, 7, 8, 0);
    w.AddActivity(3, 7, QStringLiteral("Today"), 23, 0);
    w.AddActivity(3, 10, QStringLiteral("Other"), 1, 0);
    w.watch.ExamineDate = CalDate{2026, 10, 3};
    w.watch.ExamineActive = true;
    w.watch.BuildTodaysSchedule();
    EXPECT_EQ(w.watch.ScheduleSlots[1].Description.Trimmed(), QStringLiteral("Today"));
    EXPECT_EQ(w.watch.ScheduleSlots[2].Description.Trimmed(), QStringLiteral("Other"));
    EXPECT_LT(w.watch.ScheduleSlots[3].StartTime.Hour, 0);
    EXPECT_LT(w.watch.ScheduleSlots[41].StartTime.Hour, 0);
}

TEST(ActivityWatch, OfTwoEqualActivitiesTheExaminedDatesComesFirst) {
    MainWindowWorld w(2026, 3, 7, 8, 0);
    w.AddActivity(3, 7, QStringLiteral("Today"), 9, 0, 10, 0);
    w.AddActivity(3, 10, QStringLiteral("Other"), 9, 0, 10, 0);
    w.watch.ExamineDate = CalDate{2026, 10, 3};
    w.watch.ExamineActive = true;
    w.watch.BuildTodaysSchedule();
    EXPECT_EQ(w.watch.ScheduleSlots[1].Description.Trimmed(), QStringLiteral("Other"));
    EXPECT_EQ(w.watch.ScheduleSlots[2].Description.Trimmed(), QStringLiteral("Today"));
}

TEST(ActivityWatch, AnExaminationWithADayOrMonthOfZeroIsNoExamination) {
    MainWindowWorld w;
    w.watch.ExamineDate = CalDate{2026, 0, 3};
    w.watch.ExamineActive = true;
    w.watch.BuildTodaysSchedule();
    EXPECT_EQ(w.ScheduleLines(), (QStringList{kHeading, kToday, "No Schedule Defined"}));
}

TEST(ActivityWatch, FullDaysOnBothDatesFillAllEightySlotsAndAreAllWatched) {
    MainWindowWorld w(2026, 3, 7, 0, 0);
    for (int entry = 0; entry < 40; ++entry) {
        w.AddActivity(3, 7, QStringLiteral("T%1").arg(entry), static_cast<qint16>(entry / 2 + 1),
                      static_cast<qint16>(entry % 2 * 30));
        w.AddActivity(3, 8, QStringLiteral("E%1").arg(entry), static_cast<qint16>(entry / 2 + 1),
                      static_cast<qint16>(entry % 2 * 30 + 15));
    }
    w.watch.ExamineDate = CalDate{2026, 8, 3};
    w.watch.ExamineActive = true;
    w.watch.BuildTodaysSchedule();
    for (int slot = 1; slot <= ActivityWatch::SlotCount; ++slot) {
        EXPECT_GE(w.watch.ScheduleSlots[slot].StartTime.Hour, 1) << slot;
    }
    w.WalkTo(23, 0);
    ASSERT_EQ(w.ShownTexts().size(), 80);
    EXPECT_EQ(w.ShownTexts().first(), QStringLiteral("Activities Starting/Ending\rstarting T0"));
    EXPECT_EQ(w.ShownTexts().last(), QStringLiteral("Activities Starting/Ending\rstarting E39"));
}

}  // namespace
}  // namespace kelvane
