#pragma once

#include "gui/FakeAccessibilityBridge.h"
#include "gui/FakeColourDialogs.h"
#include "gui/FakeFileDialogs.h"
#include "gui/FakeFontList.h"
#include "gui/FakeInstanceGuard.h"
#include "gui/FakeMessageBoxes.h"
#include "gui/FakeProgramDirectory.h"
#include "gui/FakeRandomSource.h"
#include "gui/FakeSettingsStore.h"
#include "gui/FakeSystemClock.h"
#include "gui/Platform.h"

namespace kelvane {

// A scripted outside world for tests: boxes answered from a script, a clock
// that stands still, repeatable random numbers, a chosen program directory,
// settings in memory, no other copy running unless the test says so and a
// screen reader only while a test listens.
class FakePlatform {
  public:
    explicit FakePlatform(const QString& programDirectory = QString()) {
        Directory.Directory = programDirectory;
    }
    FakePlatform(const FakePlatform&) = delete;
    FakePlatform& operator=(const FakePlatform&) = delete;

    FakeMessageBoxes Messages;
    FakeSystemClock Clock;
    FakeRandomSource Random;
    FakeProgramDirectory Directory;
    FakeFileDialogs FileDialog;
    FakeColourDialogs ColourDialog;
    FakeFontList Fonts;
    FakeSettingsStore Settings;
    FakeInstanceGuard Instance;
    FakeAccessibilityBridge Accessibility;

    Platform Services{Messages,     Clock, Random,   Directory, FileDialog,
                      ColourDialog, Fonts, Settings, Instance,  Accessibility};
};

}  // namespace kelvane
