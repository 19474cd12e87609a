#pragma once

#include "shell/ActivityWatch.h"

namespace kelvane {

// Taken by a command for as long as it holds the shared working copies or
// shows a modal window. Meanwhile the watch's ticks neither rebuild today's
// schedule, which would load other dates into the working copies, nor show a
// box: they only gather what starts and ends, for the first tick after the last
// hold ends.
class WatchHold {
  public:
    explicit WatchHold(ActivityWatch& watch) : watch_(watch) { watch_.Hold(); }
    ~WatchHold() { watch_.Release(); }
    WatchHold(const WatchHold&) = delete;
    WatchHold& operator=(const WatchHold&) = delete;

  private:
    ActivityWatch& watch_;
};

// A hold for a command that also turns the watch's announcements off while it
// runs and on again however it ends, as the commands that open a dialog do.
class SilentWatchHold {
  public:
    explicit SilentWatchHold(ActivityWatch& watch) : watch_(watch), hold_(watch) {
        watch_.AlertsOff();
    }
    ~SilentWatchHold() { watch_.AlertsOn(); }
    SilentWatchHold(const SilentWatchHold&) = delete;
    SilentWatchHold& operator=(const SilentWatchHold&) = delete;

  private:
    ActivityWatch& watch_;
    WatchHold hold_;
};

}  // namespace kelvane
