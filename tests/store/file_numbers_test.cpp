#include <gtest/gtest.h>

#include "store/FileNumbers.h"

namespace kelvane {
namespace {

TEST(FileNumbers, HandsOutTheLowestFreeNumber) {
    FileNumbers files;
    EXPECT_EQ(files.Take(), 1);
    EXPECT_EQ(files.Take(), 2);
    files.Release(1);
    EXPECT_FALSE(files.InUse(1));
    EXPECT_EQ(files.Take(), 1);
    EXPECT_TRUE(files.InUse(2));
}

TEST(FileNumbers, GivesZeroWhenAllAreTaken) {
    FileNumbers files;
    for (int i = 1; i <= FileNumbers::Highest; ++i) {
        EXPECT_EQ(files.Take(), i);
    }
    EXPECT_EQ(files.Take(), 0);
    files.Release(0);
    files.Release(-3);
    files.Release(300);
    EXPECT_EQ(files.Take(), 0);
}

}  // namespace
}  // namespace kelvane
