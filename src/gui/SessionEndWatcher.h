#pragma once

#include <functional>
#include <memory>

class QObject;
class QSocketNotifier;

namespace kelvane {

// How the session ends without File > Exit.
enum class SessionEnd {
    // SIGTERM, SIGHUP or SIGINT: the program is to end now.
    Signal,
    // The desktop session asks for unsaved work to be saved, at logout or
    // shutdown; it may still be cancelled, so the program goes on.
    SaveRequest,
    // The application is about to leave its event loop.
    Quit,
};

// Tells the program that its session ends without File > Exit. The callback
// runs on the GUI thread from the event loop, never inside a signal handler;
// a Signal or a SaveRequest may come while a modal window's loop runs. Any
// kind may come more than once.
//
// One watcher at a time: the signals are the process's. While it lives the
// three signals no longer end the process; when it goes their default actions
// come back.
class SessionEndWatcher {
  public:
    explicit SessionEndWatcher(std::function<void(SessionEnd)> onEnd);
    ~SessionEndWatcher();
    SessionEndWatcher(const SessionEndWatcher&) = delete;
    SessionEndWatcher& operator=(const SessionEndWatcher&) = delete;

    // False when the signals could not be caught (no pipe could be made); the
    // session's save request and the quit are still watched.
    bool CatchesSignals() const { return notifier_ != nullptr; }

  private:
    void CatchSignals();
    void ReleaseSignals();
    void ReadSignals();

    std::function<void(SessionEnd)> onEnd_;
    int pipe_[2] = {-1, -1};
    std::unique_ptr<QSocketNotifier> notifier_;
    std::unique_ptr<QObject> context_;
};

}  // namespace kelvane
