// The main window's menu and toolbar wiring, its view switches, month
// navigation and the resize rule.
#include <QResizeEvent>
#include <QToolButton>

#include <optional>

#include "calendar/GridKeys.h"
#include "shell/frmMain.h"

namespace kelvane {

namespace {

std::optional<GridKey> GridKeyOf(int key) {
    switch (key) {
        case Qt::Key_Left:
            return GridKey::Left;
        case Qt::Key_Right:
            return GridKey::Right;
        case Qt::Key_Up:
            return GridKey::Up;
        case Qt::Key_Down:
            return GridKey::Down;
        case Qt::Key_Home:
            return GridKey::Home;
        case Qt::Key_End:
            return GridKey::End;
        case Qt::Key_PageUp:
            return GridKey::PageUp;
        case Qt::Key_PageDown:
            return GridKey::PageDown;
        default:
            return std::nullopt;
    }
}

}  // namespace

void frmMain::ConnectMenu() {
    connect(menu_.mnuFileNew, &QAction::triggered, this, [this] { mnuFileNew_Click(); });
    connect(menu_.mnuFileOpen, &QAction::triggered, this, [this] { mnuFileOpen_Click(); });
    connect(menu_.mnuFileSaveAs, &QAction::triggered, this, [this] { mnuFileSaveAs_Click(); });
    for (int index = 1; index <= RecentFileCount; ++index) {
        connect(menu_.mnufileMRU[index], &QAction::triggered, this,
                [this, index] { mnufileMRU_Click(index); });
    }
    connect(menu_.mnuFileSaveCalImage, &QAction::triggered, this,
            [this] { mnuFileSaveCalImage_Click(); });
    connect(menu_.mnuFileExit, &QAction::triggered, this, [this] { mnuFileExit_Click(); });
    connect(menu_.mnuEditDate, &QAction::triggered, this, [this] { mnuEditDate_Click(); });
    connect(menu_.mnuEditExamineDate_Selected, &QAction::triggered, this,
            [this] { mnuEditExamineDate_Selected_Click(); });
    connect(menu_.mnuToolsExamine_CancelExamine, &QAction::triggered, this,
            [this] { mnuToolsExamine_CancelExamine_Click(); });
    connect(menu_.mnuToolsCommingUp, &QAction::triggered, this,
            [this] { mnuToolsCommingUp_Click(); });
    connect(menu_.mnuToolsColourFill, &QAction::triggered, this,
            [this] { mnuToolsColourFill_Click(); });
    connect(menu_.mnuViewOptions, &QAction::triggered, this, [this] { mnuViewOptions_Click(); });
    connect(menu_.mnuHelpTips, &QAction::triggered, this, [this] { mnuHelpTips_Click(); });
    connect(menu_.mnuHelpAbout, &QAction::triggered, this, [this] { mnuHelpAbout_Click(); });
    connect(menu_.mnuViewToolBar, &QAction::triggered, this, [this] { mnuViewToolBar_Click(); });
    connect(menu_.mnuViewStatusBar, &QAction::triggered, this,
            [this] { mnuViewStatusBar_Click(); });
    connect(menu_.mnuViewRefresh, &QAction::triggered, this, [this] { mnuViewRefresh_Click(); });
    for (int month = 1; month <= 12; ++month) {
        connect(menu_.Months[month], &QAction::triggered, this,
                [this, month] { ShowMonth(static_cast<qint16>(month)); });
    }
    connect(menu_.mnuViewToday, &QAction::triggered, this, [this] { mnuViewToday_Click(); });
    connect(menu_.mnuViewTools, &QAction::triggered, this, [this] { mnuViewTools_Click(); });
    connect(menu_.mnuViewCalender, &QAction::triggered, this, [this] { mnuViewCalender_Click(); });
}

void frmMain::ConnectToolbar() {
    for (int index = 1; index <= MainToolbar::ButtonCount; ++index) {
        connect(toolbar_.Buttons[index], &QAction::triggered, this,
                [this, index] { tbMain_ButtonClick(index); });
    }
}

void frmMain::tbMain_ButtonClick(int index) {
    switch (index) {
        case 1:
            mnuFileNew_Click();
            break;
        case 2:
            mnuFileOpen_Click();
            break;
        case 3:
            mnuFileSaveAs_Click();
            break;
        case 5:
            mnuEditDate_Click();
            break;
        case 6:
            dates_->DeleteSelectedDate();
            break;
        case 7:
            mnuToolsColourFill_Click();
            break;
        case 9:
            ShowMonth(WrapMonth(calender1_->GetDisplayMonth() - 1));
            break;
        case 10:
            PopUpMonthMenu();
            break;
        case 11:
            ShowMonth(WrapMonth(calender1_->GetDisplayMonth() + 1));
            break;
        case 13:
            mnuViewCalender_Click();
            break;
        case 14:
            mnuViewTools_Click();
            break;
        case 15:
            mnuToolsCommingUp_Click();
            break;
        default:
            break;
    }
}

// The month menu opens under its toolbar button.
void frmMain::PopUpMonthMenu() {
    QWidget* button = toolbar_.tbMain->widgetForAction(toolbar_.Buttons[10]);
    const QPoint below =
        button != nullptr ? button->mapToGlobal(QPoint(0, button->height())) : QCursor::pos();
    menu_.mnuMonth->popup(below);
}

bool frmMain::Calender1_KeyDown(int key, Qt::KeyboardModifiers modifiers) {
    if (modifiers & ~(Qt::KeypadModifier)) {
        return false;  // shortcuts and Shift+Tab are not ours
    }
    if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Delete) {
        tbMain_ButtonClick(key == Qt::Key_Delete ? 6 : 5);
        return true;
    }
    const std::optional<GridKey> move = GridKeyOf(key);
    if (!move) {
        return false;
    }
    const CalDate to = DateAfterKey(*move, calender1_->SelectedDate, calender1_->GetDisplayMonth(),
                                    calender1_->Months);
    calender1_->SelectDateAndShowItsMonth(to);
    ShowMonthCheck(calender1_->GetDisplayMonth());
    return true;
}

void frmMain::ShowMonth(qint16 month) {
    calender1_->DisplayMonth(month);
    ShowMonthCheck(calender1_->GetDisplayMonth());
}

void frmMain::ShowMonthCheck(qint16 month) {
    for (int entry = 1; entry <= 12; ++entry) {
        menu_.Months[entry]->setChecked(entry == month);
    }
}

void frmMain::mnuViewToday_Click() {
    ShowMonth(Val16(store_.module1.Services().Clock.DateText().left(2)));
}

void frmMain::mnuViewRefresh_Click() {
    Timer1_Timer();
    watch_->BuildTodaysSchedule();
    watch_->AlertsOn();
}

void frmMain::mnuViewToolBar_Click() {
    viewToolBar_ = !viewToolBar_;
    toolbar_.tbMain->setVisible(viewToolBar_);
    ShowViewChecks();
    Form_Resize();
}

void frmMain::mnuViewStatusBar_Click() {
    viewStatusBar_ = !viewStatusBar_;
    statusBar_->setVisible(viewStatusBar_);
    ShowViewChecks();
    Form_Resize();
}

void frmMain::mnuViewCalender_Click() {
    ToggleViewKeepingOneOn(viewCalender_, viewTools_);
}

void frmMain::mnuViewTools_Click() {
    ToggleViewKeepingOneOn(viewTools_, viewCalender_);
}

// Switching the month view off shows the schedule, and the other way round:
// one of the two is always on.
void frmMain::ToggleViewKeepingOneOn(bool& view, bool& other) {
    view = !view;
    if (!view) {
        other = true;
    }
    ShowViewChecks();
    Form_Resize();
}

void frmMain::ShowViewChecks() {
    menu_.mnuViewToolBar->setChecked(viewToolBar_);
    menu_.mnuViewStatusBar->setChecked(viewStatusBar_);
    menu_.mnuViewTools->setChecked(viewTools_);
    menu_.mnuViewCalender->setChecked(viewCalender_);
    toolbar_.Buttons[13]->setChecked(viewCalender_);
    toolbar_.Buttons[14]->setChecked(viewTools_);
}

void frmMain::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    Form_Resize();
}

// The designed size is the least the window may have; the month view and the
// schedule share what lies between the toolbar and the status bar.
void frmMain::Form_Resize() {
    if (isMinimized()) {
        return;
    }
    if (width() < DesignWidth || height() < DesignHeight) {
        resize(std::max(width(), DesignWidth), std::max(height(), DesignHeight));
    }
    ArrangePanels();
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    if (watched == panels_ && event->type() == QEvent::Resize) {
        ArrangePanels();
    }
    return QMainWindow::eventFilter(watched, event);
}

void frmMain::ArrangePanels() {
    const int width = panels_->width();
    const int height = panels_->height();
    calenderView_->setVisible(viewCalender_);
    schedule_->setVisible(viewTools_);
    if (viewCalender_ && viewTools_) {
        const int half = width / 2;
        calenderView_->setGeometry(0, 0, half, height);
        schedule_->setGeometry(half, 0, width - half, height);
    } else if (viewCalender_) {
        calenderView_->setGeometry(0, 0, width, height);
    } else {
        schedule_->setGeometry(0, 0, width, height);
    }
}

}  // namespace kelvane
