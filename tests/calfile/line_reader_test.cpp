#include <gtest/gtest.h>

#include <array>

#include "calfile/LineReader.h"

namespace kelvane {
namespace {

TEST(LineReader, AcceptsCrLfAndLf) {
    LineReader in{QByteArray("one\r\ntwo\nthree")};
    QString line;
    ASSERT_TRUE(in.ReadLine(line));
    EXPECT_EQ(line, QStringLiteral("one"));
    ASSERT_TRUE(in.ReadLine(line));
    EXPECT_EQ(line, QStringLiteral("two"));
    ASSERT_TRUE(in.ReadLine(line));
    EXPECT_EQ(line, QStringLiteral("three"));
    EXPECT_EQ(in.LineNumber(), 3);
    EXPECT_TRUE(in.AtEnd());
    EXPECT_FALSE(in.ReadLine(line));
    EXPECT_EQ(in.FailureLine(), 4);
    EXPECT_EQ(in.FailureReason(), QStringLiteral("the file ends early"));
}

TEST(LineReader, ReadsUtf8AndFallsBackToWindows1252) {
    LineReader in{QByteArray("Caf\xc3\xa9\r\nCaf\xe9 \x80\r\n")};
    QString line;
    ASSERT_TRUE(in.ReadLine(line));
    EXPECT_EQ(line, QStringLiteral("Caf\u00e9"));
    ASSERT_TRUE(in.ReadLine(line));
    EXPECT_EQ(line, QStringLiteral("Caf\u00e9 \u20ac"));
}

TEST(LineReader, SkipsAByteOrderMark) {
    LineReader in{QByteArray("\xEF\xBB\xBFheader\r\n")};
    QString line;
    ASSERT_TRUE(in.ReadLine(line));
    EXPECT_EQ(line, QStringLiteral("header"));
}

TEST(LineReader, KeepsNulBytesAndLoneCarriageReturns) {
    LineReader in{QByteArray("a\0b\rc\r\n", 7)};
    QString line;
    ASSERT_TRUE(in.ReadLine(line));
    EXPECT_EQ(line, QString::fromUtf16(u"a\0b\rc", 5));
}

TEST(LineReader, ReadsNumberLinesWithBlanksAround) {
    LineReader in{QByteArray(" 2026 \r\n-3 \r\n\t7\r\n 2.5 \r\n1e3\r\n")};
    qint32 value = 0;
    ASSERT_TRUE(in.ReadNumber(value));
    EXPECT_EQ(value, 2026);
    ASSERT_TRUE(in.ReadNumber(value));
    EXPECT_EQ(value, -3);
    ASSERT_TRUE(in.ReadNumber(value));
    EXPECT_EQ(value, 7);
    ASSERT_TRUE(in.ReadNumber(value));
    EXPECT_EQ(value, 2);
    ASSERT_TRUE(in.ReadNumber(value));
    EXPECT_EQ(value, 1000);
}

TEST(LineReader, LimitsHugeNumbersToThe32BitRange) {
    LineReader in{QByteArray("99999999999\r\n-99999999999\r\n")};
    qint32 value = 0;
    ASSERT_TRUE(in.ReadNumber(value));
    EXPECT_EQ(value, 2147483647);
    ASSERT_TRUE(in.ReadNumber(value));
    EXPECT_EQ(value, -2147483647 - 1);
}

TEST(LineReader, ANonNumberFailsOnItsLine) {
    LineReader in{QByteArray(" 1 \r\nabc\r\n 2 \r\n")};
    qint32 value = 0;
    ASSERT_TRUE(in.ReadNumber(value));
    EXPECT_FALSE(in.ReadNumber(value));
    EXPECT_TRUE(in.Failed());
    EXPECT_EQ(in.FailureLine(), 2);
    EXPECT_EQ(in.FailureReason(), QStringLiteral("a number was expected"));
    EXPECT_FALSE(in.ReadNumber(value));  // every read after a failure fails
    EXPECT_EQ(in.FailureLine(), 2);
}

TEST(LineReader, AnEmptyLineIsNotANumber) {
    LineReader in{QByteArray("\r\n")};
    qint32 value = 0;
    EXPECT_FALSE(in.ReadNumber(value));
}

TEST(LineReader, ReadsValueLists) {
    LineReader in{QByteArray("1,0,255,128,0\r\n 10 , -30\r\n")};
    std::array<qint32, 5> colour{};
    ASSERT_TRUE(in.ReadValueList(colour));
    EXPECT_EQ(colour, (std::array<qint32, 5>{1, 0, 255, 128, 0}));
    std::array<qint32, 2> time{};
    ASSERT_TRUE(in.ReadValueList(time));
    EXPECT_EQ(time, (std::array<qint32, 2>{10, -30}));
}

TEST(LineReader, AValueListOfTheWrongLengthFails) {
    LineReader in{QByteArray("1,0,255\r\n")};
    std::array<qint32, 5> colour{};
    EXPECT_FALSE(in.ReadValueList(colour));
    EXPECT_EQ(in.FailureLine(), 1);
    EXPECT_EQ(in.FailureReason(), QStringLiteral("5 numbers separated by commas were expected"));
}

TEST(LineReader, AValueListWithANonNumberFails) {
    LineReader in{QByteArray("1,x\r\n")};
    std::array<qint32, 2> time{};
    EXPECT_FALSE(in.ReadValueList(time));
    EXPECT_EQ(in.FailureReason(), QStringLiteral("a number was expected"));
}

TEST(LineReader, RejectMarksTheLineLastRead) {
    LineReader in{QByteArray("a\r\nb\r\n")};
    QString line;
    in.ReadLine(line);
    in.ReadLine(line);
    EXPECT_FALSE(in.Reject(QStringLiteral("not wanted")));
    EXPECT_EQ(in.FailureLine(), 2);
    EXPECT_EQ(in.FailureReason(), QStringLiteral("not wanted"));
}

TEST(LineReader, HandlesAMegabyteLine) {
    QByteArray content(1 << 20, 'x');
    content += "\r\n 5 \r\n";
    LineReader in(content);
    QString line;
    ASSERT_TRUE(in.ReadLine(line));
    EXPECT_EQ(line.size(), 1 << 20);
    qint32 value = 0;
    ASSERT_TRUE(in.ReadNumber(value));
    EXPECT_EQ(value, 5);
}

}  // namespace
}  // namespace kelvane
