#include "gui/SessionEndWatcher.h"

#include <QGuiApplication>
#include <QSessionManager>
#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace kelvane {

#ifdef Q_OS_UNIX
namespace {

constexpr std::array kEndSignals = {SIGTERM, SIGHUP, SIGINT};

// The pipe's write end for the signal handler, which can safely reach nothing
// but a plain number; -1 while no watcher lives.
volatile std::sig_atomic_t signalPipeWriteEnd = -1;

// Only writes one byte: everything else happens in the event loop.
extern "C" void WriteSignalToPipe(int signalNumber) {
    const int savedErrno = errno;
    const auto byte = static_cast<unsigned char>(signalNumber);
    if (signalPipeWriteEnd >= 0) {
        [[maybe_unused]] const ssize_t written = ::write(signalPipeWriteEnd, &byte, 1);
    }
    errno = savedErrno;
}

void SetHandler(int signalNumber, void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(signalNumber, &action, nullptr);
}

}  // namespace
#endif

SessionEndWatcher::SessionEndWatcher(std::function<void(SessionEnd)> onEnd)
    : onEnd_(std::move(onEnd)), context_(std::make_unique<QObject>()) {
    CatchSignals();
    if (auto* application = qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
        QObject::connect(application, &QGuiApplication::commitDataRequest, context_.get(),
                         [this](QSessionManager&) { onEnd_(SessionEnd::SaveRequest); });
        QObject::connect(application, &QCoreApplication::aboutToQuit, context_.get(),
                         [this] { onEnd_(SessionEnd::Quit); });
    }
}

SessionEndWatcher::~SessionEndWatcher() {
    ReleaseSignals();
}

#ifdef Q_OS_UNIX
void SessionEndWatcher::CatchSignals() {
    if (::pipe2(pipe_, O_CLOEXEC | O_NONBLOCK) != 0) {
        pipe_[0] = pipe_[1] = -1;
        return;
    }
    signalPipeWriteEnd = pipe_[1];
    notifier_ = std::make_unique<QSocketNotifier>(pipe_[0], QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, context_.get(),
                     [this] { ReadSignals(); });
    for (const int signalNumber : kEndSignals) {
        SetHandler(signalNumber, WriteSignalToPipe);
    }
}

void SessionEndWatcher::ReleaseSignals() {
    if (notifier_ == nullptr) {
        return;
    }
    for (const int signalNumber : kEndSignals) {
        SetHandler(signalNumber, SIG_DFL);
    }
    signalPipeWriteEnd = -1;
    notifier_.reset();
    ::close(pipe_[0]);
    ::close(pipe_[1]);
    pipe_[0] = pipe_[1] = -1;
}

// Any number of signals that came meanwhile make one end.
void SessionEndWatcher::ReadSignals() {
    std::array<unsigned char, 64> bytes{};
    bool any = false;
    while (::read(pipe_[0], bytes.data(), bytes.size()) > 0) {
        any = true;
    }
    if (any) {
        onEnd_(SessionEnd::Signal);
    }
}
#else
// Windows has none of these signals; its session end comes through Qt.
void SessionEndWatcher::CatchSignals() {}
void SessionEndWatcher::ReleaseSignals() {}
void SessionEndWatcher::ReadSignals() {}
#endif

}  // namespace kelvane
