#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "support/MainWindowWorld.h"

namespace kelvane {
namespace {

using testing::MainWindowWorld;

// A calendar file whose 7 March holds one activity from 9:30 to 10:00 and
// whose view flags show the calendar but not the schedule.
QString SavedCalendar(const QTemporaryDir& folder) {
    MainWindowWorld source;
    source.AddActivity(3, 7, QStringLiteral("Standup"), 9, 30, 10, 0);
    const QString path = folder.filePath(QStringLiteral("plans.cal"));
    source.platform.FileDialog.Choose(path);
    source.main.Menu().mnuFileSaveAs->trigger();
    return path;
}

TEST(MainWindowDocument, SaveAsWritesTheFileAndNamesTheWindowAfterIt) {
    QTemporaryDir folder;
    MainWindowWorld w;
    w.store.module1.CalendarDirty = true;
    const QString path = folder.filePath(QStringLiteral("mine.cal"));
    w.platform.FileDialog.Choose(path);
    w.main.Menu().mnuFileSaveAs->trigger();
    EXPECT_TRUE(QFile::exists(path));
    EXPECT_EQ(w.main.windowTitle(), QStringLiteral("Kelvane - mine.cal"));
    EXPECT_EQ(w.main.sbStatusBar().Message(), QStringLiteral("Successful Save"));
    EXPECT_FALSE(w.store.module1.CalendarDirty);
    EXPECT_EQ(w.main.Menu().mnufileMRU[1]->text(), QStringLiteral("1)mine.cal"));
    EXPECT_TRUE(w.main.Menu().mnufileMRU[1]->isVisible());
    EXPECT_TRUE(w.main.Menu().mnuFileBar2->isVisible());
    EXPECT_EQ(w.platform.FileDialog.Shown.last().Title, QStringLiteral("Save Calender"));
}

TEST(MainWindowDocument, TheToolbarSaveButtonIsSaveAs) {
    QTemporaryDir folder;
    MainWindowWorld w;
    w.platform.FileDialog.Choose(folder.filePath(QStringLiteral("a.cal")));
    w.main.Toolbar().Buttons[3]->trigger();
    EXPECT_TRUE(QFile::exists(folder.filePath(QStringLiteral("a.cal"))));
}

TEST(MainWindowDocument, OpeningAFileAt9ShowsAndAnnouncesItsActivityAt930) {
    QTemporaryDir folder;
    const QString path = SavedCalendar(folder);
    MainWindowWorld w(2026, 3, 7, 9, 0);
    w.platform.FileDialog.Choose(path);
    w.main.Menu().mnuFileOpen->trigger();
    EXPECT_EQ(w.main.sbStatusBar().Message(), QStringLiteral("Successful Load"));
    EXPECT_EQ(w.main.windowTitle(), QStringLiteral("Kelvane - plans.cal"));
    EXPECT_EQ(w.ScheduleLines().mid(2), (QStringList{"Time to watch:9:30 am", "", "ACTIVITIES DUE",
                                                     "Standup", "From 9:30 am to 10:00 am"}));
    EXPECT_TRUE(w.watch.AlertsEnabled);

    w.TickAt(9, 30, 20);
    EXPECT_EQ(w.ShownTexts(), (QStringList{"Activities Starting/Ending\rstarting Standup"}));
}

TEST(MainWindowDocument, ARecentItemLoadsAndRebuildsTheSchedule) {
    QTemporaryDir folder;
    const QString path = SavedCalendar(folder);
    MainWindowWorld w(2026, 3, 7, 9, 0);
    w.main.Commands().AddRecentFile(path);
    w.main.Menu().mnufileMRU[1]->trigger();
    EXPECT_TRUE(w.ScheduleLines().contains(QStringLiteral("Standup")));
}

TEST(MainWindowDocument, LoadFileRebuildsTheScheduleAndAppliesTheViewFlags) {
    QTemporaryDir folder;
    const QString path = SavedCalendar(folder);
    MainWindowWorld w(2026, 3, 7, 9, 0);
    w.main.show();
    w.main.Menu().mnuViewTools->trigger();  // the file shows both
    ASSERT_FALSE(w.main.Menu().mnuViewTools->isChecked());
    EXPECT_TRUE(w.main.LoadFile(path));
    EXPECT_TRUE(w.main.Menu().mnuViewTools->isChecked());
    EXPECT_TRUE(w.main.Menu().mnuViewCalender->isChecked());
    EXPECT_TRUE(w.main.usrTodaysSchedule().isVisible());
    EXPECT_TRUE(w.ScheduleLines().contains(QStringLiteral("Standup")));
}

TEST(MainWindowDocument, OpenCancelledChangesNothing) {
    MainWindowWorld w;
    w.main.Toolbar().Buttons[2]->trigger();
    ASSERT_EQ(w.platform.FileDialog.Shown.size(), 1);
    EXPECT_EQ(w.platform.FileDialog.Shown[0].Title, QStringLiteral("Open"));
    EXPECT_EQ(w.main.windowTitle(), QStringLiteral("Kelvane v1.0"));
    EXPECT_TRUE(w.platform.Messages.Shown.isEmpty());
}

TEST(MainWindowDocument, FileCommandsHoldTheAlertsOffWhileTheyRun) {
    MainWindowWorld w;
    w.main.StartFileCommand();
    EXPECT_FALSE(w.watch.AlertsEnabled);
    EXPECT_TRUE(w.main.sbStatusBar().Panel(2)->isHidden());
    w.main.EndFileCommand();
    EXPECT_TRUE(w.watch.AlertsEnabled);
    EXPECT_FALSE(w.main.sbStatusBar().Panel(2)->isHidden());
}

TEST(MainWindowDocument, NewClearsTheDocumentAndRebuildsTheSchedule) {
    MainWindowWorld w(2026, 3, 7, 9, 0);
    w.AddActivity(3, 7, QStringLiteral("Standup"), 9, 30, 10, 0);
    w.watch.BuildTodaysSchedule();
    ASSERT_TRUE(w.ScheduleLines().contains(QStringLiteral("Standup")));
    w.store.module1.CalendarDirty = true;
    w.platform.Messages.Answer(MessageAnswer::Yes);
    w.main.Toolbar().Buttons[1]->trigger();
    EXPECT_EQ(w.platform.Messages.Shown[0].Title, QStringLiteral("NEW DOCUMENT"));
    EXPECT_EQ(w.main.windowTitle(), QStringLiteral("Kelvane"));
    EXPECT_FALSE(w.store.module1.CalendarDirty);
    EXPECT_EQ(w.ScheduleLines().last(), QStringLiteral("No Schedule Defined"));
}

TEST(MainWindowDocument, ALoadThatFailsLeavesTheDocumentAndCaptionAlone) {
    MainWindowWorld w;
    EXPECT_FALSE(w.main.LoadFile(QStringLiteral("/no/such/file.cal")));
    EXPECT_EQ(w.ShownTexts(), (QStringList{"File dosen't exist"}));
    EXPECT_EQ(w.main.windowTitle(), QStringLiteral("Kelvane v1.0"));
    EXPECT_TRUE(w.watch.AlertsEnabled);
}

}  // namespace
}  // namespace kelvane
