#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "support/DocumentWorld.h"
#include "support/PermissionsApply.h"

// A program folder that lets its files be rewritten but takes no new one: the
// recent list is rewritten in place, its old content kept in the user's data
// folder meanwhile.
namespace kelvane::testing {
namespace {

QByteArray ReadAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

TEST(RecentListInPlace, AProgramFolderThatTakesNoNewFileStillKeepsTheList) {
    DocumentWorld world;
    QTemporaryDir userData;
    world.world.platform.Directory.UserData = userData.path();
    world.commands.AddRecentFile(QStringLiteral("/plans/first.cal"));
    world.commands.SaveRecentList();
    const QString list = world.commands.RecentListFileName();
    const QString program = QFileInfo(list).absolutePath();
    ASSERT_EQ(Chmod(list, 0666), 0);
    ASSERT_EQ(Chmod(program, 0555), 0);
    ASSERT_EQ(Chmod(userData.path(), 0777), 0);
    world.commands.AddRecentFile(QStringLiteral("/plans/second.cal"));
    {
        PermissionsApply permissions;
        ASSERT_TRUE(permissions.Active());
        world.commands.SaveRecentList();
    }
    Chmod(program, 0755);
    EXPECT_EQ(ReadAll(list), QByteArray("/plans/second.cal\r\n/plans/first.cal\r\n\r\n\r\n"));
    EXPECT_EQ(QDir(userData.path()).entryList(QDir::Files | QDir::Hidden), QStringList());
}

}  // namespace
}  // namespace kelvane::testing
