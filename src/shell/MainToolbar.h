#pragma once

#include <QAction>
#include <QMainWindow>
#include <QToolBar>

#include "calfile/OneBased.h"

namespace kelvane {

// The main window's toolbar `tbMain`: 15 buttons by index, separators at 4, 8
// and 12. Buttons 13 and 14 stay pressed while their view is shown.
struct MainToolbar {
    static constexpr int ButtonCount = 15;

    QToolBar* tbMain = nullptr;
    OneBased<QAction*, ButtonCount> Buttons;
};

// Adds the toolbar to `window` with its images and tool tips; connects nothing.
void BuildMainToolbar(QMainWindow* window, MainToolbar& toolbar);

}  // namespace kelvane
