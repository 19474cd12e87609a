#include <gtest/gtest.h>

#include "editor/ParseTime.h"
#include "support/QtPrinting.h"

namespace kelvane {
namespace {

// A target that no accepted text gives, to see whether a parse wrote it.
constexpr ClockTime kUntouched{-7, -7};

ClockTime Parsed(const QString& text) {
    ClockTime target = kUntouched;
    ParseTime(text, target);
    return target;
}

struct Accepted {
    const char16_t* text;
    ClockTime time;
};

class ParseTimeAccepts : public ::testing::TestWithParam<Accepted> {};

TEST_P(ParseTimeAccepts, TheHourAndMinute) {
    ClockTime target = kUntouched;
    EXPECT_TRUE(ParseTime(QString::fromUtf16(GetParam().text), target));
    EXPECT_EQ(target, GetParam().time);
}

INSTANTIATE_TEST_SUITE_P(EverySeparatorAndTheEdges, ParseTimeAccepts,
                         ::testing::Values(Accepted{u"9:30", {9, 30}}, Accepted{u"09.30", {9, 30}},
                                           Accepted{u"21-05", {21, 5}}, Accepted{u"7/5", {7, 5}},
                                           Accepted{u"13,45", {13, 45}},
                                           Accepted{u"23:59", {23, 59}}, Accepted{u"0:00", {0, 0}},
                                           Accepted{u" 9:30", {9, 30}}, Accepted{u"9:30 ", {9, 30}},
                                           Accepted{u"9 : 30", {9, 30}},
                                           Accepted{u"\t9:30\t", {9, 30}}, Accepted{u"9:5", {9, 5}},
                                           Accepted{u"9:05", {9, 5}}, Accepted{u"+9:+30", {9, 30}},
                                           Accepted{u"1e1:3e1", {10, 30}},
                                           Accepted{u"9:5d0", {9, 5}},
                                           Accepted{u"0009:0030", {9, 30}}));

class ParseTimeRejects : public ::testing::TestWithParam<const char16_t*> {};

TEST_P(ParseTimeRejects, AndLeavesTheTargetAsItWas) {
    ClockTime target = kUntouched;
    EXPECT_FALSE(ParseTime(QString::fromUtf16(GetParam()), target));
    EXPECT_EQ(target, kUntouched);
}

INSTANTIATE_TEST_SUITE_P(BadTexts, ParseTimeRejects,
                         ::testing::Values(u"24:00", u"12:60", u"9 30", u"9:30 am", u"9", u":30",
                                           u"9:", u"1:2:3", u"9:30.5", u"", u" ", u":", u"-",
                                           u"a:30", u"9:b", u"9:3O", u"-1:30", u"9:-1", u"1e400:30",
                                           u"9:1e400", u"NaN:30", u"9:NaN", u"\u0661\u0662:30",
                                           u"12:\u0663\u0660", u"\uff11\uff12:30", u"9\u200b:30",
                                           u"99999999999:0", u"9::30", u"9:30:", u"9;30", u"-0:30",
                                           u"9:225e+0"));

TEST(ParseTime, SeparatorsInsideExponentsCountAsSeparators) {
    EXPECT_EQ(Parsed(QStringLiteral("9:25e-1")), kUntouched);
    EXPECT_EQ(Parsed(QStringLiteral("9:2.5")), kUntouched);
    EXPECT_EQ(Parsed(QStringLiteral("9:25E+0")), (ClockTime{9, 25}));
}

TEST(ParseTime, TenThousandCharactersAreRefusedQuickly) {
    EXPECT_EQ(Parsed(QString(10000, QLatin1Char('9'))), kUntouched);
    EXPECT_EQ(Parsed(QStringLiteral("9:") + QString(10000, QLatin1Char('0'))), (ClockTime{9, 0}));
    EXPECT_EQ(Parsed(QString(10000, QLatin1Char(' ')) + QStringLiteral("9:30")),
              (ClockTime{9, 30}));
}

}  // namespace
}  // namespace kelvane
