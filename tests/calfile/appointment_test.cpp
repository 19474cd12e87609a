#include <gtest/gtest.h>

#include "calfile/Appointment.h"

namespace kelvane {
namespace {

TEST(CompareClockTime, ComparesHourThenMinute) {
    EXPECT_EQ(CompareClockTime({9, 30}, {9, 30}), 0);
    EXPECT_EQ(CompareClockTime({9, 30}, {10, 0}), -1);
    EXPECT_EQ(CompareClockTime({10, 0}, {9, 30}), 1);
    EXPECT_EQ(CompareClockTime({9, 29}, {9, 30}), -1);
    EXPECT_EQ(CompareClockTime({9, 31}, {9, 30}), 1);
    EXPECT_EQ(CompareClockTime({-1, 0}, {0, 0}), -1);
}

}  // namespace
}  // namespace kelvane
