#pragma once

#include <chrono>

namespace first_paint {

using Clock = std::chrono::steady_clock;

// What --verbose tells on standard error, each line timed from the start.
class ProbeLog {
  public:
    explicit ProbeLog(bool verbose) : verbose_(verbose) {}

    // The moment just before the fork, which every time is counted from.
    void MarkStart() { start_ = Clock::now(); }
    Clock::time_point Start() const { return start_; }
    double MillisecondsSinceStart(Clock::time_point when) const;
    // One line, printf-style, when verbose; nothing otherwise.
    void Line(const char* format, ...) const __attribute__((format(printf, 2, 3)));

  private:
    bool verbose_;
    Clock::time_point start_{};
};

}  // namespace first_paint
