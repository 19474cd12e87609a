#include <QApplication>
#include <QMenuBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

#include <gtest/gtest.h>

#include "support/MainWindowWorld.h"

namespace kelvane {
namespace {

using testing::MainWindowWorld;

// One menu entry as a person reads it: name, caption, shortcut and marks.
QString Describe(const QAction* entry) {
    if (entry->isSeparator()) {
        return entry->objectName() + QStringLiteral(" -");
    }
    QString text = entry->objectName() + QStringLiteral(" \"") + entry->text() + QLatin1Char('"');
    if (!entry->shortcut().isEmpty()) {
        text += QLatin1Char(' ') + entry->shortcut().toString();
    }
    if (entry->isCheckable()) {
        text += QStringLiteral(" check");
    }
    if (entry->menu() != nullptr) {
        text += QStringLiteral(" >");
    }
    return text;
}

QStringList Entries(const QMenu* menu) {
    QStringList entries;
    for (const QAction* entry : menu->actions()) {
        entries << Describe(entry);
    }
    return entries;
}

QMenu* MenuNamed(frmMain& window, const char* name) {
    return window.findChild<QMenu*>(QString::fromLatin1(name));
}

TEST(MainWindow, HasItsCaptionAndTheFourMenusInOrder) {
    MainWindowWorld w;
    EXPECT_EQ(w.main.windowTitle(), QStringLiteral("Kelvane v1.0"));
    QStringList menus;
    for (const QAction* menu : w.main.menuBar()->actions()) {
        menus << Describe(menu);
    }
    EXPECT_EQ(menus, (QStringList{"mnuFile \"&File\" >", "mnuTools \"&Tools\" >",
                                  "mnuView \"&View\" >", "mnuHelp \"&Help\" >"}));
}

TEST(MainWindow, TheFileMenuHoldsItsEntriesInOrder) {
    MainWindowWorld w;
    EXPECT_EQ(Entries(MenuNamed(w.main, "mnuFile")),
              (QStringList{"mnuFileNew \"&New\" Ctrl+N", "mnuFileOpen \"&Open...\" Ctrl+O",
                           "mnuFileBar0 -", "mnuFileSaveAs \"Save &As...\" Ctrl+S",
                           "mnuFileSaveCalImage \"Save Cal' Image\"", "mnuFileBar1 -",
                           "mnufileMRU \"\"", "mnufileMRU \"\"", "mnufileMRU \"\"",
                           "mnufileMRU \"\"", "mnuFileBar2 -", "mnuFileExit \"E&xit\""}));
}

TEST(MainWindow, TheToolsMenuHoldsItsEntriesAndTheExamineSubmenu) {
    MainWindowWorld w;
    EXPECT_EQ(Entries(MenuNamed(w.main, "mnuTools")),
              (QStringList{"mnuEditDate \"Edit\" Ctrl+E", "mnuToolsCommingUp \"Comming Up\"",
                           "mnuToolsColourFill \"Colour Fill\"", "mnuEditBar1 -",
                           "mnuEditExamineDate \"Examine Date\" >"}));
    EXPECT_EQ(Entries(MenuNamed(w.main, "mnuEditExamineDate")),
              (QStringList{"mnuEditExamineDate_Selected \"Selected Date\" Ctrl+V",
                           "mnuToolsExamine_CancelExamine \"Cancel Examine\""}));
}

TEST(MainWindow, TheViewMenuHoldsItsEntriesAndTheMonths) {
    MainWindowWorld w;
    EXPECT_EQ(
        Entries(MenuNamed(w.main, "mnuView")),
        (QStringList{
            "mnuViewToolBar \"Tool Bar\" check", "mnuViewStatusBar \"Status &Bar\" check",
            "mnuViewBar0 -", "mnuViewRefresh \"&Refresh\"", "mnuViewOptions \"&Options...\"",
            "mnuviewbar1 -", "mnuMonth \"Month\" >", "mnuViewToday \"This Month\"", "mnuViewBar4 -",
            "mnuViewTools \"Schedule\" Ctrl+D check", "mnuViewCalender \"Calender\" check"}));
    EXPECT_EQ(Entries(MenuNamed(w.main, "mnuMonth")),
              (QStringList{"mnuJanuary \"January\" check", "mnuFebruary \"February\" check",
                           "mnuMarch \"March\" check", "mnuApril \"April\" check",
                           "mnuMay \"May\" check", "mnuJune \"June\" check",
                           "mnuJuly \"July\" check", "mnuAugust \"August\" check",
                           "mnuSeptember \"September\" check", "mnuOctober \"October\" check",
                           "mnuNovember \"November\" check", "mnuDecember \"December\" check"}));
}

TEST(MainWindow, TheHelpMenuHoldsItsEntries) {
    MainWindowWorld w;
    EXPECT_EQ(Entries(MenuNamed(w.main, "mnuHelp")),
              (QStringList{"mnuHelpContents \"&Contents\"", "mnuHelpAbout \"&About\"", "mnuT -",
                           "mnuHelpTips \"Tips\" Ctrl+T"}));
}

TEST(MainWindow, TheViewChecksStartOnAndTheShownMonthIsChecked) {
    MainWindowWorld w;
    const MainMenu& menu = w.main.Menu();
    EXPECT_TRUE(menu.mnuViewToolBar->isChecked());
    EXPECT_TRUE(menu.mnuViewStatusBar->isChecked());
    EXPECT_TRUE(menu.mnuViewTools->isChecked());
    EXPECT_TRUE(menu.mnuViewCalender->isChecked());
    for (int month = 1; month <= 12; ++month) {
        EXPECT_EQ(menu.Months[month]->isChecked(), month == 3) << month;
    }
}

TEST(MainWindow, TheToolbarHasFifteenButtonsWithTheirToolTips) {
    MainWindowWorld w;
    const MainToolbar& toolbar = w.main.Toolbar();
    EXPECT_EQ(toolbar.tbMain->objectName(), QStringLiteral("tbMain"));
    ASSERT_EQ(toolbar.tbMain->actions().size(), MainToolbar::ButtonCount);
    const QStringList tips{"",
                           "Open",
                           "Save",
                           "-",
                           "Edit",
                           "Erase",
                           "Colour Fill",
                           "-",
                           "Previous Month",
                           "Select Month",
                           "Next Month",
                           "-",
                           "View Calender",
                           "View Schedule",
                           "Comming Up"};
    for (int index = 1; index <= MainToolbar::ButtonCount; ++index) {
        const QAction* button = toolbar.Buttons[index];
        EXPECT_EQ(toolbar.tbMain->actions()[index - 1], button);
        const QString tip = button->isSeparator() ? QStringLiteral("-") : button->toolTip();
        EXPECT_EQ(tip, tips[index - 1]) << index;
    }
    EXPECT_TRUE(toolbar.Buttons[13]->isChecked());
    EXPECT_TRUE(toolbar.Buttons[14]->isChecked());
}

TEST(MainWindow, TheStatusBarHasFourPanels) {
    MainWindowWorld w;
    MainStatusBar& bar = w.main.sbStatusBar();
    EXPECT_EQ(bar.objectName(), QStringLiteral("sbStatusBar"));
    EXPECT_EQ(bar.Panel(1)->text(), QStringLiteral("I am ready!"));
    EXPECT_EQ(bar.Panel(2)->text(), QStringLiteral("warn"));
    EXPECT_FALSE(bar.Panel(2)->isHidden());
    EXPECT_EQ(bar.Panel(3)->text(),
              QLocale::system().toString(QDate(2026, 3, 7), QLocale::ShortFormat));
    EXPECT_EQ(bar.Panel(4)->text(), QLocale::system().toString(QTime(8, 0), QLocale::ShortFormat));
}

TEST(MainWindow, PreviousMonthOnJanuaryShowsDecemberAndNextOnDecemberJanuary) {
    MainWindowWorld w;
    w.main.ShowMonth(1);
    w.main.Toolbar().Buttons[9]->trigger();
    EXPECT_EQ(w.main.Calender1().GetDisplayMonth(), 12);
    EXPECT_TRUE(w.main.Menu().Months[12]->isChecked());
    EXPECT_FALSE(w.main.Menu().Months[1]->isChecked());
    w.main.Toolbar().Buttons[11]->trigger();
    EXPECT_EQ(w.main.Calender1().GetDisplayMonth(), 1);
    w.main.Toolbar().Buttons[11]->trigger();
    EXPECT_EQ(w.main.Calender1().GetDisplayMonth(), 2);
}

TEST(MainWindow, AMonthEntryShowsItsMonthAndMovesTheCheckMark) {
    MainWindowWorld w;
    w.main.Menu().Months[8]->trigger();
    EXPECT_EQ(w.main.Calender1().GetDisplayMonth(), 8);
    int checked = 0;
    for (int month = 1; month <= 12; ++month) {
        checked += w.main.Menu().Months[month]->isChecked() ? month : 0;
    }
    EXPECT_EQ(checked, 8);
}

TEST(MainWindow, ThisMonthShowsTheMonthOfTheSystemDate) {
    MainWindowWorld w;
    w.main.ShowMonth(11);
    w.main.Menu().mnuViewToday->trigger();
    EXPECT_EQ(w.main.Calender1().GetDisplayMonth(), 3);
    EXPECT_TRUE(w.main.Menu().Months[3]->isChecked());
}

TEST(MainWindow, SelectMonthPopsUpTheMonthMenu) {
    MainWindowWorld w;
    w.main.show();
    w.main.Toolbar().Buttons[10]->trigger();
    EXPECT_TRUE(w.main.Menu().mnuMonth->isVisible());
    w.main.Menu().mnuMonth->close();
}

TEST(MainWindow, SwitchingTheCalenderOffWhileTheScheduleIsOffTurnsTheScheduleOn) {
    MainWindowWorld w;
    w.main.show();
    w.main.Menu().mnuViewTools->trigger();
    EXPECT_FALSE(w.main.Menu().mnuViewTools->isChecked());
    EXPECT_FALSE(w.main.Toolbar().Buttons[14]->isChecked());
    EXPECT_FALSE(w.main.usrTodaysSchedule().isVisible());
    EXPECT_TRUE(w.main.CalenderView().isVisible());

    w.main.Menu().mnuViewCalender->trigger();
    EXPECT_FALSE(w.main.Menu().mnuViewCalender->isChecked());
    EXPECT_TRUE(w.main.Menu().mnuViewTools->isChecked());
    EXPECT_TRUE(w.main.Toolbar().Buttons[14]->isChecked());
    EXPECT_FALSE(w.main.Toolbar().Buttons[13]->isChecked());
    EXPECT_TRUE(w.main.usrTodaysSchedule().isVisible());
    EXPECT_FALSE(w.main.CalenderView().isVisible());
    EXPECT_EQ(w.main.usrTodaysSchedule().width(), w.main.centralWidget()->width());
}

TEST(MainWindow, ToolbarButtonsThirteenAndFourteenToggleTheViewsAndStayInStep) {
    MainWindowWorld w;
    w.main.show();
    w.main.Toolbar().Buttons[13]->trigger();
    EXPECT_FALSE(w.main.Menu().mnuViewCalender->isChecked());
    EXPECT_FALSE(w.main.Toolbar().Buttons[13]->isChecked());
    EXPECT_FALSE(w.main.CalenderView().isVisible());
    w.main.Toolbar().Buttons[13]->trigger();
    EXPECT_TRUE(w.main.Menu().mnuViewCalender->isChecked());
    EXPECT_TRUE(w.main.Toolbar().Buttons[13]->isChecked());
    w.main.Toolbar().Buttons[14]->trigger();
    EXPECT_FALSE(w.main.Menu().mnuViewTools->isChecked());
    EXPECT_FALSE(w.main.usrTodaysSchedule().isVisible());
}

TEST(MainWindow, BothViewsShareTheAreaBetweenTheBarsHalfAndHalf) {
    MainWindowWorld w;
    w.main.show();
    w.main.resize(900, 700);
    QCoreApplication::processEvents();
    const int width = w.main.centralWidget()->width();
    const int height = w.main.centralWidget()->height();
    EXPECT_EQ(w.main.CalenderView().geometry(), QRect(0, 0, width / 2, height));
    EXPECT_EQ(w.main.usrTodaysSchedule().geometry(),
              QRect(width / 2, 0, width - width / 2, height));
    EXPECT_EQ(w.main.centralWidget()->y(), w.main.Toolbar().tbMain->geometry().bottom() + 1);
}

TEST(MainWindow, HidingTheToolBarGivesItsRoomToTheViews) {
    MainWindowWorld w;
    w.main.show();
    const int before = w.main.CalenderView().height();
    w.main.Menu().mnuViewToolBar->trigger();
    QCoreApplication::processEvents();
    EXPECT_FALSE(w.main.Menu().mnuViewToolBar->isChecked());
    EXPECT_FALSE(w.main.Toolbar().tbMain->isVisible());
    EXPECT_GT(w.main.CalenderView().height(), before);
    w.main.Menu().mnuViewToolBar->trigger();
    EXPECT_TRUE(w.main.Toolbar().tbMain->isVisible());
}

TEST(MainWindow, HidingTheStatusBarHidesWarnButAnnouncementsGoOn) {
    MainWindowWorld w(2026, 3, 7, 8, 59);
    w.AddActivity(3, 7, QStringLiteral("Work"), 9, 0, 12, 0);
    w.watch.BuildTodaysSchedule();
    w.main.show();
    w.main.Menu().mnuViewStatusBar->trigger();
    EXPECT_FALSE(w.main.Menu().mnuViewStatusBar->isChecked());
    EXPECT_FALSE(w.main.sbStatusBar().isVisible());
    EXPECT_FALSE(w.main.sbStatusBar().Panel(2)->isVisible());
    EXPECT_TRUE(w.watch.AlertsEnabled);
    w.TickAt(9, 0);
    EXPECT_EQ(w.ShownTexts(), (QStringList{"Activities Starting/Ending\rstarting Work"}));
}

TEST(MainWindow, DraggingTheWindowSmallerThanDesignedSnapsItBack) {
    MainWindowWorld w;
    w.main.show();
    EXPECT_GT(w.main.DesignWidth, 0);
    EXPECT_GT(w.main.DesignHeight, 0);
    w.main.resize(120, 90);
    QCoreApplication::processEvents();
    EXPECT_EQ(w.main.size(), QSize(w.main.DesignWidth, w.main.DesignHeight));
    w.main.resize(w.main.DesignWidth + 50, 10);
    QCoreApplication::processEvents();
    EXPECT_EQ(w.main.size(), QSize(w.main.DesignWidth + 50, w.main.DesignHeight));
}

TEST(MainWindow, RefreshTicksRebuildsAndTurnsTheAlertsOn) {
    MainWindowWorld w(2026, 3, 7, 9, 0);
    w.AddActivity(3, 7, QStringLiteral("Work"), 9, 0, 12, 0);
    w.main.Menu().mnuViewRefresh->trigger();
    EXPECT_TRUE(w.watch.AlertsEnabled);
    EXPECT_FALSE(w.main.sbStatusBar().Panel(2)->isHidden());
    EXPECT_EQ(w.ScheduleLines().mid(2, 3),
              (QStringList{"Time to watch:12:00 pm", "", "CURRENT ACTIVITIES"}));
}

TEST(MainWindow, RefreshOnAnEmptyDayStillTurnsTheAlertsOn) {
    MainWindowWorld w;
    w.main.Menu().mnuViewRefresh->trigger();
    EXPECT_TRUE(w.watch.AlertsEnabled);
    EXPECT_EQ(w.ScheduleLines().last(), QStringLiteral("No Schedule Defined"));
}

TEST(MainWindow, CancelExamineRebuildsWithTodayAlone) {
    MainWindowWorld w;
    w.AddActivity(3, 10, QStringLiteral("Other"), 10, 0);
    w.watch.ExamineDate = CalDate{2026, 10, 3};
    w.watch.ExamineActive = true;
    w.watch.BuildTodaysSchedule();
    ASSERT_TRUE(w.ScheduleLines().contains(QStringLiteral("Other")));
    w.main.Menu().mnuToolsExamine_CancelExamine->trigger();
    EXPECT_FALSE(w.watch.ExamineActive);
    EXPECT_EQ(w.ScheduleLines().last(), QStringLiteral("No Schedule Defined"));
}

TEST(MainWindow, HelpContentsIsThereAndDoesNothing) {
    MainWindowWorld w;
    QAction* contents = w.main.Menu().mnuHelpContents;
    EXPECT_TRUE(contents->isEnabled());
    contents->trigger();
    EXPECT_TRUE(w.platform.Messages.Shown.isEmpty());
    EXPECT_FALSE(w.store.module1.CalendarDirty);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST(MainWindow, TheTimerTicksEveryFortySecondsFromTheStart) {
    MainWindowWorld w;
    EXPECT_TRUE(w.main.Timer1.isActive());
    EXPECT_EQ(w.main.Timer1.interval(), 40000);
}

}  // namespace
}  // namespace kelvane
