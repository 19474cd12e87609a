#include "shell/MainMenu.h"

namespace kelvane {

namespace {

QMenu* AddMenu(QMenuBar* bar, const char* name, const char* caption) {
    QMenu* menu = bar->addMenu(QString::fromLatin1(caption));
    menu->setObjectName(QString::fromLatin1(name));
    menu->menuAction()->setObjectName(QString::fromLatin1(name));
    return menu;
}

QMenu* AddSubmenu(QMenu* parent, const char* name, const char* caption) {
    QMenu* menu = parent->addMenu(QString::fromLatin1(caption));
    menu->setObjectName(QString::fromLatin1(name));
    menu->menuAction()->setObjectName(QString::fromLatin1(name));
    return menu;
}

QAction* AddEntry(QMenu* menu, const char* name, const char* caption,
                  const QKeySequence& shortcut = QKeySequence()) {
    QAction* entry = menu->addAction(QString::fromLatin1(caption));
    entry->setObjectName(QString::fromLatin1(name));
    entry->setShortcut(shortcut);
    return entry;
}

QAction* AddCheckEntry(QMenu* menu, const char* name, const char* caption,
                       const QKeySequence& shortcut = QKeySequence()) {
    QAction* entry = AddEntry(menu, name, caption, shortcut);
    entry->setCheckable(true);
    entry->setChecked(true);
    return entry;
}

QAction* AddSeparator(QMenu* menu, const char* name) {
    QAction* separator = menu->addSeparator();
    separator->setObjectName(QString::fromLatin1(name));
    return separator;
}

QKeySequence Ctrl(Qt::Key key) {
    return QKeySequence(Qt::CTRL | key);
}

void BuildFileMenu(QMenuBar* bar, MainMenu& m) {
    m.mnuFile = AddMenu(bar, "mnuFile", "&File");
    m.mnuFileNew = AddEntry(m.mnuFile, "mnuFileNew", "&New", Ctrl(Qt::Key_N));
    m.mnuFileOpen = AddEntry(m.mnuFile, "mnuFileOpen", "&Open...", Ctrl(Qt::Key_O));
    m.mnuFileBar0 = AddSeparator(m.mnuFile, "mnuFileBar0");
    m.mnuFileSaveAs = AddEntry(m.mnuFile, "mnuFileSaveAs", "Save &As...", Ctrl(Qt::Key_S));
    m.mnuFileSaveCalImage = AddEntry(m.mnuFile, "mnuFileSaveCalImage", "Save Cal' Image");
    m.mnuFileBar1 = AddSeparator(m.mnuFile, "mnuFileBar1");
    for (int index = 1; index <= RecentFileCount; ++index) {
        QAction* item = AddEntry(m.mnuFile, "mnufileMRU", "");
        item->setVisible(false);
        m.mnufileMRU[index] = item;
    }
    m.mnuFileBar2 = AddSeparator(m.mnuFile, "mnuFileBar2");
    m.mnuFileBar2->setVisible(false);
    m.mnuFileExit = AddEntry(m.mnuFile, "mnuFileExit", "E&xit");
}

void BuildToolsMenu(QMenuBar* bar, MainMenu& m) {
    m.mnuTools = AddMenu(bar, "mnuTools", "&Tools");
    m.mnuEditDate = AddEntry(m.mnuTools, "mnuEditDate", "Edit", Ctrl(Qt::Key_E));
    m.mnuToolsCommingUp = AddEntry(m.mnuTools, "mnuToolsCommingUp", "Comming Up");
    m.mnuToolsColourFill = AddEntry(m.mnuTools, "mnuToolsColourFill", "Colour Fill");
    m.mnuEditBar1 = AddSeparator(m.mnuTools, "mnuEditBar1");
    m.mnuEditExamineDate = AddSubmenu(m.mnuTools, "mnuEditExamineDate", "Examine Date");
    m.mnuEditExamineDate_Selected = AddEntry(m.mnuEditExamineDate, "mnuEditExamineDate_Selected",
                                             "Selected Date", Ctrl(Qt::Key_V));
    m.mnuToolsExamine_CancelExamine =
        AddEntry(m.mnuEditExamineDate, "mnuToolsExamine_CancelExamine", "Cancel Examine");
}

void BuildMonthMenu(MainMenu& m) {
    static const char* const kNames[] = {
        "mnuJanuary", "mnuFebruary", "mnuMarch",     "mnuApril",   "mnuMay",      "mnuJune",
        "mnuJuly",    "mnuAugust",   "mnuSeptember", "mnuOctober", "mnuNovember", "mnuDecember"};
    m.mnuMonth = AddSubmenu(m.mnuView, "mnuMonth", "Month");
    for (int month = 1; month <= 12; ++month) {
        const char* name = kNames[month - 1];
        QAction* entry = AddEntry(m.mnuMonth, name, name + 3);  // the name without "mnu"
        entry->setCheckable(true);
        m.Months[month] = entry;
    }
}

void BuildViewMenu(QMenuBar* bar, MainMenu& m) {
    m.mnuView = AddMenu(bar, "mnuView", "&View");
    m.mnuViewToolBar = AddCheckEntry(m.mnuView, "mnuViewToolBar", "Tool Bar");
    m.mnuViewStatusBar = AddCheckEntry(m.mnuView, "mnuViewStatusBar", "Status &Bar");
    m.mnuViewBar0 = AddSeparator(m.mnuView, "mnuViewBar0");
    m.mnuViewRefresh = AddEntry(m.mnuView, "mnuViewRefresh", "&Refresh");
    m.mnuViewOptions = AddEntry(m.mnuView, "mnuViewOptions", "&Options...");
    m.mnuviewbar1 = AddSeparator(m.mnuView, "mnuviewbar1");
    BuildMonthMenu(m);
    m.mnuViewToday = AddEntry(m.mnuView, "mnuViewToday", "This Month");
    m.mnuViewBar4 = AddSeparator(m.mnuView, "mnuViewBar4");
    m.mnuViewTools = AddCheckEntry(m.mnuView, "mnuViewTools", "Schedule", Ctrl(Qt::Key_D));
    m.mnuViewCalender = AddCheckEntry(m.mnuView, "mnuViewCalender", "Calender");
}

void BuildHelpMenu(QMenuBar* bar, MainMenu& m) {
    m.mnuHelp = AddMenu(bar, "mnuHelp", "&Help");
    m.mnuHelpContents = AddEntry(m.mnuHelp, "mnuHelpContents", "&Contents");
    m.mnuHelpAbout = AddEntry(m.mnuHelp, "mnuHelpAbout", "&About");
    m.mnuT = AddSeparator(m.mnuHelp, "mnuT");
    m.mnuHelpTips = AddEntry(m.mnuHelp, "mnuHelpTips", "Tips", Ctrl(Qt::Key_T));
}

}  // namespace

void BuildMainMenu(QMenuBar* bar, MainMenu& menu) {
    BuildFileMenu(bar, menu);
    BuildToolsMenu(bar, menu);
    BuildViewMenu(bar, menu);
    BuildHelpMenu(bar, menu);
}

}  // namespace kelvane
