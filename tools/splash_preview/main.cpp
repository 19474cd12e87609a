// Shows the start-up splash until it is clicked, for looking at it by eye: at
// start-up it is only up while the main window loads.
#include <QApplication>
#include <QMouseEvent>

#include "dialogs/frmSplash.h"
#include "gui/ProgramIcon.h"

namespace {

// Ends the preview on a click anywhere on the splash.
class ClickToClose final : public QObject {
  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonRelease) {
            QApplication::quit();
            return true;
        }
        return QObject::eventFilter(watched, event);
    }
};

}  // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QApplication::setWindowIcon(kelvane::ProgramIcon());
    kelvane::frmSplash splash;
    ClickToClose closer;
    application.installEventFilter(&closer);
    splash.show();
    return QApplication::exec();
}
