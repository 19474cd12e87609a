#include <gtest/gtest.h>

#include "store/DiaryStoreTest.h"

namespace kelvane {
namespace {

using testing::TestWorld;

TEST(DayOfYearSlot, CountsTheSlotsOfTheMonthsBefore) {
    TestWorld world;
    const MonthLengths& days = world.module1.DaysInMonth;
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("0101"), days), 1);
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("0131"), days), 31);
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("0201"), days), 32);
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("0229"), days), 60);
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("0301"), days), 61);
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("1231"), days), 366);
}

TEST(DayOfYearSlot, ChecksNothingElse) {
    TestWorld world;
    const MonthLengths& days = world.module1.DaysInMonth;
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("0231"), days), 62);
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("0100"), days), 0);
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("0015"), days), 15);  // month 0 adds nothing
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("-115"), days), 15);  // nor does a negative one
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("1299"), days), 335 + 99);
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("1301"), days), std::nullopt);
    EXPECT_EQ(DayOfYearSlot(QString(), days), 0);
}

}  // namespace
}  // namespace kelvane
