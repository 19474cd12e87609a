#pragma once

#include <QIcon>

namespace kelvane {

enum class ToolbarImage {
    New,
    Open,
    Save,
    Edit,
    Erase,
    ColourFill,
    PreviousMonth,
    SelectMonth,
    NextMonth,
    ViewCalender,
    ViewSchedule,
    CommingUp,
};

// The image of a toolbar button, drawn here: looking icons up in the desktop's
// theme would cost more start-up time than the whole window takes to build.
QIcon ToolbarIcon(ToolbarImage image);

}  // namespace kelvane
