#include <QTest>

#include <gtest/gtest.h>

#include "dialogs/frmAbout.h"

namespace kelvane {
namespace {

TEST(About, ShowsVersionTitleDescriptionAndDisclaimer) {
    frmAbout about;
    EXPECT_EQ(about.lblVersion->text(), "Version 1.0.0");
    EXPECT_TRUE(about.lblTitle->text().endsWith("\n\"Kelvane\""));
    EXPECT_EQ(about.lblTitle->text().count(QLatin1Char('\n')), 1);
    EXPECT_EQ(about.lblDescription->text(),
              "This copy of Kelvane 1.0.0 is Freeware\nDate: August 2000");
    EXPECT_EQ(about.lblDisclaimer->text(),
              "I accept no responsibility for damage of any kind during the use of this product. "
              "This product is provided 'as is'.");
    EXPECT_FALSE(about.Image1->pixmap().isNull());
    EXPECT_EQ(about.Label1->objectName(), "Label1");
}

TEST(About, ClosesOnItsButton) {
    frmAbout about;
    about.show();
    QTest::mouseClick(about.cmdOK, Qt::LeftButton);
    EXPECT_FALSE(about.isVisible());
}

TEST(About, ClosesOnAClickAnywhereOnIt) {
    frmAbout about;
    about.show();
    QTest::mouseClick(&about, Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_FALSE(about.isVisible());
}

}  // namespace
}  // namespace kelvane
