#include "support/MainWindowWorld.h"

namespace kelvane::testing {

namespace {

std::unique_ptr<frmMain> LoadedMainWindow(TestWorld& world, int year, int month, int day, int hour,
                                          int minute) {
    world.platform.Clock.Set(year, month, day, hour, minute);
    world.OpenStores();
    auto window = std::make_unique<frmMain>(world.store);
    window->Form_Load();
    return window;
}

}  // namespace

MainWindowWorld::MainWindowWorld(int year, int month, int day, int hour, int minute)
    : window(LoadedMainWindow(world, year, month, day, hour, minute)),
      main(*window),
      watch(window->Watch()) {}

MainWindowWorld::~MainWindowWorld() {
    window->Form_Terminate();
}

void MainWindowWorld::AddActivity(qint16 month, qint16 day, const QString& description,
                                  qint16 startHour, qint16 startMinute, qint16 endHour,
                                  qint16 endMinute) {
    AppointmentMOD& appointments = store.appointments;
    const QString key = MakeDateKey(month, day);
    appointments.LoadAppointments(key);
    const int entry = appointments.CountAppointments() + 1;
    appointments.AppointmentList[entry].Description = description;
    appointments.AppointmentList[entry].StartTime = ClockTime{startHour, startMinute};
    appointments.AppointmentList[entry].EndTime = ClockTime{endHour, endMinute};
    appointments.SaveAppointments(key);
}

void MainWindowWorld::TickAt(int hour, int minute, int second) {
    platform.Clock.Now.setTime(QTime(hour, minute, second));
    main.Timer1_Timer();
}

void MainWindowWorld::WalkTo(int hour, int minute) {
    const QTime now = platform.Clock.Now.time();
    for (int step = now.hour() * 60 + now.minute() + 1; step <= hour * 60 + minute; ++step) {
        TickAt(step / 60, step % 60, 5);
    }
}

QStringList MainWindowWorld::ScheduleLines() const {
    QStringList lines;
    const usrDocViewer& viewer = window->usrTodaysSchedule();
    for (qint16 line = 1; line <= viewer.GetLineCount(); ++line) {
        lines << Trim(viewer.GetLine(line));
    }
    return lines;
}

QStringList MainWindowWorld::ShownTexts() const {
    QStringList texts;
    for (const MessageBoxRequest& box : platform.Messages.Shown) {
        texts << box.Text;
    }
    return texts;
}

}  // namespace kelvane::testing
