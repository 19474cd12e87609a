#include "kelvane_cal/caldav/CurlEvents.h"

#include <algorithm>

namespace kelvane::cal {

namespace {

// The longest wait without looking again, in case a wake-up is missed.
constexpr int kLongestWait = 1000;

// What libcurl wants to hear of a socket, as poll's flags.
short PollFlags(int what) {
    short flags = 0;
    if (what == CURL_POLL_IN || what == CURL_POLL_INOUT) {
        flags |= POLLIN;
    }
    if (what == CURL_POLL_OUT || what == CURL_POLL_INOUT) {
        flags |= POLLOUT;
    }
    return flags;
}

// What poll saw on a socket, as libcurl's flags.
int CurlFlags(short events) {
    int flags = 0;
    flags |= (events & POLLIN) != 0 ? CURL_CSELECT_IN : 0;
    flags |= (events & POLLOUT) != 0 ? CURL_CSELECT_OUT : 0;
    flags |= (events & (POLLERR | POLLHUP | POLLNVAL)) != 0 ? CURL_CSELECT_ERR : 0;
    return flags;
}

}  // namespace

CurlEvents::CurlEvents(CURLM* multi) : multi_(multi) {
    curl_multi_setopt(multi_, CURLMOPT_SOCKETFUNCTION, &CurlEvents::OnSocket);
    curl_multi_setopt(multi_, CURLMOPT_SOCKETDATA, this);
    curl_multi_setopt(multi_, CURLMOPT_TIMERFUNCTION, &CurlEvents::OnTimer);
    curl_multi_setopt(multi_, CURLMOPT_TIMERDATA, this);
}

int CurlEvents::OnSocket(CURL*, curl_socket_t socket, int what, void* self, void*) {
    static_cast<CurlEvents*>(self)->Watch(socket, what);
    return 0;
}

void CurlEvents::Watch(curl_socket_t socket, int what) {
    const auto found = std::find_if(watched_.begin(), watched_.end(),
                                    [socket](const pollfd& one) { return one.fd == socket; });
    if (what == CURL_POLL_REMOVE) {
        if (found != watched_.end()) {
            watched_.erase(found);
        }
    } else if (found != watched_.end()) {
        found->events = PollFlags(what);
    } else {
        watched_.push_back({socket, PollFlags(what), 0});
    }
}

int CurlEvents::OnTimer(CURLM*, long milliseconds, void* self) {
    auto* events = static_cast<CurlEvents*>(self);
    events->timerSet_ = milliseconds >= 0;
    events->deadline_ = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    return 0;
}

int CurlEvents::MillisecondsLeft() const {
    if (!timerSet_) {
        return kLongestWait;
    }
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(deadline_ - std::chrono::steady_clock::now());
    return static_cast<int>(std::clamp<long long>(left.count(), 0, kLongestWait));
}

void CurlEvents::WaitAndAct() {
    const int wait = MillisecondsLeft();
    // libcurl may change the list while it acts, so it acts on a copy.
    std::vector<pollfd>& ready = ready_;
    ready.assign(watched_.begin(), watched_.end());
    const int count = wait == 0 ? 0 : ::poll(ready.data(), ready.size(), wait);
    int running = 0;
    for (std::size_t index = 0; count > 0 && index < ready.size(); ++index) {
        if (ready[index].revents != 0) {
            curl_multi_socket_action(multi_, ready[index].fd, CurlFlags(ready[index].revents),
                                     &running);
        }
    }
    if (timerSet_ && MillisecondsLeft() == 0) {
        timerSet_ = false;
        curl_multi_socket_action(multi_, CURL_SOCKET_TIMEOUT, 0, &running);
    }
}

}  // namespace kelvane::cal
