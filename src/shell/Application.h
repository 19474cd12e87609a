#pragma once

#include <QString>
#include <QStringList>

#include <memory>

#include "gui/Platform.h"
#include "gui/SessionEndWatcher.h"
#include "shell/StartupDialogs.h"
#include "store/Store.h"

namespace kelvane {

class frmMain;

// The running program: refuses to start beside another copy, opens the
// document's temporary stores, shows the main window until it is closed, and
// closes and deletes the stores again.
class Application {
  public:
    Application(const Platform& platform, StartupDialogs& dialogs);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    // Runs the program; `commandLine` is the name of a calendar file to load,
    // or empty. Returns the exit code.
    int Run(const QString& commandLine);

    // The start-up: false when another copy runs, and then nothing is opened.
    // Otherwise the main window is shown, with the file of the trimmed
    // command line loaded into it.
    bool Start(const QString& commandLine);
    // The end once the main window has closed.
    void Finish();
    // What the program does when its session ends without Exit: on a signal
    // every event loop ends, so that each command ends as if cancelled, and
    // Run then keeps the unsaved changes; on the session's save request a copy
    // of them is made at once; on the quit they are kept.
    void SessionEnds(SessionEnd how);

    Store& Document() { return store_; }
    // The main window between Start and Finish.
    frmMain* MainWindow() { return main_.get(); }

    // The command line as one text: the arguments after the program's name,
    // joined by blanks.
    static QString CommandLineOf(const QStringList& arguments);

  private:
    void CreateMainWindow();
    // Unsaved changes go to a copy and the main window closes as Exit closes
    // it, unless Exit has closed it already.
    void EndSession();

    const Platform& platform_;
    StartupDialogs& dialogs_;
    Store store_;
    std::unique_ptr<frmMain> main_;
    bool sessionEnded_ = false;
};

}  // namespace kelvane
