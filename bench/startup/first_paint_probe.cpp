// Measures how long a program takes from its start to the first paint of a
// top-level window with a given title, on an X server without a window manager
// (such as Xvfb).
//
//   first_paint_probe --title TITLE [--timeout SECONDS] [--grace SECONDS]
//                     [--verbose] -- COMMAND [ARGUMENT...]
//
// The probe listens for the creation of top-level windows (children of the
// root window) before it starts COMMAND, and puts a Damage object on every new
// top-level window as soon as it is told of it. Drawing on a window that is
// not mapped changes nothing on the screen and reports no damage, and Qt's
// windows have no background for the server to paint when they are mapped, so
// the first damage reported is the program's first paint of that window (only
// the parts not covered by other windows count). The probe checks that each
// Damage object existed before its window was mapped (by comparing request
// sequence numbers); if the program mapped the title window before the probe
// could watch it, the measurement is refused (exit status 3) rather than
// reported late.
//
// On success it prints the milliseconds from just before the fork to the first
// damage of the window titled TITLE on standard output, then closes the
// program: first politely (WM_DELETE_WINDOW to each of its mapped windows,
// repeated, for --grace seconds), then with SIGTERM and finally SIGKILL, and
// waits for it to end in every case.
//
// Exit status: 0 measured, 1 usage or set-up error, 2 timeout, 3 window mapped
// before it could be watched, 4 the program ended before painting the window.

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/Xdamage.h>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

enum ExitCode {
    Measured = 0,
    SetupError = 1,
    TimedOut = 2,
    MappedUnwatched = 3,
    EndedEarly = 4,
};

struct Options {
    std::string title;
    double timeoutSeconds = 30.0;
    double graceSeconds = 5.0;
    bool verbose = false;
    std::vector<char*> command;  // null-terminated for execvp
};

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

bool verbose = false;
Clock::time_point startTime;
// The program runs in a process group of its own, so it does not get the
// terminal's interrupt; when the probe is stopped, it takes the program along.
volatile sig_atomic_t childGroup = 0;

void StopChildAndExit(int signalNumber) {
    if (childGroup > 0) {
        kill(-childGroup, SIGKILL);
    }
    _exit(128 + signalNumber);
}

double MillisecondsSinceStart(Clock::time_point when) {
    return std::chrono::duration<double, std::milli>(when - startTime).count();
}

void Log(const char* format, ...) __attribute__((format(printf, 1, 2)));

void Log(const char* format, ...) {
    if (!verbose) {
        return;
    }
    std::fprintf(stderr, "[probe %8.2f ms] ", MillisecondsSinceStart(Clock::now()));
    va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
    std::fputc('\n', stderr);
}

// Windows come and go while the probe asks about them; errors about windows
// that are already gone are expected and ignored.
int IgnoreError(Display* display, XErrorEvent* error) {
    if (verbose) {
        char text[256];
        XGetErrorText(display, error->error_code, text, sizeof text);
        std::fprintf(stderr, "[probe] ignored X error: %s (request %d.%d, resource 0x%lx)\n", text,
                     error->request_code, error->minor_code, error->resourceid);
    }
    return 0;
}

void Usage() {
    std::fprintf(stderr,
                 "usage: first_paint_probe --title TITLE [--timeout SECONDS] "
                 "[--grace SECONDS] [--verbose] -- COMMAND [ARGUMENT...]\n");
}

bool ParsePositive(const char* text, double& value) {
    char* end = nullptr;
    const double parsed = std::strtod(text, &end);
    if (end == text || *end != '\0' || !(parsed > 0.0)) {
        return false;
    }
    value = parsed;
    return true;
}

std::optional<Options> ParseOptions(int argc, char* argv[]) {
    Options options;
    int index = 1;
    for (; index < argc; ++index) {
        const std::string argument = argv[index];
        const bool hasValue = index + 1 < argc;
        if (argument == "--") {
            ++index;
            break;
        } else if (argument == "--title" && hasValue) {
            options.title = argv[++index];
        } else if (argument == "--timeout" && hasValue) {
            if (!ParsePositive(argv[++index], options.timeoutSeconds)) {
                return std::nullopt;
            }
        } else if (argument == "--grace" && hasValue) {
            if (!ParsePositive(argv[++index], options.graceSeconds)) {
                return std::nullopt;
            }
        } else if (argument == "--verbose") {
            options.verbose = true;
        } else if (argument.rfind("--", 0) == 0) {
            return std::nullopt;
        } else {
            break;  // the command starts here
        }
    }
    for (; index < argc; ++index) {
        options.command.push_back(argv[index]);
    }
    if (options.command.empty() || options.title.empty()) {
        return std::nullopt;
    }
    options.command.push_back(nullptr);
    return options;
}

// Reads a text property of 8-bit items, whatever its type; empty when absent.
std::optional<std::string> ReadTextProperty(Display* display, Window window, Atom property) {
    Atom type = None;
    int format = 0;
    unsigned long count = 0;
    unsigned long remaining = 0;
    unsigned char* data = nullptr;
    const int status =
        XGetWindowProperty(display, window, property, 0, 1024, False, AnyPropertyType, &type,
                           &format, &count, &remaining, &data);
    std::optional<std::string> text;
    if (status == Success && type != None && format == 8 && data != nullptr) {
        text = std::string(reinterpret_cast<const char*>(data), count);
    }
    if (data != nullptr) {
        XFree(data);
    }
    return text;
}

class Probe {
  public:
    Probe(Display* display, const Options& options, int damageEventBase)
        : display_(display),
          options_(options),
          damageEventBase_(damageEventBase),
          root_(DefaultRootWindow(display)),
          netWmName_(XInternAtom(display, "_NET_WM_NAME", False)),
          wmProtocols_(XInternAtom(display, "WM_PROTOCOLS", False)),
          wmDeleteWindow_(XInternAtom(display, "WM_DELETE_WINDOW", False)) {}

    // Starts the command and waits for the first paint of the title window.
    int Measure();
    // Closes the program and waits for it to end.
    void Finish();

  private:
    void HandleEvent(const XEvent& event);
    void CheckResult();
    void UpdateTitle(Window window, TopLevel& topLevel);
    bool ChildHasEnded();

    Display* display_;
    const Options& options_;
    int damageEventBase_;
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

bool Probe::ChildHasEnded() {
    if (childEnded_) {
        return true;
    }
    const pid_t waited = waitpid(child_, &childStatus_, WNOHANG);
    if (waited == child_) {
        childEnded_ = true;
        childGroup = 0;
    }
    return childEnded_;
}

void Probe::UpdateTitle(Window window, TopLevel& topLevel) {
    const std::optional<std::string> netName = ReadTextProperty(display_, window, netWmName_);
    const std::optional<std::string> name = ReadTextProperty(display_, window, XA_WM_NAME);
    const bool matches =
        (netName && *netName == options_.title) || (!netName && name && *name == options_.title);
    if (matches != topLevel.titleMatches) {
        Log("window 0x%lx title \"%s\" %s", window, netName ? netName->c_str() : "",
            matches ? "matches" : "no longer matches");
    }
    topLevel.titleMatches = matches;
}

void Probe::HandleEvent(const XEvent& event) {
    const Clock::time_point now = Clock::now();
    switch (event.type) {
        case CreateNotify: {
            const XCreateWindowEvent& created = event.xcreatewindow;
            if (created.parent != root_) {
                break;
            }
            TopLevel& topLevel = windows_[created.window];
            topLevel.overrideRedirect = created.override_redirect;
            XSelectInput(display_, created.window, PropertyChangeMask);
            topLevel.damageSerial = NextRequest(display_);
            topLevel.damage = XDamageCreate(display_, created.window, XDamageReportNonEmpty);
            damages_[topLevel.damage] = created.window;
            XFlush(display_);
            Log("created 0x%lx %dx%d%+d%+d%s", created.window, created.width, created.height,
                created.x, created.y, created.override_redirect ? " (override-redirect)" : "");
            break;
        }
        case MapNotify: {
            const XMapEvent& mapped = event.xmap;
            if (mapped.event != root_) {
                break;
            }
            const auto found = windows_.find(mapped.window);
            if (found == windows_.end()) {
                break;
            }
            TopLevel& topLevel = found->second;
            topLevel.mapped = true;
            if (!topLevel.mappedAt) {
                topLevel.mappedAt = now;
            }
            // The event carries the sequence number of the last request of ours the
            // server had handled when the window was mapped.
            if (mapped.serial < topLevel.damageSerial) {
                topLevel.mappedUnwatched = true;
            }
            Log("mapped 0x%lx%s", mapped.window,
                topLevel.mappedUnwatched ? " BEFORE its Damage object existed" : "");
            UpdateTitle(mapped.window, topLevel);
            break;
        }
        case UnmapNotify: {
            const auto found = windows_.find(event.xunmap.window);
            if (event.xunmap.event == root_ && found != windows_.end()) {
                found->second.mapped = false;
                Log("unmapped 0x%lx", event.xunmap.window);
            }
            break;
        }
        case DestroyNotify: {
            const auto found = windows_.find(event.xdestroywindow.window);
            if (event.xdestroywindow.event == root_ && found != windows_.end()) {
                damages_.erase(found->second.damage);
                windows_.erase(found);
                Log("destroyed 0x%lx", event.xdestroywindow.window);
            }
            break;
        }
        case PropertyNotify: {
            const XPropertyEvent& property = event.xproperty;
            const auto found = windows_.find(property.window);
            if (found != windows_.end() && found->second.mapped &&
                (property.atom == netWmName_ || property.atom == XA_WM_NAME)) {
                UpdateTitle(property.window, found->second);
            }
            break;
        }
        default:
            if (event.type == damageEventBase_ + XDamageNotify) {
                XDamageNotifyEvent damaged;
                std::memcpy(&damaged, &event, sizeof damaged);
                const auto found = damages_.find(damaged.damage);
                if (found == damages_.end()) {
                    break;
                }
                TopLevel& topLevel = windows_.at(found->second);
                if (!topLevel.firstDamageAt) {
                    topLevel.firstDamageAt = now;
                    Log("first damage of 0x%lx: %dx%d%+d%+d", found->second, damaged.area.width,
                        damaged.area.height, damaged.area.x, damaged.area.y);
                }
            }
            break;
    }
}

void Probe::CheckResult() {
    // The title may be set after the window was mapped and even after it was
    // first painted, so the windows are looked at again after every event.
    std::optional<Clock::time_point> firstPaint;
    bool unwatched = false;
    for (const auto& [window, topLevel] : windows_) {
        if (!topLevel.titleMatches || !topLevel.mappedAt) {
            continue;
        }
        if (topLevel.mappedUnwatched) {
            unwatched = true;
        } else if (topLevel.firstDamageAt) {
            Log("window 0x%lx first painted %.2f ms after the start (mapped at %.2f ms)", window,
                MillisecondsSinceStart(*topLevel.firstDamageAt),
                MillisecondsSinceStart(*topLevel.mappedAt));
            if (!firstPaint || *topLevel.firstDamageAt < *firstPaint) {
                firstPaint = topLevel.firstDamageAt;
            }
        }
    }
    if (firstPaint) {
        result_ = MillisecondsSinceStart(*firstPaint);
    } else if (unwatched) {
        refused_ = true;
    }
}

int Probe::Measure() {
    XSelectInput(display_, root_, SubstructureNotifyMask);
    XSync(display_, False);
    // The program must not inherit the probe's connection.
    fcntl(ConnectionNumber(display_), F_SETFD, FD_CLOEXEC);

    startTime = Clock::now();
    child_ = fork();
    if (child_ < 0) {
        std::perror("first_paint_probe: fork");
        return SetupError;
    }
    if (child_ == 0) {
        setpgid(0, 0);
        execvp(options_.command[0], options_.command.data());
        std::fprintf(stderr, "first_paint_probe: cannot run %s: %s\n", options_.command[0],
                     std::strerror(errno));
        _exit(127);
    }
    setpgid(child_, child_);  // either side may get there first
    childGroup = child_;
    Log("started %s as process %d", options_.command[0], static_cast<int>(child_));

    const Clock::time_point deadline =
        startTime + std::chrono::duration_cast<Clock::duration>(
                        std::chrono::duration<double>(options_.timeoutSeconds));
    const int connection = ConnectionNumber(display_);
    for (;;) {
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

void Probe::Finish() {
    if (child_ <= 0) {
        return;
    }
    const auto waitUntil = [this](Clock::time_point until, bool closeWindows) {
        Clock::time_point nextClose = Clock::now();
        while (!ChildHasEnded() && Clock::now() < until) {
            while (XPending(display_) > 0) {
                XEvent event;
                XNextEvent(display_, &event);
                HandleEvent(event);
            }
            if (closeWindows && Clock::now() >= nextClose) {
                // Asks every mapped window of the program to close, as a window
                // manager would; a dialog that refuses once is asked again.
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
                nextClose = Clock::now() + std::chrono::milliseconds(250);
            }
            usleep(10000);
        }
        return childEnded_;
    };
    const auto seconds = [](double count) {
        return std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(count));
    };

    if (!waitUntil(Clock::now() + seconds(options_.graceSeconds), true)) {
        std::fprintf(stderr, "first_paint_probe: %s did not close; sending SIGTERM\n",
                     options_.command[0]);
        kill(-child_, SIGTERM);
        if (!waitUntil(Clock::now() + seconds(options_.graceSeconds), false)) {
            std::fprintf(stderr, "first_paint_probe: %s did not end; sending SIGKILL\n",
                         options_.command[0]);
            kill(-child_, SIGKILL);
            while (!ChildHasEnded()) {
                if (waitpid(child_, &childStatus_, 0) == child_) {
                    childEnded_ = true;
                    childGroup = 0;
                }
            }
        }
    }
    if (WIFEXITED(childStatus_)) {
        Log("%s exited with status %d", options_.command[0], WEXITSTATUS(childStatus_));
        if (WEXITSTATUS(childStatus_) != 0) {
            std::fprintf(stderr, "first_paint_probe: %s exited with status %d\n",
                         options_.command[0], WEXITSTATUS(childStatus_));
        }
    } else if (WIFSIGNALED(childStatus_)) {
        std::fprintf(stderr, "first_paint_probe: %s ended by signal %d\n", options_.command[0],
                     WTERMSIG(childStatus_));
    }
}

}  // namespace

int main(int argc, char* argv[]) {
    const std::optional<Options> options = ParseOptions(argc, argv);
    if (!options) {
        Usage();
        return SetupError;
    }
    verbose = options->verbose;

    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        std::fprintf(stderr, "first_paint_probe: cannot open display \"%s\"\n",
                     XDisplayName(nullptr));
        return SetupError;
    }
    int damageEventBase = 0;
    int damageErrorBase = 0;
    if (!XDamageQueryExtension(display, &damageEventBase, &damageErrorBase)) {
        std::fprintf(stderr, "first_paint_probe: the X server has no DAMAGE extension\n");
        XCloseDisplay(display);
        return SetupError;
    }
    XSetErrorHandler(IgnoreError);
    struct sigaction stopping {};
    stopping.sa_handler = StopChildAndExit;
    sigemptyset(&stopping.sa_mask);
    for (const int signalNumber : {SIGINT, SIGTERM, SIGHUP}) {
        sigaction(signalNumber, &stopping, nullptr);
    }

    int status = SetupError;
    {
        Probe probe(display, *options, damageEventBase);
        status = probe.Measure();
        probe.Finish();
    }
    XCloseDisplay(display);
    return status;
}
