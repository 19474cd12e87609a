#include <gtest/gtest.h>

#include "gui/FakeSettingsStore.h"
#include "shell/WindowGeometry.h"
#include "support/QtPrinting.h"

namespace kelvane {
namespace {

QString Key(const char* key) {
    return FakeSettingsStore::Key(QStringLiteral("Kelvane"), QStringLiteral("Settings"),
                                  QString::fromLatin1(key));
}

TEST(WindowGeometry, MissingSettingsGiveTheDefaults) {
    const FakeSettingsStore settings;
    EXPECT_EQ(ReadMainGeometry(settings), (TwipGeometry{1000, 1000, 6500, 6500}));
}

TEST(WindowGeometry, SettingsAreTakenByTheirPlainNumericValue) {
    FakeSettingsStore settings;
    settings.Values.insert(Key("MainLeft"), QStringLiteral("  1500.5"));
    settings.Values.insert(Key("MainTop"), QStringLiteral("abc"));
    settings.Values.insert(Key("MainWidth"), QStringLiteral("7e3"));
    settings.Values.insert(Key("MainHeight"), QStringLiteral("-20"));
    EXPECT_EQ(ReadMainGeometry(settings), (TwipGeometry{1500.5, 0, 7000, -20}));
}

TEST(WindowGeometry, SavingWritesSinglePrecisionTwipsUnderTheFourKeys) {
    FakeSettingsStore settings;
    SaveMainGeometry(settings, TwipGeometry{15, 30.4, 6495, 5668.363636});
    EXPECT_EQ(settings.Values.value(Key("MainLeft")), QStringLiteral("15"));
    EXPECT_EQ(settings.Values.value(Key("MainTop")), QStringLiteral("30.4"));
    EXPECT_EQ(settings.Values.value(Key("MainWidth")), QStringLiteral("6495"));
    EXPECT_EQ(settings.Values.value(Key("MainHeight")), QStringLiteral("5668.36"));
    EXPECT_EQ(settings.Saves, 4);
}

TEST(WindowGeometry, TwipsAndPixelsConvertAtTheScreensDotsPerInch) {
    EXPECT_EQ(TwipsToPixels(1440, 96), 96);
    EXPECT_EQ(TwipsToPixels(6500, 96), 433);
    EXPECT_EQ(TwipsToPixels(6500, 120), 542);
    EXPECT_EQ(PixelsToTwips(96, 96), 1440);
    EXPECT_EQ(PixelsToTwips(433, 96), 6495);
}

TEST(WindowGeometry, ASavedSizeComesBackToTheSamePixelsAtAnyResolution) {
    for (const double dpi : {72.0, 96.0, 110.0, 120.0, 144.0, 157.5, 192.0}) {
        for (int pixels = 0; pixels < 3000; pixels += 7) {
            FakeSettingsStore settings;
            SaveMainGeometry(settings, TwipGeometry{0, 0, PixelsToTwips(pixels, dpi), 0});
            EXPECT_EQ(TwipsToPixels(ReadMainGeometry(settings).Width, dpi), pixels) << dpi;
        }
    }
}

TEST(WindowGeometry, AbsurdTwipsStayWithinWhatAnIntHolds) {
    EXPECT_EQ(TwipsToPixels(1e308, 96), 1'000'000);
    EXPECT_EQ(TwipsToPixels(-1e308, 96), -1'000'000);
    EXPECT_EQ(TwipsToPixels(std::numeric_limits<double>::infinity(), 96), 1'000'000);
}

const QRect kScreen(0, 0, 1280, 1000);
const QSize kMinimum(400, 333);

TEST(WindowGeometry, AWindowOnTheScreenStaysWhereItIs) {
    EXPECT_EQ(FitOnScreen(QRect(67, 67, 433, 433), kScreen, kMinimum), QRect(67, 67, 433, 433));
    EXPECT_EQ(FitOnScreen(QRect(847, 567, 433, 433), kScreen, kMinimum), QRect(847, 567, 433, 433));
}

// Its close button and its bottom edge stay within reach.
TEST(WindowGeometry, AWindowHangingOffAnEdgeIsMovedInWithoutShrinking) {
    EXPECT_EQ(FitOnScreen(QRect(1100, 900, 433, 433), kScreen, kMinimum),
              QRect(847, 567, 433, 433));
    EXPECT_EQ(FitOnScreen(QRect(136, 174, 1280, 1000), kScreen, kMinimum), kScreen);
    EXPECT_EQ(FitOnScreen(QRect(-20, 5, 433, 433), kScreen, kMinimum), QRect(0, 5, 433, 433));
}

TEST(WindowGeometry, AWindowOffScreenComesBackOnIt) {
    EXPECT_EQ(FitOnScreen(QRect(-5000, -5000, 433, 433), kScreen, kMinimum), QRect(0, 0, 433, 433));
    EXPECT_EQ(FitOnScreen(QRect(90000, 90000, 433, 433), kScreen, kMinimum),
              QRect(847, 567, 433, 433));
}

TEST(WindowGeometry, AWindowLargerThanTheScreenIsCutToItButNotBelowItsMinimum) {
    EXPECT_EQ(FitOnScreen(QRect(0, 0, 50000, 50000), kScreen, kMinimum), kScreen);
    EXPECT_EQ(FitOnScreen(QRect(300, 200, 1300, 1001), kScreen, kMinimum), kScreen);
    EXPECT_EQ(FitOnScreen(QRect(0, 0, 5, 5), kScreen, kMinimum), QRect(QPoint(0, 0), kMinimum));
}

// What does not fit hangs off the right and bottom, the title bar on screen.
TEST(WindowGeometry, AMinimumLargerThanTheScreenKeepsTheTopLeftCornerOnIt) {
    const QRect small(10, 20, 300, 200);
    EXPECT_EQ(FitOnScreen(QRect(500, 500, 100, 100), small, kMinimum),
              QRect(QPoint(10, 20), kMinimum));
}

// The screen need not start at 0, 0: a second screen right of the first.
TEST(WindowGeometry, AWindowIsFittedOnAScreenAnywhereOnTheDesktop) {
    const QRect second(1280, 40, 1024, 728);
    EXPECT_EQ(FitOnScreen(QRect(2000, 500, 433, 433), second, kMinimum),
              QRect(1871, 335, 433, 433));
}

}  // namespace
}  // namespace kelvane
