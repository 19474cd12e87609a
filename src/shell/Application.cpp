#include "shell/Application.h"

#include <QApplication>

#include "shell/InterimWindow.h"

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
    int exitCode = 0;
    {
        InterimWindow window(store_);
        window.resize(640, 480);
        window.show();
        exitCode = QApplication::exec();
        window.Commands().SaveRecentList();
    }
    Finish();
    return exitCode;
}

}  // namespace kelvane
