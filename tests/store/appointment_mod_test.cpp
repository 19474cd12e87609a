#include <gtest/gtest.h>

#include <QFile>

#include "store/AppointmentStoreTest.h"
#include "support/EveryScript.h"

namespace kelvane {
namespace {

using testing::AppointmentStoreTest;
using testing::Entry;
using testing::kAppointmentBlockBytes;
using testing::kAppointmentFileName;
using testing::kAppointmentRecordBytes;
using testing::kEveryScript;
using testing::Utf16Le;

TEST_F(AppointmentStoreTest, InitNumbersTheDaySlotsInCalendarOrder) {
    EXPECT_EQ(store.DayIndex[1].Key.Value(), QStringLiteral("0101 "));
    EXPECT_EQ(store.DayIndex[60].Key.Value(), QStringLiteral("0229 "));
    EXPECT_EQ(store.DayIndex[61].Key.Value(), QStringLiteral("0301 "));
    EXPECT_EQ(store.DayIndex[366].Key.Value(), QStringLiteral("1231 "));
    for (const DayIndexEntry& entry : store.DayIndex) {
        EXPECT_EQ(entry.Block, 0);
    }
    EXPECT_EQ(store.AppointmentBlockCount, 0);
    EXPECT_EQ(store.AppointmentFileName, world.FilePath(kAppointmentFileName));
    EXPECT_GT(store.AppointmentFileNumber, 0);
    EXPECT_TRUE(QFile::exists(world.FilePath(kAppointmentFileName)));
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
    EXPECT_EQ(FileSize(), kAppointmentBlockBytes);
    QByteArray empty;
    for (int i = 0; i < 40; ++i) {
        empty += EncodeAppointment(Appointment{});
    }
    EXPECT_EQ(world.ReadFile(kAppointmentFileName), empty);
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

// Loading writes each entry over the working list's own; a copy taken of the
// list before keeps what it held.
TEST_F(AppointmentStoreTest, LoadingLeavesACopyOfTheWorkingListAsItWas) {
    store.AppointmentList[1] = Entry(QStringLiteral("Stored"), {9, 0});
    store.SaveAppointments(QStringLiteral("0704"));
    store.AppointmentList[1] = Entry(QStringLiteral("Held"), {10, 30});
    const AppointmentSlots held = store.AppointmentList;
    store.LoadAppointments(QStringLiteral("0704"));
    EXPECT_EQ(store.AppointmentList[1], Entry(QStringLiteral("Stored"), {9, 0}));
    EXPECT_EQ(held[1], Entry(QStringLiteral("Held"), {10, 30}));
    store.LoadAppointments(QStringLiteral("0704"));
    EXPECT_EQ(store.AppointmentList[1], Entry(QStringLiteral("Stored"), {9, 0}));
}

TEST_F(AppointmentStoreTest, TextInEveryScriptRoundTripsThroughTheFile) {
    store.AppointmentList[1] = Entry(kEveryScript, {9, 0}, {10, 0});
    store.AppointmentList[2] =
        Entry(QStringLiteral("\u05d9\u05d5\u05dd \u05d4\u05d5\u05dc\u05d3\u05ea"), {12, 0});
    const AppointmentSlots saved = store.AppointmentList;
    store.SaveAppointments(QStringLiteral("0229"));
    EXPECT_EQ(FileSize(), kAppointmentBlockBytes);
    EXPECT_EQ(world.ReadFile(kAppointmentFileName).left(2 * kEveryScript.size()),
              Utf16Le(kEveryScript));

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
    EXPECT_EQ(world.ReadFile(kAppointmentFileName).mid(2 * kAppointmentRecordBytes, 10),
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
    EXPECT_EQ(FileSize(), 2 * kAppointmentBlockBytes);

    const QByteArray bytes = world.ReadFile(kAppointmentFileName);
    EXPECT_EQ(bytes.mid(0, 28), Utf16Le(QStringLiteral("New Year's Eve")));
    EXPECT_EQ(bytes.mid(kAppointmentBlockBytes, 20), Utf16Le(QStringLiteral("New Year  ")));

    store.AppointmentList[1] = Entry(QStringLiteral("changed"), {1, 0});
    store.SaveAppointments(QStringLiteral("1231"));
    EXPECT_EQ(store.AppointmentBlockCount, 2);
    EXPECT_EQ(world.ReadFile(kAppointmentFileName).mid(0, 14), Utf16Le(QStringLiteral("changed")));
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
    EXPECT_FALSE(QFile::exists(world.FilePath(kAppointmentFileName)));
    EXPECT_EQ(store.AppointmentFileNumber, number);
    store.CloseAppointmentStore();  // a second close is harmless
    EXPECT_FALSE(QFile::exists(world.FilePath(kAppointmentFileName)));
}

TEST_F(AppointmentStoreTest, SavingAfterCloseIsQuietAndCreatesNoFile) {
    store.CloseAppointmentStore();
    store.AppointmentList[1] = Entry(QStringLiteral("late"), {8, 0});
    store.SaveAppointments(QStringLiteral("0101"));
    store.DeleteAppointments(QStringLiteral("0101"));
    EXPECT_TRUE(world.platform.Messages.Shown.empty());
    EXPECT_FALSE(QFile::exists(world.FilePath(kAppointmentFileName)));
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

}  // namespace
}  // namespace kelvane
