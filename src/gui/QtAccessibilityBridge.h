#pragma once

#include <QAccessible>

#include <vector>

#include "gui/AccessibilityBridge.h"

namespace kelvane {

// Qt's own bridge to the desktop's screen readers (AT-SPI on Linux).
class QtAccessibilityBridge final : public AccessibilityBridge,
                                    private QAccessible::ActivationObserver {
  public:
    QtAccessibilityBridge();
    ~QtAccessibilityBridge() override;
    QtAccessibilityBridge(const QtAccessibilityBridge&) = delete;
    QtAccessibilityBridge& operator=(const QtAccessibilityBridge&) = delete;

    bool Listening() const override;
    void Send(QAccessibleEvent& event) override;
    void AddObserver(Observer& observer) override;
    void RemoveObserver(Observer& observer) override;

  private:
    void accessibilityActiveChanged(bool active) override;

    std::vector<Observer*> observers_;
};

}  // namespace kelvane
