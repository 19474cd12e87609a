#include <gtest/gtest.h>

#include "store/CalenderMOD.h"
#include "store/Module1.h"

namespace kelvane {
namespace {

void ExpectRgb(ColourValue colour, int red, int green, int blue) {
    qint16 r = 0, g = 0, b = 0;
    SplitColour(colour, r, g, b);
    EXPECT_EQ(r, red);
    EXPECT_EQ(g, green);
    EXPECT_EQ(b, blue);
}

TEST(BuildColourList, ANewCalenderModuleStartsWithTheDefaults) {
    CalenderMOD module;
    EXPECT_EQ(module.ColourList[1].Name.Trimmed(), QStringLiteral("Current Date"));
    EXPECT_EQ(module.CurrentEntry, DateEntry{});
    EXPECT_EQ(module.CurrentEntryDate, CalDate{});
}

TEST(ShiftColour, ClampsEachChannel) {
    ExpectRgb(ShiftColour(MakeColour(250, 10, 128), 20, -20, 0), 255, 0, 128);
}

TEST(ShiftColour, IgnoresBitsAboveBlue) {
    ExpectRgb(ShiftColour(0x7F000000 | MakeColour(1, 2, 3), 1, 1, 1), 2, 3, 4);
}

TEST(ResolveColour, AnAbsoluteChoiceIsClampedWhateverTheBase) {
    const ColourChoice choice{-5, 300, 7, true, true};
    ExpectRgb(ResolveColour(MakeColour(9, 9, 9), choice), 0, 255, 7);
    ExpectRgb(ResolveColour(MakeColour(200, 0, 50), choice), 0, 255, 7);
}

TEST(ResolveColour, ADisabledChoiceGivesTheBaseEvenWhenAbsolute) {
    const ColourChoice choice{10, 20, 30, true, false};
    EXPECT_EQ(ResolveColour(MakeColour(1, 2, 3), choice), MakeColour(1, 2, 3));
}

TEST(ResolveColour, AnOffsetShiftsTheBase) {
    const ColourChoice choice{100, 0, -20, false, true};
    ExpectRgb(ResolveColour(MakeColour(100, 100, 100), choice), 200, 100, 80);
}

TEST(ChoiceOf, TakesTheColourOfAListEntry) {
    const ColourListItem item = MakeColourListItem(QStringLiteral("x"), 1, -2, 3, true, false);
    EXPECT_EQ(ChoiceOf(item), (ColourChoice{1, -2, 3, true, false}));
}

}  // namespace
}  // namespace kelvane
