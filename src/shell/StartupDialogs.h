#pragma once

class QWidget;

namespace kelvane {

// The splash shown while the main window loads and the tips shown over it,
// both only when the program starts without a file to load.
class StartupDialogs {
  public:
    virtual ~StartupDialogs() = default;

    // Shows the splash without waiting and paints it at once.
    virtual void ShowSplash() = 0;
    virtual void CloseSplash() = 0;
    // Shows the tips as a modal dialog over `owner`.
    virtual void ShowTips(QWidget* owner) = 0;
};

}  // namespace kelvane
