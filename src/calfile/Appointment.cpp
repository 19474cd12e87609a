#include "calfile/Appointment.h"

namespace kelvane {

int CompareClockTime(const ClockTime& a, const ClockTime& b) {
    if (a.Hour != b.Hour) {
        return a.Hour < b.Hour ? -1 : 1;
    }
    if (a.Minute != b.Minute) {
        return a.Minute < b.Minute ? -1 : 1;
    }
    return 0;
}

}  // namespace kelvane
