#include "shell/Application.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>

namespace kelvane {

void Application::Start() {
    store_.module1.CalendarDirty = false;
    store_.module1.FillDaysInMonth();
    store_.appointments.InitAppointmentStore();
    store_.diary.InitDiaryStore();
}

void Application::Finish() {
    store_.appointments.CloseAppointmentStore();
    store_.diary.CloseDiaryStore();
}

int Application::Run() {
    Start();
    // Stands in for the main window until it is built.
    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Kelvane v1.0"));
    auto* label = new QLabel(QStringLiteral("I am ready!"), &window);
    label->setAlignment(Qt::AlignCenter);
    window.setCentralWidget(label);
    window.resize(640, 480);
    window.show();
    const int exitCode = QApplication::exec();
    Finish();
    return exitCode;
}

}  // namespace kelvane
