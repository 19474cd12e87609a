#pragma once

#include <QMainWindow>
#include <QTimer>

#include <list>
#include <memory>

#include "calendar/Calender.h"
#include "gui/SurfaceWidget.h"
#include "report/usrDocViewer.h"
#include "shell/ActivityWatch.h"
#include "shell/DateCommands.h"
#include "shell/MainMenu.h"
#include "shell/MainStatusBar.h"
#include "shell/MainToolbar.h"
#include "shell/ModalWindowHold.h"
#include "shell/MonthGridNames.h"
#include "shell/ToolCommands.h"
#include "shell/WatchHold.h"
#include "shell/WindowGeometry.h"
#include "store/DocumentCommands.h"
#include "store/DocumentWindow.h"
#include "store/Store.h"

namespace kelvane {

// The main window: the month view beside today's schedule under a toolbar,
// over a status bar, with the menus of every command. It owns the watch over
// today's activities and the document commands of the File menu.
class frmMain final : public QMainWindow, public DocumentWindow {
  public:
    static constexpr int Timer1Interval = 40000;

    explicit frmMain(Store& store);
    ~frmMain() override;

    // What the window does once, before it is first shown.
    void Form_Load();
    // The end after the window has closed: the temporary stores are closed and
    // deleted and the recent-file list is written.
    void Form_Terminate();

    // Loads a calendar file into the open document; true when it loaded.
    bool LoadFile(QString fileName);

    // The session ends without Exit (logout, shutdown, a termination signal):
    // unsaved changes are kept in a copy of their own, which becomes the newest
    // recent file, and the window closes as Exit closes it, without a question.
    // Does nothing once the window is closing. Form_Terminate still follows;
    // when no whole copy could be written it leaves the temporary files.
    void EndSession();
    // Makes that copy now, if there are unsaved changes or a date editor is
    // open (the copy holds what it would keep on OK), and goes on: the session
    // asked for it and may yet go on. Safe while a command runs. False when
    // there was something to keep and no whole copy could be written.
    bool WriteRecoveryCopyIfNeeded();

    void mnuFileNew_Click() { commands_->FileNew(); }
    void mnuFileOpen_Click() { commands_->FileOpen(); }
    void mnuFileSaveAs_Click() { commands_->FileSaveAs(); }
    void mnufileMRU_Click(int index) { commands_->FileRecent(index); }
    void mnuFileSaveCalImage_Click() { dates_->SaveCalendarImage(); }
    void mnuFileExit_Click() { close(); }
    void mnuEditDate_Click() { dates_->EditSelectedDate(); }
    void mnuEditExamineDate_Selected_Click() { dates_->ExamineSelectedDate(); }
    void mnuToolsExamine_CancelExamine_Click() { dates_->CancelExamine(); }
    void mnuToolsCommingUp_Click() { tools_->ShowCommingUp(); }
    void mnuToolsColourFill_Click() { tools_->ShowColourFill(); }
    void mnuViewOptions_Click() { tools_->ShowOptions(); }
    void mnuHelpTips_Click() { tools_->ShowTips(); }
    void mnuHelpAbout_Click() { tools_->ShowAbout(); }
    void mnuViewToolBar_Click();
    void mnuViewStatusBar_Click();
    void mnuViewRefresh_Click();
    void mnuViewToday_Click();
    void mnuViewTools_Click();
    void mnuViewCalender_Click();
    void tbMain_ButtonClick(int index);
    void Timer1_Timer();
    // A key pressed while the month view has the keyboard: arrows, Home, End,
    // Page Up and Page Down move the selection, showing its month; Enter edits
    // the selected date and Delete erases it, as the toolbar does. True when
    // the key was used.
    bool Calender1_KeyDown(int key, Qt::KeyboardModifiers modifiers);

    // Shows month 1..12 and puts the check mark on its menu entry.
    void ShowMonth(qint16 month);

    // DocumentWindow: the File menu's commands report here. A file command
    // holds the watch, with its announcements off, from the start to the end
    // hook; the hooks nest, and an end without a start changes nothing.
    void StartFileCommand() override;
    void EndFileCommand() override;
    void SetCaption(const QString& caption) override { setWindowTitle(caption); }
    void ShowStatus(const QString& text) override { statusBar_->ShowMessage(text); }
    void ShowRecentMenu(const RecentMenu& menu) override;
    bool ToolsShown() const override { return viewTools_; }
    void ToggleTools() override { mnuViewTools_Click(); }
    bool CalenderShown() const override { return viewCalender_; }
    void ToggleCalender() override { mnuViewCalender_Click(); }
    void DocumentReplaced() override;

    Calender& Calender1() { return *calender1_; }
    SurfaceWidget& CalenderView() { return *calenderView_; }
    usrDocViewer& usrTodaysSchedule() { return *schedule_; }
    ActivityWatch& Watch() { return *watch_; }
    DocumentCommands& Commands() { return *commands_; }
    DateCommands& Dates() { return *dates_; }
    ToolCommands& Tools() { return *tools_; }
    MainStatusBar& sbStatusBar() { return *statusBar_; }
    const MainMenu& Menu() const { return menu_; }
    const MainToolbar& Toolbar() const { return toolbar_; }

    // The window's size as designed, taken at load; the smallest it may get.
    int DesignWidth = 0;
    int DesignHeight = 0;
    QTimer Timer1;

  protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void ConnectMenu();
    void ConnectToolbar();
    void Form_Unload(bool& cancel);
    bool ConfirmQuit();
    void CloseForGood();
    void ShowNewDay(const CalDate& before, const CalDate& today);
    void CatchUpSoon();
    void Form_Resize();
    void ArrangePanels();
    void ToggleViewKeepingOneOn(bool& view, bool& other);
    void PopUpMonthMenu();
    void ShowViewChecks();
    void ShowMonthCheck(qint16 month);
    void ApplyGeometry(const TwipGeometry& geometry);
    TwipGeometry CurrentGeometry() const;
    void FitWindowOnScreen();
    void FitOnceTheFrameIsKnown();
    void CloseOtherWindows();

    Store& store_;
    QWidget* panels_;
    SurfaceWidget* calenderView_;
    std::unique_ptr<Calender> calender1_;
    std::unique_ptr<MonthGridNames> gridNames_;
    usrDocViewer* schedule_;
    MainStatusBar* statusBar_;
    MainMenu menu_;
    MainToolbar toolbar_;
    std::unique_ptr<ActivityWatch> watch_;
    std::unique_ptr<DocumentCommands> commands_;
    std::unique_ptr<DateCommands> dates_;
    std::unique_ptr<ToolCommands> tools_;
    std::unique_ptr<ModalWindowHold> modalHold_;
    // One for every file command under way, the latest last.
    std::list<SilentWatchHold> fileCommands_;
    // Set while the restored geometry waits to be fitted again with the
    // window's frame, which Qt knows only once the window is shown.
    bool fitWithFrame_ = false;
    // The check marks of View: Tool Bar, Status Bar, Schedule and Calender.
    bool viewToolBar_ = true;
    bool viewStatusBar_ = true;
    bool viewTools_ = true;
    bool viewCalender_ = true;
    // Set once quitting is confirmed; the timer is not started again.
    bool unloaded_ = false;
    // Set when the session ended with unsaved changes that no folder could
    // take: the temporary stores keep their files for the next start.
    bool keepTemporaryFiles_ = false;
    // A tick is under way.
    bool ticking_ = false;
    // A tick is posted to run what the last hold put off.
    bool catchUpPosted_ = false;
};

}  // namespace kelvane
