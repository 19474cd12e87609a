#include <QDate>

#include <gtest/gtest.h>

#include "support/CalenderWorld.h"

namespace kelvane {
namespace {

using testing::CalenderWorld;

qint16 JanuaryStartFor(int year) {
    CalenderWorld world(year, 6, 1);
    return world.calender->Months[0].FirstDay;
}

TEST(InitializeVariables, TodayIn2000StartsJanuaryOnSaturdayInALeapYear) {
    CalenderWorld world(2000, 7, 4);
    EXPECT_EQ(world.calender->Months[0].FirstDay, 7);
    EXPECT_EQ(world.calender->gLeapYear(), 1);
    EXPECT_EQ(world.calender->Months[1].Days, 29);
}

TEST(InitializeVariables, TodayIn2001StartsJanuaryOnMonday) {
    CalenderWorld world(2001, 7, 4);
    EXPECT_EQ(world.calender->Months[0].FirstDay, 2);
    EXPECT_EQ(world.calender->gLeapYear(), 0);
    EXPECT_EQ(world.calender->Months[1].Days, 28);
}

TEST(InitializeVariables, TodayIn1999StartsJanuaryOnFriday) {
    CalenderWorld world(1999, 7, 4);
    EXPECT_EQ(world.calender->Months[0].FirstDay, 6);
    EXPECT_EQ(world.calender->gLeapYear(), 0);
}

TEST(InitializeVariables, AgreesWithTheCommonCalendarBetween1901And2099) {
    for (int year : {1901, 1950, 1970, 1999, 2024, 2026, 2038, 2099}) {
        const int weekday = QDate(year, 1, 1).dayOfWeek() % 7 + 1;
        EXPECT_EQ(JanuaryStartFor(year), weekday) << year;
    }
}

TEST(InitializeVariables, CountsTheYear1900AsLeapWhenWalkingPastIt) {
    EXPECT_EQ(JanuaryStartFor(1899), 7);  // the common calendar says Sunday
    CalenderWorld world(1900, 1, 1);
    EXPECT_EQ(world.calender->gLeapYear(), 1);
}

TEST(InitializeVariables, WalksPast2100AndInto2200ByTheSameRule) {
    EXPECT_EQ(JanuaryStartFor(2101), 7);  // 2100 is a common year here too
    CalenderWorld world(2200, 1, 1);
    EXPECT_EQ(world.calender->gLeapYear(), 1);
    EXPECT_EQ(world.calender->Months[1].Days, 29);
}

TEST(InitializeVariables, LaysOutEveryMonthFromTheOneBefore) {
    CalenderWorld world(2026, 11, 22);
    const Calender& calender = *world.calender;
    const char* names[] = {"January", "February", "March",     "April",   "May",      "June",
                           "July",    "August",   "September", "October", "November", "December"};
    for (int month = 1; month <= 12; ++month) {
        const MonthInfo& info = calender.Months[static_cast<std::size_t>(month - 1)];
        EXPECT_EQ(info.Name.Trimmed(), QString::fromLatin1(names[month - 1]));
        EXPECT_EQ(info.Days, QDate(2026, month, 1).daysInMonth());
        EXPECT_EQ(info.FirstDay, QDate(2026, month, 1).dayOfWeek() % 7 + 1) << month;
    }
}

TEST(FirstDayandYear, SetsUpALeapYearFromALeapIndicatorAndAWeekday) {
    CalenderWorld world;
    qint16 yy = 1;
    qint16 dd = 3;
    world.calender->FirstDayandYear(yy, dd, false);
    const Calender& calender = *world.calender;
    EXPECT_EQ(calender.gLeapYear(), 1);
    EXPECT_EQ(calender.Months[0].FirstDay, 3);
    EXPECT_EQ(calender.Months[1].Days, 29);
    EXPECT_EQ(calender.Months[1].FirstDay, 6);
    EXPECT_EQ(calender.Months[2].FirstDay, 7);
    EXPECT_EQ(yy, 1);
    EXPECT_EQ(dd, 3);
}

TEST(FirstDayandYear, AWeekdayOutOfRangeBecomesSunday) {
    CalenderWorld world;
    qint16 yy = -1;
    qint16 dd = 9;
    world.calender->FirstDayandYear(yy, dd, false);
    EXPECT_EQ(world.calender->gLeapYear(), 0);
    EXPECT_EQ(world.calender->Months[0].FirstDay, 1);
    EXPECT_EQ(world.calender->Months[1].Days, 28);
    EXPECT_EQ(dd, 1);
}

TEST(FirstDayandYear, ATodaysYearFromAFileIsOnlyALeapIndicator) {
    CalenderWorld world(2026, 11, 22);
    qint16 yy = 2026;  // what a saved file holds: today's year, not a leap year
    qint16 dd = 5;
    world.calender->FirstDayandYear(yy, dd, false);
    EXPECT_EQ(world.calender->gLeapYear(), 1);
    EXPECT_EQ(world.calender->Months[1].Days, 29);
}

TEST(FirstDayandYear, KeepsTheDatesOfTheDocument) {
    CalenderWorld world;
    world.calender->Months[4].Dates[9].Title = QStringLiteral("kept");
    qint16 yy = -1;
    qint16 dd = 2;
    world.calender->FirstDayandYear(yy, dd, false);
    EXPECT_EQ(world.calender->Months[4].Dates[9].Title.Trimmed(), QStringLiteral("kept"));
}

TEST(FirstDayandYear, AsksTodaysYearAndTheWeekdayOfTheFirstOfJanuary) {
    CalenderWorld world(2026, 11, 22);
    qint16 yy = 0;
    qint16 dd = 0;
    world.calender->FirstDayandYear(yy, dd, true);
    EXPECT_EQ(yy, 2026);
    EXPECT_EQ(dd, 5);
}

TEST(InitializeVariables, ClearsEveryDateWhenAsked) {
    CalenderWorld world;
    DateEntry& entry = world.calender->Months[11].Dates[35];
    entry.Title = QStringLiteral("title");
    entry.Text2 = QStringLiteral("second");
    entry.BackColour = ColourChoice{1, 2, 3, true, true};
    qint16 dd = 0;
    world.calender->InitializeVariables(0, dd, true);
    EXPECT_EQ(world.calender->Months[11].Dates[35], DateEntry{});
    EXPECT_EQ(dd, 7);  // the weekday worked out for 2000 is handed back
}

TEST(WhichDay, ADayPastTheMonthCountsAsTheFirst) {
    CalenderWorld world(2001, 1, 1);
    ASSERT_EQ(world.calender->gLeapYear(), 0);
    EXPECT_EQ(world.calender->WhichDay(2, 30), world.calender->WhichDay(2, 1));
    EXPECT_EQ(world.calender->WhichDay(2, 1), 5);  // 1 February 2001 was a Thursday
}

TEST(WhichDay, TheTwentyNinthOfFebruaryOnlyCountsInALeapYear) {
    CalenderWorld leap;                            // 2000
    EXPECT_EQ(leap.calender->WhichDay(2, 29), 3);  // 29 February 2000 was a Tuesday
    CalenderWorld common(2001, 1, 1);
    EXPECT_EQ(common.calender->WhichDay(2, 29), common.calender->WhichDay(2, 1));
}

TEST(WhichDay, AMonthOutsideTheYearHasNoWeekday) {
    CalenderWorld world;
    EXPECT_EQ(world.calender->WhichDay(13, 1), -1);
    EXPECT_EQ(world.calender->WhichDay(0, 1), -1);
    EXPECT_EQ(world.calender->WhichDay(-3, 1), -1);
}

TEST(WhichDay, DayZeroCountsAsTheFirst) {
    CalenderWorld world;
    EXPECT_EQ(world.calender->WhichDay(1, 0), world.calender->WhichDay(1, 1));
    EXPECT_EQ(world.calender->WhichDay(1, 0), 7);
}

TEST(WhichDay, WalksThroughTheWeek) {
    CalenderWorld world;  // 2000: January starts on Saturday
    EXPECT_EQ(world.calender->WhichDay(1, 2), 1);
    EXPECT_EQ(world.calender->WhichDay(1, 8), 7);
    EXPECT_EQ(world.calender->WhichDay(3, 15), 4);  // 15 March 2000, a Wednesday
}

TEST(WeekdayName, NamesOnlyTheSevenWeekdays) {
    EXPECT_EQ(WeekdayName(1), QStringLiteral("Sunday"));
    EXPECT_EQ(WeekdayName(7), QStringLiteral("Saturday"));
    EXPECT_EQ(WeekdayName(0), QStringLiteral("No Day"));
    EXPECT_EQ(WeekdayName(8), QStringLiteral("No Day"));
}

TEST(GetDisplayMonth, StartsAtTodaysMonth) {
    CalenderWorld world(2026, 11, 22);
    EXPECT_EQ(world.calender->GetDisplayMonth(), 11);
}

TEST(DateFromText, ReadsMonthDayAndYear) {
    EXPECT_EQ(DateFromText(QStringLiteral("03-07-2000")), (CalDate{2000, 7, 3}));
    EXPECT_EQ(DateFromText(QStringLiteral("12-31-1999")), (CalDate{1999, 31, 12}));
    EXPECT_EQ(DateFromText(QStringLiteral("ab-cd-efgh")), (CalDate{0, 0, 0}));
    EXPECT_EQ(DateFromText(QString()), (CalDate{0, 0, 0}));
}

TEST(MonthViewQueries, TheStoreAsksTheAttachedMonthView) {
    CalenderWorld world(2001, 5, 5);
    Module1& module1 = world.world.module1;
    module1.AttachMonthView(world.calender.get());
    EXPECT_EQ(module1.CalendarIsLeapYear(), 0);
    world.calender->SetDate(2000, 4, 9);
    CalDate selected;
    module1.GetSelectedDate(selected);
    EXPECT_EQ(selected, (CalDate{2000, 9, 4}));
    EXPECT_EQ(module1.DayNameOf(1, 1), QStringLiteral("Monday"));
    EXPECT_EQ(module1.DayNameOf(13, 1), QStringLiteral("No Day"));
    module1.FillYearMonthLengths();
    EXPECT_EQ(module1.YearMonthLengths[2], 28);
}

}  // namespace
}  // namespace kelvane
