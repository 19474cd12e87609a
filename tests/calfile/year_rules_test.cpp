#include <gtest/gtest.h>

#include "calfile/YearRules.h"

namespace kelvane {
namespace {

TEST(LeapYearRule, UsesTheDivisorsFourThreeHundredAndOneThousand) {
    EXPECT_EQ(LeapYearRule(1996), 1);
    EXPECT_EQ(LeapYearRule(2001), 0);
    EXPECT_EQ(LeapYearRule(2000), 1);
    EXPECT_EQ(LeapYearRule(1900), 1);
    EXPECT_EQ(LeapYearRule(2100), 0);  // a multiple of 300
    EXPECT_EQ(LeapYearRule(2200), 1);
    EXPECT_EQ(LeapYearRule(1800), 0);
    EXPECT_EQ(LeapYearRule(2400), 0);
    EXPECT_EQ(LeapYearRule(3000), 1);
}

TEST(WeekdayName, NamesOneToSeven) {
    EXPECT_EQ(WeekdayName(1), QStringLiteral("Sunday"));
    EXPECT_EQ(WeekdayName(4), QStringLiteral("Wednesday"));
    EXPECT_EQ(WeekdayName(7), QStringLiteral("Saturday"));
    EXPECT_EQ(WeekdayName(0), QStringLiteral("No Day"));
    EXPECT_EQ(WeekdayName(8), QStringLiteral("No Day"));
    EXPECT_EQ(WeekdayName(-1), QStringLiteral("No Day"));
}

}  // namespace
}  // namespace kelvane
