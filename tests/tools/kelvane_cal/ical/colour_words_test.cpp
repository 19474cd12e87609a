#include <gtest/gtest.h>

#include "kelvane_cal/ical/ColourWords.h"

namespace kelvane::cal {
namespace {

TEST(ColourWords, SaysWhenTheGridsColourIsKept) {
    EXPECT_EQ(ColourInWords({255, 0, 0, true, false}), "the grid's own");
    EXPECT_EQ(ColourInWords({0, 0, 0, false, true}), "the grid's own");
}

TEST(ColourWords, NamesAbsoluteColoursWithTheirChannels) {
    EXPECT_EQ(ColourInWords({255, 220, 150, true, true}), "light orange (255, 220, 150)");
    EXPECT_EQ(ColourInWords({0, 0, 0, true, true}), "black (0, 0, 0)");
    EXPECT_EQ(ColourInWords({250, 250, 250, true, true}), "white (250, 250, 250)");
}

TEST(ColourWords, ListsTheOffsetsThatAreNotZero) {
    EXPECT_EQ(ColourInWords({20, 0, -5, false, true}), "the grid's own, red +20, blue -5");
}

TEST(ColourWords, FindsTheNearestName) {
    EXPECT_EQ(NearestColourName(250, 5, 5), "red");
    EXPECT_EQ(NearestColourName(0, 0, 250), "blue");
    EXPECT_EQ(NearestColourName(120, 130, 125), "grey");
    EXPECT_EQ(NearestColourName(255, 255, 0), "yellow");
}

}  // namespace
}  // namespace kelvane::cal
