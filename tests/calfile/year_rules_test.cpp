#include <QDate>
#include <QLocale>

#include <gtest/gtest.h>

#include "calfile/Records.h"
#include "calfile/YearRules.h"

namespace kelvane {
namespace {

qint16 CommonFirstWeekday(int year) {
    return static_cast<qint16>(QDate(year, 1, 1).dayOfWeek() % 7 + 1);
}

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

TEST(DaysInCalendarYear, FollowsTheCalendarsOwnLeapYearRule) {
    EXPECT_EQ(DaysInCalendarYear(2026), 365);
    EXPECT_EQ(DaysInCalendarYear(2024), 366);
    EXPECT_EQ(DaysInCalendarYear(1900), 366);
    EXPECT_EQ(DaysInCalendarYear(2100), 365);
    EXPECT_EQ(DaysInCalendarYear(2200), 366);
}

TEST(FirstWeekdayOfGregorianYear, IsTheWeekdayOfTheCommonCalendar) {
    EXPECT_EQ(FirstWeekdayOfGregorianYear(2026), 5);  // a Thursday
    EXPECT_EQ(FirstWeekdayOfGregorianYear(2000), 7);  // a Saturday
    EXPECT_EQ(FirstWeekdayOfGregorianYear(1900), 2);  // a Monday
    EXPECT_EQ(FirstWeekdayOfGregorianYear(2024), 2);
    EXPECT_EQ(FirstWeekdayOfGregorianYear(2023), 1);  // a Sunday
}

TEST(FirstWeekdayOfCalendarYear, StartsFromSaturdayThe1stOfJanuary2000) {
    EXPECT_EQ(FirstWeekdayOfCalendarYear(2000), 7);
    EXPECT_EQ(FirstWeekdayOfCalendarYear(2001), 2);
    EXPECT_EQ(FirstWeekdayOfCalendarYear(1999), 6);
    EXPECT_EQ(FirstWeekdayOfCalendarYear(2026), 5);
}

TEST(FirstWeekdayOfCalendarYear, AgreesWithTheCommonCalendarFrom1901To2200) {
    for (int year = 1901; year <= 2200; ++year) {
        ASSERT_EQ(FirstWeekdayOfCalendarYear(year), CommonFirstWeekday(year)) << year;
    }
}

TEST(FirstWeekdayOfCalendarYear, CountsByItsOwnRuleOutsideThem) {
    EXPECT_EQ(FirstWeekdayOfCalendarYear(1899), 7);  // 1900 counts as leap
    EXPECT_EQ(CommonFirstWeekday(1899), 1);
    EXPECT_EQ(FirstWeekdayOfCalendarYear(2101), 7);  // 2100 is common in both
    EXPECT_EQ(FirstWeekdayOfCalendarYear(2201), CommonFirstWeekday(2201) % 7 + 1);
}

TEST(MonthDaysOf, GivesFebruary29DaysOnlyInALeapYear) {
    const YearMonthDays leap = MonthDaysOf(true);
    const YearMonthDays common = MonthDaysOf(false);
    EXPECT_EQ(leap[1], 29);
    EXPECT_EQ(common[1], 28);
    for (int month = 1; month <= 12; ++month) {
        EXPECT_EQ(common[static_cast<std::size_t>(month - 1)], QDate(2026, month, 1).daysInMonth());
    }
}

TEST(DayOfYear, AddsTheMonthsBefore) {
    EXPECT_EQ(DayOfYear(MonthDaysOf(false), 1, 1), 1);
    EXPECT_EQ(DayOfYear(MonthDaysOf(false), 3, 1), 60);
    EXPECT_EQ(DayOfYear(MonthDaysOf(true), 3, 1), 61);
    EXPECT_EQ(DayOfYear(MonthDaysOf(false), 12, 31), 365);
    EXPECT_EQ(DayOfYear(MonthDaysOf(true), 12, 31), 366);
}

TEST(DayOfYear, ChecksNothing) {
    EXPECT_EQ(DayOfYear(MonthDaysOf(false), 2, 31), 62);
    EXPECT_EQ(DayOfYear(MonthDaysOf(false), 0, 5), 5);
    EXPECT_EQ(DayOfYear(MonthDaysOf(false), 1, 0), 0);
}

TEST(WeekdayName, NamesOneToSeven) {
    EXPECT_EQ(WeekdayName(1), QStringLiteral("Sunday"));
    EXPECT_EQ(WeekdayName(4), QStringLiteral("Wednesday"));
    EXPECT_EQ(WeekdayName(7), QStringLiteral("Saturday"));
    EXPECT_EQ(WeekdayName(0), QStringLiteral("No Day"));
    EXPECT_EQ(WeekdayName(8), QStringLiteral("No Day"));
    EXPECT_EQ(WeekdayName(-1), QStringLiteral("No Day"));
}

TEST(MonthDaysOf, AgreesWithTheFilesDaySlotsInALeapYear) {
    const YearMonthDays leap = MonthDaysOf(true);
    for (std::size_t m = 0; m < SlotsPerMonth.size(); ++m) {
        EXPECT_EQ(leap[m], SlotsPerMonth[m]) << "month " << m + 1;
    }
    const YearMonthDays common = MonthDaysOf(false);
    for (std::size_t m = 0; m < SlotsPerMonth.size(); ++m) {
        EXPECT_EQ(common[m], SlotsPerMonth[m] - (m == 1 ? 1 : 0)) << "month " << m + 1;
    }
}

TEST(MonthName, NamesOneToTwelveInEnglish) {
    EXPECT_EQ(MonthName(1), QStringLiteral("January"));
    EXPECT_EQ(MonthName(12), QStringLiteral("December"));
    for (int month = 1; month <= 12; ++month) {
        EXPECT_EQ(MonthName(month), QLocale::c().monthName(month, QLocale::LongFormat));
    }
}

TEST(MonthName, IsEmptyOutsideOneToTwelve) {
    EXPECT_EQ(MonthName(0), QString());
    EXPECT_EQ(MonthName(13), QString());
    EXPECT_EQ(MonthName(-1), QString());
}

}  // namespace
}  // namespace kelvane
