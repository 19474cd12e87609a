#pragma once

#include <QString>

#include <vector>

#include "calfile/CalendarFile.h"

namespace kelvane::cal {

// An activity of a date with its 1-based slot in the date's schedule.
struct NumberedActivity {
    int Slot = 0;
    Appointment Entry;
};

// The date's activities; entries with a blank description are empty slots.
std::vector<NumberedActivity> ActivitiesOf(const CalendarFileDate& date);
// The date's note without leading and trailing blanks; empty when it has none.
QString NoteOf(const CalendarFileDate& date);

// "7 March".
QString DayAndMonth(int month, int day);
// A time on the 24-hour clock with two-digit hours: "09:05".
QString Time24(const ClockTime& time);
// Whether a time is a time of day, 00:00 to 23:59.
bool IsTimeOfDay(const ClockTime& time);

// "1 activity", "2 activities": `count` with the singular or plural noun.
QString Counted(qsizetype count, const QString& singular, const QString& plural);

}  // namespace kelvane::cal
