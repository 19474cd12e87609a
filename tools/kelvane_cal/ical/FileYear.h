#pragma once

#include <QtGlobal>

#include "calfile/CalendarFile.h"

namespace kelvane::cal {

// The year a calendar file lays out, worked out as the month view does when it
// loads the file: the year line is a leap indicator (above 0 leap, below 0 not,
// 0 today's year) and the first-day line the weekday of 1 January.
class FileYear {
  public:
    FileYear(const CalendarFileSettings& settings, int todayYear);

    bool IsLeap() const { return leap_; }
    // 1 = Sunday .. 7 = Saturday.
    qint16 FirstWeekday() const { return firstWeekday_; }
    // The weekday of a date of the layout, or 0 for a day the month does not
    // have in it (29 February of a year that is not leap).
    qint16 Weekday(int month, int day) const;

  private:
    bool leap_ = true;
    qint16 firstWeekday_ = 1;
};

}  // namespace kelvane::cal
