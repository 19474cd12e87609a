#include "kelvane_cal/ical/FileYear.h"

#include "calfile/YearRules.h"

namespace kelvane::cal {

FileYear::FileYear(const CalendarFileSettings& settings, int todayYear) {
    int computedFirst = 0;
    if (settings.Year != 0) {
        leap_ = settings.Year > 0;
    } else {
        leap_ = LeapYearRule(todayYear) == 1;
        computedFirst = FirstWeekdayOfCalendarYear(todayYear);
    }
    if (settings.FirstDay >= 1 && settings.FirstDay <= 7) {
        firstWeekday_ = settings.FirstDay;
    } else {
        firstWeekday_ = static_cast<qint16>(computedFirst >= 1 ? computedFirst : 1);
    }
}

qint16 FileYear::Weekday(int month, int day) const {
    if (month == 2 && day == 29 && !leap_) {
        return 0;
    }
    const int dayOfYear = DayOfYear(MonthDaysOf(leap_), month, day);
    return static_cast<qint16>((firstWeekday_ - 1 + dayOfYear - 1) % 7 + 1);
}

}  // namespace kelvane::cal
