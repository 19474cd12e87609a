#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "store/OutputFile.h"
#include "support/PermissionsApply.h"

namespace kelvane {
namespace {

using testing::Chmod;
using testing::PermissionsApply;

QByteArray ReadAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool WriteAll(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// A folder in which an existing file may be written but no file can be made,
// as with many shared folders. It holds "plans.cal".
class SharedFolder {
  public:
    explicit SharedFolder(const QByteArray& contents) {
        // Whoever saves must be able to reach the folder.
        chmod(QFile::encodeName(root_.path()).constData(), 0755);
        QDir(root_.path()).mkdir(QStringLiteral("shared"));
        ready_ = WriteAll(FilePath(), contents) &&
                 chmod(QFile::encodeName(FilePath()).constData(), 0666) == 0 &&
                 chmod(QFile::encodeName(Path()).constData(), 0555) == 0;
    }
    ~SharedFolder() { chmod(QFile::encodeName(Path()).constData(), 0755); }
    SharedFolder(const SharedFolder&) = delete;
    SharedFolder& operator=(const SharedFolder&) = delete;

    bool Ready() const { return ready_; }
    QString Path() const { return root_.filePath(QStringLiteral("shared")); }
    QString FilePath() const { return Path() + QStringLiteral("/plans.cal"); }
    QStringList Files() const { return QDir(Path()).entryList(QDir::Files | QDir::Hidden); }

  private:
    QTemporaryDir root_;
    bool ready_ = false;
};

TEST(OutputFile, NothingReachesTheFileBeforeClose) {
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("plans.cal"));
    ASSERT_TRUE(WriteAll(path, "old contents"));
    FileNumbers numbers;
    OutputFile out(numbers);
    const qint16 number = out.OpenForOutput(path);
    ASSERT_NE(number, 0);
    EXPECT_TRUE(numbers.InUse(number));
    out.Device().write("new contents");
    EXPECT_EQ(ReadAll(path), QByteArray("old contents"));
    EXPECT_TRUE(out.Close());
    EXPECT_EQ(ReadAll(path), QByteArray("new contents"));
    EXPECT_FALSE(numbers.InUse(number));
    EXPECT_EQ(QDir(directory.path()).entryList(QDir::Files | QDir::Hidden),
              QStringList{QStringLiteral("plans.cal")});
}

TEST(OutputFile, AnOutputNeverClosedLeavesTheOldFileWhole) {
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("plans.cal"));
    ASSERT_TRUE(WriteAll(path, "old contents"));
    FileNumbers numbers;
    {
        OutputFile out(numbers);
        ASSERT_NE(out.OpenForOutput(path), 0);
        out.Device().write("half of the new");
    }
    EXPECT_EQ(ReadAll(path), QByteArray("old contents"));
    EXPECT_EQ(QDir(directory.path()).entryList(QDir::Files | QDir::Hidden),
              QStringList{QStringLiteral("plans.cal")});
}

// Where the old and the new content wait while a file is rewritten in place.
class KeepFolder {
  public:
    KeepFolder() { chmod(QFile::encodeName(folder_.path()).constData(), 0777); }
    QString Path() const { return folder_.path(); }
    QStringList Files() const { return QDir(folder_.path()).entryList(QDir::Files); }

  private:
    QTemporaryDir folder_;
};

TEST(OutputFile, ReplacesAWritableFileInAFolderThatCannotBeWritten) {
    SharedFolder shared("old contents");
    ASSERT_TRUE(shared.Ready());
    KeepFolder keep;
    FileNumbers numbers;
    {
        PermissionsApply permissions;
        ASSERT_TRUE(permissions.Active());
        ASSERT_FALSE(WriteAll(shared.Path() + QStringLiteral("/probe"), "x"));
        OutputFile out(numbers, keep.Path());
        ASSERT_NE(out.OpenForOutput(shared.FilePath()), 0);
        out.Device().write("new contents, longer than the old");
        EXPECT_TRUE(out.Close()) << out.ErrorString().toStdString();
    }
    EXPECT_EQ(ReadAll(shared.FilePath()), QByteArray("new contents, longer than the old"));
    EXPECT_EQ(shared.Files(), QStringList{QStringLiteral("plans.cal")});
    EXPECT_EQ(keep.Files(), QStringList());
}

TEST(OutputFile, AShorterContentInPlaceLeavesNothingOfTheOld) {
    SharedFolder shared("old contents, longer than the new");
    ASSERT_TRUE(shared.Ready());
    KeepFolder keep;
    FileNumbers numbers;
    PermissionsApply permissions;
    ASSERT_TRUE(permissions.Active());
    OutputFile out(numbers, keep.Path());
    ASSERT_NE(out.OpenForOutput(shared.FilePath()), 0);
    out.Device().write("new");
    EXPECT_TRUE(out.Close()) << out.ErrorString().toStdString();
    EXPECT_EQ(ReadAll(shared.FilePath()), QByteArray("new"));
}

// With nowhere to keep the old content, rewriting in place would risk it.
TEST(OutputFile, WithoutAKeepFolderAFileInSuchAFolderIsNotRewritten) {
    SharedFolder shared("old contents");
    ASSERT_TRUE(shared.Ready());
    FileNumbers numbers;
    PermissionsApply permissions;
    ASSERT_TRUE(permissions.Active());
    OutputFile out(numbers);
    EXPECT_EQ(out.OpenForOutput(shared.FilePath()), 0);
    EXPECT_EQ(out.ErrorString(), QStringLiteral("no new file may be made in the folder"));
    EXPECT_EQ(ReadAll(shared.FilePath()), QByteArray("old contents"));
}

// The old content cannot be kept first: the file is not touched.
TEST(OutputFile, AKeepFolderThatCannotBeWrittenLeavesTheFileAlone) {
    SharedFolder shared("old contents");
    ASSERT_TRUE(shared.Ready());
    QTemporaryDir closed;
    ASSERT_EQ(chmod(QFile::encodeName(closed.path()).constData(), 0555), 0);
    FileNumbers numbers;
    {
        PermissionsApply permissions;
        ASSERT_TRUE(permissions.Active());
        OutputFile out(numbers, closed.path());
        ASSERT_NE(out.OpenForOutput(shared.FilePath()), 0);
        out.Device().write("new contents");
        EXPECT_FALSE(out.Close());
        EXPECT_TRUE(
            out.ErrorString().startsWith(QStringLiteral("its content could not be kept in ")))
            << out.ErrorString().toStdString();
    }
    chmod(QFile::encodeName(closed.path()).constData(), 0755);
    EXPECT_EQ(ReadAll(shared.FilePath()), QByteArray("old contents"));
}

TEST(OutputFile, MakesNoNewFileInAFolderThatCannotBeWritten) {
    SharedFolder shared("old contents");
    ASSERT_TRUE(shared.Ready());
    FileNumbers numbers;
    const QString path = shared.Path() + QStringLiteral("/other.cal");
    PermissionsApply permissions;
    ASSERT_TRUE(permissions.Active());
    OutputFile out(numbers);
    EXPECT_EQ(out.OpenForOutput(path), 0);
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_FALSE(numbers.InUse(1));
}

}  // namespace
}  // namespace kelvane
