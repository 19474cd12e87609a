#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include "support/EveryScript.h"
#include "support/TestWorld.h"

namespace kelvane {
namespace {

using testing::kEveryScript;
using testing::TestWorld;
using testing::Utf16Le;

const QString kFileName = QStringLiteral("~tempAppoint.tmp");
constexpr qint64 kRecordBytes = 108;
constexpr qint64 kBlockBytes = 40 * kRecordBytes;

Appointment Entry(const QString& description, ClockTime start, ClockTime end = {-1, 0}) {
    Appointment appointment;
    appointment.Description = description;
    appointment.StartTime = start;
    appointment.EndTime = end;
    return appointment;
}

class AppointmentStoreTest : public ::testing::Test {
  protected:
    void SetUp() override { world.OpenStores(); }

    qint64 FileSize() const { return QFileInfo(world.FilePath(kFileName)).size(); }

    TestWorld world;
    AppointmentMOD& store = world.appointments;
};

TEST(MakeDateKey, IsMonthThenDayWithTwoDigitsEach) {
    EXPECT_EQ(MakeDateKey(1, 1), QStringLiteral("0101"));
    EXPECT_EQ(MakeDateKey(12, 31), QStringLiteral("1231"));
    EXPECT_EQ(MakeDateKey(3, 7), QStringLiteral("0307"));
    EXPECT_EQ(MakeDateKey(2, 29), QStringLiteral("0229"));
}

TEST(FormatClockTime, TwelveHourStyle) {
    EXPECT_EQ(FormatClockTime({0, 5}, 0), QStringLiteral("12:05 am"));
    EXPECT_EQ(FormatClockTime({9, 7}, 0), QStringLiteral("9:07 am"));
    EXPECT_EQ(FormatClockTime({11, 59}, 0), QStringLiteral("11:59 am"));
    EXPECT_EQ(FormatClockTime({12, 0}, 0), QStringLiteral("12:00 pm"));
    EXPECT_EQ(FormatClockTime({13, 30}, 0), QStringLiteral("1:30 pm"));
    EXPECT_EQ(FormatClockTime({23, 45}, 0), QStringLiteral("11:45 pm"));
}

TEST(FormatClockTime, TwentyFourHourStyle) {
    EXPECT_EQ(FormatClockTime({13, 30}, 1), QStringLiteral("13:30"));
    EXPECT_EQ(FormatClockTime({9, 7}, 1), QStringLiteral("9:07"));
    EXPECT_EQ(FormatClockTime({0, 0}, 1), QStringLiteral("0:00"));
    EXPECT_EQ(FormatClockTime({9, 7}, -3), QStringLiteral("9:07"));
}

TEST(AppointmentRecord, HasTheFixed108ByteLayout) {
    const QByteArray record = EncodeAppointment(Entry(QStringLiteral("Lunch"), {12, 30}, {-1, 0}));
    ASSERT_EQ(record.size(), 108);
    EXPECT_EQ(record.left(100), Utf16Le(QStringLiteral("Lunch").leftJustified(50, u' ')));
    EXPECT_EQ(record.mid(100), QByteArray("\x0c\x00\x1e\x00\xff\xff\x00\x00", 8));
}

TEST(AppointmentRecord, HoldsTheDescriptionInUtf16LittleEndian) {
    // L with stroke, o acute, d, z acute, a blank and U+1F389 as D83C DF89.
    const QByteArray description("\x41\x01\xf3\x00\x64\x00\x7a\x01\x20\x00\x3c\xd8\x89\xdf", 14);
    QByteArray expected = description;
    for (int blank = 7; blank < 50; ++blank) {
        expected.append(" \x00", 2);
    }
    expected.append("\x09\x00\x1e\x00\x0a\x00\x2d\x00", 8);  // 9:30 to 10:45
    ASSERT_EQ(expected.size(), 108);
    EXPECT_EQ(EncodeAppointment(
                  Entry(QStringLiteral("\u0141\u00f3d\u017a \U0001F389"), {9, 30}, {10, 45})),
              expected);
}

TEST(AppointmentRecord, RoundTrips) {
    const Appointment entry = Entry(QStringLiteral("Caf\u00e9 \u20ac"), {23, 59}, {-1, 0});
    EXPECT_EQ(DecodeAppointment(EncodeAppointment(entry)), entry);
}

TEST(AppointmentRecord, TextInEveryScriptRoundTrips) {
    ASSERT_LE(kEveryScript.size(), 50);
    const Appointment entry = Entry(kEveryScript, {7, 5}, {8, 0});
    const QByteArray record = EncodeAppointment(entry);
    EXPECT_EQ(record.left(2 * kEveryScript.size()), Utf16Le(kEveryScript));
    const Appointment read = DecodeAppointment(record);
    EXPECT_EQ(read, entry);
    EXPECT_EQ(read.Description.Trimmed(), kEveryScript);
}

TEST(AppointmentRecord, NulsReadAsBlanksAndTimesAsZero) {
    const Appointment read = DecodeAppointment(QByteArray(108, '\0'));
    EXPECT_EQ(read.Description.Value(), QString(50, u' '));
    EXPECT_EQ(read.StartTime, (ClockTime{0, 0}));
    EXPECT_EQ(read.EndTime, (ClockTime{0, 0}));
}

TEST(AppointmentRecord, ADescriptionCutInsideAnEmojiDropsIt) {
    const Appointment entry =
        Entry(QString(49, u'x') + QStringLiteral("\U0001F389"), {9, 0}, {10, 0});
    EXPECT_EQ(entry.Description.Value(), QString(49, u'x') + QLatin1Char(' '));
    EXPECT_EQ(EncodeAppointment(entry).left(100), Utf16Le(QString(49, u'x') + QLatin1Char(' ')));
}

TEST_F(AppointmentStoreTest, InitNumbersTheDaySlotsInCalendarOrder) {
    EXPECT_EQ(store.DayIndex[1].Key.Value(), QStringLiteral("0101 "));
    EXPECT_EQ(store.DayIndex[60].Key.Value(), QStringLiteral("0229 "));
    EXPECT_EQ(store.DayIndex[61].Key.Value(), QStringLiteral("0301 "));
    EXPECT_EQ(store.DayIndex[366].Key.Value(), QStringLiteral("1231 "));
    for (const DayIndexEntry& entry : store.DayIndex) {
        EXPECT_EQ(entry.Block, 0);
    }
    EXPECT_EQ(store.AppointmentBlockCount, 0);
    EXPECT_EQ(store.AppointmentFileName, world.FilePath(kFileName));
    EXPECT_GT(store.AppointmentFileNumber, 0);
    EXPECT_TRUE(QFile::exists(world.FilePath(kFileName)));
    EXPECT_TRUE(world.platform.Messages.Shown.isEmpty());
}

TEST_F(AppointmentStoreTest, SlotOfKeyUsesTheSameNumbering) {
    EXPECT_EQ(store.SlotOfKey(QStringLiteral("0101")), 1);
    EXPECT_EQ(store.SlotOfKey(QStringLiteral("0229")), 60);
    EXPECT_EQ(store.SlotOfKey(QStringLiteral("0301")), 61);
    EXPECT_EQ(store.SlotOfKey(QStringLiteral("1231")), 366);
    EXPECT_EQ(store.SlotOfKey(QStringLiteral("1301")), std::nullopt);
}

TEST_F(AppointmentStoreTest, CountsAStoredScheduleWithoutTouchingTheWorkingList) {
    store.AppointmentList[1] = Entry(QStringLiteral("Stand-up"), {9, 0});
    store.AppointmentList[2] = Entry(QStringLiteral("Review"), {14, 0});
    store.SaveAppointments(QStringLiteral("0317"));
    store.ClearAppointmentList();
    store.AppointmentList[1] = Entry(QStringLiteral("Typed, not saved"), {8, 0});
    EXPECT_EQ(store.CountStoredAppointments(QStringLiteral("0317")), 2);
    EXPECT_EQ(store.CountStoredAppointments(QStringLiteral("0318")), 0);
    EXPECT_EQ(store.CountStoredAppointments(QStringLiteral("1301")), 0);
    EXPECT_EQ(store.AppointmentList[1].Description.Trimmed(), QStringLiteral("Typed, not saved"));
    EXPECT_EQ(store.CountAppointments(), 1);
}

TEST_F(AppointmentStoreTest, SavingAnEmptyListWithoutABlockWritesNothing) {
    store.ClearAppointmentList();
    store.SaveAppointments(QStringLiteral("0315"));
    EXPECT_EQ(store.AppointmentBlockCount, 0);
    EXPECT_EQ(store.DayIndex[31 + 29 + 15].Block, 0);
    EXPECT_EQ(FileSize(), 0);
}

TEST_F(AppointmentStoreTest, SavingAnEmptyListWithABlockWritesFortyEmptyRecords) {
    store.AppointmentList[1] = Entry(QStringLiteral("Dentist"), {9, 0}, {10, 0});
    store.SaveAppointments(QStringLiteral("0315"));
    ASSERT_EQ(store.AppointmentBlockCount, 1);

    store.ClearAppointmentList();
    store.SaveAppointments(QStringLiteral("0315"));
    EXPECT_EQ(store.AppointmentBlockCount, 1);
    EXPECT_EQ(FileSize(), kBlockBytes);
    QByteArray empty;
    for (int i = 0; i < 40; ++i) {
        empty += EncodeAppointment(Appointment{});
    }
    EXPECT_EQ(world.ReadFile(kFileName), empty);
}

TEST_F(AppointmentStoreTest, SaveAndLoadRoundTripAllFortyEntries) {
    for (int i = 1; i <= 40; ++i) {
        store.AppointmentList[i] =
            Entry(QStringLiteral("Entry %1").arg(i),
                  {static_cast<qint16>(i % 24), static_cast<qint16>(i)}, {-1, 0});
    }
    const AppointmentSlots saved = store.AppointmentList;
    store.SaveAppointments(QStringLiteral("0704"));
    store.ClearAppointmentList();
    store.LoadAppointments(QStringLiteral("0704"));
    EXPECT_EQ(store.AppointmentList, saved);
    EXPECT_EQ(store.CountAppointments(), 40);
}

TEST_F(AppointmentStoreTest, TextInEveryScriptRoundTripsThroughTheFile) {
    store.AppointmentList[1] = Entry(kEveryScript, {9, 0}, {10, 0});
    store.AppointmentList[2] =
        Entry(QStringLiteral("\u05d9\u05d5\u05dd \u05d4\u05d5\u05dc\u05d3\u05ea"), {12, 0});
    const AppointmentSlots saved = store.AppointmentList;
    store.SaveAppointments(QStringLiteral("0229"));
    EXPECT_EQ(FileSize(), kBlockBytes);
    EXPECT_EQ(world.ReadFile(kFileName).left(2 * kEveryScript.size()), Utf16Le(kEveryScript));

    store.ClearAppointmentList();
    store.LoadAppointments(QStringLiteral("0229"));
    EXPECT_EQ(store.AppointmentList, saved);
    EXPECT_EQ(store.AppointmentList[1].Description.Trimmed(), kEveryScript);
}

TEST_F(AppointmentStoreTest, LoadingADateWithoutABlockGivesAnEmptyList) {
    store.AppointmentList[1] = Entry(QStringLiteral("left over"), {8, 0});
    store.LoadAppointments(QStringLiteral("0101"));
    EXPECT_EQ(store.CountAppointments(), 0);
    EXPECT_EQ(store.AppointmentList[1], Appointment{});
}

TEST_F(AppointmentStoreTest, AGapEndsTheCountButTheEntryBehindItIsStored) {
    store.AppointmentList[1] = Entry(QStringLiteral("first"), {8, 0});
    store.AppointmentList[3] = Entry(QStringLiteral("third"), {10, 0});
    EXPECT_EQ(store.CountAppointments(), 1);
    store.SaveAppointments(QStringLiteral("0101"));
    store.ClearAppointmentList();
    store.LoadAppointments(QStringLiteral("0101"));
    EXPECT_EQ(store.CountAppointments(), 1);
    EXPECT_EQ(store.AppointmentList[3].Description.Trimmed(), QStringLiteral("third"));
    EXPECT_EQ(world.ReadFile(kFileName).mid(2 * kRecordBytes, 10),
              Utf16Le(QStringLiteral("third")));
}

TEST_F(AppointmentStoreTest, ABlankDescriptionCountsAsEmpty) {
    store.AppointmentList[1] = Entry(QStringLiteral("   "), {8, 0});
    store.AppointmentList[2] = Entry(QStringLiteral("second"), {9, 0});
    EXPECT_EQ(store.CountAppointments(), 0);
}

TEST_F(AppointmentStoreTest, BlocksFollowTheOrderOfFirstSaving) {
    store.AppointmentList[1] = Entry(QStringLiteral("New Year's Eve"), {20, 0});
    store.SaveAppointments(QStringLiteral("1231"));
    store.AppointmentList[1] = Entry(QStringLiteral("New Year"), {0, 0});
    store.SaveAppointments(QStringLiteral("0101"));
    EXPECT_EQ(store.DayIndex[366].Block, 1);
    EXPECT_EQ(store.DayIndex[1].Block, 2);
    EXPECT_EQ(store.AppointmentBlockCount, 2);
    EXPECT_EQ(FileSize(), 2 * kBlockBytes);

    const QByteArray bytes = world.ReadFile(kFileName);
    EXPECT_EQ(bytes.mid(0, 28), Utf16Le(QStringLiteral("New Year's Eve")));
    EXPECT_EQ(bytes.mid(kBlockBytes, 20), Utf16Le(QStringLiteral("New Year  ")));

    store.AppointmentList[1] = Entry(QStringLiteral("changed"), {1, 0});
    store.SaveAppointments(QStringLiteral("1231"));
    EXPECT_EQ(store.AppointmentBlockCount, 2);
    EXPECT_EQ(world.ReadFile(kFileName).mid(0, 14), Utf16Le(QStringLiteral("changed")));
}

TEST_F(AppointmentStoreTest, DeleteClearsTheListAndTheStoredBlock) {
    store.AppointmentList[1] = Entry(QStringLiteral("gone soon"), {8, 0});
    store.SaveAppointments(QStringLiteral("0505"));
    store.DeleteAppointments(QStringLiteral("0505"));
    EXPECT_EQ(store.CountAppointments(), 0);
    EXPECT_EQ(store.DayIndex[31 + 29 + 31 + 30 + 5].Block, 1);
    store.AppointmentList[1] = Entry(QStringLiteral("junk"), {8, 0});
    store.LoadAppointments(QStringLiteral("0505"));
    EXPECT_EQ(store.CountAppointments(), 0);
}

TEST_F(AppointmentStoreTest, DeleteOfADateWithoutABlockWritesNothing) {
    store.AppointmentList[1] = Entry(QStringLiteral("unsaved"), {8, 0});
    store.DeleteAppointments(QStringLiteral("0505"));
    EXPECT_EQ(store.CountAppointments(), 0);
    EXPECT_EQ(store.AppointmentBlockCount, 0);
    EXPECT_EQ(FileSize(), 0);
}

TEST_F(AppointmentStoreTest, KeysOutsideTheSlotsShowTheirMessages) {
    store.AppointmentList[1] = Entry(QStringLiteral("kept?"), {8, 0});
    store.LoadAppointments(QStringLiteral("0100"));  // 0 January: slot 0
    EXPECT_EQ(store.CountAppointments(), 0);
    store.AppointmentList[1] = Entry(QStringLiteral("unsaved"), {8, 0});
    store.SaveAppointments(QStringLiteral("0100"));
    store.DeleteAppointments(QStringLiteral("0100"));
    EXPECT_EQ(store.CountAppointments(), 1);  // delete of an unknown key does nothing

    const auto& shown = world.platform.Messages.Shown;
    ASSERT_EQ(shown.size(), 2);
    EXPECT_EQ(shown[0],
              (MessageBoxRequest{QStringLiteral("Did Not Find"), QStringLiteral("Kelvane"),
                                 MessageButtons::Ok, MessageIcon::None}));
    EXPECT_EQ(shown[1].Text, QStringLiteral("Could not find date!!"));
    EXPECT_EQ(shown[1].Title, QStringLiteral("Kelvane"));
    EXPECT_EQ(store.AppointmentBlockCount, 0);
}

TEST_F(AppointmentStoreTest, AMonthPastDecemberDoesNothing) {
    store.AppointmentList[1] = Entry(QStringLiteral("kept"), {8, 0});
    store.LoadAppointments(QStringLiteral("1301"));
    store.SaveAppointments(QStringLiteral("1301"));
    store.DeleteAppointments(QStringLiteral("1301"));
    store.LoadAppointments(QStringLiteral("9999"));
    EXPECT_EQ(store.CountAppointments(), 1);
    EXPECT_EQ(store.AppointmentBlockCount, 0);
    EXPECT_TRUE(world.platform.Messages.Shown.isEmpty());
}

TEST_F(AppointmentStoreTest, KeysAreNotValidatedBeyondTheSlotNumber) {
    // 31 February is slot 62, which is 2 March.
    store.AppointmentList[1] = Entry(QStringLiteral("leaps"), {8, 0});
    store.SaveAppointments(QStringLiteral("0231"));
    store.ClearAppointmentList();
    store.LoadAppointments(QStringLiteral("0302"));
    EXPECT_EQ(store.AppointmentList[1].Description.Trimmed(), QStringLiteral("leaps"));
}

TEST_F(AppointmentStoreTest, CloseDeletesTheFileAndKeepsTheNumber) {
    const qint16 number = store.AppointmentFileNumber;
    store.CloseAppointmentStore();
    EXPECT_FALSE(QFile::exists(world.FilePath(kFileName)));
    EXPECT_EQ(store.AppointmentFileNumber, number);
    store.CloseAppointmentStore();  // a second close is harmless
    EXPECT_FALSE(QFile::exists(world.FilePath(kFileName)));
}

TEST_F(AppointmentStoreTest, SavingAfterCloseIsQuietAndCreatesNoFile) {
    store.CloseAppointmentStore();
    store.AppointmentList[1] = Entry(QStringLiteral("late"), {8, 0});
    store.SaveAppointments(QStringLiteral("0101"));
    store.DeleteAppointments(QStringLiteral("0101"));
    EXPECT_TRUE(world.platform.Messages.Shown.empty());
    EXPECT_FALSE(QFile::exists(world.FilePath(kFileName)));
}

TEST_F(AppointmentStoreTest, CloseGivesTheFileNumberBack) {
    const qint16 number = store.AppointmentFileNumber;
    ASSERT_TRUE(world.module1.Files.InUse(number));
    store.CloseAppointmentStore();
    EXPECT_FALSE(world.module1.Files.InUse(number));
}

TEST_F(AppointmentStoreTest, ReinitialisingStartsOverWithNoBlocks) {
    store.AppointmentList[1] = Entry(QStringLiteral("old"), {8, 0});
    store.SaveAppointments(QStringLiteral("0101"));
    store.CloseAppointmentStore();
    store.InitAppointmentStore();
    EXPECT_EQ(store.AppointmentBlockCount, 0);
    EXPECT_EQ(store.DayIndex[1].Block, 0);
    EXPECT_EQ(FileSize(), 0);
    store.LoadAppointments(QStringLiteral("0101"));
    EXPECT_EQ(store.CountAppointments(), 0);
}

TEST(AppointmentStore, AnExistingFileIsReusedAndOverwrittenFromBlockOne) {
    TestWorld world;
    {
        QFile stale(world.FilePath(kFileName));
        ASSERT_TRUE(stale.open(QIODevice::WriteOnly));
        stale.write(QByteArray(3 * kBlockBytes, 'x'));
    }
    world.OpenStores();
    AppointmentMOD& store = world.appointments;
    store.AppointmentList[1] = Entry(QStringLiteral("fresh"), {8, 0});
    store.SaveAppointments(QStringLiteral("0606"));
    EXPECT_EQ(store.DayIndex[31 + 29 + 31 + 30 + 31 + 6].Block, 1);
    const QByteArray bytes = world.ReadFile(kFileName);
    EXPECT_EQ(bytes.size(), 3 * kBlockBytes);
    EXPECT_EQ(bytes.left(10), Utf16Le(QStringLiteral("fresh")));
    EXPECT_EQ(bytes.mid(kBlockBytes, 1), QByteArray("x"));
}

// The program directory cannot hold the file: here a directory stands in its way.
// Without its file the store keeps the schedules in memory.
TEST(AppointmentStore, AFileThatCannotBeOpenedIsReportedOnceAndKeepsItAllInMemory) {
    TestWorld world;
    ASSERT_TRUE(QDir(world.directory.path()).mkdir(kFileName));
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
    EXPECT_TRUE(QFileInfo(world.FilePath(kFileName)).isDir());
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
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/full"), world.FilePath(kFileName)));
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
