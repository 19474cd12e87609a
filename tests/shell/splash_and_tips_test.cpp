#include <QApplication>
#include <QWidget>

#include <gtest/gtest.h>

#include "dialogs/frmSplash.h"
#include "dialogs/frmTip.h"
#include "gui/FakeRandomSource.h"
#include "shell/SplashAndTips.h"
#include "support/ModalDialogs.h"

namespace kelvane {
namespace {

frmSplash* ShownSplash() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* splash = dynamic_cast<frmSplash*>(window); splash && splash->isVisible()) {
            return splash;
        }
    }
    return nullptr;
}

TEST(SplashAndTips, TheSplashShowsUntilItIsClosed) {
    FakeRandomSource random;
    SplashAndTips dialogs(random);
    dialogs.ShowSplash();
    const frmSplash* splash = ShownSplash();
    ASSERT_NE(splash, nullptr);
    EXPECT_EQ(splash->lblVersion->text(), "Version 1.0.0");
    dialogs.CloseSplash();
    EXPECT_EQ(ShownSplash(), nullptr);
}

TEST(SplashAndTips, TheTipsShowModallyOverTheirOwnerWithTheProgramsRandomNumbers) {
    FakeRandomSource random;
    random.Script = {0.35};
    SplashAndTips dialogs(random);
    QWidget owner;
    owner.show();
    int shownTip = 0;
    QWidget* parent = nullptr;
    testing::WhenModalOpens([&](QWidget* widget) {
        auto* tips = dynamic_cast<frmTip*>(widget);
        ASSERT_NE(tips, nullptr);
        shownTip = tips->ShownTip();
        parent = tips->parentWidget();
        tips->cmdOK_Click();
    });
    dialogs.ShowTips(&owner);
    EXPECT_EQ(shownTip, 4);
    EXPECT_EQ(parent, &owner);
}

}  // namespace
}  // namespace kelvane
