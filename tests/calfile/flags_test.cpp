#include <gtest/gtest.h>

#include "calfile/Flags.h"

namespace kelvane {
namespace {

TEST(NumberToFlag, EveryValueButZeroIsTrue) {
    EXPECT_FALSE(NumberToFlag(0));
    EXPECT_TRUE(NumberToFlag(1));
    EXPECT_TRUE(NumberToFlag(-1));
    EXPECT_TRUE(NumberToFlag(-7));
    EXPECT_TRUE(NumberToFlag(255));
}

TEST(FlagToDigit, WritesOneOrZero) {
    EXPECT_EQ(FlagToDigit(true), 1);
    EXPECT_EQ(FlagToDigit(false), 0);
}

}  // namespace
}  // namespace kelvane
