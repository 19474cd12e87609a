#include <gtest/gtest.h>

#include "calendar/GridKeys.h"
#include "support/CalenderWorld.h"

namespace kelvane {
namespace {

using testing::CalenderWorld;

// 2026 lays out as a common year: February has 28 days.
class GridKeysTest : public ::testing::Test {
  protected:
    GridKeysTest() : world(2026, 3, 7) {}

    CalDate After(GridKey key, qint16 month, qint16 day, qint16 shown = 0) {
        return DateAfterKey(key, CalDate{2026, day, month}, shown == 0 ? month : shown,
                            world.calender->Months);
    }

    CalenderWorld world;
};

TEST_F(GridKeysTest, ArrowsMoveByADayOrAWeek) {
    EXPECT_EQ(After(GridKey::Right, 3, 7), (CalDate{2026, 8, 3}));
    EXPECT_EQ(After(GridKey::Left, 3, 7), (CalDate{2026, 6, 3}));
    EXPECT_EQ(After(GridKey::Down, 3, 7), (CalDate{2026, 14, 3}));
    EXPECT_EQ(After(GridKey::Up, 3, 14), (CalDate{2026, 7, 3}));
}

TEST_F(GridKeysTest, ArrowsCrossIntoTheNextAndPreviousMonths) {
    EXPECT_EQ(After(GridKey::Right, 1, 31), (CalDate{2026, 1, 2}));
    EXPECT_EQ(After(GridKey::Left, 3, 1), (CalDate{2026, 28, 2}));
    EXPECT_EQ(After(GridKey::Down, 3, 28), (CalDate{2026, 4, 4}));
    EXPECT_EQ(After(GridKey::Up, 3, 3), (CalDate{2026, 24, 2}));
}

TEST_F(GridKeysTest, TheYearWrapsBetweenDecemberAndJanuaryAndKeepsItsNumber) {
    EXPECT_EQ(After(GridKey::Right, 12, 31), (CalDate{2026, 1, 1}));
    EXPECT_EQ(After(GridKey::Left, 1, 1), (CalDate{2026, 31, 12}));
    EXPECT_EQ(After(GridKey::Up, 1, 3), (CalDate{2026, 27, 12}));
    EXPECT_EQ(After(GridKey::Down, 12, 28), (CalDate{2026, 4, 1}));
}

TEST_F(GridKeysTest, HomeAndEndGoToTheShownMonthsFirstAndLastDays) {
    EXPECT_EQ(After(GridKey::Home, 4, 17), (CalDate{2026, 1, 4}));
    EXPECT_EQ(After(GridKey::End, 4, 17), (CalDate{2026, 30, 4}));
    EXPECT_EQ(After(GridKey::End, 2, 3), (CalDate{2026, 28, 2}));
}

TEST_F(GridKeysTest, PagesKeepTheDayOrTakeTheShorterMonthsLastDay) {
    EXPECT_EQ(After(GridKey::PageDown, 3, 17), (CalDate{2026, 17, 4}));
    EXPECT_EQ(After(GridKey::PageUp, 3, 17), (CalDate{2026, 17, 2}));
    EXPECT_EQ(After(GridKey::PageDown, 1, 31), (CalDate{2026, 28, 2}));
    EXPECT_EQ(After(GridKey::PageUp, 5, 31), (CalDate{2026, 30, 4}));
}

TEST_F(GridKeysTest, PagesWrapBetweenDecemberAndJanuary) {
    EXPECT_EQ(After(GridKey::PageDown, 12, 5), (CalDate{2026, 5, 1}));
    EXPECT_EQ(After(GridKey::PageUp, 1, 5), (CalDate{2026, 5, 12}));
}

TEST_F(GridKeysTest, ALeapYearHasA29February) {
    qint16 leap = 1;
    qint16 weekday = 5;
    world.calender->FirstDayandYear(leap, weekday, false);
    EXPECT_EQ(After(GridKey::PageDown, 1, 31), (CalDate{2026, 29, 2}));
    EXPECT_EQ(After(GridKey::Right, 2, 28), (CalDate{2026, 29, 2}));
}

TEST_F(GridKeysTest, ASelectionOutsideTheShownMonthIsFirstBroughtToItsFirstDay) {
    EXPECT_EQ(After(GridKey::Right, 1, 5, 3), (CalDate{2026, 1, 3}));
    EXPECT_EQ(After(GridKey::Down, 1, 5, 3), (CalDate{2026, 1, 3}));
    EXPECT_EQ(After(GridKey::PageDown, 1, 5, 3), (CalDate{2026, 1, 4}));
    EXPECT_EQ(After(GridKey::End, 1, 5, 3), (CalDate{2026, 31, 3}));
}

TEST_F(GridKeysTest, NoSelectionStartsFromTheShownMonthsFirstDay) {
    const CalDate none{2026, 0, 0};
    EXPECT_EQ(DateAfterKey(GridKey::Left, none, 6, world.calender->Months), (CalDate{2026, 1, 6}));
}

TEST(SelectDateAndShowItsMonth, SelectsTheDayAndShowsItsMonthWithoutLoadingIt) {
    CalenderWorld world;
    world.calender->Months[3].Dates[9].Title = QStringLiteral("Dentist");
    world.calender->SelectDateAndShowItsMonth(CalDate{0, 9, 4});
    EXPECT_EQ(world.calender->GetDisplayMonth(), 4);
    EXPECT_EQ(world.calender->SelectedDate.Day, 9);
    EXPECT_EQ(world.calender->SelectedDate.Month, 4);
    EXPECT_NE(world.world.calender.CurrentEntry.Title.Trimmed(), QStringLiteral("Dentist"));
}

TEST(SelectDateAndShowItsMonth, DoesNothingWhileClicksSelectNothing) {
    CalenderWorld world;
    world.calender->SetCalenderOn(false);
    world.calender->SelectDateAndShowItsMonth(CalDate{0, 9, 4});
    EXPECT_EQ(world.calender->GetDisplayMonth(), 3);
    EXPECT_EQ(world.calender->SelectedDate.Day, 0);
}

TEST(CellArea, FollowsTheLastRedrawsLayout) {
    CalenderWorld world;
    EXPECT_TRUE(world.calender->CellArea(1, 1).isEmpty());
    world.calender->Display();
    EXPECT_EQ(world.calender->CellArea(2, 3), QRectF(200, 136, 100, 96));
    EXPECT_EQ(world.calender->WeekdayArea(7), QRectF(600, 20, 100, 20));
}

}  // namespace
}  // namespace kelvane
