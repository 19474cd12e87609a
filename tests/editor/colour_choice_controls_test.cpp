#include <QTest>

#include <gtest/gtest.h>

#include "editor/ColourChoiceControls.h"
#include "gui/FakeColourDialogs.h"

namespace kelvane {
namespace {

struct ControlsOnAPage {
    QWidget page;
    FakeColourDialogs dialogs;
    ColourChoiceControls controls{&page, dialogs};
};

TEST(ColourChoiceControls, EditNothingBeforeTheyAreAttached) {
    ControlsOnAPage c;
    QTest::keyClicks(c.controls.txtFCred, QStringLiteral("5"));
    QTest::mouseClick(c.controls.chkBCValid, Qt::LeftButton);
    c.dialogs.Choose(0x010203);
    QTest::mouseClick(c.controls.cmdFontCol, Qt::LeftButton);
    EXPECT_EQ(c.controls.txtFCred->text(), QStringLiteral("3"));
}

TEST(ColourChoiceControls, ShowAndEditTheChoicesAttachedLast) {
    ControlsOnAPage c;
    ColourChoice firstFont{1, 2, 3, true, true};
    ColourChoice firstBack;
    ColourChoice font{-4, 5, 6, false, true};
    ColourChoice back{7, 8, -9, true, false};
    c.controls.Attach(firstFont, firstBack);
    c.controls.Attach(font, back);
    EXPECT_EQ(c.controls.txtFCred->text(), QStringLiteral("-4"));
    EXPECT_EQ(c.controls.txtBCblue->text(), QStringLiteral("-9"));
    EXPECT_FALSE(c.controls.chkFCAbsolute->isChecked());
    EXPECT_TRUE(c.controls.chkBCAbsolute->isChecked());
    c.controls.txtBCGreen->selectAll();
    QTest::keyClicks(c.controls.txtBCGreen, QStringLiteral("77"));
    EXPECT_EQ(back.Green, 77);
    EXPECT_EQ(firstBack.Green, 0);
    EXPECT_EQ(c.controls.lblSample->text(), QStringLiteral("Sample"));
}

TEST(ColourChoiceControls, EveryControlIsAChildOfThePageWithItsName) {
    ControlsOnAPage c;
    for (const char* name : {"cmdFontCol", "cmdBackCol", "chkFCValid", "chkBCValid",
                             "chkFCAbsolute", "chkBCAbsolute", "txtFCred", "txtFCgreen",
                             "txtFCBlue", "txtBCRed", "txtBCGreen", "txtBCblue", "lblSample"}) {
        EXPECT_EQ(c.page.findChildren<QWidget*>(QString::fromLatin1(name)).size(), 1) << name;
    }
}

}  // namespace
}  // namespace kelvane
