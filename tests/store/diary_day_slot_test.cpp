#include <gtest/gtest.h>

#include "calfile/Conversions.h"
#include "store/DiaryStoreTest.h"

namespace kelvane {
namespace {

using testing::TestWorld;

TEST(DayOfYearSlot, CountsTheSlotsOfTheMonthsBefore) {
    TestWorld world;
    const MonthLengths& days = world.module1.DaysInMonth;
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("0101"), days), 1);
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("0131"), days), 31);
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("0201"), days), 32);
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("0229"), days), 60);
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("0301"), days), 61);
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("1231"), days), 366);
}

TEST(DayOfYearSlot, ChecksNothingElse) {
    TestWorld world;
    const MonthLengths& days = world.module1.DaysInMonth;
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("0231"), days), 62);
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("0100"), days), 0);
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("0015"), days), 15);  // month 0 adds nothing
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("-115"), days), 15);  // nor does a negative one
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("1299"), days), 335 + 99);
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("1301"), days), std::nullopt);
    EXPECT_EQ(DayOfYearSlot(QString(), days), 0);
}

// Keys of four digits, and keys with other characters, read as Val reads
// their two halves.
TEST(DayOfYearSlot, ReadsEveryKeyAsValReadsItsHalves) {
    TestWorld world;
    const MonthLengths& days = world.module1.DaysInMonth;
    QStringList keys = {
        QStringLiteral(" 315"), QStringLiteral("3 15"), QStringLiteral("03 5"),
        QStringLiteral("+315"), QStringLiteral("0x15"), QStringLiteral("\u0663\u0661\u0661\u0665"),
        QStringLiteral("315"),  QStringLiteral("3"),    QStringLiteral("031599")};
    for (int month = 0; month <= 13; ++month) {
        for (int day = 0; day <= 99; ++day) {
            keys << QStringLiteral("%1%2")
                        .arg(month, 2, 10, QLatin1Char('0'))
                        .arg(day, 2, 10, QLatin1Char('0'));
        }
    }
    for (const QString& key : keys) {
        const qint16 month = Val16(key.left(2));
        std::optional<qint16> expected;
        if (month <= 12) {
            int slot = Val16(key.right(2));
            for (int earlier = 1; earlier < month; ++earlier) {
                slot += days[earlier];
            }
            expected = static_cast<qint16>(slot);
        }
        EXPECT_EQ(DayOfYearSlot(key, days), expected) << qPrintable(key);
    }
}

}  // namespace
}  // namespace kelvane
