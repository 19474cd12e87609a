#pragma once

#include "gui/FakeFileDialogs.h"
#include "gui/FakeMessageBoxes.h"
#include "gui/FakeProgramDirectory.h"
#include "gui/FakeRandomSource.h"
#include "gui/FakeSystemClock.h"
#include "gui/Platform.h"

namespace kelvane {

// A scripted outside world for tests: boxes answered from a script, a clock
// that stands still, repeatable random numbers and a chosen program directory.
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

    Platform Services{Messages, Clock, Random, Directory, FileDialog};
};

}  // namespace kelvane
