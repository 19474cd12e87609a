#include <gtest/gtest.h>

#include "support/TestWorld.h"

namespace kelvane {
namespace {

using testing::TestWorld;

class DateHasContentTest : public ::testing::Test {
  protected:
    void SetUp() override { world.OpenStores(); }

    TestWorld world;
    DateEntry& entry = world.calender.CurrentEntry;
};

TEST_F(DateHasContentTest, AnEmptyDateHasNone) {
    EXPECT_FALSE(world.store.DateHasContent());
}

TEST_F(DateHasContentTest, ATextColourOffsetOfOneOnRedCounts) {
    entry.TextColour.Red = 1;
    EXPECT_TRUE(world.store.DateHasContent());
}

TEST_F(DateHasContentTest, AnEnabledColourWithAllChannelsZeroCounts) {
    entry.BackColour.Enabled = true;
    EXPECT_TRUE(world.store.DateHasContent());
}

TEST_F(DateHasContentTest, AnAbsoluteColourCounts) {
    entry.TextColour.Absolute = true;
    EXPECT_TRUE(world.store.DateHasContent());
}

TEST_F(DateHasContentTest, Text2AloneNeverCounts) {
    entry.Text2 = QStringLiteral("only the second text");
    EXPECT_FALSE(world.store.DateHasContent());
}

TEST_F(DateHasContentTest, ABlankTitleDoesNotCountButAWordDoes) {
    entry.Title = QStringLiteral("     ");
    EXPECT_FALSE(world.store.DateHasContent());
    entry.Title = QStringLiteral("  x  ");
    EXPECT_TRUE(world.store.DateHasContent());
}

TEST_F(DateHasContentTest, ANoteCountsUnlessItIsBlank) {
    world.diary.NoteBuffer = QStringLiteral("    ");
    EXPECT_FALSE(world.store.DateHasContent());
    world.diary.NoteBuffer = QStringLiteral("remember");
    EXPECT_TRUE(world.store.DateHasContent());
}

TEST_F(DateHasContentTest, OneScheduledActivityCounts) {
    world.appointments.AppointmentList[1].Description = QStringLiteral("Dentist");
    EXPECT_TRUE(world.store.DateHasContent());
}

TEST(DateHasContent, LooksAtTheWorkingCopiesGiven) {
    DateEntry entry;
    EXPECT_FALSE(DateHasContent(entry, QString(), 0));
    EXPECT_TRUE(DateHasContent(entry, QString(), 1));
    EXPECT_TRUE(DateHasContent(entry, QStringLiteral("\r\n"), 0));  // only blanks are trimmed
}

}  // namespace
}  // namespace kelvane
