#include <QStringList>

#include <algorithm>

#include <gtest/gtest.h>

#include "calfile/FixedText.h"
#include "calfile/OneBased.h"
#include "calfile/Records.h"

namespace kelvane {
namespace {

void WriteAbcde(char16_t* text) {
    for (int i = 0; i < 5; ++i) {
        text[i] = static_cast<char16_t>(u'a' + i);
    }
}

TEST(FixedText, OverwriteLeavesACopyThatSharedTheTextAsItWas) {
    FixedText<5> text(QStringLiteral("12345"));
    const FixedText<5> copy = text;
    text.Overwrite(WriteAbcde);
    EXPECT_EQ(text.Value(), QStringLiteral("abcde"));
    EXPECT_EQ(copy.Value(), QStringLiteral("12345"));
    text.Overwrite([](char16_t* units) { std::fill(units, units + 5, u'z'); });
    EXPECT_EQ(text.Value(), QStringLiteral("zzzzz"));
}

TEST(FixedText, OverwriteGivesAMovedFromTextAllItsCharacters) {
    FixedText<5> text(QStringLiteral("12345"));
    const FixedText<5> taken = std::move(text);
    text.Overwrite(WriteAbcde);
    EXPECT_EQ(text.Value(), QStringLiteral("abcde"));
    EXPECT_EQ(taken.Value(), QStringLiteral("12345"));
}

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

const QString kParty = QStringLiteral("\U0001F389");  // two code units

// `length` - 1 letters and then an emoji: the field ends between its two units.
template <int N>
void ExpectTheEmojiDropsWhole() {
    const QString letters(N - 1, QLatin1Char('x'));
    const FixedText<N> text = letters + kParty + QStringLiteral("more");
    EXPECT_EQ(text.Value(), letters + QLatin1Char(' ')) << N;
    EXPECT_EQ(text.Value().size(), N);
    EXPECT_EQ(text.Trimmed(), letters);
}

TEST(FixedText, ACutThatWouldSplitASurrogatePairDropsTheWholeCharacter) {
    ExpectTheEmojiDropsWhole<ColourNameLength>();
    ExpectTheEmojiDropsWhole<50>();  // a schedule entry's description
    ExpectTheEmojiDropsWhole<80>();  // a line of the text viewer
    ExpectTheEmojiDropsWhole<TitleLength>();
    ExpectTheEmojiDropsWhole<NoteLength>();
}

TEST(FixedText, AnEmojiThatFitsIsKept) {
    FixedText<4> text = QStringLiteral("ab") + kParty;
    EXPECT_EQ(text.Value(), QStringLiteral("ab") + kParty);
    text = QStringLiteral("a") + kParty + QStringLiteral("bc");
    EXPECT_EQ(text.Value(), QStringLiteral("a") + kParty + QStringLiteral("b"));
}

// Characters of several code units: an accented letter, a ZWJ family, a flag,
// a Hangul syllable in jamo and a line break.
const QStringList kGraphemes = {QStringLiteral("e\u0301"),
                                QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467"),
                                QStringLiteral("\U0001F1EB\U0001F1F7"),
                                QStringLiteral("\u1100\u1161\u11A8"), QStringLiteral("\r\n")};

// Letters up to one unit short of the field's end and then a grapheme that
// does not fit: it goes whole and blanks fill the field.
template <int N>
void ExpectGraphemesDropWhole() {
    for (const QString& grapheme : kGraphemes) {
        const QString letters(N - 1, QLatin1Char('x'));
        const FixedText<N> text = letters + grapheme + QStringLiteral("more");
        EXPECT_EQ(text.Value(), letters + QLatin1Char(' ')) << N;
        EXPECT_EQ(text.Value().size(), N);
        const QString fewer(N - grapheme.size(), QLatin1Char('x'));
        const FixedText<N> fits = fewer + grapheme + QStringLiteral("more");
        EXPECT_EQ(fits.Value(), fewer + grapheme) << N;
    }
}

TEST(FixedText, ACutNeverSplitsAGrapheme) {
    ExpectGraphemesDropWhole<ColourNameLength>();
    ExpectGraphemesDropWhole<50>();  // a schedule entry's description
    ExpectGraphemesDropWhole<80>();  // a line of the text viewer
    ExpectGraphemesDropWhole<TitleLength>();
    ExpectGraphemesDropWhole<NoteLength>();
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
