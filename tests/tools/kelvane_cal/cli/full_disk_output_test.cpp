#include <gtest/gtest.h>

#include "fixtures/CalRun.h"
#include "support/TinyDisk.h"

// kelvane-cal writing to a disk that fills up: a file the disk did not take
// whole is never reported as written, and an old one stays as it was.
namespace kelvane::cal::testing {
namespace {

using kelvane::testing::TinyDisk;

TEST(FullDiskOutput, AnExportThatDoesNotFitLeavesTheOldFileAndFails) {
    TinyDisk disk;
    KELVANE_SKIP_UNLESS_MOUNTED(disk);
    const QString out = disk.FilePath(QStringLiteral("out.ics"));
    ASSERT_TRUE(WriteBytes(out, "an old export"));
    ASSERT_TRUE(disk.Fill());
    const CalRun run =
        RunCal({QStringLiteral("export"), StoreData(QStringLiteral("known_document.cal")),
                QStringLiteral("--year"), QStringLiteral("2027"), QStringLiteral("-o"), out,
                QStringLiteral("--force")});
    EXPECT_NE(run.Status, 0);
    EXPECT_TRUE(run.Err.contains(QStringLiteral("No space left on device")))
        << run.Err.toStdString();
    EXPECT_EQ(ReadBytes(out), QByteArray("an old export"));
}

}  // namespace
}  // namespace kelvane::cal::testing
