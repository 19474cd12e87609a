#include <gtest/gtest.h>

#include "store/FixedText.h"
#include "store/OneBased.h"

namespace kelvane {
namespace {

TEST(FixedText, StartsAsBlanks) {
    const FixedText<5> text;
    EXPECT_EQ(text.Value(), QStringLiteral("     "));
    EXPECT_TRUE(text.IsBlank());
    EXPECT_EQ(text.Trimmed(), QString());
}

TEST(FixedText, PadsShortTextsAndCutsLongOnes) {
    FixedText<5> text = QStringLiteral("ab");
    EXPECT_EQ(text.Value(), QStringLiteral("ab   "));
    text = QStringLiteral("abcdefgh");
    EXPECT_EQ(text.Value(), QStringLiteral("abcde"));
    text = QStringLiteral(" x y ");
    EXPECT_EQ(text.Trimmed(), QStringLiteral("x y"));
}

TEST(FixedText, OnlyBlanksCountAsBlank) {
    const FixedText<4> text = QStringLiteral("\r\n");
    EXPECT_FALSE(text.IsBlank());
}

TEST(OneBased, NumbersItsItemsFromOne) {
    OneBased<int, 3> items;
    items[1] = 10;
    items[3] = 30;
    EXPECT_EQ(items[1], 10);
    EXPECT_EQ(items[2], 0);
    EXPECT_EQ(items[3], 30);
    EXPECT_FALSE(items.Contains(0));
    EXPECT_TRUE(items.Contains(1));
    EXPECT_TRUE(items.Contains(3));
    EXPECT_FALSE(items.Contains(4));
    items.Fill(7);
    int sum = 0;
    for (int item : items) {
        sum += item;
    }
    EXPECT_EQ(sum, 21);
}

}  // namespace
}  // namespace kelvane
