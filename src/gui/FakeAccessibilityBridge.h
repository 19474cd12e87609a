#pragma once

#include <QAccessible>

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

#include "gui/AccessibilityBridge.h"

namespace kelvane {

// A screen reader for tests, which have no bridge on headless platforms: the
// events go to `Listen`'s function while one is given.
class FakeAccessibilityBridge final : public AccessibilityBridge {
  public:
    using Listener = std::function<void(QAccessibleEvent& event)>;

    // Starts (or, with none, stops) listening.
    void Listen(Listener listener) {
        listener_ = std::move(listener);
        const std::vector<Observer*> observers = observers_;
        for (Observer* observer : observers) {
            observer->ListeningChanged();
        }
    }

    bool Listening() const override { return static_cast<bool>(listener_); }
    void Send(QAccessibleEvent& event) override {
        if (listener_) {
            listener_(event);
        }
    }
    void AddObserver(Observer& observer) override { observers_.push_back(&observer); }
    void RemoveObserver(Observer& observer) override {
        observers_.erase(std::remove(observers_.begin(), observers_.end(), &observer),
                         observers_.end());
    }

  private:
    Listener listener_;
    std::vector<Observer*> observers_;
};

}  // namespace kelvane
