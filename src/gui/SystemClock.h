#pragma once

#include <QString>

namespace kelvane {

// The system date and time, read as the texts the program works with.
class SystemClock {
  public:
    virtual ~SystemClock() = default;

    // Today's date as "mm-dd-yyyy", e.g. "03-07-2026".
    virtual QString DateText() const = 0;
    // The time of day as "hh:mm:ss" on the 24-hour clock, e.g. "09:30:00".
    virtual QString TimeText() const = 0;
    // Seconds since midnight, used to seed the random source.
    virtual double SecondsSinceMidnight() const = 0;
};

}  // namespace kelvane
