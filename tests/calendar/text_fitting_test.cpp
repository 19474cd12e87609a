#include <QRandomGenerator>
#include <QStringList>

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "calendar/TextFitting.h"
#include "gui/ImageSurface.h"
#include "support/QtPrinting.h"
#include "support/RecordingSurface.h"

namespace kelvane {
namespace {

using testing::RecordingSurface;

// Titles of words of mixed lengths, blanks and capitals, up to 255 characters.
QStringList SampleTitles(int count) {
    const QStringList words = {"a",     "Meeting", "with",  "WWW",       "iiii",   "dentist",
                               "at",    "10:30",   "lunch", "Quarterly", "review", "mmmmmm",
                               "Party", "!!",      "x",     "Grandma's", "W",      "fiftieth"};
    QRandomGenerator random(12345);
    QStringList titles = {QString(), QStringLiteral(" "), QStringLiteral("W"),
                          QString(255, QLatin1Char('W')), QString(255, QLatin1Char('i'))};
    for (int i = 0; i < count; ++i) {
        QString title;
        const int target = random.bounded(1, 256);
        while (title.size() < target) {
            title += words[random.bounded(static_cast<int>(words.size()))];
            title += random.bounded(5) == 0 ? QStringLiteral("  ") : QStringLiteral(" ");
        }
        titles.append(title.left(255));
    }
    return titles;
}

TEST(FitText, AgreesWithCuttingCharacterByCharacterInARealFont) {
    ImageSurface surface(Qt::white, Qt::black);
    surface.Resize(64, 64);
    // The plain cut measures once per character, so the sample is kept small.
    for (const QString& font : {QStringLiteral("Arial"), QStringLiteral("Courier")}) {
        surface.SetFontName(font);
        for (double size : {8.0, 13.0}) {
            surface.SetFontSize(size);
            for (const QString& title : SampleTitles(40)) {
                for (double width : {-1.0, 0.0, 3.0, 7.5, 48.0, 91.4, 274.0, 2000.0}) {
                    ASSERT_EQ(FitText(surface, title, width),
                              FitTextByCharacters(surface, title, width))
                        << font.toStdString() << " " << size << " '" << title.toStdString() << "' "
                        << width;
                }
            }
        }
    }
}

TEST(FitText, AgreesWithCuttingCharacterByCharacterAtEveryWidth) {
    RecordingSurface surface(100, 100);
    const QString title = QStringLiteral("Dinner with the Smiths");
    for (int width = -5; width <= 250; ++width) {
        ASSERT_EQ(FitText(surface, title, width), FitTextByCharacters(surface, title, width))
            << width;
    }
}

TEST(FitText, ATextOfExactlyTheWidthFits) {
    RecordingSurface surface(100, 100);
    EXPECT_EQ(FitText(surface, QStringLiteral("abcde"), 50), QStringLiteral("abcde"));
    EXPECT_EQ(FitText(surface, QStringLiteral("abcde"), 49.9), QStringLiteral("abcd"));
}

TEST(FitText, AWidthOfZeroOrLessLeavesTheText) {
    RecordingSurface surface(100, 100);
    EXPECT_EQ(FitText(surface, QStringLiteral("abcde"), 0), QStringLiteral("abcde"));
    EXPECT_EQ(FitText(surface, QStringLiteral("abcde"), -3), QStringLiteral("abcde"));
}

TEST(FitText, NotEvenOneCharacterGivesAnEmptyText) {
    RecordingSurface surface(100, 100);
    EXPECT_EQ(FitText(surface, QStringLiteral("abcde"), 9), QString());
    EXPECT_EQ(FitTextByCharacters(surface, QStringLiteral("abcde"), 9), QString());
}

TEST(FitText, NeverSplitsACharacterMadeOfTwoCodeUnits) {
    RecordingSurface surface(100, 100);
    const QString title = QStringLiteral("ab\U0001F600cd\U0001F600");
    for (int width = 1; width <= 90; ++width) {
        const QString fitted = FitText(surface, title, width);
        EXPECT_EQ(fitted, FitTextByCharacters(surface, title, width)) << width;
        ASSERT_FALSE(!fitted.isEmpty() && fitted.back().isHighSurrogate()) << width;
    }
    EXPECT_EQ(FitText(surface, title, 30), QStringLiteral("ab"));
    EXPECT_EQ(FitText(surface, title, 40), QStringLiteral("ab\U0001F600"));
}

TEST(FitText, NeverSplitsAGrapheme) {
    RecordingSurface surface(100, 100);  // ten units a code unit
    const QString acute = QStringLiteral("e\u0301");
    const QString family = QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467");
    const QString france = QStringLiteral("\U0001F1EB\U0001F1F7");
    const QString hangul = QStringLiteral("\u1100\u1161\u11A8");
    const QString title = QStringLiteral("a") + acute + family + QStringLiteral("b") + france +
                          hangul + QStringLiteral("c");
    const std::vector<int> whole = {0, 1, 3, 11, 12, 16, 19, 20};  // grapheme ends
    for (int width = 1; width <= 210; ++width) {
        const QString fitted = FitText(surface, title, width);
        const int expected = *std::prev(std::upper_bound(whole.begin(), whole.end(), width / 10));
        EXPECT_EQ(fitted, title.left(expected)) << width;
        EXPECT_EQ(FitTextByCharacters(surface, title, width), fitted) << width;
    }
}

TEST(TextFits, TellsWhetherTheWholeTextFits) {
    RecordingSurface surface(100, 100);
    const QString text(255, QLatin1Char('x'));
    EXPECT_TRUE(TextFits(surface, text, 2550));
    EXPECT_FALSE(TextFits(surface, text, 2549));
    EXPECT_FALSE(TextFits(surface, text, 10));
    EXPECT_TRUE(TextFits(surface, QString(), 0));
    EXPECT_TRUE(TextFits(surface, QStringLiteral("abc"), 30));
    EXPECT_FALSE(TextFits(surface, QStringLiteral("abc"), 29));
}

TEST(CutAtLastBlank, KeepsTheTextUpToAndWithItsLastBlank) {
    EXPECT_EQ(CutAtLastBlank(QStringLiteral("one two three")), QStringLiteral("one two "));
    EXPECT_EQ(CutAtLastBlank(QStringLiteral("one two ")), QStringLiteral("one two "));
    EXPECT_EQ(CutAtLastBlank(QStringLiteral(" one")), QStringLiteral(" "));
}

TEST(CutAtLastBlank, NeverBreaksAfterABlankThatCarriesAMark) {
    EXPECT_EQ(CutAtLastBlank(QStringLiteral("one two \u0301x")), QStringLiteral("one "));
    EXPECT_EQ(CutAtLastBlank(QStringLiteral(" \u0301x")), QStringLiteral(" \u0301x"));
}

TEST(CutAtLastBlank, ATextWithoutBlanksIsKeptWhole) {
    EXPECT_EQ(CutAtLastBlank(QStringLiteral("unbroken")), QStringLiteral("unbroken"));
}

TEST(CutAtLastBlank, AnEmptyTextGivesZero) {
    EXPECT_EQ(CutAtLastBlank(QString()), QStringLiteral("0"));
}

TEST(CentreOffset, RoundsHalvesToEven) {
    RecordingSurface surface(100, 100);
    EXPECT_EQ(CentreOffset(surface, 100, QStringLiteral("abcd")), 30);
    EXPECT_EQ(CentreOffset(surface, 15, QString()), 8);  // 7.5
    EXPECT_EQ(CentreOffset(surface, 13, QString()), 6);  // 6.5
    EXPECT_EQ(CentreOffset(surface, 10, QStringLiteral("abc")), -10);
}

}  // namespace
}  // namespace kelvane
