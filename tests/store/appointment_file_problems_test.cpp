#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "store/AppointmentStoreTest.h"
#include "support/EveryScript.h"

namespace kelvane {
namespace {

using testing::Entry;
using testing::kAppointmentBlockBytes;
using testing::kAppointmentFileName;
using testing::TestWorld;
using testing::Utf16Le;

TEST(AppointmentStore, AnExistingFileIsReusedAndOverwrittenFromBlockOne) {
    TestWorld world;
    {
        QFile stale(world.FilePath(kAppointmentFileName));
        ASSERT_TRUE(stale.open(QIODevice::WriteOnly));
        stale.write(QByteArray(3 * kAppointmentBlockBytes, 'x'));
    }
    world.OpenStores();
    AppointmentMOD& store = world.appointments;
    store.AppointmentList[1] = Entry(QStringLiteral("fresh"), {8, 0});
    store.SaveAppointments(QStringLiteral("0606"));
    EXPECT_EQ(store.DayIndex[31 + 29 + 31 + 30 + 31 + 6].Block, 1);
    const QByteArray bytes = world.ReadFile(kAppointmentFileName);
    EXPECT_EQ(bytes.size(), 3 * kAppointmentBlockBytes);
    EXPECT_EQ(bytes.left(10), Utf16Le(QStringLiteral("fresh")));
    EXPECT_EQ(bytes.mid(kAppointmentBlockBytes, 1), QByteArray("x"));
}

// The program directory cannot hold the file: here a directory stands in its way.
// Without its file the store keeps the schedules in memory.
TEST(AppointmentStore, AFileThatCannotBeOpenedIsReportedOnceAndKeepsItAllInMemory) {
    TestWorld world;
    ASSERT_TRUE(QDir(world.directory.path()).mkdir(kAppointmentFileName));
    world.appointments.InitAppointmentStore();
    AppointmentMOD& store = world.appointments;
    EXPECT_EQ(store.AppointmentFileNumber, 0);
    ASSERT_EQ(world.platform.Messages.Shown.size(), 1);
    EXPECT_EQ(world.platform.Messages.Shown[0].Text,
              QStringLiteral("Could not open a 'temporary' file.\r"
                             "Make sure there is enough space on 'drive'"));
    EXPECT_EQ(world.platform.Messages.Shown[0].Title, QStringLiteral("Kelvane"));
    EXPECT_EQ(world.platform.Messages.Shown[0].Buttons, MessageButtons::Ok);

    store.AppointmentList[1] = Entry(QStringLiteral("in memory"), {8, 0});
    store.SaveAppointments(QStringLiteral("0101"));
    store.ClearAppointmentList();
    store.LoadAppointments(QStringLiteral("0101"));
    EXPECT_EQ(store.CountAppointments(), 1);
    EXPECT_EQ(store.AppointmentList[1].Description.Trimmed(), QStringLiteral("in memory"));
    store.DeleteAppointments(QStringLiteral("0101"));
    store.LoadAppointments(QStringLiteral("0101"));
    EXPECT_EQ(store.CountAppointments(), 0);
    store.CloseAppointmentStore();
    EXPECT_TRUE(QFileInfo(world.FilePath(kAppointmentFileName)).isDir());
    EXPECT_EQ(world.platform.Messages.Shown.size(), 1);
}

TEST(AppointmentStore, AMissingProgramDirectoryIsReportedOnce) {
    TestWorld world(QStringLiteral("/nonexistent-kelvane-dir/sub"));
    world.appointments.InitAppointmentStore();
    EXPECT_EQ(world.appointments.AppointmentFileNumber, 0);
    world.appointments.AppointmentList[1] = Entry(QStringLiteral("x"), {8, 0});
    world.appointments.SaveAppointments(QStringLiteral("0101"));
    EXPECT_EQ(world.platform.Messages.Shown.size(), 1);
    EXPECT_FALSE(QFileInfo::exists(QStringLiteral("/nonexistent-kelvane-dir")));
}

#ifdef Q_OS_LINUX
// A full disk: the file opens, but nothing written reaches it. The person is
// told once, and the schedules wait in memory.
TEST(AppointmentStore, AFullDiskIsReportedOnceAndLosesNothing) {
    TestWorld world;
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/full"), world.FilePath(kAppointmentFileName)));
    world.appointments.InitAppointmentStore();
    ASSERT_GT(world.appointments.AppointmentFileNumber, 0);
    EXPECT_TRUE(world.platform.Messages.Shown.isEmpty());
    for (const char* key : {"0101", "0102", "0101"}) {
        world.appointments.AppointmentList[1] = Entry(QString::fromLatin1(key), {8, 0});
        world.appointments.SaveAppointments(QString::fromLatin1(key));
    }
    ASSERT_EQ(world.platform.Messages.Shown.size(), 1);
    EXPECT_EQ(world.platform.Messages.Shown[0].Text,
              QStringLiteral("Could not write a 'temporary' file.\r"
                             "Make sure there is enough space on 'drive'\r"
                             "Nothing is lost: the schedule is kept in memory until it can be "
                             "written."));
    for (const char* key : {"0101", "0102"}) {
        world.appointments.LoadAppointments(QString::fromLatin1(key));
        EXPECT_EQ(world.appointments.CountAppointments(), 1);
        EXPECT_EQ(world.appointments.AppointmentList[1].Description.Trimmed(),
                  QString::fromLatin1(key));
    }
}
#endif

}  // namespace
}  // namespace kelvane
