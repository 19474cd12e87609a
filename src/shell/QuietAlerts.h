#pragma once

#include "shell/ActivityWatch.h"

namespace kelvane {

// Turns the watch's announcements off for the length of a command, and on
// again however it ends.
class QuietAlerts {
  public:
    explicit QuietAlerts(ActivityWatch& watch) : watch_(watch) { watch_.AlertsOff(); }
    ~QuietAlerts() { watch_.AlertsOn(); }
    QuietAlerts(const QuietAlerts&) = delete;
    QuietAlerts& operator=(const QuietAlerts&) = delete;

  private:
    ActivityWatch& watch_;
};

}  // namespace kelvane
