#pragma once

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include <array>

#include "calfile/OneBased.h"
#include "calfile/Records.h"

namespace kelvane {

// The main window's menu tree. Every menu, entry and separator carries its
// name as its object name; the recent files and the months are numbered from 1.
struct MainMenu {
    QMenu* mnuFile = nullptr;
    QAction* mnuFileNew = nullptr;
    QAction* mnuFileOpen = nullptr;
    QAction* mnuFileBar0 = nullptr;
    QAction* mnuFileSaveAs = nullptr;
    QAction* mnuFileSaveCalImage = nullptr;
    QAction* mnuFileBar1 = nullptr;
    OneBased<QAction*, RecentFileCount> mnufileMRU;
    QAction* mnuFileBar2 = nullptr;
    QAction* mnuFileExit = nullptr;

    QMenu* mnuTools = nullptr;
    QAction* mnuEditDate = nullptr;
    QAction* mnuToolsCommingUp = nullptr;
    QAction* mnuToolsColourFill = nullptr;
    QAction* mnuEditBar1 = nullptr;
    QMenu* mnuEditExamineDate = nullptr;
    QAction* mnuEditExamineDate_Selected = nullptr;
    QAction* mnuToolsExamine_CancelExamine = nullptr;

    QMenu* mnuView = nullptr;
    QAction* mnuViewToolBar = nullptr;
    QAction* mnuViewStatusBar = nullptr;
    QAction* mnuViewBar0 = nullptr;
    QAction* mnuViewRefresh = nullptr;
    QAction* mnuViewOptions = nullptr;
    QAction* mnuviewbar1 = nullptr;
    QMenu* mnuMonth = nullptr;
    OneBased<QAction*, 12> Months;  // mnuJanuary .. mnuDecember
    QAction* mnuViewToday = nullptr;
    QAction* mnuViewBar4 = nullptr;
    QAction* mnuViewTools = nullptr;
    QAction* mnuViewCalender = nullptr;

    QMenu* mnuHelp = nullptr;
    QAction* mnuHelpContents = nullptr;
    QAction* mnuHelpAbout = nullptr;
    QAction* mnuT = nullptr;
    QAction* mnuHelpTips = nullptr;
};

// Fills `bar` with the menus, captions, separators, check items and
// shortcuts; connects nothing.
void BuildMainMenu(QMenuBar* bar, MainMenu& menu);

}  // namespace kelvane
