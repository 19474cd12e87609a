#include <QTest>

#include <gtest/gtest.h>

#include <set>

#include "dialogs/TipTexts.h"
#include "dialogs/frmTip.h"
#include "gui/FakeRandomSource.h"

namespace kelvane {
namespace {

// The number that draws tip n, 1..10.
double Draws(int n) {
    return (n - 1) / 10.0 + 0.05;
}

TEST(Tips, ShowsItsCaptionHeadingAndButtons) {
    FakeRandomSource random;
    frmTip dialog(random);
    EXPECT_EQ(dialog.windowTitle(), "Tips...");
    EXPECT_EQ(dialog.Label1->text(), "Did you know...");
    EXPECT_EQ(dialog.cmdNextTip->text(), "&Next Tip");
    EXPECT_EQ(dialog.lblTipText->objectName(), "lblTipText");
    EXPECT_EQ(dialog.Picture1->objectName(), "Picture1");
    EXPECT_EQ(dialog.TipCount, 10);
}

TEST(Tips, EveryTipReadsExactlyAsWritten) {
    const QStringList expected{
        "The toolbar gives you access to most of the functionality of the Kelvane. The toolbar is "
        "your friend.",
        "Left-Click on a date, then use the 'tools >> edit' function to set titles, schedules, "
        "and notes to that date.",
        "Use the Colour Fill procedure to set colours to multiple dates.",
        "When you resize the Kelvane window, the calender resizes also. The bigger the calender "
        "the more text you are able to see.",
        "Go into 'View >> Options' to set the Font and other attributes to your calender.",
        "Absolute colours are fixed, while non-absolute colours will vary depending on your "
        "Desktop Colour Scheme.",
        "To get a bitmap of the calender, use the 'File >> Save Cal' Image'.",
        "Did you see the RED moon on the morning of the 17th of July 2000... it was quite "
        "BUZZY... Witnesses a biblical prophecy right before our eyes!!",
        "You can load a 'cal' file from the Command line i.e.: 'Tivrel MyCalender' You could "
        "create a batch file for this so that you have a shortcut to load you calender file.",
        "You can copy text off the 'Text Boxes.' Select the text you want to copy and then copy "
        "it (via Mouse, Keyboard)."};
    FakeRandomSource random;
    for (int n = 1; n <= 10; ++n) {
        random.Script.append(Draws(n));
    }
    frmTip dialog(random);
    for (int n = 1; n <= 10; ++n) {
        EXPECT_EQ(dialog.ShownTip(), n);
        EXPECT_EQ(dialog.lblTipText->text(), expected[n - 1]) << n;
        dialog.cmdNextTip_Click();
    }
    EXPECT_EQ(TipText(0), expected[9]);
    EXPECT_EQ(TipText(11), expected[9]);
}

TEST(Tips, TheFirstTenShownAreTenDifferentTips) {
    for (std::uint32_t seed = 1; seed <= 20; ++seed) {
        FakeRandomSource random;
        random.Seed(seed);
        frmTip dialog(random);
        std::set<int> seen{dialog.ShownTip()};
        for (int next = 1; next < 10; ++next) {
            QTest::mouseClick(dialog.cmdNextTip, Qt::LeftButton);
            seen.insert(dialog.ShownTip());
        }
        EXPECT_EQ(seen.size(), 10U) << seed;
        // A new round starts: any tip may come, the tenth shown included.
        EXPECT_EQ(dialog.TipsShownCount, 0);
        dialog.cmdNextTip_Click();
        EXPECT_GE(dialog.ShownTip(), 1);
        EXPECT_LE(dialog.ShownTip(), 10);
    }
}

TEST(Tips, TheTipJustShownMayComeAgainInTheNextRound) {
    FakeRandomSource random;
    for (int n = 1; n <= 10; ++n) {
        random.Script.append(Draws(n));
    }
    random.Script.append(Draws(10));
    frmTip dialog(random);
    for (int next = 1; next <= 10; ++next) {
        dialog.cmdNextTip_Click();
    }
    EXPECT_EQ(dialog.ShownTip(), 10);
}

TEST(Tips, DrawsAgainUntilATipOfTheRoundComesUp) {
    FakeRandomSource random;
    random.Script = {Draws(4), Draws(4), Draws(4), Draws(7)};
    frmTip dialog(random);
    EXPECT_EQ(dialog.ShownTip(), 4);
    dialog.cmdNextTip_Click();
    EXPECT_EQ(dialog.ShownTip(), 7);
    EXPECT_EQ(dialog.TipsShownCount, 2);
}

TEST(Tips, TipTenIsShownForTheNumberTenOnAFreshDialog) {
    FakeRandomSource random;
    random.Script = {Draws(10)};
    frmTip dialog(random);
    EXPECT_EQ(dialog.ShownTip(), 10);
    EXPECT_TRUE(dialog.TipShown[10]);
}

TEST(Tips, ASourceThatKeepsRepeatingItselfCannotHangTheDialog) {
    class StuckRandom final : public RandomSource {
      public:
        void Seed(std::uint32_t /*seed*/) override {}
        double Next() override { return 0.0; }
    } random;
    frmTip dialog(random);
    EXPECT_EQ(dialog.ShownTip(), 1);
    dialog.cmdNextTip_Click();
    EXPECT_EQ(dialog.ShownTip(), 2);
}

TEST(Tips, OkCloses) {
    FakeRandomSource random;
    frmTip dialog(random);
    dialog.show();
    QTest::mouseClick(dialog.cmdOK, Qt::LeftButton);
    EXPECT_FALSE(dialog.isVisible());
}

}  // namespace
}  // namespace kelvane
