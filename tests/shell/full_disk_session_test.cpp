#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <csignal>

#include "support/ProgramCopy.h"
#include "support/TinyDisk.h"

// The program as a process of its own, ended by a signal while its disks are full.
namespace kelvane::testing {
namespace {

// The copy holds the edit whole, is the first recent file, and the temporary
// files are gone.
void ExpectAWholeCopyListedFirst(const ProgramCopy& copy, const QString& kept) {
    EXPECT_EQ(copy.FirstRecentFile(), kept);
    CalendarFileContent content;
    ASSERT_EQ(ReadCalendarFileNamed(kept, content).Status, CalendarFileStatus::Ok);
    ASSERT_EQ(content.Dates.size(), 2U);
    EXPECT_EQ(content.Dates[1].Entry.Title.Trimmed(), QStringLiteral("Fifth of May"));
    EXPECT_TRUE(copy.TemporaryFilesLeft().isEmpty());
}

// Only a whole copy counts: with the data folder full, the copy goes beside
// the program, and nothing half-written is left or listed.
TEST(FullDiskSessionEnd, ACopyTheDataFolderCannotTakeGoesBesideTheProgram) {
    TinyDisk data;
    KELVANE_SKIP_UNLESS_MOUNTED(data);
    ProgramCopy copy(QString(), data.Path());
    ASSERT_TRUE(QDir().mkpath(copy.DataFolder()));
    ASSERT_TRUE(copy.Start(QStringLiteral("edit")));
    ASSERT_TRUE(data.Fill());
    ASSERT_TRUE(copy.EndWith(SIGTERM)) << copy.Output().toStdString();

    EXPECT_EQ(QDir(copy.DataFolder()).entryList(QDir::Files | QDir::Hidden), QStringList());
    const QStringList copies = copy.CopiesBesideTheProgram();
    ASSERT_EQ(copies.size(), 1);
    const QString kept = QDir(copy.ProgramFolder()).filePath(copies.front());
    ExpectAWholeCopyListedFirst(copy, kept);
}

// With the program's folder full as well, the copy goes to the home folder.
TEST(FullDiskSessionEnd, AFullDiskLeavesTheCopyInTheHomeFolder) {
    TinyDisk disk(64 * 1024 * 1024);
    KELVANE_SKIP_UNLESS_MOUNTED(disk);
    const QString programFolder = disk.FilePath(QStringLiteral("program"));
    ASSERT_TRUE(QDir().mkpath(programFolder));
    ProgramCopy copy(programFolder, disk.FilePath(QStringLiteral("data")));
    ASSERT_TRUE(QDir().mkpath(copy.DataFolder()));
    ASSERT_TRUE(copy.Start(QStringLiteral("edit")));
    ASSERT_TRUE(disk.Fill());
    ASSERT_TRUE(copy.EndWith(SIGTERM)) << copy.Output().toStdString();

    const QStringList copies =
        QDir(copy.HomeFolder()).entryList({QStringLiteral("unsaved-*.cal")}, QDir::Files);
    ASSERT_EQ(copies.size(), 1);
    const QString kept = QDir(copy.HomeFolder()).filePath(copies.front());
    ExpectAWholeCopyListedFirst(copy, kept);
}

// No folder can take a whole copy: no copy is made or listed, and the
// temporary files are left where they are.
TEST(FullDiskSessionEnd, WithNoRoomAnywhereTheTemporaryFilesStay) {
    TinyDisk disk(64 * 1024 * 1024);
    KELVANE_SKIP_UNLESS_MOUNTED(disk);
    const QString programFolder = disk.FilePath(QStringLiteral("program"));
    ASSERT_TRUE(QDir().mkpath(programFolder));
    ProgramCopy copy(programFolder, disk.FilePath(QStringLiteral("data")));
    ASSERT_TRUE(QDir().mkpath(copy.DataFolder()));
    const QString home = disk.FilePath(QStringLiteral("home"));
    ASSERT_TRUE(QDir().mkpath(home));
    copy.SetEnvironment(QStringLiteral("HOME"), home);
    ASSERT_TRUE(copy.Start(QStringLiteral("edit")));
    ASSERT_TRUE(disk.Fill());
    ASSERT_TRUE(copy.EndWith(SIGTERM)) << copy.Output().toStdString();

    EXPECT_EQ(copy.CopiesMade(), QStringList());
    EXPECT_EQ(copy.CopiesBesideTheProgram(), QStringList());
    EXPECT_EQ(QDir(copy.DataFolder()).entryList(QDir::Files | QDir::Hidden), QStringList());
    EXPECT_EQ(QDir(home).entryList(QDir::Files | QDir::Hidden), QStringList());
    EXPECT_FALSE(copy.FirstRecentFile().contains(QStringLiteral("unsaved-")));
    EXPECT_EQ(copy.TemporaryFilesLeft(),
              (QStringList{QStringLiteral("~tempAppoint.tmp"), QStringLiteral("~tmpDiaryCal")}));
}

}  // namespace
}  // namespace kelvane::testing
