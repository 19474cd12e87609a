#include <gtest/gtest.h>

#include "store/DateInWords.h"

namespace kelvane {
namespace {

// A year whose every date is a Wednesday, and a weekday for months 1..12 only,
// as the month view gives them.
class WednesdayYear final : public MonthViewQueries {
  public:
    qint16 gLeapYear() const override { return 0; }
    void GetDate(qint16& year, qint16& month, qint16& day) const override {
        year = month = day = 0;
    }
    qint16 WhichDay(qint16 month, qint16 /*day*/) const override {
        return month >= 1 && month <= 12 ? 4 : -1;
    }
};

TEST(DateInWords, GivesTheWeekdayTheDayAndTheMonth) {
    const WednesdayYear year;
    EXPECT_EQ(DateInWords(year, 11, 17), QStringLiteral("Wednesday 17 November"));
    EXPECT_EQ(DateInWords(year, 2, 29), QStringLiteral("Wednesday 29 February"));
}

}  // namespace
}  // namespace kelvane
