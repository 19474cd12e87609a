// A Kelvane for the session-end tests: the real program on the real outside
// world, except that message boxes are printed and answered at once and no
// splash or tips are shown. The first argument is a calendar file to load; with
// the word "edit" after it, one date is changed before "ready" is printed; with
// "typing", the date editor is open on 5 May with a title and a note typed into
// it, and nothing else changed.
#include <QApplication>
#include <QTimer>

#include <cstdio>

#include "editor/frmEdit.h"
#include "gui/QtPlatform.h"
#include "shell/Application.h"
#include "shell/frmMain.h"

namespace {

using namespace kelvane;

class PrintedMessageBoxes final : public MessageBoxes {
  protected:
    MessageAnswer Present(const MessageBoxRequest& request) override {
        std::printf("box: %s\n", qPrintable(QString(request.Text).replace('\r', '|')));
        std::fflush(stdout);
        return request.Buttons == MessageButtons::Ok ? MessageAnswer::Ok : MessageAnswer::No;
    }
};

class NoStartupDialogs final : public StartupDialogs {
  public:
    void ShowSplash() override {}
    void CloseSplash() override {}
    void ShowTips(QWidget*) override {}
};

// 5 May gets a title, an activity and a note, as OK in the editor keeps them.
void EditFifthOfMay(Application& application) {
    Store& store = application.Document();
    Calender& calender = application.MainWindow()->Calender1();
    calender.SetDate(2000, 5, 5);
    store.calender.CurrentEntry.Title = QStringLiteral("Fifth of May");
    calender.UpdateSelectedDate(false);
    const QString key = MakeDateKey(5, 5);
    store.appointments.LoadAppointments(key);
    store.appointments.AppointmentList[1] =
        Appointment{QStringLiteral("Parade"), ClockTime{10, 0}, ClockTime{11, 30}};
    store.appointments.SaveAppointments(key);
    store.diary.NoteBuffer = QStringLiteral("Flags\r\nDrums");
    store.diary.SaveNote(key);
    store.module1.CalendarDirty = true;
}

void SayReady() {
    std::printf("ready\n");
    std::fflush(stdout);
}

// Waits for the editor the main window opens, types into it and says ready.
void TypeIntoTheEditorOnceOpen() {
    auto* poll = new QTimer;
    QObject::connect(poll, &QTimer::timeout, [poll] {
        auto* editor = dynamic_cast<frmEdit*>(QApplication::activeModalWidget());
        if (editor == nullptr) {
            return;
        }
        poll->deleteLater();
        editor->txtTitle->setText(QStringLiteral("Typed title"));
        editor->txtNotes->setPlainText(QStringLiteral("Typed\nnote"));
        SayReady();
    });
    poll->start(5);
}

void OpenTheEditorAndType(Application& application) {
    frmMain& main = *application.MainWindow();
    main.ShowMonth(5);
    main.Calender1().SelectDateAndShowItsMonth(CalDate{2000, 5, 5});
    TypeIntoTheEditorOnceOpen();
    main.mnuEditDate_Click();
}

}  // namespace

int main(int argc, char* argv[]) {
    QApplication qtApplication(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Kelvane"));
    QApplication::setOrganizationName(QStringLiteral("Kelvane"));

    QtPlatform real;
    PrintedMessageBoxes messages;
    const Platform services{messages,        real.Clock,        real.Random, real.Directory,
                            real.FileDialog, real.ColourDialog, real.Fonts,  real.Settings,
                            real.Instance,   real.Accessibility};
    NoStartupDialogs dialogs;
    Application application(services, dialogs);
    const QStringList arguments = QApplication::arguments();
    QTimer::singleShot(0, [&] {
        if (arguments.contains(QStringLiteral("typing"))) {
            OpenTheEditorAndType(application);
            return;
        }
        if (arguments.contains(QStringLiteral("edit"))) {
            EditFifthOfMay(application);
        }
        SayReady();
    });
    return application.Run(arguments.value(1));
}
