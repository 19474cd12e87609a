#include <gtest/gtest.h>

#include <QFile>

#include <sys/stat.h>

#include "calfile/CalendarFileOnDisk.h"
#include "store/DocumentCommandsTest.h"

namespace kelvane {
namespace {

using testing::CalendarFileLines;
using testing::Critical;
using testing::DocumentCommandsTest;
using testing::kFilter;
using testing::OneTitleFile;
using testing::Question;
using testing::WriteFile;

TEST_F(DocumentCommandsTest, NewWithUnsavedChangesAnsweredNoChangesNothing) {
    world.EditDate(1, 1, QStringLiteral("Keep me"), 1, QStringLiteral("note"));
    world.store.module1.CalendarDirty = true;
    Messages().Answer(MessageAnswer::No);
    world.commands.FileNew();
    EXPECT_EQ(
        Messages().Shown,
        (QList<MessageBoxRequest>{Question(QStringLiteral("Are you sure - changes have been made"),
                                           QStringLiteral("NEW DOCUMENT"))}));
    EXPECT_EQ(Title(1, 1), QStringLiteral("Keep me"));
    EXPECT_TRUE(world.store.module1.CalendarDirty);
    EXPECT_EQ(world.window.Caption, QStringLiteral("Kelvane v1.0"));
    world.store.appointments.LoadAppointments(QStringLiteral("0101"));
    EXPECT_EQ(world.store.appointments.CountAppointments(), 1);
    EXPECT_EQ(world.window.Starts, 1);
    EXPECT_EQ(world.window.Ends, 1);
}

TEST_F(DocumentCommandsTest, NewStartsAFreshDocument) {
    world.EditDate(1, 1, QStringLiteral("Gone"), 2, QStringLiteral("gone too"));
    world.store.calender.ColourList[0].Red = 99;
    world.calender.SetFont(QStringLiteral("Courier"), 20);
    world.store.module1.CalendarDirty = true;
    Messages().Answer(MessageAnswer::Yes);
    world.commands.FileNew();

    EXPECT_EQ(Title(1, 1), QString());
    world.store.appointments.LoadAppointments(QStringLiteral("0101"));
    EXPECT_EQ(world.store.appointments.CountAppointments(), 0);
    world.store.diary.LoadNote(QStringLiteral("0101"));
    EXPECT_TRUE(world.store.diary.NoteBuffer.IsBlank());
    EXPECT_EQ(world.store.calender.ColourList[0].Red, -25);
    QString font;
    qint16 size = 0;
    world.calender.GetFont(font, size);
    EXPECT_EQ(font, QStringLiteral("Arial"));
    EXPECT_EQ(size, 9);
    EXPECT_EQ(world.window.Caption, QStringLiteral("Kelvane"));
    EXPECT_FALSE(world.store.module1.CalendarDirty);
    EXPECT_EQ(world.window.Replacements, 1);
}

TEST_F(DocumentCommandsTest, NewWithoutChangesAsksNothing) {
    world.commands.FileNew();
    EXPECT_TRUE(Messages().Shown.isEmpty());
    EXPECT_EQ(world.window.Caption, QStringLiteral("Kelvane"));
}

TEST_F(DocumentCommandsTest, OpenShowsTheOpenDialogAndCancelDoesNothing) {
    world.commands.FileOpen();
    EXPECT_EQ(Dialogs().Shown,
              (QList<FileDialogRequest>{
                  {FileDialogKind::Open, QStringLiteral("Open"), QString(), kFilter}}));
    EXPECT_TRUE(Messages().Shown.isEmpty());
    EXPECT_EQ(world.window.Caption, QStringLiteral("Kelvane v1.0"));
    EXPECT_EQ(world.window.Starts, 1);
    EXPECT_EQ(world.window.Ends, 1);
}

TEST_F(DocumentCommandsTest, OpenLoadsWithoutAskingAnything) {
    const QString path = world.PathOf(QStringLiteral("plans.cal"));
    ASSERT_TRUE(WriteFile(path, OneTitleFile("Loaded")));
    Dialogs().Choose(path);
    world.commands.FileOpen();

    EXPECT_TRUE(Messages().Shown.isEmpty());
    EXPECT_EQ(Title(1, 2), QStringLiteral("Loaded"));
    EXPECT_EQ(world.window.Caption, QStringLiteral("Kelvane - plans.cal"));
    EXPECT_FALSE(world.store.module1.CalendarDirty);
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[1], path);
    EXPECT_EQ(world.window.Menu.Items[1].Caption, QStringLiteral("1)plans.cal"));
    EXPECT_TRUE(world.window.Menu.SeparatorVisible);
    EXPECT_EQ(world.window.Statuses.last(), QStringLiteral("Successful Load"));
    EXPECT_EQ(world.window.Replacements, 1);
}

// Open asks nothing and loads into the open document; the unsaved changes go to
// a copy of their own first, which File > 1 brings back.
TEST_F(DocumentCommandsTest, OpenKeepsUnsavedChangesInACopyFirst) {
    world.world.platform.Directory.UserData = world.PathOf(QStringLiteral("data"));
    ASSERT_TRUE(QDir().mkpath(world.world.platform.Directory.UserData));
    world.EditDate(1, 2, QStringLiteral("Unsaved"), 1, QStringLiteral("my note"));
    world.store.module1.CalendarDirty = true;
    const QString path = world.PathOf(QStringLiteral("plans.cal"));
    ASSERT_TRUE(WriteFile(path, OneTitleFile("Loaded")));
    Dialogs().Choose(path);
    world.commands.FileOpen();

    EXPECT_TRUE(Messages().Shown.isEmpty());
    EXPECT_EQ(Title(1, 2), QStringLiteral("Loaded"));
    EXPECT_EQ(world.window.Caption, QStringLiteral("Kelvane - plans.cal"));
    EXPECT_FALSE(world.store.module1.CalendarDirty);
    const QString copy = world.PathOf(QStringLiteral("data/unsaved-2000-03-15-090000.cal"));
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[1], copy);
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[2], path);
    EXPECT_EQ(world.window.Statuses.last(),
              QStringLiteral("Successful Load - unsaved changes kept in "
                             "unsaved-2000-03-15-090000.cal (File > 1)"));
    CalendarFileContent kept;
    ASSERT_EQ(ReadCalendarFileNamed(copy, kept).Status, CalendarFileStatus::Ok);
    ASSERT_EQ(kept.Dates.size(), 1u);
    EXPECT_EQ(kept.Dates[0].Entry.Title.Trimmed(), QStringLiteral("Unsaved"));
    EXPECT_EQ(Trim(kept.Dates[0].Note), QStringLiteral("my note"));
    EXPECT_EQ(kept.Dates[0].Schedule.size(), 1u);
}

// Without a copy the unsaved changes would be merged away: nothing is loaded.
TEST_F(DocumentCommandsTest, OpenWhereNoCopyCanBeKeptLoadsNothing) {
    const QString path = world.PathOf(QStringLiteral("plans.cal"));
    ASSERT_TRUE(WriteFile(path, OneTitleFile("Loaded")));
    // Folders inside a file, which can never be made.
    world.world.platform.Directory.UserData = path + QStringLiteral("/data");
    world.world.platform.Directory.Directory = path + QStringLiteral("/program");
    world.EditDate(1, 2, QStringLiteral("Unsaved"), 0);
    world.store.module1.CalendarDirty = true;
    Dialogs().Choose(path);
    world.commands.FileOpen();

    EXPECT_EQ(Messages().Shown,
              (QList<MessageBoxRequest>{Critical(
                  QStringLiteral("The unsaved changes could not be kept in a file of their own,\r"
                                 "so the file was not opened: use Save As first."))}));
    EXPECT_EQ(Title(1, 2), QStringLiteral("Unsaved"));
    EXPECT_TRUE(world.store.module1.CalendarDirty);
    EXPECT_EQ(world.window.Caption, QStringLiteral("Kelvane v1.0"));
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[1], QString());
}

TEST_F(DocumentCommandsTest, LoadingDrawsTheMonthOnce) {
    CalendarFileLines file = CalendarFileLines::Empty();
    for (int slot = 91; slot >= 61; --slot) {  // every day of March, the month shown
        file.FillSlot(slot, {" 1 ", "Busy", "0,0,0,0,0", "0,0,0,0,0", " 0 ", " 0 "});
    }
    const QString path = world.PathOf(QStringLiteral("march.cal"));
    ASSERT_TRUE(WriteFile(path, file.Bytes()));
    const int before = world.view.surface.clears;
    ASSERT_TRUE(world.commands.LoadFile(path));
    EXPECT_EQ(world.view.surface.clears, before + 1);
    EXPECT_EQ(world.view.CellTexts(5, 6), (std::vector<QString>{"31", "Busy"}));
}

TEST_F(DocumentCommandsTest, LoadingAppliesTheViewFlagsOfTheFile) {
    CalendarFileLines file = CalendarFileLines::Empty();
    file.lines[3] = " 0 ";
    const QString path = world.PathOf(QStringLiteral("flags.cal"));
    ASSERT_TRUE(WriteFile(path, file.Bytes()));
    ASSERT_TRUE(world.commands.LoadFile(path));
    EXPECT_EQ(world.window.ToolsToggles, 1);
    EXPECT_EQ(world.window.CalenderToggles, 0);
    EXPECT_FALSE(world.window.Tools);
}

TEST_F(DocumentCommandsTest, AMissingFileSaysSoAndChangesNothing) {
    world.commands.LoadFile(world.PathOf(QStringLiteral("missing.cal")));
    EXPECT_EQ(Messages().Shown,
              (QList<MessageBoxRequest>{Critical(QStringLiteral("File dosen't exist"))}));
    EXPECT_EQ(world.window.Caption, QStringLiteral("Kelvane v1.0"));
}

TEST_F(DocumentCommandsTest, AFileWithAnotherHeaderIsNotRecognised) {
    const QString path = world.PathOf(QStringLiteral("other.cal"));
    QByteArray bytes = OneTitleFile("x");
    bytes.replace("Marrowby Kelvane 2000 File", "MARROWBY KELVANE 2000 FILE");
    ASSERT_TRUE(WriteFile(path, bytes));
    world.store.module1.CalendarDirty = true;
    EXPECT_FALSE(world.commands.LoadFile(path));
    EXPECT_EQ(Messages().Shown,
              (QList<MessageBoxRequest>{Critical(QStringLiteral("Don't recognize file"))}));
    EXPECT_TRUE(world.store.module1.CalendarDirty);
    EXPECT_EQ(Title(1, 2), QString());
}

TEST_F(DocumentCommandsTest, ADamagedFileNamesItsLineAndChangesNothing) {
    world.EditDate(1, 2, QStringLiteral("Mine"), 1, QStringLiteral("my note"));
    world.commands.AddRecentFile(QStringLiteral("/earlier.cal"));
    world.store.module1.CalendarDirty = true;
    world.window.Caption = QStringLiteral("Kelvane - earlier.cal");
    const ColourListTable colours = world.store.calender.ColourList;

    CalendarFileLines file = CalendarFileLines::Empty();
    file.lines[1] = " -1 ";  // would make the year a common one
    file.lines[7] = "Changed";
    file.FillSlot(3, {" 1 ", "Bad", "0,0,0,0,0", "0,0,0,0,0", " 2 ", "One", "10,0", "9,0", "Two",
                      "ten,0", "9,0", " 0 "});
    file.FillSlot(2, {" 1 ", "Theirs", "0,0,0,0,0", "0,0,0,0,0", " 0 ", " 0 "});
    const QString path = world.PathOf(QStringLiteral("damaged.cal"));
    ASSERT_TRUE(WriteFile(path, file.Bytes()));

    EXPECT_FALSE(world.commands.LoadFile(path));
    EXPECT_EQ(Messages().Shown,
              (QList<MessageBoxRequest>{Critical(QStringLiteral("File is damaged - line 66"))}));
    EXPECT_EQ(Title(1, 2), QStringLiteral("Mine"));
    EXPECT_EQ(Title(1, 3), QString());
    EXPECT_EQ(world.calender.gLeapYear(), 1);
    EXPECT_EQ(world.store.calender.ColourList, colours);
    EXPECT_TRUE(world.store.module1.CalendarDirty);
    EXPECT_EQ(world.window.Caption, QStringLiteral("Kelvane - earlier.cal"));
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[1], QStringLiteral("/earlier.cal"));
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[2], QString());
    world.store.appointments.LoadAppointments(QStringLiteral("0102"));
    EXPECT_EQ(world.store.appointments.CountAppointments(), 1);
    world.store.diary.LoadNote(QStringLiteral("0102"));
    EXPECT_EQ(world.store.diary.NoteBuffer.Trimmed(), QStringLiteral("my note"));
    EXPECT_TRUE(world.window.Statuses.isEmpty());
}

TEST_F(DocumentCommandsTest, AFolderIsNotACalendarFile) {
    world.commands.LoadFile(world.PathOf(QString()));
    ASSERT_EQ(Messages().Shown.size(), 1);
    EXPECT_EQ(Messages().Shown[0].Icon, MessageIcon::Critical);
    EXPECT_EQ(world.window.Caption, QStringLiteral("Kelvane v1.0"));
}

TEST_F(DocumentCommandsTest, APipeIsNeitherOpenedNorWaitedFor) {
    const QString pipe = world.PathOf(QStringLiteral("pipe.cal"));
    ASSERT_EQ(mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    EXPECT_FALSE(DocumentCommands::FileExists(pipe));
    EXPECT_FALSE(world.commands.LoadFile(pipe));
    EXPECT_EQ(Messages().Shown,
              (QList<MessageBoxRequest>{Critical(QStringLiteral("File dosen't exist"))}));
}

TEST_F(DocumentCommandsTest, AHugeFileIsNotReadIntoMemory) {
    const QString path = world.PathOf(QStringLiteral("huge.cal"));
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(CalendarFileLines::Empty().Bytes());
        ASSERT_TRUE(file.resize(300LL * 1024 * 1024));  // sparse: costs no disk
    }
    EXPECT_FALSE(world.commands.LoadFile(path));
    EXPECT_EQ(Messages().Shown,
              (QList<MessageBoxRequest>{Critical(QStringLiteral("Don't recognize file"))}));
}

}  // namespace
}  // namespace kelvane
