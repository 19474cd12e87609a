#pragma once

#include "gui/MersenneRandomSource.h"
#include "gui/Platform.h"
#include "gui/QtFileDialogs.h"
#include "gui/QtMessageBoxes.h"
#include "gui/QtProgramDirectory.h"
#include "gui/QtSystemClock.h"

namespace kelvane {

// The real outside world: Qt's message boxes, the computer's clock and the
// executable's directory.
class QtPlatform {
  public:
    QtPlatform() = default;
    QtPlatform(const QtPlatform&) = delete;
    QtPlatform& operator=(const QtPlatform&) = delete;

    QtMessageBoxes Messages;
    QtSystemClock Clock;
    MersenneRandomSource Random;
    QtProgramDirectory Directory;
    QtFileDialogs FileDialog;

    Platform Services{Messages, Clock, Random, Directory, FileDialog};
};

}  // namespace kelvane
