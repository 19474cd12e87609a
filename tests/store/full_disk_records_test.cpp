#include <QFile>

#include <gtest/gtest.h>

#include "store/RecordFile.h"
#include "support/TestWorld.h"
#include "support/TinyDisk.h"

// The temporary stores' record files on a disk that fills up: a record the disk
// refuses waits in memory, and nothing of it reaches another record's place.
namespace kelvane::testing {
namespace {

constexpr int kLength = 1024;

QByteArray Record(char fill) {
    return QByteArray(kLength, fill);
}

QByteArray ReadRecord(RecordFile& file, qint64 record) {
    QByteArray bytes;
    return file.Read(record, 1, bytes) ? bytes : QByteArray("unreadable");
}

// Opens "records" on `disk` holding record A, then record B.
bool OpenWithAAndB(RecordFile& file, const TinyDisk& disk) {
    return file.Open(disk.FilePath(QStringLiteral("records"))) && file.Write(1, Record('A')) &&
           file.Write(2, Record('B'));
}

TEST(FullDiskRecords, ARefusedWriteTouchesNoOtherRecord) {
    TinyDisk disk;
    KELVANE_SKIP_UNLESS_MOUNTED(disk);
    RecordFile file(kLength);
    ASSERT_TRUE(OpenWithAAndB(file, disk));
    ASSERT_TRUE(disk.Fill());

    EXPECT_FALSE(file.Write(9, Record('C')));  // a new record past the file's end
    EXPECT_EQ(ReadRecord(file, 1), Record('A'));
    EXPECT_TRUE(file.Write(1, Record('a')));  // within the file: room enough
    EXPECT_TRUE(file.Write(1, Record('A')));
    EXPECT_EQ(ReadRecord(file, 1), Record('A'));
    EXPECT_EQ(ReadRecord(file, 2), Record('B'));
    EXPECT_EQ(ReadRecord(file, 9), Record('C'));
    file.Close();

    QFile onDisk(disk.FilePath(QStringLiteral("records")));
    ASSERT_TRUE(onDisk.open(QIODevice::ReadOnly));
    EXPECT_EQ(onDisk.read(2 * kLength), Record('A') + Record('B'));
}

// Someone deleted the file while it was open: its records stay readable
// through the open file after a write the disk refused.
TEST(FullDiskRecords, ARefusedWriteToAFileDeletedMeanwhileLosesNoRecord) {
    TinyDisk disk;
    KELVANE_SKIP_UNLESS_MOUNTED(disk);
    RecordFile file(kLength);
    ASSERT_TRUE(OpenWithAAndB(file, disk));
    ASSERT_TRUE(QFile::remove(disk.FilePath(QStringLiteral("records"))));
    ASSERT_TRUE(disk.Fill());

    EXPECT_FALSE(file.Write(9, Record('C')));
    EXPECT_EQ(ReadRecord(file, 1), Record('A'));
    EXPECT_EQ(ReadRecord(file, 2), Record('B'));
    EXPECT_EQ(ReadRecord(file, 9), Record('C'));
}

// Through the schedule store: a date saved while the disk is full keeps its
// schedule, and the dates saved before keep theirs.
TEST(FullDiskRecords, SchedulesSavedBeforeAndDuringAFullDiskAllComeBack) {
    TinyDisk disk;
    KELVANE_SKIP_UNLESS_MOUNTED(disk);
    TestWorld world(disk.Path());
    world.OpenStores();
    world.PutActivity(1, 1, 1, QStringLiteral("First"), {9, 0});
    world.PutActivity(1, 2, 1, QStringLiteral("Second"), {10, 0});
    ASSERT_TRUE(disk.Fill());
    world.PutActivity(1, 3, 1, QStringLiteral("Third"), {11, 0});
    world.PutActivity(1, 1, 2, QStringLiteral("First again"), {12, 0});
    world.PutActivity(1, 1, 3, QStringLiteral("First once more"), {13, 0});

    const auto description = [&](qint16 day, int entry) {
        world.appointments.LoadAppointments(MakeDateKey(1, day));
        return world.appointments.AppointmentList[entry].Description.Trimmed();
    };
    EXPECT_EQ(description(2, 1), QStringLiteral("Second"));
    EXPECT_EQ(description(3, 1), QStringLiteral("Third"));
    EXPECT_EQ(description(1, 1), QStringLiteral("First"));
    EXPECT_EQ(description(1, 3), QStringLiteral("First once more"));
    EXPECT_EQ(world.platform.Messages.Shown.size(), 1);
    world.appointments.CloseAppointmentStore();
    world.diary.CloseDiaryStore();
}

}  // namespace
}  // namespace kelvane::testing
