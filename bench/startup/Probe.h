#pragma once

#include <X11/Xlib.h>
#include <X11/extensions/Xdamage.h>
#include <signal.h>
#include <sys/types.h>

#include <map>
#include <optional>

#include "ProbeLog.h"
#include "ProbeOptions.h"

namespace first_paint {

// What the probe knows of one top-level window created after the fork.
struct TopLevel {
    Damage damage = 0;
    unsigned long damageSerial = 0;  // sequence number of the DamageCreate request
    bool mapped = false;
    bool mappedUnwatched = false;  // mapped before the Damage object existed
    bool overrideRedirect = false;
    bool titleMatches = false;
    std::optional<Clock::time_point> mappedAt;
    std::optional<Clock::time_point> firstDamageAt;
};

class Probe {
  public:
    // `childGroup` is where the program's process group is kept for a signal
    // handler, 0 while there is none.
    Probe(Display* display, const Options& options, int damageEventBase, ProbeLog& log,
          volatile sig_atomic_t& childGroup);

    // Starts the command and waits for the first paint of the title window.
    int Measure();
    // Closes the program and waits for it to end.
    void Finish();

  private:
    // Forks and runs the command in a process group of its own; false when
    // there is no child.
    bool StartCommand();
    // The outcome of the events waiting, if they bring one.
    std::optional<int> HandlePendingEvents();

    void HandleEvent(const XEvent& event);
    void OnCreated(const XCreateWindowEvent& created);
    void OnMapped(const XMapEvent& mapped, Clock::time_point now);
    void OnUnmapped(const XUnmapEvent& unmapped);
    void OnDestroyed(const XDestroyWindowEvent& destroyed);
    void OnPropertyChanged(const XPropertyEvent& property);
    void OnDamaged(const XEvent& event, Clock::time_point now);
    void CheckResult();
    void UpdateTitle(Window window, TopLevel& topLevel);

    bool ChildHasEnded();
    void NoteChildEnded();
    // Waits up to `until` for the program to end, asking its windows to close
    // now and then when `closeWindows`; true when it ended.
    bool WaitForEnd(Clock::time_point until, bool closeWindows);
    void AskWindowsToClose();
    void ReportExit() const;

    Display* display_;
    const Options& options_;
    int damageEventBase_;
    ProbeLog& log_;
    volatile sig_atomic_t& childGroup_;
    Window root_;
    Atom netWmName_;
    Atom wmProtocols_;
    Atom wmDeleteWindow_;
    pid_t child_ = -1;
    bool childEnded_ = false;
    int childStatus_ = 0;
    std::map<Window, TopLevel> windows_;
    std::map<Damage, Window> damages_;
    std::optional<double> result_;
    bool refused_ = false;
};

}  // namespace first_paint
