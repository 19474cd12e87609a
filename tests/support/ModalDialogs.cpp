#include "support/ModalDialogs.h"

#include <QApplication>
#include <QTimer>

#include <memory>

namespace kelvane::testing {

void WhenModalOpens(std::function<void(QWidget*)> act) {
    constexpr int kPollMs = 5;
    constexpr int kTries = 1000;
    auto* poll = new QTimer;
    auto tries = std::make_shared<int>(0);
    poll->setInterval(kPollMs);
    QObject::connect(poll, &QTimer::timeout, [poll, tries, act = std::move(act)] {
        QWidget* dialog = QApplication::activeModalWidget();
        if (dialog == nullptr && ++*tries < kTries) {
            return;
        }
        poll->stop();
        poll->deleteLater();
        if (dialog != nullptr) {
            act(dialog);
        }
    });
    poll->start();
}

}  // namespace kelvane::testing
