#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "calfile/ReadBack.h"

namespace kelvane {
namespace {

// A file in its own folder holding `bytes`.
class WrittenFile {
  public:
    explicit WrittenFile(const QByteArray& bytes) {
        QFile file(Path());
        ready_ = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    }
    bool Ready() const { return ready_; }
    QString Path() const { return directory_.filePath(QStringLiteral("plans.cal")); }

  private:
    QTemporaryDir directory_;
    bool ready_ = false;
};

// Large enough to span many pages of a view of the file.
QByteArray ManyLines() {
    QByteArray bytes;
    for (int line = 0; line < 20000; ++line) {
        bytes += "line " + QByteArray::number(line) + "\r\n";
    }
    return bytes;
}

TEST(FileHolds, AFileWithExactlyTheBytes) {
    const WrittenFile file(ManyLines());
    ASSERT_TRUE(file.Ready());
    EXPECT_TRUE(FileHolds(file.Path(), ManyLines()));
}

TEST(FileHolds, NotAFileThatDiffersInOneByte) {
    const WrittenFile file(ManyLines());
    ASSERT_TRUE(file.Ready());
    const QByteArray bytes = ManyLines();
    for (const qsizetype at : {qsizetype{0}, bytes.size() / 2, bytes.size() - 1}) {
        QByteArray expected = bytes;
        expected[at] = 'x';
        EXPECT_FALSE(FileHolds(file.Path(), expected)) << at;
    }
}

TEST(FileHolds, NotAFileThatIsLongerOrShorter) {
    const WrittenFile file(ManyLines());
    ASSERT_TRUE(file.Ready());
    EXPECT_FALSE(FileHolds(file.Path(), ManyLines() + "x"));
    EXPECT_FALSE(FileHolds(file.Path(), ManyLines().chopped(1)));
    EXPECT_FALSE(FileHolds(file.Path(), QByteArray()));
}

TEST(FileHolds, AnEmptyFileHoldsNothing) {
    const WrittenFile file{QByteArray()};
    ASSERT_TRUE(file.Ready());
    EXPECT_TRUE(FileHolds(file.Path(), QByteArray()));
    EXPECT_FALSE(FileHolds(file.Path(), "a"));
}

TEST(FileHolds, NotAMissingFile) {
    const QTemporaryDir directory;
    EXPECT_FALSE(FileHolds(directory.filePath(QStringLiteral("gone.cal")), QByteArray()));
    EXPECT_FALSE(FileHolds(directory.filePath(QStringLiteral("gone.cal")), "a"));
}

// The file is compared 64 KiB at a time: bytes of their own at every place,
// so that a byte compared against the wrong one cannot match.
QByteArray Pieces(qsizetype size) {
    QByteArray bytes(size, Qt::Uninitialized);
    for (qsizetype at = 0; at < size; ++at) {
        bytes[at] = static_cast<char>((at * 7 + at / 251) % 256);
    }
    return bytes;
}

constexpr qsizetype kPiece = 64 * 1024;

TEST(FileHolds, FilesEndingOnEitherSideOfAPieceEdge) {
    for (const qsizetype size : {kPiece - 1, kPiece, kPiece + 1, 2 * kPiece, 2 * kPiece + 1}) {
        const WrittenFile file(Pieces(size));
        ASSERT_TRUE(file.Ready());
        EXPECT_TRUE(FileHolds(file.Path(), Pieces(size))) << size;
        for (const qsizetype other : {size - kPiece, size - 1, size + 1, size + kPiece}) {
            if (other >= 0) {
                EXPECT_FALSE(FileHolds(file.Path(), Pieces(other))) << size << " " << other;
            }
        }
    }
}

TEST(FileHolds, NotAFileThatDiffersNextToAPieceEdge) {
    const qsizetype size = 3 * kPiece + 5;
    const WrittenFile file(Pieces(size));
    ASSERT_TRUE(file.Ready());
    for (const qsizetype at :
         {kPiece - 1, kPiece, kPiece + 1, 2 * kPiece - 1, 2 * kPiece, 3 * kPiece, size - 1}) {
        QByteArray expected = Pieces(size);
        expected[at] = static_cast<char>(expected[at] ^ 1);
        EXPECT_FALSE(FileHolds(file.Path(), expected)) << at;
    }
}

#ifdef Q_OS_LINUX
// A file that opens but cannot be read: the memory file of this process has
// nothing at its first byte.
TEST(FileHolds, NotAFileThatCannotBeRead) {
    EXPECT_FALSE(FileHolds(QStringLiteral("/proc/self/mem"), QByteArray()));
    EXPECT_FALSE(FileHolds(QStringLiteral("/proc/self/mem"), "a"));
}
#endif

TEST(ReadWholeFile, ReadsEveryByte) {
    const WrittenFile file(ManyLines());
    ASSERT_TRUE(file.Ready());
    QByteArray bytes;
    ASSERT_TRUE(ReadWholeFile(file.Path(), bytes));
    EXPECT_EQ(bytes, ManyLines());
}

}  // namespace
}  // namespace kelvane
