#pragma once

#include <QLabel>
#include <QStatusBar>
#include <QTimer>

#include "gui/SystemClock.h"
#include "shell/ActivityWatch.h"

namespace kelvane {

// The main window's status bar: panel 1 for messages, panel 2 "warn" while
// announcements are allowed, panels 3 and 4 the system date and time, which
// the bar keeps up to date itself. Screen readers know the time panel by its
// hours and minutes, so its name changes once a minute, not every second.
class MainStatusBar final : public QStatusBar, public AlertIndicator {
  public:
    MainStatusBar(const SystemClock& clock, QWidget* parent = nullptr);

    void ShowMessage(const QString& text) { Panel(1)->setText(text); }
    QString Message() const { return Panel(1)->text(); }
    void ShowAlertsEnabled(bool enabled) override;

    // Panels 1..4 as labels.
    QLabel* Panel(int index) const;
    // Brings the date and time panels up to the clock.
    void ShowDateAndTime();

  private:
    QLabel* AddPanel(const QString& name, int stretch);

    const SystemClock& clock_;
    QLabel* panels_[4] = {};
    QTimer ticker_;
};

}  // namespace kelvane
