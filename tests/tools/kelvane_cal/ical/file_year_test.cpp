#include <gtest/gtest.h>

#include "kelvane_cal/ical/FileYear.h"

namespace kelvane::cal {
namespace {

CalendarFileSettings Settings(qint16 year, qint16 firstDay) {
    CalendarFileSettings settings;
    settings.Year = year;
    settings.FirstDay = firstDay;
    return settings;
}

TEST(FileYear, TakesTheYearLineAsALeapIndicator) {
    const FileYear saved(Settings(2026, 5), 2026);
    EXPECT_TRUE(saved.IsLeap());
    EXPECT_EQ(saved.FirstWeekday(), 5);
    EXPECT_EQ(saved.Weekday(1, 1), 5);
    // 1 February is a Sunday; February has 29 days in the layout.
    EXPECT_EQ(saved.Weekday(2, 1), 1);
    EXPECT_EQ(saved.Weekday(2, 29), 1);
    EXPECT_EQ(saved.Weekday(3, 1), 2);

    const FileYear notLeap(Settings(-1, 5), 2026);
    EXPECT_FALSE(notLeap.IsLeap());
    EXPECT_EQ(notLeap.Weekday(3, 1), 1);
    EXPECT_EQ(notLeap.Weekday(12, 31), 5);
    EXPECT_EQ(notLeap.Weekday(2, 29), 0);
}

TEST(FileYear, MakesAWeekdayOutsideTheWeekSunday) {
    EXPECT_EQ(FileYear(Settings(1, 9), 2026).FirstWeekday(), 1);
    EXPECT_EQ(FileYear(Settings(1, 0), 2026).FirstWeekday(), 1);
}

TEST(FileYear, WorksOutTodaysYearForAYearLineOfNought) {
    const FileYear now(Settings(0, 0), 2026);
    EXPECT_FALSE(now.IsLeap());
    EXPECT_EQ(now.FirstWeekday(), 5);  // 1 January 2026 is a Thursday
    EXPECT_EQ(FileYear(Settings(0, 0), 2000).FirstWeekday(), 7);
    EXPECT_EQ(FileYear(Settings(0, 0), 1999).FirstWeekday(), 6);
    EXPECT_TRUE(FileYear(Settings(0, 0), 2000).IsLeap());
    // The weekday given wins over the one worked out.
    EXPECT_EQ(FileYear(Settings(0, 2), 2026).FirstWeekday(), 2);
}

}  // namespace
}  // namespace kelvane::cal
