#include "shell/Application.h"

#include <QApplication>

#include "shell/WatchHold.h"
#include "shell/frmMain.h"
#include "store/CalenderMOD.h"

namespace kelvane {

Application::Application(const Platform& platform, StartupDialogs& dialogs)
    : platform_(platform), dialogs_(dialogs), store_(platform) {}

Application::~Application() = default;

QString Application::CommandLineOf(const QStringList& arguments) {
    return arguments.mid(1).join(QLatin1Char(' '));
}

bool Application::Start(const QString& commandLine) {
    if (platform_.Instance.AnotherCopyRunning()) {
        platform_.Messages.Show(QStringLiteral("There is another 'me' running\r"
                                               "Cannot have more than one 'Kelvane' running"),
                                MessageButtons::Ok, MessageIcon::Critical);
        return false;
    }
    const QString fileName = Trim(commandLine);
    store_.module1.CalendarDirty = false;
    store_.module1.FillDaysInMonth();
    store_.appointments.InitAppointmentStore();
    store_.diary.InitDiaryStore();
    BuildColourList(store_.calender.ColourList);
    if (fileName.isEmpty()) {
        dialogs_.ShowSplash();
        CreateMainWindow();
        dialogs_.CloseSplash();
        main_->show();
        const WatchHold hold(main_->Watch());
        dialogs_.ShowTips(main_.get());
    } else {
        CreateMainWindow();
        main_->show();
        main_->LoadFile(fileName);
    }
    return true;
}

void Application::CreateMainWindow() {
    main_ = std::make_unique<frmMain>(store_);
    main_->Form_Load();
}

void Application::Finish() {
    if (main_) {
        main_->Form_Terminate();
        main_.reset();
    }
}

void Application::SessionEnds(SessionEnd how) {
    switch (how) {
        case SessionEnd::Signal:
            sessionEnded_ = true;
            QApplication::exit(0);
            break;
        case SessionEnd::SaveRequest:
            if (main_) {
                main_->WriteRecoveryCopyIfNeeded();
            }
            break;
        case SessionEnd::Quit:
            EndSession();
            break;
    }
}

void Application::EndSession() {
    if (main_) {
        main_->EndSession();
    }
}

int Application::Run(const QString& commandLine) {
    // From the start on: a session may end while the tips are still up.
    const SessionEndWatcher sessionEnd([this](SessionEnd how) { SessionEnds(how); });
    if (!Start(commandLine)) {
        return 1;
    }
    // Every loop has ended here, and with it every command: no command holds
    // the working copies any more.
    const int exitCode = sessionEnded_ ? 0 : QApplication::exec();
    EndSession();
    Finish();
    return exitCode;
}

}  // namespace kelvane
