#include <gtest/gtest.h>

#include "dialogs/frmSplash.h"

namespace kelvane {
namespace {

TEST(Splash, ShowsTheProductVersionAndWarning) {
    frmSplash splash;
    EXPECT_EQ(splash.lblProductName->text(), "Kelvane");
    EXPECT_EQ(splash.lblVersion->text(), "Version 1.0.0");
    EXPECT_EQ(splash.lblWarning->text(),
              "Warning... I accept no responsibility for damage of any kind. This product is "
              "'freeware' and is provided 'as is'.");
    EXPECT_EQ(splash.lblCompany->text(), "Marrowby");
    EXPECT_FALSE(splash.lblCompanyProduct->text().isEmpty());
    EXPECT_FALSE(splash.lblPlatform->text().isEmpty());
    EXPECT_FALSE(splash.lblLicense->text().isEmpty());
    EXPECT_FALSE(splash.Image1->pixmap().isNull());
    EXPECT_EQ(splash.fraMainFrame->objectName(), "fraMainFrame");
}

}  // namespace
}  // namespace kelvane
