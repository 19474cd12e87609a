#include <gtest/gtest.h>

#include "store/AppointmentStoreTest.h"
#include "support/EveryScript.h"

namespace kelvane {
namespace {

using testing::Entry;
using testing::kEveryScript;
using testing::Utf16Le;

TEST(MakeDateKey, IsMonthThenDayWithTwoDigitsEach) {
    EXPECT_EQ(MakeDateKey(1, 1), QStringLiteral("0101"));
    EXPECT_EQ(MakeDateKey(12, 31), QStringLiteral("1231"));
    EXPECT_EQ(MakeDateKey(3, 7), QStringLiteral("0307"));
    EXPECT_EQ(MakeDateKey(2, 29), QStringLiteral("0229"));
}

// Every month and day of two digits, and numbers beyond them, as arg() pads them.
TEST(MakeDateKey, AgreesWithPaddedNumbersEverywhere) {
    const QLatin1Char zero('0');
    for (qint16 month = -2; month <= 101; ++month) {
        for (qint16 day = -2; day <= 101; ++day) {
            EXPECT_EQ(MakeDateKey(month, day),
                      QStringLiteral("%1%2").arg(month, 2, 10, zero).arg(day, 2, 10, zero));
        }
    }
}

TEST(FormatClockTime, TwelveHourStyle) {
    EXPECT_EQ(FormatClockTime({0, 5}, 0), QStringLiteral("12:05 am"));
    EXPECT_EQ(FormatClockTime({9, 7}, 0), QStringLiteral("9:07 am"));
    EXPECT_EQ(FormatClockTime({11, 59}, 0), QStringLiteral("11:59 am"));
    EXPECT_EQ(FormatClockTime({12, 0}, 0), QStringLiteral("12:00 pm"));
    EXPECT_EQ(FormatClockTime({13, 30}, 0), QStringLiteral("1:30 pm"));
    EXPECT_EQ(FormatClockTime({23, 45}, 0), QStringLiteral("11:45 pm"));
}

TEST(FormatClockTime, TwentyFourHourStyle) {
    EXPECT_EQ(FormatClockTime({13, 30}, 1), QStringLiteral("13:30"));
    EXPECT_EQ(FormatClockTime({9, 7}, 1), QStringLiteral("9:07"));
    EXPECT_EQ(FormatClockTime({0, 0}, 1), QStringLiteral("0:00"));
    EXPECT_EQ(FormatClockTime({9, 7}, -3), QStringLiteral("9:07"));
}

TEST(FormatClockTime, OddValuesAsTheirNumbersGive) {
    EXPECT_EQ(FormatClockTime({-1, 0}, 0), QStringLiteral("-1:00 am"));
    EXPECT_EQ(FormatClockTime({24, 7}, 0), QStringLiteral("24:07 pm"));
    EXPECT_EQ(FormatClockTime({10, -1}, 1), QStringLiteral("10:-1"));
    EXPECT_EQ(FormatClockTime({10, -12}, 1), QStringLiteral("10:12"));
    EXPECT_EQ(FormatClockTime({10, 123}, 1), QStringLiteral("10:23"));
    EXPECT_EQ(FormatClockTime({-32768, -32768}, 0), QStringLiteral("-32768:68 am"));
}

TEST(AppointmentRecord, HasTheFixed108ByteLayout) {
    const QByteArray record = EncodeAppointment(Entry(QStringLiteral("Lunch"), {12, 30}, {-1, 0}));
    ASSERT_EQ(record.size(), 108);
    EXPECT_EQ(record.left(100), Utf16Le(QStringLiteral("Lunch").leftJustified(50, u' ')));
    EXPECT_EQ(record.mid(100), QByteArray("\x0c\x00\x1e\x00\xff\xff\x00\x00", 8));
}

TEST(AppointmentRecord, HoldsTheDescriptionInUtf16LittleEndian) {
    // L with stroke, o acute, d, z acute, a blank and U+1F389 as D83C DF89.
    const QByteArray description("\x41\x01\xf3\x00\x64\x00\x7a\x01\x20\x00\x3c\xd8\x89\xdf", 14);
    QByteArray expected = description;
    for (int blank = 7; blank < 50; ++blank) {
        expected.append(" \x00", 2);
    }
    expected.append("\x09\x00\x1e\x00\x0a\x00\x2d\x00", 8);  // 9:30 to 10:45
    ASSERT_EQ(expected.size(), 108);
    EXPECT_EQ(EncodeAppointment(
                  Entry(QStringLiteral("\u0141\u00f3d\u017a \U0001F389"), {9, 30}, {10, 45})),
              expected);
}

TEST(AppointmentRecord, RoundTrips) {
    const Appointment entry = Entry(QStringLiteral("Caf\u00e9 \u20ac"), {23, 59}, {-1, 0});
    EXPECT_EQ(DecodeAppointment(EncodeAppointment(entry)), entry);
}

TEST(AppointmentRecord, TextInEveryScriptRoundTrips) {
    ASSERT_LE(kEveryScript.size(), 50);
    const Appointment entry = Entry(kEveryScript, {7, 5}, {8, 0});
    const QByteArray record = EncodeAppointment(entry);
    EXPECT_EQ(record.left(2 * kEveryScript.size()), Utf16Le(kEveryScript));
    const Appointment read = DecodeAppointment(record);
    EXPECT_EQ(read, entry);
    EXPECT_EQ(read.Description.Trimmed(), kEveryScript);
}

TEST(AppointmentRecord, NulsReadAsBlanksAndTimesAsZero) {
    const Appointment read = DecodeAppointment(QByteArray(108, '\0'));
    EXPECT_EQ(read.Description.Value(), QString(50, u' '));
    EXPECT_EQ(read.StartTime, (ClockTime{0, 0}));
    EXPECT_EQ(read.EndTime, (ClockTime{0, 0}));
}

TEST(AppointmentRecord, ADescriptionCutInsideAnEmojiDropsIt) {
    const Appointment entry =
        Entry(QString(49, u'x') + QStringLiteral("\U0001F389"), {9, 0}, {10, 0});
    EXPECT_EQ(entry.Description.Value(), QString(49, u'x') + QLatin1Char(' '));
    EXPECT_EQ(EncodeAppointment(entry).left(100), Utf16Le(QString(49, u'x') + QLatin1Char(' ')));
}

}  // namespace
}  // namespace kelvane
