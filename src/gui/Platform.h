#pragma once

#include "gui/AccessibilityBridge.h"
#include "gui/ColourDialogs.h"
#include "gui/FileDialogs.h"
#include "gui/FontList.h"
#include "gui/InstanceGuard.h"
#include "gui/MessageBoxes.h"
#include "gui/ProgramDirectory.h"
#include "gui/RandomSource.h"
#include "gui/SettingsStore.h"
#include "gui/SystemClock.h"

namespace kelvane {

// Everything the program needs from outside itself, handed to the parts that
// need it. The real program fills it with the Qt services (QtPlatform), tests
// with scripted fakes (FakePlatform).
struct Platform {
    MessageBoxes& Messages;
    SystemClock& Clock;
    RandomSource& Random;
    ProgramDirectory& Directory;
    FileDialogs& FileDialog;
    ColourDialogs& ColourDialog;
    FontList& Fonts;
    SettingsStore& Settings;
    InstanceGuard& Instance;
    AccessibilityBridge& Accessibility;
};

}  // namespace kelvane
