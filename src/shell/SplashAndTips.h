#pragma once

#include <memory>

#include "dialogs/frmSplash.h"
#include "gui/RandomSource.h"
#include "shell/StartupDialogs.h"

namespace kelvane {

// The splash and the tips as the program shows them when it starts without a
// file to load.
class SplashAndTips final : public StartupDialogs {
  public:
    explicit SplashAndTips(RandomSource& random);
    ~SplashAndTips() override;

    void ShowSplash() override;
    void CloseSplash() override;
    void ShowTips(QWidget* owner) override;

  private:
    RandomSource& random_;
    std::unique_ptr<frmSplash> splash_;
};

}  // namespace kelvane
