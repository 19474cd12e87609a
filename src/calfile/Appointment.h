#pragma once

#include "calfile/Records.h"

namespace kelvane {

// One entry of a date's schedule. A blank description marks an empty entry.
struct Appointment {
    FixedText<50> Description;
    ClockTime StartTime;
    ClockTime EndTime;

    friend bool operator==(const Appointment&, const Appointment&) = default;
};

// -1 when a is earlier than b, 1 when later, 0 when both are the same minute.
int CompareClockTime(const ClockTime& a, const ClockTime& b);
// True when a is an earlier minute than b.
inline bool ClockTimeBefore(const ClockTime& a, const ClockTime& b) {
    return CompareClockTime(a, b) < 0;
}

}  // namespace kelvane
