#include <gtest/gtest.h>

#include <QFile>

#include "store/DocumentCommandsTest.h"

namespace kelvane {
namespace {

using testing::Critical;
using testing::DocumentCommandsTest;
using testing::DocumentWorld;
using testing::OneTitleFile;
using testing::Question;
using testing::ReadFile;
using testing::WriteFile;

TEST_F(DocumentCommandsTest, ARecentItemWithChangesAsksBeforeLoading) {
    const QString path = world.PathOf(QStringLiteral("recent.cal"));
    ASSERT_TRUE(WriteFile(path, OneTitleFile("Recent")));
    world.commands.AddRecentFile(path);
    world.store.module1.CalendarDirty = true;
    Messages().Answer(MessageAnswer::No);
    world.commands.FileRecent(1);
    EXPECT_EQ(Messages().Shown, (QList<MessageBoxRequest>{Question(
                                    QStringLiteral("Changes have been made to document - proceed"),
                                    QStringLiteral("oops!"))}));
    EXPECT_EQ(Title(1, 2), QString());

    Messages().Answer(MessageAnswer::Yes);
    world.commands.FileRecent(1);
    EXPECT_EQ(Title(1, 2), QStringLiteral("Recent"));
    EXPECT_EQ(world.window.Starts, world.window.Ends);
}

TEST_F(DocumentCommandsTest, ARecentFileThatWasDeletedSaysSoAndTheListStays) {
    const QString first = world.PathOf(QStringLiteral("first.cal"));
    const QString second = world.PathOf(QStringLiteral("second.cal"));
    world.commands.AddRecentFile(first);
    world.commands.AddRecentFile(second);
    world.commands.FileRecent(2);
    EXPECT_EQ(Messages().Shown,
              (QList<MessageBoxRequest>{Critical(QStringLiteral("File dosen't exist"))}));
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[1], second);
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[2], first);
}

TEST_F(DocumentCommandsTest, RecentItemsOutsideOneToFourAreIgnored) {
    world.commands.FileRecent(0);
    world.commands.FileRecent(5);
    EXPECT_TRUE(Messages().Shown.isEmpty());
    EXPECT_EQ(world.window.Starts, 0);
}

TEST_F(DocumentCommandsTest, TheRecentListIsKeptInFourLinesBesideTheProgram) {
    world.commands.AddRecentFile(QStringLiteral("/a/one.cal"));
    world.commands.AddRecentFile(QStringLiteral("/a/two.cal"));
    world.commands.SaveRecentList();
    EXPECT_EQ(world.commands.RecentListFileName(), world.PathOf(QStringLiteral("~tmpFileList")));
    EXPECT_EQ(ReadFile(world.commands.RecentListFileName()),
              QByteArray("/a/two.cal\r\n/a/one.cal\r\n\r\n\r\n"));

    DocumentWorld later;
    ASSERT_TRUE(WriteFile(later.commands.RecentListFileName(),
                          ReadFile(world.commands.RecentListFileName())));
    later.commands.LoadRecentList();
    EXPECT_EQ(later.commands.RecentFiles().RecentFiles[1], QStringLiteral("/a/two.cal"));
    EXPECT_EQ(later.commands.RecentFiles().RecentFiles[2], QStringLiteral("/a/one.cal"));
    EXPECT_EQ(later.window.Menu.Items[2].Caption, QStringLiteral("2)one.cal"));
    EXPECT_FALSE(later.window.Menu.Items[3].Visible);
}

TEST_F(DocumentCommandsTest, AMissingOrShortRecentListGivesWhatThereIs) {
    world.commands.AddRecentFile(QStringLiteral("/stale.cal"));
    world.commands.LoadRecentList();
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[1], QString());
    EXPECT_FALSE(world.window.Menu.SeparatorVisible);

    ASSERT_TRUE(WriteFile(world.commands.RecentListFileName(), "/only.cal"));
    world.commands.LoadRecentList();
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[1], QStringLiteral("/only.cal"));
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[2], QString());
}

TEST_F(DocumentCommandsTest, FileExistsOnlyForFilesThatOpen) {
    const QString path = world.PathOf(QStringLiteral("here.cal"));
    ASSERT_TRUE(WriteFile(path, "x"));
    EXPECT_TRUE(DocumentCommands::FileExists(path));
    EXPECT_FALSE(DocumentCommands::FileExists(world.PathOf(QStringLiteral("nowhere.cal"))));
    EXPECT_FALSE(DocumentCommands::FileExists(QString()));
}

TEST_F(DocumentCommandsTest, ADamagedRecentFileLeavesTheListInItsOrder) {
    const QString damaged = world.PathOf(QStringLiteral("damaged.cal"));
    ASSERT_TRUE(WriteFile(damaged, "Marrowby Kelvane 2000 File\r\n 2000 \r\n"));
    world.commands.AddRecentFile(damaged);
    world.commands.AddRecentFile(QStringLiteral("/newer.cal"));
    world.commands.FileRecent(2);
    EXPECT_EQ(Messages().Shown,
              (QList<MessageBoxRequest>{Critical(QStringLiteral("File is damaged - line 3"))}));
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[1], QStringLiteral("/newer.cal"));
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[2], damaged);
}

}  // namespace
}  // namespace kelvane
