#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "calfile/CalendarFileOnDisk.h"
#include "support/MainWindowWorld.h"

// A session that ends without File > Exit keeps unsaved changes in a copy of
// their own and ends as Exit does, without a question.
namespace kelvane::testing {
namespace {

struct SessionWorld {
    SessionWorld() {
        w.platform.Directory.UserData = userData.path();
        w.platform.Clock.Set(2026, 3, 7, 17, 45, 9);
    }

    // 5 May gets a title, an activity and a note, as OK in the editor keeps them.
    void EditFifthOfMay() {
        w.main.Calender1().SetDate(2000, 5, 5);
        w.store.calender.CurrentEntry.Title = QStringLiteral("Fifth of May");
        w.main.Calender1().UpdateSelectedDate(false);
        w.AddActivity(5, 5, QStringLiteral("Parade"), 10, 0, 11, 30);
        w.store.diary.NoteBuffer = QStringLiteral("Flags\r\nDrums");
        w.store.diary.SaveNote(MakeDateKey(5, 5));
        w.store.module1.CalendarDirty = true;
    }

    QStringList CopiesMade() const {
        return QDir(userData.path()).entryList({QStringLiteral("*.cal")}, QDir::Files);
    }

    QTemporaryDir userData;
    MainWindowWorld w;
};

TEST(SessionEnd, UnsavedChangesGoToACopyThatIsTheNewestRecentFile) {
    SessionWorld session;
    session.EditFifthOfMay();
    session.w.main.EndSession();
    ASSERT_EQ(session.CopiesMade(), QStringList{"unsaved-2026-03-07-174509.cal"});
    const QString copy =
        QDir::toNativeSeparators(session.userData.filePath("unsaved-2026-03-07-174509.cal"));
    EXPECT_EQ(session.w.main.Commands().RecentFiles().RecentFiles[1], copy);
    EXPECT_TRUE(session.w.platform.Messages.Shown.isEmpty());

    CalendarFileContent content;
    ASSERT_EQ(ReadCalendarFileNamed(copy, content).Status, CalendarFileStatus::Ok);
    ASSERT_EQ(content.Dates.size(), 1U);
    const CalendarFileDate& date = content.Dates.front();
    EXPECT_EQ(date.Month, 5);
    EXPECT_EQ(date.Day, 5);
    EXPECT_EQ(date.Entry.Title.Trimmed(), QStringLiteral("Fifth of May"));
    ASSERT_EQ(date.Schedule.size(), 1U);
    EXPECT_EQ(date.Schedule.front().Description.Trimmed(), QStringLiteral("Parade"));
    EXPECT_EQ(date.Note, QStringLiteral("Flags\r\nDrums"));
}

// The user's data folder is made by the first copy that goes there.
TEST(SessionEnd, TheFirstCopyMakesTheDataFolder) {
    SessionWorld session;
    const QString folder = session.userData.filePath(QStringLiteral("share/Kelvane"));
    session.w.platform.Directory.UserData = folder;
    session.EditFifthOfMay();
    session.w.main.EndSession();
    EXPECT_EQ(QDir(folder).entryList(QDir::Files), QStringList{"unsaved-2026-03-07-174509.cal"});
}

TEST(SessionEnd, TheCopyLoadsBackIntoTheSameDocument) {
    SessionWorld session;
    session.EditFifthOfMay();
    session.w.main.EndSession();
    const QString copy = session.w.main.Commands().RecentFiles().RecentFiles[1];

    MainWindowWorld next;
    next.platform.Directory.UserData = session.userData.path();
    ASSERT_TRUE(next.main.LoadFile(copy));
    EXPECT_EQ(next.main.Calender1().Months[4].Dates[5].Title.Trimmed(),
              QStringLiteral("Fifth of May"));
    next.store.appointments.LoadAppointments(MakeDateKey(5, 5));
    EXPECT_EQ(next.store.appointments.AppointmentList[1].Description.Trimmed(),
              QStringLiteral("Parade"));
    EXPECT_FALSE(next.store.module1.CalendarDirty);
}

TEST(SessionEnd, ADocumentWithoutChangesMakesNoCopy) {
    SessionWorld session;
    session.w.main.EndSession();
    EXPECT_TRUE(session.CopiesMade().isEmpty());
    EXPECT_TRUE(session.w.platform.Messages.Shown.isEmpty());
}

TEST(SessionEnd, ACopyOfTheSameSecondGetsANameOfItsOwn) {
    SessionWorld session;
    QFile(session.userData.filePath("unsaved-2026-03-07-174509.cal")).open(QIODevice::WriteOnly);
    session.EditFifthOfMay();
    session.w.main.EndSession();
    EXPECT_EQ(session.CopiesMade(),
              (QStringList{"unsaved-2026-03-07-174509-2.cal", "unsaved-2026-03-07-174509.cal"}));
}

TEST(SessionEnd, AnUnwritableDataFolderPutsTheCopyInTheProgramDirectory) {
    SessionWorld session;
    session.w.platform.Directory.UserData = session.userData.filePath("a-file-not-a-folder");
    QFile(session.w.platform.Directory.UserData).open(QIODevice::WriteOnly);
    session.EditFifthOfMay();
    session.w.main.EndSession();
    EXPECT_TRUE(QFile::exists(session.w.world.FilePath("unsaved-2026-03-07-174509.cal")));
}

TEST(SessionEnd, ASaveRequestWhileTheEditorIsOpenMakesACopyAndLeavesTheEditAlone) {
    SessionWorld session;
    MainWindowWorld& w = session.w;
    session.EditFifthOfMay();
    w.AddActivity(3, 12, QStringLiteral("Lunch"), 12, 0);
    w.ClickDay(12);
    CalDate loadedAfterCopy;
    QString firstActivityAfterCopy;
    w.WhenEditorOpens([&](frmEdit& editor) {
        editor.txtTitle->setText(QStringLiteral("Typed"));
        w.main.WriteRecoveryCopyIfNeeded();
        loadedAfterCopy = w.store.calender.CurrentEntryDate;
        firstActivityAfterCopy = w.store.appointments.AppointmentList[1].Description.Trimmed();
        EXPECT_TRUE(editor.isVisible());
        editor.cmdOK->click();
    });
    w.main.mnuEditDate_Click();

    EXPECT_EQ(session.CopiesMade().size(), 1);
    EXPECT_EQ(loadedAfterCopy.Month, 3);
    EXPECT_EQ(loadedAfterCopy.Day, 12);
    EXPECT_EQ(firstActivityAfterCopy, QStringLiteral("Lunch"));
    EXPECT_EQ(w.main.Calender1().Months[2].Dates[12].Title.Trimmed(), QStringLiteral("Typed"));
    EXPECT_EQ(w.main.Calender1().Months[4].Dates[5].Title.Trimmed(),
              QStringLiteral("Fifth of May"));
    w.store.appointments.LoadAppointments(MakeDateKey(3, 12));
    EXPECT_EQ(w.store.appointments.CountAppointments(), 1);
    EXPECT_TRUE(w.main.Timer1.isActive());  // the program goes on
}

TEST(SessionEnd, AfterExitNothingMoreIsKeptOrAsked) {
    SessionWorld session;
    session.EditFifthOfMay();
    session.w.platform.Messages.Answer(MessageAnswer::Yes);
    session.w.main.close();  // "Are you sure you wish to quit", answered Yes
    session.w.main.EndSession();
    EXPECT_TRUE(session.CopiesMade().isEmpty());
    EXPECT_EQ(session.w.platform.Messages.Shown.size(), 1);
}

TEST(SessionEnd, ACloseAfterTheEndAsksNothing) {
    SessionWorld session;
    session.EditFifthOfMay();
    session.w.main.EndSession();
    session.w.main.close();
    EXPECT_TRUE(session.w.platform.Messages.Shown.isEmpty());
}

TEST(SessionEnd, TheWatchStopsAndASecondEndDoesNothing) {
    SessionWorld session;
    session.EditFifthOfMay();
    session.w.main.EndSession();
    EXPECT_FALSE(session.w.main.Timer1.isActive());
    EXPECT_FALSE(session.w.watch.AlertsEnabled);
    session.w.main.EndSession();
    EXPECT_EQ(session.CopiesMade().size(), 1);
}

// A logout that is asked for, cancelled and asked for again, then the real end:
// one copy of the one unsaved state, in the recent list once.
TEST(SessionEnd, RepeatedRequestsAndTheEndMakeOneCopyListedOnce) {
    SessionWorld session;
    session.EditFifthOfMay();
    session.w.main.WriteRecoveryCopyIfNeeded();
    session.w.main.WriteRecoveryCopyIfNeeded();
    session.w.main.EndSession();
    ASSERT_EQ(session.CopiesMade(), QStringList{"unsaved-2026-03-07-174509.cal"});
    const RecentFileList& recent = session.w.main.Commands().RecentFiles();
    EXPECT_EQ(recent.RecentFiles[1],
              QDir::toNativeSeparators(session.userData.filePath("unsaved-2026-03-07-174509.cal")));
    EXPECT_EQ(recent.RecentFiles[2], QString());
}

TEST(SessionEnd, AChangeAfterACopyGetsACopyOfItsOwn) {
    SessionWorld session;
    session.EditFifthOfMay();
    session.w.main.WriteRecoveryCopyIfNeeded();
    session.w.AddActivity(5, 5, QStringLiteral("Fireworks"), 22, 0);
    session.w.main.EndSession();
    EXPECT_EQ(session.CopiesMade(),
              (QStringList{"unsaved-2026-03-07-174509-2.cal", "unsaved-2026-03-07-174509.cal"}));
    EXPECT_TRUE(session.w.main.Commands().RecentFiles().RecentFiles[1].endsWith("-2.cal"));
}

// Writing the copy says nothing: a cancelled logout leaves no "Saving 100%".
TEST(SessionEnd, TheCopyLeavesTheStatusBarAlone) {
    SessionWorld session;
    session.EditFifthOfMay();
    session.w.main.sbStatusBar().ShowMessage(QStringLiteral("Edit Done"));
    session.w.main.WriteRecoveryCopyIfNeeded();
    EXPECT_EQ(session.CopiesMade().size(), 1);
    EXPECT_EQ(session.w.main.sbStatusBar().Message(), QStringLiteral("Edit Done"));
}

// Nothing changed but what is typed into the open editor: the copy holds the
// date as OK would keep it, and the editor goes on as it was.
TEST(SessionEnd, ASaveRequestKeepsWhatIsTypedIntoTheOpenEditor) {
    SessionWorld session;
    MainWindowWorld& w = session.w;
    w.ClickDay(12);
    w.WhenEditorOpens([&](frmEdit& editor) {
        editor.txtTitle->setText(QStringLiteral("  Typed  "));
        editor.txtNotes->setPlainText(QStringLiteral("one\ntwo"));
        w.main.WriteRecoveryCopyIfNeeded();
        EXPECT_EQ(w.store.calender.CurrentEntry.Title.Trimmed(), QString());
        editor.cmdCancel->click();
    });
    w.main.mnuEditDate_Click();
    ASSERT_EQ(session.CopiesMade().size(), 1);
    CalendarFileContent content;
    ASSERT_EQ(
        ReadCalendarFileNamed(session.userData.filePath(session.CopiesMade()[0]), content).Status,
        CalendarFileStatus::Ok);
    ASSERT_EQ(content.Dates.size(), 1U);
    EXPECT_EQ(content.Dates[0].Month, 3);
    EXPECT_EQ(content.Dates[0].Day, 12);
    EXPECT_EQ(content.Dates[0].Entry.Title.Trimmed(), QStringLiteral("Typed"));
    EXPECT_EQ(content.Dates[0].Note, QStringLiteral("one\r\ntwo"));
    EXPECT_EQ(w.main.Calender1().Months[2].Dates[12].Title.Trimmed(), QString());
    EXPECT_FALSE(w.store.module1.CalendarDirty);
    session.w.main.EndSession();
    EXPECT_EQ(session.CopiesMade().size(), 1);
}

// An editor that is only open holds nothing unsaved.
TEST(SessionEnd, AnOpenEditorWithNothingChangedMakesNoCopy) {
    SessionWorld session;
    MainWindowWorld& w = session.w;
    w.main.Calender1().Months[2].Dates[12].Title = QStringLiteral("Kept as it is");
    w.ClickDay(12);
    bool kept = false;
    w.WhenEditorOpens([&](frmEdit& editor) {
        kept = w.main.WriteRecoveryCopyIfNeeded();
        editor.cmdCancel->click();
    });
    w.main.mnuEditDate_Click();
    EXPECT_TRUE(kept);
    EXPECT_TRUE(session.CopiesMade().isEmpty());
    EXPECT_FALSE(w.store.module1.CalendarDirty);
}

}  // namespace
}  // namespace kelvane::testing
