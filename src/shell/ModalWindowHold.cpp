#include "shell/ModalWindowHold.h"

#include <QApplication>
#include <QEvent>

namespace kelvane {

void ModalWindowHold::Update() {
    QWidget* modal = QApplication::activeModalWidget();
    Follow(modal);
    if (modal == nullptr) {
        hold_.reset();
    } else if (!hold_) {
        hold_.emplace(watch_);
    }
}

// Only the topmost modal window is followed; when it closes, the one below it,
// if any, is followed next.
void ModalWindowHold::Follow(QWidget* window) {
    if (window_ == window) {
        return;
    }
    if (window_ != nullptr) {
        window_->removeEventFilter(this);
        disconnect(window_, nullptr, this, nullptr);
    }
    window_ = window;
    if (window != nullptr) {
        window->installEventFilter(this);
        connect(window, &QObject::destroyed, this, [this] { UpdateLater(); });
    }
}

// A window that hides is no modal window any more by the time it is told.
bool ModalWindowHold::eventFilter(QObject* watched, QEvent* event) {
    if (watched == window_ && event->type() == QEvent::Hide) {
        Update();
    }
    return QObject::eventFilter(watched, event);
}

// A window that is being destroyed may still count as modal until it is gone;
// the look is taken once it is.
void ModalWindowHold::UpdateLater() {
    QMetaObject::invokeMethod(
        this, [this] { Update(); }, Qt::QueuedConnection);
}

}  // namespace kelvane
