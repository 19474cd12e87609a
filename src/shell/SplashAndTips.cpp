#include "shell/SplashAndTips.h"

#include <QApplication>

#include "dialogs/frmTip.h"

namespace kelvane {

SplashAndTips::SplashAndTips(RandomSource& random) : random_(random) {}

SplashAndTips::~SplashAndTips() = default;

// Painted before the main window starts loading, which keeps the event loop
// from running for a while.
void SplashAndTips::ShowSplash() {
    splash_ = std::make_unique<frmSplash>();
    splash_->show();
    splash_->repaint();
    QApplication::processEvents();
}

void SplashAndTips::CloseSplash() {
    splash_.reset();
}

void SplashAndTips::ShowTips(QWidget* owner) {
    frmTip tips(random_, owner);
    tips.exec();
}

}  // namespace kelvane
