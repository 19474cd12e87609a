#include "shell/frmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QScreen>

namespace kelvane {

namespace {

// The window as designed, in twips; also the smallest it may be made.
constexpr double kDesignWidthTwips = 6000;
constexpr double kDesignHeightTwips = 5000;

}  // namespace

frmMain::frmMain(Store& store)
    : store_(store),
      panels_(new QWidget(this)),
      calenderView_(new SurfaceWidget(panels_)),
      schedule_(new usrDocViewer(store.module1, panels_)),
      statusBar_(new MainStatusBar(store.module1.Services().Clock, this)) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QStringLiteral("Kelvane v1.0"));
    calenderView_->setObjectName(QStringLiteral("Calender1"));
    schedule_->setObjectName(QStringLiteral("usrTodaysSchedule"));
    schedule_->SetSpokenName(QStringLiteral("Today's schedule"));
    calender1_ =
        std::make_unique<Calender>(store_.module1, store_.calender, calenderView_->Surface());
    calenderView_->SetEvents(calender1_.get());
    gridNames_ = std::make_unique<MonthGridNames>(*calender1_, store_);
    calenderView_->SetDescription(gridNames_.get(), &store_.module1.Services().Accessibility);
    calenderView_->SetKeys([this](int key, Qt::KeyboardModifiers modifiers) {
        return Calender1_KeyDown(key, modifiers);
    });
    store_.module1.AttachMonthView(calender1_.get());
    watch_ = std::make_unique<ActivityWatch>(store_, *calender1_, *schedule_, *statusBar_);
    watch_->OnNewDay(
        [this](const CalDate& before, const CalDate& today) { ShowNewDay(before, today); });
    watch_->OnHoldsEnded([this] { CatchUpSoon(); });
    modalHold_ = std::make_unique<ModalWindowHold>(*watch_);
    commands_ = std::make_unique<DocumentCommands>(store_, *calender1_, *this);
    dates_ = std::make_unique<DateCommands>(store_, *calender1_, *watch_, *statusBar_, *this,
                                            [this](qint16 month) { ShowMonth(month); });
    tools_ = std::make_unique<ToolCommands>(store_, *calender1_, *watch_, *this);

    setCentralWidget(panels_);
    panels_->installEventFilter(this);
    setStatusBar(statusBar_);
    BuildMainMenu(menuBar(), menu_);
    BuildMainToolbar(this, toolbar_);
    ConnectMenu();
    ConnectToolbar();
    ShowMonthCheck(calender1_->GetDisplayMonth());
    const double dpi = DotsPerInch(this);
    resize(TwipsToPixels(kDesignWidthTwips, dpi), TwipsToPixels(kDesignHeightTwips, dpi));

    Timer1.setInterval(Timer1Interval);
    connect(&Timer1, &QTimer::timeout, this, &frmMain::Timer1_Timer);
    Timer1.start();
}

frmMain::~frmMain() {
    Timer1.stop();
    watch_->OnHoldsEnded(nullptr);
    calenderView_->SetEvents(nullptr);
    calenderView_->SetKeys(nullptr);
    calenderView_->SetDescription(nullptr, nullptr);
    store_.module1.AttachMonthView(nullptr);
}

void frmMain::Form_Load() {
    DesignWidth = width();
    DesignHeight = height();
    setMinimumSize(DesignWidth, DesignHeight);
    const Platform& services = store_.module1.Services();
    services.Random.Seed(static_cast<std::uint32_t>(services.Clock.SecondsSinceMidnight()));
    watch_->ExamineDate.Day = 0;
    watch_->ExamineDate.Month = 0;
    watch_->ExamineActive = false;
    statusBar_->ShowMessage(QStringLiteral("I am ready!"));
    calender1_->SetCalenderOn(true);
    commands_->LoadRecentList();
    schedule_->Initialize();
    store_.module1.ReadClock();
    watch_->BuildTodaysSchedule();
    ApplyGeometry(ReadMainGeometry(services.Settings));
    watch_->PendingAlertText.clear();
    watch_->AlertsOn();
}

bool frmMain::LoadFile(QString fileName) {
    const SilentWatchHold quiet(*watch_);
    return commands_->LoadFile(fileName);
}

void frmMain::closeEvent(QCloseEvent* event) {
    bool cancel = false;
    Form_Unload(cancel);
    if (cancel) {
        event->ignore();
    } else {
        event->accept();
    }
}

void frmMain::Form_Unload(bool& cancel) {
    if (unloaded_) {
        return;  // the session's end has closed it already
    }
    if (!ConfirmQuit()) {
        cancel = true;
        return;
    }
    CloseForGood();
}

void frmMain::EndSession() {
    if (unloaded_) {
        return;
    }
    keepTemporaryFiles_ = !WriteRecoveryCopyIfNeeded();
    CloseForGood();
    hide();
}

bool frmMain::WriteRecoveryCopyIfNeeded() {
    const std::optional<CalendarFileDate> openEdit = dates_->OpenEdit();
    if (unloaded_ || (!store_.module1.CalendarDirty && !openEdit)) {
        return true;
    }
    return !commands_->SaveUnsavedCopy(openEdit ? &*openEdit : nullptr).isEmpty();
}

// No tick may announce anything once the window is going.
void frmMain::CloseForGood() {
    watch_->AlertsOff();
    unloaded_ = true;
    Timer1.stop();
    CloseOtherWindows();
    schedule_->Terminate();
    const Qt::WindowStates state = windowState();
    if (!(state & (Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen))) {
        SaveMainGeometry(store_.module1.Services().Settings, CurrentGeometry());
    }
}

// The announcements are off while the question waits, and on again when the
// answer is No.
bool frmMain::ConfirmQuit() {
    const SilentWatchHold quiet(*watch_);
    return !store_.module1.CalendarDirty ||
           store_.module1.Services().Messages.Show(
               QStringLiteral("Are you sure you wish to quit\r-current document has changed"),
               MessageButtons::YesNo, MessageIcon::Exclamation,
               QStringLiteral("**WAIT**")) == MessageAnswer::Yes;
}

// Every other window of the program, shown or hidden, gets its close; menus and
// tool tips are no windows of ours.
void frmMain::CloseOtherWindows() {
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (qsizetype index = windows.size() - 1; index >= 0; --index) {
        QWidget* window = windows[index];
        const Qt::WindowType type = window->windowType();
        if (window != this && type != Qt::Popup && type != Qt::ToolTip) {
            window->close();
        }
    }
}

void frmMain::Form_Terminate() {
    const TemporaryFile files = keepTemporaryFiles_ ? TemporaryFile::Keep : TemporaryFile::Delete;
    store_.appointments.CloseAppointmentStore(files);
    store_.diary.CloseDiaryStore(files);
    commands_->SaveRecentList();
}

void frmMain::ApplyGeometry(const TwipGeometry& geometry) {
    const double dpi = DotsPerInch(this);
    move(TwipsToPixels(geometry.Left, dpi), TwipsToPixels(geometry.Top, dpi));
    resize(TwipsToPixels(geometry.Width, dpi), TwipsToPixels(geometry.Height, dpi));
    FitWindowOnScreen();
    fitWithFrame_ = true;
}

// The whole window, its frame included where Qt knows it, goes on the screen
// it lands on. pos() is the frame's corner; size() leaves the frame out.
void frmMain::FitWindowOnScreen() {
    const QSize frame = frameGeometry().size() - size();
    const QRect outer(pos(), size() + frame);
    const QScreen* screen = QGuiApplication::screenAt(outer.center());
    if (screen == nullptr) {
        screen = this->screen();
    }
    if (screen == nullptr) {
        return;
    }
    const QRect fitted =
        FitOnScreen(outer, screen->availableGeometry(), QSize(DesignWidth, DesignHeight) + frame);
    move(fitted.topLeft());
    resize(fitted.size() - frame);
}

// A window manager tells the frame's size only after the window is shown,
// and a shown window may have grown by it past the screen's edge.
void frmMain::FitOnceTheFrameIsKnown() {
    const bool normal = !isMaximized() && !isFullScreen() && !isMinimized();
    if (fitWithFrame_ && normal && isVisible() && frameGeometry().size() != size()) {
        fitWithFrame_ = false;
        FitWindowOnScreen();
    }
}

void frmMain::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    FitOnceTheFrameIsKnown();
}

void frmMain::moveEvent(QMoveEvent* event) {
    QMainWindow::moveEvent(event);
    FitOnceTheFrameIsKnown();
}

TwipGeometry frmMain::CurrentGeometry() const {
    const double dpi = DotsPerInch(this);
    TwipGeometry geometry;
    geometry.Left = PixelsToTwips(pos().x(), dpi);
    geometry.Top = PixelsToTwips(pos().y(), dpi);
    geometry.Width = PixelsToTwips(width(), dpi);
    geometry.Height = PixelsToTwips(height(), dpi);
    return geometry;
}

void frmMain::ShowRecentMenu(const RecentMenu& menu) {
    for (int index = 1; index <= RecentFileCount; ++index) {
        menu_.mnufileMRU[index]->setText(menu.Items[index].Caption);
        menu_.mnufileMRU[index]->setVisible(menu.Items[index].Visible);
    }
    menu_.mnuFileBar2->setVisible(menu.SeparatorVisible);
}

void frmMain::DocumentReplaced() {
    ShowMonthCheck(calender1_->GetDisplayMonth());
    watch_->BuildTodaysSchedule();
}

void frmMain::StartFileCommand() {
    fileCommands_.emplace_back(*watch_);
}

void frmMain::EndFileCommand() {
    if (!fileCommands_.empty()) {
        fileCommands_.pop_back();
    }
}

// A modal window open holds the watch until it closes.
void frmMain::Timer1_Timer() {
    ticking_ = true;
    Timer1.stop();
    modalHold_->Update();
    watch_->WatchTick();
    ticking_ = false;
    if (!unloaded_) {
        Timer1.start(Timer1Interval);
    }
}

// The last hold has ended, often in a command's return path: what its ticks
// put off runs in a tick of its own as soon as the command has returned to the
// event loop, where a box it shows interrupts nothing.
void frmMain::CatchUpSoon() {
    if (catchUpPosted_) {
        return;
    }
    catchUpPosted_ = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            catchUpPosted_ = false;
            if (!unloaded_ && !ticking_) {
                Timer1_Timer();
            }
        },
        Qt::QueuedConnection);
}

// Today's mark moves with the date; the month of the new today is shown when
// the month of the old one was.
void frmMain::ShowNewDay(const CalDate& before, const CalDate& today) {
    if (today.Month != before.Month && calender1_->GetDisplayMonth() == before.Month) {
        ShowMonth(today.Month);
    } else {
        calender1_->Display();
    }
}

}  // namespace kelvane
