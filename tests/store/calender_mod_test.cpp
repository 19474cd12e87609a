#include <gtest/gtest.h>

#include "store/CalenderMOD.h"

namespace kelvane {
namespace {

MonthLengths LengthsOfALeapYear() {
    MonthLengths lengths;
    const qint16 days[] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (int month = 1; month <= 12; ++month) {
        lengths[month] = days[month - 1];
    }
    return lengths;
}

MonthLengths LengthsOfACommonYear() {
    MonthLengths lengths = LengthsOfALeapYear();
    lengths[2] = 28;
    return lengths;
}

CalDate Date(qint16 year, qint16 month, qint16 day) {
    return CalDate{year, day, month};
}

TEST(ShiftColour, AddsOffsetsAndClamps) {
    EXPECT_EQ(ShiftColour(MakeColour(250, 10, 128), 20, -20, 0), MakeColour(255, 0, 128));
    EXPECT_EQ(ShiftColour(MakeColour(100, 100, 100), -50, -50, -50), MakeColour(50, 50, 50));
}

TEST(ShiftColour, IgnoresTheHighBitsOfTheBase) {
    EXPECT_EQ(ShiftColour(0x7F000000 + MakeColour(1, 2, 3), 0, 0, 0), MakeColour(1, 2, 3));
}

TEST(ResolveColour, AbsoluteTakesNegativeChannelsAsZero) {
    const ColourChoice choice{-4, 20, 30, true, true};
    EXPECT_EQ(ResolveColour(MakeColour(200, 200, 200), choice), MakeColour(0, 20, 30));
}

TEST(ResolveColour, AbsoluteClampsToTheChannelRangeWhateverTheBase) {
    const ColourChoice choice{-5, 300, 7, true, true};
    EXPECT_EQ(ResolveColour(MakeColour(1, 2, 3), choice), MakeColour(0, 255, 7));
    EXPECT_EQ(ResolveColour(MakeColour(90, 90, 90), choice), MakeColour(0, 255, 7));
}

TEST(ResolveColour, WithNeitherFlagGivesTheBase) {
    const ColourChoice choice{50, 60, 70, false, false};
    EXPECT_EQ(ResolveColour(MakeColour(10, 20, 30), choice), MakeColour(10, 20, 30));
}

TEST(ResolveColour, DisabledGivesTheBaseEvenWhenAbsolute) {
    const ColourChoice choice{50, 60, 70, true, false};
    EXPECT_EQ(ResolveColour(MakeColour(10, 20, 30), choice), MakeColour(10, 20, 30));
}

TEST(ResolveColour, EnabledOffsetShiftsTheBase) {
    const ColourChoice choice{100, 0, -40, false, true};
    EXPECT_EQ(ResolveColour(MakeColour(200, 20, 30), choice), MakeColour(255, 20, 0));
}

TEST(FormatCalDate, NeverPads) {
    EXPECT_EQ(FormatCalDate(Date(2000, 1, 1)), QStringLiteral("1-1-2000"));
    EXPECT_EQ(FormatCalDate(Date(2000, 3, 7)), QStringLiteral("7-3-2000"));
    EXPECT_EQ(FormatCalDate(Date(2026, 12, 31)), QStringLiteral("31-12-2026"));
}

TEST(AddDaysInYear, StopsAtTheEndOfDecember) {
    CalDate result;
    AddDaysInYear(result, Date(2026, 12, 30), 5, LengthsOfACommonYear());
    EXPECT_EQ(result, Date(2026, 12, 31));
    AddDaysInYear(result, Date(2026, 1, 1), 1000, LengthsOfACommonYear());
    EXPECT_EQ(result, Date(2026, 12, 31));
}

TEST(AddDaysInYear, StepsWithinAMonth) {
    CalDate result;
    AddDaysInYear(result, Date(2026, 3, 7), 3, LengthsOfACommonYear());
    EXPECT_EQ(result, Date(2026, 3, 10));
    AddDaysInYear(result, Date(2026, 3, 7), 24, LengthsOfACommonYear());
    EXPECT_EQ(result, Date(2026, 3, 31));
}

TEST(AddDaysInYear, CrossesMonthsByTheRealLengths) {
    CalDate result;
    AddDaysInYear(result, Date(2026, 1, 30), 5, LengthsOfACommonYear());
    EXPECT_EQ(result, Date(2026, 2, 4));
    AddDaysInYear(result, Date(2026, 2, 28), 1, LengthsOfACommonYear());
    EXPECT_EQ(result, Date(2026, 3, 1));
    AddDaysInYear(result, Date(2024, 2, 28), 1, LengthsOfALeapYear());
    EXPECT_EQ(result, Date(2024, 2, 29));
    AddDaysInYear(result, Date(2026, 1, 1), 364, LengthsOfACommonYear());
    EXPECT_EQ(result, Date(2026, 12, 31));
    AddDaysInYear(result, Date(2026, 1, 1), 100, LengthsOfACommonYear());
    EXPECT_EQ(result, Date(2026, 4, 11));
}

TEST(AddDaysInYear, CountsBelowOneReturnTheStart) {
    CalDate result;
    AddDaysInYear(result, Date(2026, 5, 5), 0, LengthsOfACommonYear());
    EXPECT_EQ(result, Date(2026, 5, 5));
    AddDaysInYear(result, Date(2026, 5, 5), -9, LengthsOfACommonYear());
    EXPECT_EQ(result, Date(2026, 5, 5));
}

TEST(AddDaysInYear, AStartOutsideTheYearIsLeftAlone) {
    CalDate result;
    AddDaysInYear(result, Date(2026, 13, 1), 5, LengthsOfACommonYear());
    EXPECT_EQ(result, Date(2026, 13, 1));
    AddDaysInYear(result, Date(2026, 0, 1), 5, LengthsOfACommonYear());
    EXPECT_EQ(result, Date(2026, 0, 1));
}

}  // namespace
}  // namespace kelvane
