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

// A calendar file whose 2 January has a title of its own.
QString TitledCalendar(const QTemporaryDir& folder, const QString& name) {
    MainWindowWorld source;
    source.main.Calender1().SetDate(2000, 1, 2);
    source.store.calender.CurrentEntry.Title = name;
    source.main.Calender1().UpdateSelectedDate(false);
    const QString path = folder.filePath(name + QStringLiteral(".cal"));
    source.platform.FileDialog.Choose(path);
    source.main.Menu().mnuFileSaveAs->trigger();
    return path;
}

QString TitleOfSecondJanuary(MainWindowWorld& w) {
    return w.main.Calender1().Months[0].Dates[2].Title.Trimmed();
}

// The load reorders the recent files while it runs: the window is still named
// after the file it loaded.
TEST(MainWindowDocument, TheThirdRecentFileLoadsAndNamesTheWindow) {
    QTemporaryDir folder;
    const QString odd = TitledCalendar(folder, QStringLiteral("odd"));
    const QString base = TitledCalendar(folder, QStringLiteral("base"));
    const QString uni = TitledCalendar(folder, QStringLiteral("uni"));
    MainWindowWorld w;
    for (const QString& path : {odd, base, uni}) {
        w.main.Commands().AddRecentFile(path);
    }
    w.main.Menu().mnufileMRU[3]->trigger();
    EXPECT_EQ(TitleOfSecondJanuary(w), QStringLiteral("odd"));
    EXPECT_EQ(w.main.windowTitle(), QStringLiteral("Kelvane - odd.cal"));
    const RecentFileList& recent = w.main.Commands().RecentFiles();
    EXPECT_EQ(recent.RecentFiles[1], odd);
    EXPECT_EQ(recent.RecentFiles[2], uni);
    EXPECT_EQ(recent.RecentFiles[3], base);
}

// Open asks nothing and merges the file into the document; what was not saved
// is kept in a copy first, which File > 1 brings back.
TEST(MainWindowDocument, UnsavedWorkThatOpenReplacesComesBackFromFileOne) {
    QTemporaryDir folder;
    const QString other = TitledCalendar(folder, QStringLiteral("other"));
    QTemporaryDir userData;
    MainWindowWorld w;
    w.platform.Directory.UserData = userData.path();
    w.main.Calender1().SetDate(2000, 1, 2);
    w.store.calender.CurrentEntry.Title = QStringLiteral("mine, not saved");
    w.main.Calender1().UpdateSelectedDate(false);
    w.store.module1.CalendarDirty = true;

    w.platform.FileDialog.Choose(other);
    w.main.Menu().mnuFileOpen->trigger();
    EXPECT_TRUE(w.platform.Messages.Shown.isEmpty());
    EXPECT_EQ(TitleOfSecondJanuary(w), QStringLiteral("other"));
    EXPECT_TRUE(w.main.sbStatusBar().Message().startsWith(
        QStringLiteral("Successful Load - unsaved changes kept in unsaved-")))
        << w.main.sbStatusBar().Message().toStdString();
    EXPECT_TRUE(w.main.Menu().mnufileMRU[1]->text().startsWith(QStringLiteral("1)")));

    w.main.Menu().mnufileMRU[1]->trigger();
    EXPECT_EQ(TitleOfSecondJanuary(w), QStringLiteral("mine, not saved"));
}

}  // namespace
}  // namespace kelvane
