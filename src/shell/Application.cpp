#include "shell/Application.h"

#include <QApplication>
#include <QMainWindow>
#include <QStatusBar>

#include "calendar/Calender.h"
#include "gui/SurfaceWidget.h"

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
    // Stands in for the main window until it is built: the month view alone.
    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Kelvane v1.0"));
    auto* view = new SurfaceWidget(&window);
    Calender calender1(store_.module1, store_.calender, view->Surface());
    view->SetEvents(&calender1);
    store_.module1.AttachMonthView(&calender1);
    window.setCentralWidget(view);
    window.statusBar()->showMessage(QStringLiteral("I am ready!"));
    window.resize(640, 480);
    window.show();
    const int exitCode = QApplication::exec();
    view->SetEvents(nullptr);
    store_.module1.AttachMonthView(nullptr);
    Finish();
    return exitCode;
}

}  // namespace kelvane
