#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "store/RecordFile.h"

namespace kelvane {
namespace {

TEST(RecordFile, WritesAndReadsRecordsByNumber) {
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("records"));
    RecordFile file(4);
    ASSERT_TRUE(file.Open(path));
    ASSERT_TRUE(file.Write(3, "cccc"));
    ASSERT_TRUE(file.Write(1, "aaaabbbb"));
    QByteArray records;
    ASSERT_TRUE(file.Read(2, 2, records));
    EXPECT_EQ(records, QByteArray("bbbbcccc"));
    EXPECT_FALSE(file.Read(3, 2, records));  // only one record left
    file.Close();
    QFile written(path);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(written.readAll(), QByteArray("aaaabbbbcccc"));
}

QByteArray OnDisk(const QString& path) {
    QFile written(path);
    return written.open(QIODevice::ReadOnly) ? written.readAll() : QByteArray();
}

TEST(RecordFile, FlushedWritesAreOnDiskAtOnce) {
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("records"));
    RecordFile file(4);
    ASSERT_TRUE(file.Open(path));
    ASSERT_TRUE(file.Write(1, "aaaa"));
    ASSERT_TRUE(file.Write(2, "bbbb"));
    EXPECT_EQ(OnDisk(path), QByteArray("aaaabbbb"));
}

// Opens `file` in `directory`, writes `records` from the first on and reads
// the file ahead.
void WriteAndReadAhead(RecordFile& file, const QTemporaryDir& directory,
                       const QByteArray& records) {
    ASSERT_TRUE(file.Open(directory.filePath(QStringLiteral("records"))));
    ASSERT_TRUE(file.Write(1, records));
    file.ReadAhead();
}

TEST(RecordFile, ReadsAfterReadingAheadFindTheSameRecords) {
    QTemporaryDir directory;
    RecordFile file(4);
    WriteAndReadAhead(file, directory, "aaaabbbbcccc");
    QByteArray records;
    ASSERT_TRUE(file.Read(2, 2, records));
    EXPECT_EQ(records, QByteArray("bbbbcccc"));
    EXPECT_FALSE(file.Read(3, 2, records));  // only one record left
    EXPECT_EQ(records, QByteArray("cccc"));  // what the disk gives
    file.StopReadingAhead();
    ASSERT_TRUE(file.Read(1, 1, records));
    EXPECT_EQ(records, QByteArray("aaaa"));
}

TEST(RecordFile, AWriteAfterReadingAheadIsReadBack) {
    QTemporaryDir directory;
    RecordFile file(4);
    WriteAndReadAhead(file, directory, "aaaabbbb");
    ASSERT_TRUE(file.Write(2, "xxxx"));
    ASSERT_TRUE(file.Write(3, "yyyy"));
    QByteArray records;
    ASSERT_TRUE(file.Read(1, 3, records));
    EXPECT_EQ(records, QByteArray("aaaaxxxxyyyy"));
}

// A file of 4-byte records, alone in its folder.
class RecordFileReadAhead : public ::testing::Test {
  protected:
    QTemporaryDir directory;
    RecordFile file{4};
};

// Records read ahead are copies of their own: a write drops what was read
// ahead, whose room the next read ahead fills again, and leaves them whole.
TEST_F(RecordFileReadAhead, RecordsStayWholeAfterAWrite) {
    WriteAndReadAhead(file, directory, "aaaabbbb");
    QByteArray records;
    ASSERT_TRUE(file.Read(1, 2, records));
    ASSERT_TRUE(file.Write(3, "cccc"));
    EXPECT_EQ(records, QByteArray("aaaabbbb"));
    ASSERT_TRUE(file.Read(1, 3, records));
    EXPECT_EQ(records, QByteArray("aaaabbbbcccc"));
}

TEST_F(RecordFileReadAhead, AgainFindsTheWritesMadeSince) {
    WriteAndReadAhead(file, directory, "aaaabbbbcccc");
    for (const QByteArray& record : {QByteArray("xxxx"), QByteArray("yyyy")}) {
        ASSERT_TRUE(file.Write(2, record));
        file.ReadAhead();
        QByteArray records;
        ASSERT_TRUE(file.Read(1, 3, records));
        EXPECT_EQ(records, "aaaa" + record + "cccc");
        file.StopReadingAhead();
    }
}

TEST_F(RecordFileReadAhead, OfAnEmptyFileLeavesReadsToTheDisk) {
    ASSERT_TRUE(file.Open(directory.filePath(QStringLiteral("records"))));
    file.ReadAhead();
    QByteArray records;
    EXPECT_FALSE(file.Read(1, 1, records));
    ASSERT_TRUE(file.Write(1, "aaaa"));
    ASSERT_TRUE(file.Read(1, 1, records));
    EXPECT_EQ(records, QByteArray("aaaa"));
}

TEST(RecordFile, ReadingAheadFindsBufferedWrites) {
    QTemporaryDir directory;
    RecordFile file(4, RecordFile::Writes::Buffered);
    WriteAndReadAhead(file, directory, "aaaabbbb");
    QByteArray records;
    ASSERT_TRUE(file.Read(1, 2, records));
    EXPECT_EQ(records, QByteArray("aaaabbbb"));
}

TEST(RecordFile, BufferedWritesReadBackAndReachTheDiskOnFlush) {
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("records"));
    RecordFile file(4, RecordFile::Writes::Buffered);
    ASSERT_TRUE(file.Open(path));
    ASSERT_TRUE(file.Write(1, "aaaa"));
    ASSERT_TRUE(file.Write(2, "bbbb"));
    QByteArray records;
    ASSERT_TRUE(file.Read(1, 1, records));
    EXPECT_EQ(records, QByteArray("aaaa"));
    ASSERT_TRUE(file.Write(2, "cccc"));
    ASSERT_TRUE(file.Write(3, "dddd"));
    ASSERT_TRUE(file.Read(2, 2, records));
    EXPECT_EQ(records, QByteArray("ccccdddd"));
    ASSERT_TRUE(file.Write(4, "eeee"));
    EXPECT_TRUE(file.Flush());
    EXPECT_EQ(OnDisk(path), QByteArray("aaaaccccddddeeee"));
}

TEST(RecordFile, KeepsWhatAnExistingFileHolds) {
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("records"));
    {
        QFile old(path);
        ASSERT_TRUE(old.open(QIODevice::WriteOnly));
        old.write("oldoldold");
    }
    RecordFile file(3);
    ASSERT_TRUE(file.Open(path));
    ASSERT_TRUE(file.Write(2, "new"));
    QByteArray records;
    ASSERT_TRUE(file.Read(1, 3, records));
    EXPECT_EQ(records, QByteArray("oldnewold"));
}

// Records the disk does not take wait in memory; deleting the file drops them.
TEST(RecordFile, KeepsInMemoryWhatAClosedFileCannotTake) {
    RecordFile file(4);
    QByteArray records = "junk";
    EXPECT_FALSE(file.Read(1, 1, records));
    EXPECT_TRUE(records.isEmpty());
    EXPECT_FALSE(file.Write(2, "aaaabbbb"));
    EXPECT_EQ(file.KeptInMemory(), 2u);
    ASSERT_TRUE(file.Read(3, 1, records));
    EXPECT_EQ(records, QByteArray("bbbb"));
    EXPECT_FALSE(file.Read(1, 2, records));
    file.CloseAndRemove();
    EXPECT_EQ(file.KeptInMemory(), 0u);
    EXPECT_FALSE(file.Read(2, 1, records));
}

TEST(RecordFile, AFileOpenedAnewDropsWhatWasKeptInMemory) {
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("records"));
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/full"), path));
    RecordFile file(4);
    ASSERT_TRUE(file.Open(path));
    EXPECT_FALSE(file.Write(1, "kept"));
    QByteArray records;
    ASSERT_TRUE(file.Read(1, 1, records));
    EXPECT_EQ(records, QByteArray("kept"));
    file.Close();
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_TRUE(file.Open(path));
    EXPECT_EQ(file.KeptInMemory(), 0u);
    EXPECT_FALSE(file.Read(1, 1, records));
}

TEST(RecordFile, RefusesRecordNumbersBelowOne) {
    QTemporaryDir directory;
    RecordFile file(4);
    ASSERT_TRUE(file.Open(directory.filePath(QStringLiteral("records"))));
    QByteArray records;
    EXPECT_FALSE(file.Write(0, "aaaa"));
    EXPECT_FALSE(file.Read(0, 1, records));
    EXPECT_FALSE(file.Read(1, 0, records));
}

TEST(RecordFile, CloseAndRemoveDeletesTheFile) {
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("records"));
    RecordFile file(4);
    ASSERT_TRUE(file.Open(path));
    file.CloseAndRemove();
    EXPECT_FALSE(file.IsOpen());
    EXPECT_FALSE(QFile::exists(path));
}

}  // namespace
}  // namespace kelvane
