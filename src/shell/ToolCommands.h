#pragma once

#include <QWidget>

#include "calendar/Calender.h"
#include "shell/ActivityWatch.h"
#include "store/Store.h"

namespace kelvane {

// The main window's commands that open a dialog of their own: the coming-up
// report, the colour fill, the options, the tips and the about box. No
// announcement of the watch shows while one of them is open.
class ToolCommands {
  public:
    ToolCommands(Store& store, Calender& calender1, ActivityWatch& watch, QWidget& owner);
    ToolCommands(const ToolCommands&) = delete;
    ToolCommands& operator=(const ToolCommands&) = delete;

    void ShowCommingUp();
    // A fill that ran marks the document changed.
    void ShowColourFill();
    // Changed colours or a new font mark the document changed.
    void ShowOptions();
    void ShowTips();
    void ShowAbout();

  private:
    Store& store_;
    Calender& calender1_;
    ActivityWatch& watch_;
    QWidget& owner_;
};

}  // namespace kelvane
