#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include "shell/Application.h"
#include "support/CalendarFiles.h"
#include "support/SelectionWorld.h"

// The date the grid highlights is always the date the commands act on: a
// rebuild of today's schedule, a load or a walk over the dates never moves the
// selection.
namespace kelvane::testing {
namespace {

// A calendar file with titles on 10 and 30 July; 30 July is the last date it fills.
QString JulyFile(const QTemporaryDir& folder) {
    CalendarFileContent content = EmptyCalendar(4);
    content.Dates = {TitledDate(7, 10, QStringLiteral("First")),
                     TitledDate(7, 30, QStringLiteral("Holiday"))};
    const QString path = folder.filePath(QStringLiteral("july.cal"));
    EXPECT_TRUE(WriteCalendarFileNamed(path, content));
    return path;
}

// A calendar file whose last date with content is 31 December.
QString YearEndFile(const QTemporaryDir& folder) {
    CalendarFileContent content = EmptyCalendar(5);
    content.Dates = {TitledDate(11, 3, QStringLiteral("Market")),
                     TitledDate(12, 31, QStringLiteral("New Year's Eve"))};
    const QString path = folder.filePath(QStringLiteral("year-end.cal"));
    EXPECT_TRUE(WriteCalendarFileNamed(path, content));
    return path;
}

// Friday 17 July 2026 at 8:00, with a title, an activity at 9:00 and a note of
// its own.
struct JulyWorld {
    JulyWorld() : w(2026, 7, 17, 8, 0) {
        w.main.Calender1().Months[6].Dates[17].Title = QStringLiteral("Today's plan");
        w.AddActivity(7, 17, QStringLiteral("Call"), 9, 0, 9, 15);
        w.store.diary.NoteBuffer = QStringLiteral("Bring the keys");
        w.store.diary.SaveNote(MakeDateKey(7, 17));
        w.watch.BuildTodaysSchedule();
    }

    void Load(const QString& path) {
        w.platform.FileDialog.Choose(path);
        w.main.Menu().mnuFileOpen->trigger();
    }

    MainWindowWorld w;
};

TEST(Selection, ALoadKeepsTheSelectionItFoundAndEraseRemovesThatDate) {
    QTemporaryDir folder;
    JulyWorld july;
    MainWindowWorld& w = july.w;
    w.ClickDay(20);
    w.main.Calender1().Months[6].Dates[20].Title = QStringLiteral("Picnic");
    july.Load(JulyFile(folder));
    ASSERT_EQ(w.main.sbStatusBar().Message(), QStringLiteral("Successful Load"));
    EXPECT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 20, 7}));
    EXPECT_EQ(w.HighlightedDay(), 20);

    w.platform.Messages.Answer(MessageAnswer::Yes);
    w.main.Toolbar().Buttons[6]->trigger();
    const Calender& calender = w.main.Calender1();
    EXPECT_EQ(calender.Months[6].Dates[20].Title.Trimmed(), QString());
    EXPECT_EQ(calender.Months[6].Dates[30].Title.Trimmed(), QStringLiteral("Holiday"));
    EXPECT_EQ(calender.Months[6].Dates[17].Title.Trimmed(), QStringLiteral("Today's plan"));
    w.store.diary.LoadNote(MakeDateKey(7, 17));
    EXPECT_EQ(w.store.diary.NoteBuffer.Trimmed(), QStringLiteral("Bring the keys"));
    EXPECT_TRUE(w.ScheduleLines().contains(QStringLiteral("Call")));
    EXPECT_EQ(w.HighlightedDay(), 20);
}

// The file's last date lies in a month that is not shown: the commands still
// act on the highlighted 17 November, never on 31 December unseen.
TEST(Selection, ALoadEndingInAnotherMonthLeavesTheHighlightedDateToTheCommands) {
    QTemporaryDir folder;
    NovemberWorld november;
    MainWindowWorld& w = november.w;
    w.platform.FileDialog.Choose(YearEndFile(folder));
    w.main.Menu().mnuFileOpen->trigger();
    ASSERT_EQ(w.main.sbStatusBar().Message(), QStringLiteral("Successful Load"));
    EXPECT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 17, 11}));
    EXPECT_EQ(w.HighlightedDay(), 17);

    QString shown;
    w.WhenEditorOpens([&](frmEdit& editor) {
        shown = editor.lblDate->text();
        editor.cmdCancel->click();
    });
    w.main.Menu().mnuEditDate->trigger();
    EXPECT_EQ(shown, QStringLiteral("17 / 11"));

    november.ExpectEraseEmptiesTheSeventeenth();
    EXPECT_EQ(november.TitleOf(12, 31), QStringLiteral("New Year's Eve"));
    EXPECT_EQ(november.TitleOf(11, 3), QStringLiteral("Market"));
}

struct NoStartupDialogs final : StartupDialogs {
    void ShowSplash() override {}
    void CloseSplash() override {}
    void ShowTips(QWidget* /*owner*/) override {}
};

TEST(Selection, AFileOnTheCommandLineLeavesTodaySelectedAndHighlighted) {
    QTemporaryDir folder;
    TestWorld world;
    world.platform.Clock.Set(2026, 11, 10, 8, 0);
    NoStartupDialogs dialogs;
    Application application(world.platform.Services, dialogs);
    ASSERT_TRUE(application.Start(YearEndFile(folder)));
    frmMain& main = *application.MainWindow();
    ASSERT_EQ(main.sbStatusBar().Message(), QStringLiteral("Successful Load"));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&main));
    qint16 year = 0, month = 0, day = 0;
    main.Calender1().GetDate(year, month, day);
    EXPECT_EQ(month, 11);
    EXPECT_EQ(day, 10);
    EXPECT_EQ(HighlightedDayOf(main), 10);
    application.Finish();
}

TEST(Selection, EditAfterALoadOpensTheHighlightedDate) {
    QTemporaryDir folder;
    JulyWorld july;
    MainWindowWorld& w = july.w;
    july.Load(JulyFile(folder));
    QString shown;
    w.WhenEditorOpens([&](frmEdit& editor) {
        shown = editor.lblDate->text();
        editor.cmdCancel->click();
    });
    w.main.mnuEditDate_Click();
    EXPECT_EQ(shown, QStringLiteral("17 / 7"));
    EXPECT_EQ(w.HighlightedDay(), 17);
}

TEST(Selection, AnAnnouncementAndItsRebuildKeepTheSelection) {
    JulyWorld july;
    MainWindowWorld& w = july.w;
    w.ClickDay(25);
    w.TickAt(9, 0, 10);
    ASSERT_EQ(w.ShownTexts(), QStringList{"Activities Starting/Ending\rstarting Call"});
    EXPECT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 25, 7}));
    EXPECT_EQ(w.HighlightedDay(), 25);
}

TEST(Selection, ExamineAndCancelExamineKeepTheSelection) {
    JulyWorld july;
    MainWindowWorld& w = july.w;
    w.ClickDay(20);
    w.main.Menu().mnuEditExamineDate_Selected->trigger();
    ASSERT_TRUE(w.watch.ExamineActive);
    EXPECT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 20, 7}));
    EXPECT_EQ(w.HighlightedDay(), 20);
    w.main.Menu().mnuToolsExamine_CancelExamine->trigger();
    EXPECT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 20, 7}));
    EXPECT_EQ(w.HighlightedDay(), 20);
}

TEST(Selection, SaveAsKeepsTheSelection) {
    QTemporaryDir folder;
    JulyWorld july;
    MainWindowWorld& w = july.w;
    w.ClickDay(12);
    w.platform.FileDialog.Choose(folder.filePath(QStringLiteral("saved.cal")));
    w.main.Menu().mnuFileSaveAs->trigger();
    ASSERT_EQ(w.main.sbStatusBar().Message(), QStringLiteral("Successful Save"));
    EXPECT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 12, 7}));
    EXPECT_EQ(w.HighlightedDay(), 12);
}

TEST(Selection, AtStartUpTodayIsSelectedAndHighlighted) {
    JulyWorld july;
    EXPECT_EQ(july.w.SelectedDayAndMonth(), (CalDate{0, 17, 7}));
    EXPECT_EQ(july.w.HighlightedDay(), 17);
}

TEST(Selection, ASelectionMovedWithoutARedrawIsShownAtOnce) {
    JulyWorld july;
    MainWindowWorld& w = july.w;
    EXPECT_EQ(w.HighlightedDay(), 17);
    w.main.Calender1().SetDate(2000, 7, 3);
    EXPECT_EQ(w.HighlightedDay(), 3);
    w.main.Calender1().SetDate(2000, 9, 3);  // another month: none highlighted here
    EXPECT_EQ(w.HighlightedDay(), 0);
}

}  // namespace
}  // namespace kelvane::testing
