// The probe's run: it starts the program, waits for the first paint of its
// title window and closes the program again.
#include "Probe.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace first_paint {

Probe::Probe(Display* display, const Options& options, int damageEventBase, ProbeLog& log,
             volatile sig_atomic_t& childGroup)
    : display_(display),
      options_(options),
      damageEventBase_(damageEventBase),
      log_(log),
      childGroup_(childGroup),
      root_(DefaultRootWindow(display)),
      netWmName_(XInternAtom(display, "_NET_WM_NAME", False)),
      wmProtocols_(XInternAtom(display, "WM_PROTOCOLS", False)),
      wmDeleteWindow_(XInternAtom(display, "WM_DELETE_WINDOW", False)) {}

void Probe::NoteChildEnded() {
    childEnded_ = true;
    childGroup_ = 0;
}

bool Probe::ChildHasEnded() {
    if (childEnded_) {
        return true;
    }
    const pid_t waited = waitpid(child_, &childStatus_, WNOHANG);
    if (waited == child_) {
        NoteChildEnded();
    }
    return childEnded_;
}

bool Probe::StartCommand() {
    log_.MarkStart();
    child_ = fork();
    if (child_ < 0) {
        std::perror("first_paint_probe: fork");
        return false;
    }
    if (child_ == 0) {
        setpgid(0, 0);
        execvp(options_.command[0], options_.command.data());
        std::fprintf(stderr, "first_paint_probe: cannot run %s: %s\n", options_.command[0],
                     std::strerror(errno));
        _exit(127);
    }
    setpgid(child_, child_);  // either side may get there first
    childGroup_ = child_;
    log_.Line("started %s as process %d", options_.command[0], static_cast<int>(child_));
    return true;
}

std::optional<int> Probe::HandlePendingEvents() {
    while (XPending(display_) > 0) {
        XEvent event;
        XNextEvent(display_, &event);
        HandleEvent(event);
        CheckResult();
        if (result_) {
            std::printf("%.2f\n", *result_);
            std::fflush(stdout);
            return Measured;
        }
        if (refused_) {
            std::fprintf(stderr,
                         "first_paint_probe: \"%s\" was mapped before it could be watched; "
                         "run again\n",
                         options_.title.c_str());
            return MappedUnwatched;
        }
    }
    return std::nullopt;
}

int Probe::Measure() {
    XSelectInput(display_, root_, SubstructureNotifyMask);
    XSync(display_, False);
    // The program must not inherit the probe's connection.
    fcntl(ConnectionNumber(display_), F_SETFD, FD_CLOEXEC);
    if (!StartCommand()) {
        return SetupError;
    }
    const Clock::time_point deadline =
        log_.Start() + std::chrono::duration_cast<Clock::duration>(
                           std::chrono::duration<double>(options_.timeoutSeconds));
    const int connection = ConnectionNumber(display_);
    for (;;) {
        if (const std::optional<int> outcome = HandlePendingEvents()) {
            return *outcome;
        }
        if (ChildHasEnded()) {
            std::fprintf(stderr, "first_paint_probe: %s ended before \"%s\" was painted\n",
                         options_.command[0], options_.title.c_str());
            return EndedEarly;
        }
        const Clock::time_point now = Clock::now();
        if (now >= deadline) {
            std::fprintf(stderr, "first_paint_probe: no paint of \"%s\" within %.1f s\n",
                         options_.title.c_str(), options_.timeoutSeconds);
            return TimedOut;
        }
        // Wake up now and then to notice the program ending.
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - now);
        pollfd watched{connection, POLLIN, 0};
        poll(&watched, 1, static_cast<int>(std::min<long long>(left.count() + 1, 50)));
    }
}

// Asks every mapped window of the program to close, as a window manager
// would; a dialog that refuses once is asked again.
void Probe::AskWindowsToClose() {
    for (const auto& [window, topLevel] : windows_) {
        if (!topLevel.mapped || topLevel.overrideRedirect) {
            continue;
        }
        XEvent message{};
        message.xclient.type = ClientMessage;
        message.xclient.window = window;
        message.xclient.message_type = wmProtocols_;
        message.xclient.format = 32;
        message.xclient.data.l[0] = static_cast<long>(wmDeleteWindow_);
        message.xclient.data.l[1] = CurrentTime;
        XSendEvent(display_, window, False, NoEventMask, &message);
    }
    XFlush(display_);
}

bool Probe::WaitForEnd(Clock::time_point until, bool closeWindows) {
    Clock::time_point nextClose = Clock::now();
    while (!ChildHasEnded() && Clock::now() < until) {
        while (XPending(display_) > 0) {
            XEvent event;
            XNextEvent(display_, &event);
            HandleEvent(event);
        }
        if (closeWindows && Clock::now() >= nextClose) {
            AskWindowsToClose();
            nextClose = Clock::now() + std::chrono::milliseconds(250);
        }
        usleep(10000);
    }
    return childEnded_;
}

void Probe::Finish() {
    if (child_ <= 0) {
        return;
    }
    const auto seconds = [](double count) {
        return std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(count));
    };
    if (!WaitForEnd(Clock::now() + seconds(options_.graceSeconds), true)) {
        std::fprintf(stderr, "first_paint_probe: %s did not close; sending SIGTERM\n",
                     options_.command[0]);
        kill(-child_, SIGTERM);
        if (!WaitForEnd(Clock::now() + seconds(options_.graceSeconds), false)) {
            std::fprintf(stderr, "first_paint_probe: %s did not end; sending SIGKILL\n",
                         options_.command[0]);
            kill(-child_, SIGKILL);
            while (!ChildHasEnded()) {
                if (waitpid(child_, &childStatus_, 0) == child_) {
                    NoteChildEnded();
                }
            }
        }
    }
    ReportExit();
}

void Probe::ReportExit() const {
    if (WIFEXITED(childStatus_)) {
        log_.Line("%s exited with status %d", options_.command[0], WEXITSTATUS(childStatus_));
        if (WEXITSTATUS(childStatus_) != 0) {
            std::fprintf(stderr, "first_paint_probe: %s exited with status %d\n",
                         options_.command[0], WEXITSTATUS(childStatus_));
        }
    } else if (WIFSIGNALED(childStatus_)) {
        std::fprintf(stderr, "first_paint_probe: %s ended by signal %d\n", options_.command[0],
                     WTERMSIG(childStatus_));
    }
}

}  // namespace first_paint
