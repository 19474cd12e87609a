#pragma once

#include "store/CalendarFile.h"

// Finding a date in a calendar a test made or read.
namespace kelvane::cal::testing {

// The calendar's entry of a date, or none when it holds no such date.
inline const CalendarFileDate* FindDate(const CalendarFileContent& content, int month, int day) {
    for (const CalendarFileDate& date : content.Dates) {
        if (date.Month == month && date.Day == day) {
            return &date;
        }
    }
    return nullptr;
}

}  // namespace kelvane::cal::testing
