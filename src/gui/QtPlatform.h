#pragma once

#include "gui/MersenneRandomSource.h"
#include "gui/Platform.h"
#include "gui/QtAccessibilityBridge.h"
#include "gui/QtColourDialogs.h"
#include "gui/QtFileDialogs.h"
#include "gui/QtFontList.h"
#include "gui/QtInstanceGuard.h"
#include "gui/QtMessageBoxes.h"
#include "gui/QtProgramDirectory.h"
#include "gui/QtSettingsStore.h"
#include "gui/QtSystemClock.h"

namespace kelvane {

// The real outside world: Qt's message boxes, the computer's clock, the
// executable's directory, the user's settings, the lock that keeps a second
// copy from starting and Qt's bridge to screen readers.
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
    QtColourDialogs ColourDialog;
    QtFontList Fonts;
    QtSettingsStore Settings;
    QtInstanceGuard Instance;
    QtAccessibilityBridge Accessibility;

    Platform Services{Messages,     Clock, Random,   Directory, FileDialog,
                      ColourDialog, Fonts, Settings, Instance,  Accessibility};
};

}  // namespace kelvane
