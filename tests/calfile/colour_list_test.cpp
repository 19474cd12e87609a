#include <gtest/gtest.h>

#include "calfile/ColourList.h"

namespace kelvane {
namespace {

TEST(MakeColourListItem, PadsTheNameToTwentyCharacters) {
    const ColourListItem item =
        MakeColourListItem(QStringLiteral("Back Colour"), -25, -5, 20, false, true);
    EXPECT_EQ(item.Name.Value(), QStringLiteral("Back Colour         "));
    EXPECT_EQ(item.Name.Trimmed(), QStringLiteral("Back Colour"));
    EXPECT_EQ(item.Red, -25);
    EXPECT_EQ(item.Green, -5);
    EXPECT_EQ(item.Blue, 20);
    EXPECT_FALSE(item.Absolute);
    EXPECT_TRUE(item.Enabled);
}

TEST(MakeColourListItem, CutsLongNames) {
    const ColourListItem item =
        MakeColourListItem(QStringLiteral("A name far longer than twenty"), 0, 0, 0, true, false);
    EXPECT_EQ(item.Name.Value(), QStringLiteral("A name far longer th"));
}

TEST(BuildColourList, HasThreeDefaultsAndEighteenFreeSlots) {
    ColourListTable list;
    list[7] = MakeColourListItem(QStringLiteral("Old"), 1, 1, 1, true, true);
    BuildColourList(list);
    EXPECT_EQ(list[0], MakeColourListItem(QStringLiteral("Back Colour"), -25, -5, 20, false, true));
    EXPECT_EQ(list[1], MakeColourListItem(QStringLiteral("Current Date"), 100, 0, 0, false, true));
    EXPECT_EQ(list[2], MakeColourListItem(QStringLiteral("Selected Date"), 0, 100, 0, false, true));
    for (std::size_t slot = 3; slot < list.size(); ++slot) {
        EXPECT_EQ(list[slot], ColourListItem{}) << slot;
        EXPECT_TRUE(list[slot].Name.IsBlank());
    }
    EXPECT_EQ(list.size(), 21u);
}

}  // namespace
}  // namespace kelvane
