#include <gtest/gtest.h>

#include <cmath>

#include "calfile/Conversions.h"

namespace kelvane {
namespace {

TEST(Val, ReadsTheLeadingNumber) {
    EXPECT_EQ(Val(QStringLiteral("42")), 42.0);
    EXPECT_EQ(Val(QStringLiteral("9:30")), 9.0);
    EXPECT_EQ(Val(QStringLiteral("09.")), 9.0);
    EXPECT_EQ(Val(QStringLiteral("2.5abc")), 2.5);
    EXPECT_EQ(Val(QStringLiteral(".5")), 0.5);
    EXPECT_EQ(Val(QStringLiteral("1.2.3")), 1.2);
    EXPECT_EQ(Val(QStringLiteral("-7")), -7.0);
    EXPECT_EQ(Val(QStringLiteral("+7")), 7.0);
}

TEST(Val, SkipsBlanksTabsAndLineFeedsAnywhere) {
    EXPECT_EQ(Val(QStringLiteral("  12")), 12.0);
    EXPECT_EQ(Val(QStringLiteral("1 2 3")), 123.0);
    EXPECT_EQ(Val(QStringLiteral("\t- 5")), -5.0);
    EXPECT_EQ(Val(QStringLiteral("1\n0")), 10.0);
}

TEST(Val, NonNumbersGiveZero) {
    EXPECT_EQ(Val(QString()), 0.0);
    EXPECT_EQ(Val(QStringLiteral("abc")), 0.0);
    EXPECT_EQ(Val(QStringLiteral("NaN")), 0.0);
    EXPECT_EQ(Val(QStringLiteral("-")), 0.0);
    EXPECT_EQ(Val(QStringLiteral(".")), 0.0);
    EXPECT_EQ(Val(QStringLiteral(":30")), 0.0);
}

TEST(Val, ReadsExponents) {
    EXPECT_EQ(Val(QStringLiteral("1e3")), 1000.0);
    EXPECT_EQ(Val(QStringLiteral("1D2")), 100.0);
    EXPECT_EQ(Val(QStringLiteral("2.5E-1")), 0.25);
    EXPECT_EQ(Val(QStringLiteral("1e")), 1.0);
    EXPECT_EQ(Val(QStringLiteral("1e+")), 1.0);
}

TEST(Val, HugeValuesBecomeInfinite) {
    EXPECT_TRUE(std::isinf(Val(QStringLiteral("1e400"))));
    EXPECT_LT(Val(QStringLiteral("-1e400")), 0.0);
    EXPECT_EQ(Val(QStringLiteral("1e-400")), 0.0);
}

TEST(Val, DigitsOfOtherScriptsAreNotNumbers) {
    EXPECT_EQ(Val(QStringLiteral("\u0661\u0662")), 0.0);
}

TEST(IsNumeric, AcceptsANumberWithBlanksAround) {
    EXPECT_TRUE(IsNumeric(QStringLiteral("9")));
    EXPECT_TRUE(IsNumeric(QStringLiteral(" 9 ")));
    EXPECT_TRUE(IsNumeric(QStringLiteral("\t09")));
    EXPECT_TRUE(IsNumeric(QStringLiteral("-0")));
    EXPECT_TRUE(IsNumeric(QStringLiteral("+2.5")));
    EXPECT_TRUE(IsNumeric(QStringLiteral("5.")));
    EXPECT_TRUE(IsNumeric(QStringLiteral(".5")));
    EXPECT_TRUE(IsNumeric(QStringLiteral("1e3")));
}

TEST(IsNumeric, RejectsEverythingElse) {
    EXPECT_FALSE(IsNumeric(QString()));
    EXPECT_FALSE(IsNumeric(QStringLiteral("   ")));
    EXPECT_FALSE(IsNumeric(QStringLiteral("9 30")));
    EXPECT_FALSE(IsNumeric(QStringLiteral("9a")));
    EXPECT_FALSE(IsNumeric(QStringLiteral(".")));
    EXPECT_FALSE(IsNumeric(QStringLiteral("-")));
    EXPECT_FALSE(IsNumeric(QStringLiteral("1e")));
    EXPECT_FALSE(IsNumeric(QStringLiteral("NaN")));
    EXPECT_FALSE(IsNumeric(QStringLiteral("1e400")));
    EXPECT_FALSE(IsNumeric(QStringLiteral("\u0661\u0662")));
}

TEST(RoundHalfEven, RoundsHalvesToTheEvenNeighbour) {
    EXPECT_EQ(RoundHalfEven(0.5), 0.0);
    EXPECT_EQ(RoundHalfEven(1.5), 2.0);
    EXPECT_EQ(RoundHalfEven(2.5), 2.0);
    EXPECT_EQ(RoundHalfEven(3.5), 4.0);
    EXPECT_EQ(RoundHalfEven(-0.5), 0.0);
    EXPECT_EQ(RoundHalfEven(-1.5), -2.0);
    EXPECT_EQ(RoundHalfEven(-2.5), -2.0);
}

TEST(RoundHalfEven, RoundsOtherValuesToTheNearest) {
    EXPECT_EQ(RoundHalfEven(2.4), 2.0);
    EXPECT_EQ(RoundHalfEven(2.6), 3.0);
    EXPECT_EQ(RoundHalfEven(-2.6), -3.0);
    EXPECT_EQ(RoundHalfEven(7.0), 7.0);
}

TEST(ToInteger16, EmptyWhereThe16BitRangeEnds) {
    EXPECT_EQ(ToInteger16(32767.0), qint16{32767});
    EXPECT_EQ(ToInteger16(-32768.0), qint16{-32768});
    EXPECT_EQ(ToInteger16(32767.5), std::nullopt);
    EXPECT_EQ(ToInteger16(-32768.5), qint16{-32768});
    EXPECT_EQ(ToInteger16(40000.0), std::nullopt);
    EXPECT_EQ(ToInteger16(std::nan("")), std::nullopt);
    EXPECT_EQ(ToInteger16(Val(QStringLiteral("1e400"))), std::nullopt);
}

TEST(ToInteger32, EmptyWhereThe32BitRangeEnds) {
    EXPECT_EQ(ToInteger32(2147483647.0), qint32{2147483647});
    EXPECT_EQ(ToInteger32(2147483648.0), std::nullopt);
    EXPECT_EQ(ToInteger32(-2.5), qint32{-2});
}

TEST(Val16, RoundsAndGivesZeroOnOverflow) {
    EXPECT_EQ(Val16(QStringLiteral("2.5")), 2);
    EXPECT_EQ(Val16(QStringLiteral("99999")), 0);
    EXPECT_EQ(Val16(QStringLiteral("x")), 0);
}

TEST(Str, PutsABlankBeforeNumbersThatAreNotNegative) {
    EXPECT_EQ(Str(3), QStringLiteral(" 3"));
    EXPECT_EQ(Str(0), QStringLiteral(" 0"));
    EXPECT_EQ(Str(-3), QStringLiteral("-3"));
    EXPECT_EQ(Str(40), QStringLiteral(" 40"));
}

TEST(Trim, RemovesOnlyBlanks) {
    EXPECT_EQ(Trim(QStringLiteral("  a b  ")), QStringLiteral("a b"));
    EXPECT_EQ(Trim(QStringLiteral("\tx\r\n")), QStringLiteral("\tx\r\n"));
    EXPECT_EQ(LTrim(QStringLiteral("  a  ")), QStringLiteral("a  "));
    EXPECT_EQ(RTrim(QStringLiteral("  a  ")), QStringLiteral("  a"));
    EXPECT_EQ(Trim(QStringLiteral("    ")), QString());
}

TEST(CutText, KeepsTextsThatFit) {
    EXPECT_EQ(CutText(QStringLiteral("abc"), 3), QStringLiteral("abc"));
    EXPECT_EQ(CutText(QStringLiteral("abc"), 10), QStringLiteral("abc"));
    EXPECT_EQ(CutText(QString(), 0), QString());
}

TEST(CutText, KeepsTheFirstCharacters) {
    EXPECT_EQ(CutText(QStringLiteral("abcdef"), 4), QStringLiteral("abcd"));
    EXPECT_EQ(CutText(QStringLiteral("abc"), 0), QString());
    EXPECT_EQ(CutText(QStringLiteral("abc"), -1), QString());
}

// U+1F389, PARTY POPPER, is the two code units D83C DF89.
TEST(CutText, NeverSplitsASurrogatePair) {
    const QString party = QStringLiteral("🎉");
    ASSERT_EQ(party.size(), 2);
    EXPECT_EQ(CutText(QStringLiteral("ab") + party, 3), QStringLiteral("ab"));
    EXPECT_EQ(CutText(party, 1), QString());
    EXPECT_EQ(CutText(QStringLiteral("ab") + party + QStringLiteral("c"), 4),
              QStringLiteral("ab") + party);
    EXPECT_EQ(CutText(party + party, 3), party);
}

// Texts of several code units that a reader sees as one character.
const QString kAcute = QStringLiteral("e\u0301");  // e and a combining accent
const QString kFamily = QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467");  // ZWJ
const QString kFrance = QStringLiteral("\U0001F1EB\U0001F1F7");  // a flag: two indicators
const QString kHangul = QStringLiteral("\u1100\u1161\u11A8");    // a syllable in three jamo

TEST(CutText, NeverTearsAMarkFromItsLetter) {
    EXPECT_EQ(CutText(QStringLiteral("ab") + kAcute + QStringLiteral("x"), 3),
              QStringLiteral("ab"));
    EXPECT_EQ(CutText(QStringLiteral("ab") + kAcute + QStringLiteral("x"), 4),
              QStringLiteral("ab") + kAcute);
    EXPECT_EQ(CutText(QStringLiteral("a\u0308\u0301b"), 2), QString());
}

TEST(CutText, KeepsAnEmojiSequenceJoinedByZwjWholeOrLeavesItOut) {
    ASSERT_EQ(kFamily.size(), 8);
    for (int length = 2; length < 10; ++length) {
        EXPECT_EQ(CutText(QStringLiteral("ab") + kFamily + QStringLiteral("c"), length),
                  QStringLiteral("ab"))
            << length;
    }
    EXPECT_EQ(CutText(QStringLiteral("ab") + kFamily + QStringLiteral("c"), 10),
              QStringLiteral("ab") + kFamily);
}

TEST(CutText, KeepsFlagsWhole) {
    EXPECT_EQ(CutText(kFrance + kFrance, 3), QString());
    EXPECT_EQ(CutText(kFrance + kFrance, 7), kFrance);
    EXPECT_EQ(CutText(QStringLiteral("a") + kFrance + kFrance, 4), QStringLiteral("a"));
    EXPECT_EQ(CutText(QStringLiteral("a") + kFrance + kFrance, 7), QStringLiteral("a") + kFrance);
}

TEST(CutText, KeepsAHangulSyllableOfJamoWhole) {
    EXPECT_EQ(CutText(QStringLiteral("a") + kHangul, 2), QStringLiteral("a"));
    EXPECT_EQ(CutText(QStringLiteral("a") + kHangul, 3), QStringLiteral("a"));
    EXPECT_EQ(CutText(QStringLiteral("a") + kHangul + QStringLiteral("b"), 4),
              QStringLiteral("a") + kHangul);
}

TEST(CutText, NeverSplitsALineBreak) {
    EXPECT_EQ(CutText(QStringLiteral("ab\r\ncd"), 3), QStringLiteral("ab"));
    EXPECT_EQ(CutText(QStringLiteral("ab\r\ncd"), 4), QStringLiteral("ab\r\n"));
}

TEST(CutText, CutsOtherScriptsAndLoneSurrogatesAfterAnyUnit) {
    EXPECT_EQ(CutText(QStringLiteral("\u5317\u4eac\u03a9"), 2), QStringLiteral("\u5317\u4eac"));
    EXPECT_EQ(CutText(QString(QChar(0xD83C)) + QStringLiteral("x"), 1), QString(QChar(0xD83C)));
}

}  // namespace
}  // namespace kelvane
