#include <QDir>

#include <gtest/gtest.h>

#include "support/TestWorld.h"

namespace kelvane {
namespace {

using testing::TestWorld;

// A month view that answers with fixed values.
class StubMonthView final : public MonthViewQueries {
  public:
    qint16 gLeapYear() const override { return leap; }
    void GetDate(qint16& year, qint16& month, qint16& day) const override {
        year = 2000;
        month = 3;
        day = 7;
    }
    qint16 WhichDay(qint16 month, qint16 day) const override {
        asked = {month, day};
        return month == 13 ? qint16{-1} : qint16{3};
    }

    qint16 leap = 1;
    mutable std::pair<qint16, qint16> asked;
};

TEST(SplitColour, TakesTheThreeLowBytes) {
    qint16 red = -1;
    qint16 green = -1;
    qint16 blue = -1;
    SplitColour(10 + 20 * 256 + 30 * 65536, red, green, blue);
    EXPECT_EQ(red, 10);
    EXPECT_EQ(green, 20);
    EXPECT_EQ(blue, 30);
    SplitColour(0x7F000000 + 255, red, green, blue);
    EXPECT_EQ(red, 255);
    EXPECT_EQ(green, 0);
    EXPECT_EQ(blue, 0);
}

TEST(Module1, StartsCleanWithTheSlotCounts) {
    TestWorld world;
    EXPECT_FALSE(world.module1.CalendarDirty);
    const qint16 expected[] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    int total = 0;
    for (int month = 1; month <= 12; ++month) {
        EXPECT_EQ(world.module1.DaysInMonth[month], expected[month - 1]) << month;
        total += world.module1.DaysInMonth[month];
    }
    EXPECT_EQ(total, DaySlotCount);
}

TEST(Module1, YearMonthLengthsFollowTheMonthViewsLeapFlag) {
    TestWorld world;
    EXPECT_EQ(world.module1.YearMonthLengths[2], 28);
    StubMonthView view;
    world.module1.AttachMonthView(&view);
    world.module1.FillYearMonthLengths();
    EXPECT_EQ(world.module1.YearMonthLengths[2], 29);
    view.leap = 0;
    world.module1.FillYearMonthLengths();
    EXPECT_EQ(world.module1.YearMonthLengths[2], 28);
    EXPECT_EQ(world.module1.YearMonthLengths[12], 31);
    EXPECT_EQ(world.module1.DaysInMonth[2], 29);
}

TEST(Module1, ReadClockTakesHourAndMinuteOfTheTimeText) {
    TestWorld world;
    world.platform.Clock.Set(2026, 11, 22, 21, 7, 59);
    world.module1.ReadClock();
    EXPECT_EQ(world.module1.CurrentHour, 21);
    EXPECT_EQ(world.module1.CurrentMinute, 7);
    world.platform.Clock.Set(2026, 11, 22, 0, 0, 0);
    world.module1.ReadClock();
    EXPECT_EQ(world.module1.CurrentHour, 0);
    EXPECT_EQ(world.module1.CurrentMinute, 0);
}

TEST(Module1, AppDirectoryEndsWithOneSeparator) {
    TestWorld world(QStringLiteral("/opt/kelvane"));
    EXPECT_EQ(world.module1.AppDirectory(), QStringLiteral("/opt/kelvane") + QDir::separator());
}

TEST(Module1, AppDirectoryAtTheRootGetsNoSecondSeparator) {
    const QString root = QDir::toNativeSeparators(QDir::rootPath());
    TestWorld world(root);
    EXPECT_EQ(world.module1.AppDirectory(), root);
}

TEST(Module1, AppDirectoryEndingInASeparatorIsKept) {
    const QString directory = QStringLiteral("/tmp") + QDir::separator();
    TestWorld world(directory);
    EXPECT_EQ(world.module1.AppDirectory(), directory);
}

TEST(Module1, GetTodayReadsTheDateText) {
    TestWorld world;
    world.platform.Clock.Set(2026, 3, 7);
    CalDate today;
    world.module1.GetToday(today);
    EXPECT_EQ(today, (CalDate{2026, 7, 3}));
    EXPECT_EQ(world.module1.TodayCache.Text, QStringLiteral("03-07-2026"));
}

TEST(Module1, GetTodayReparsesOnlyWhenTheTextChanges) {
    TestWorld world;
    world.platform.Clock.Set(2026, 3, 7);
    CalDate today;
    world.module1.GetToday(today);
    world.module1.TodayCache.Date.Day = 9;  // proves the cache is used
    world.module1.GetToday(today);
    EXPECT_EQ(today.Day, 9);
    world.platform.Clock.Set(2026, 12, 31);
    world.module1.GetToday(today);
    EXPECT_EQ(today, (CalDate{2026, 31, 12}));
}

TEST(Module1, AsksTheMonthView) {
    TestWorld world;
    StubMonthView view;
    world.module1.AttachMonthView(&view);
    EXPECT_EQ(world.module1.CalendarIsLeapYear(), 1);
    CalDate selected;
    world.module1.GetSelectedDate(selected);
    EXPECT_EQ(selected, (CalDate{2000, 7, 3}));
    EXPECT_EQ(world.module1.DayNameOf(5, 17), QStringLiteral("Tuesday"));
    EXPECT_EQ(view.asked, (std::pair<qint16, qint16>{5, 17}));
    EXPECT_EQ(world.module1.DayNameOf(13, 1), QStringLiteral("No Day"));
}

TEST(Module1, WithoutAMonthViewAnswersNothing) {
    TestWorld world;
    EXPECT_EQ(world.module1.CalendarIsLeapYear(), 0);
    CalDate selected{1, 2, 3};
    world.module1.GetSelectedDate(selected);
    EXPECT_EQ(selected, CalDate{});
    EXPECT_EQ(world.module1.DayNameOf(1, 1), QStringLiteral("No Day"));
}

}  // namespace
}  // namespace kelvane
