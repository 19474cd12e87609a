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

#include <X11/Xlib.h>
#include <X11/extensions/Xdamage.h>
#include <signal.h>
#include <unistd.h>

#include <cstdio>
#include <optional>

#include "Probe.h"
#include "ProbeLog.h"
#include "ProbeOptions.h"

namespace {

using namespace first_paint;

// The program runs in a process group of its own, so it does not get the
// terminal's interrupt; when the probe is stopped, it takes the program along.
volatile sig_atomic_t childGroup = 0;

void StopChildAndExit(int signalNumber) {
    if (childGroup > 0) {
        kill(-childGroup, SIGKILL);
    }
    _exit(128 + signalNumber);
}

// Windows come and go while the probe asks about them; errors about windows
// that are already gone are expected and ignored (and told with --verbose).
int IgnoreError(Display*, XErrorEvent*) {
    return 0;
}

int TellAndIgnoreError(Display* display, XErrorEvent* error) {
    char text[256];
    XGetErrorText(display, error->error_code, text, sizeof text);
    std::fprintf(stderr, "[probe] ignored X error: %s (request %d.%d, resource 0x%lx)\n", text,
                 error->request_code, error->minor_code, error->resourceid);
    return 0;
}

void StopChildOnSignals() {
    struct sigaction stopping {};
    stopping.sa_handler = StopChildAndExit;
    sigemptyset(&stopping.sa_mask);
    for (const int signalNumber : {SIGINT, SIGTERM, SIGHUP}) {
        sigaction(signalNumber, &stopping, nullptr);
    }
}

// The display's DAMAGE event base; none when the server lacks the extension.
std::optional<int> DamageEventBase(Display* display) {
    int eventBase = 0;
    int errorBase = 0;
    if (!XDamageQueryExtension(display, &eventBase, &errorBase)) {
        return std::nullopt;
    }
    return eventBase;
}

}  // namespace

int main(int argc, char* argv[]) {
    const std::optional<Options> options = ParseOptions(argc, argv);
    if (!options) {
        Usage();
        return SetupError;
    }
    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        std::fprintf(stderr, "first_paint_probe: cannot open display \"%s\"\n",
                     XDisplayName(nullptr));
        return SetupError;
    }
    const std::optional<int> damageEventBase = DamageEventBase(display);
    if (!damageEventBase) {
        std::fprintf(stderr, "first_paint_probe: the X server has no DAMAGE extension\n");
        XCloseDisplay(display);
        return SetupError;
    }
    XSetErrorHandler(options->verbose ? TellAndIgnoreError : IgnoreError);
    StopChildOnSignals();

    int status = SetupError;
    {
        ProbeLog log(options->verbose);
        Probe probe(display, *options, *damageEventBase, log, childGroup);
        status = probe.Measure();
        probe.Finish();
    }
    XCloseDisplay(display);
    return status;
}
