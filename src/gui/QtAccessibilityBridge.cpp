#include "gui/QtAccessibilityBridge.h"

#include <algorithm>

namespace kelvane {

QtAccessibilityBridge::QtAccessibilityBridge() {
    QAccessible::installActivationObserver(this);
}

QtAccessibilityBridge::~QtAccessibilityBridge() {
    QAccessible::removeActivationObserver(this);
}

bool QtAccessibilityBridge::Listening() const {
    return QAccessible::isActive();
}

void QtAccessibilityBridge::Send(QAccessibleEvent& event) {
    QAccessible::updateAccessibility(&event);
}

void QtAccessibilityBridge::AddObserver(Observer& observer) {
    observers_.push_back(&observer);
}

void QtAccessibilityBridge::RemoveObserver(Observer& observer) {
    observers_.erase(std::remove(observers_.begin(), observers_.end(), &observer),
                     observers_.end());
}

void QtAccessibilityBridge::accessibilityActiveChanged(bool active) {
    if (!active) {
        return;
    }
    // A copy: an observer may come or go while it is told.
    const std::vector<Observer*> observers = observers_;
    for (Observer* observer : observers) {
        observer->ListeningChanged();
    }
}

}  // namespace kelvane
