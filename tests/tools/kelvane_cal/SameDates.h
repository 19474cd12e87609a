#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "store/AppointmentMOD.h"
#include "store/CalendarFile.h"

// Comparing a calendar with what came back from an export and an import.
namespace kelvane::cal::testing {

// A schedule as an import lays it out: by start time, ties in their order.
inline std::vector<Appointment> ByStartTime(std::vector<Appointment> schedule) {
    std::stable_sort(schedule.begin(), schedule.end(),
                     [](const Appointment& a, const Appointment& b) {
                         return CompareClockTime(a.StartTime, b.StartTime) < 0;
                     });
    return schedule;
}

// Every date of `was` in `is`, with the same title, note and schedule.
inline void ExpectSameDates(const CalendarFileContent& was, const CalendarFileContent& is) {
    ASSERT_EQ(is.Dates.size(), was.Dates.size());
    for (std::size_t i = 0; i < was.Dates.size(); ++i) {
        const CalendarFileDate& before = was.Dates[i];
        const CalendarFileDate& after = is.Dates[i];
        SCOPED_TRACE(QStringLiteral("%1/%2").arg(before.Day).arg(before.Month).toStdString());
        EXPECT_EQ(after.Month, before.Month);
        EXPECT_EQ(after.Day, before.Day);
        EXPECT_EQ(after.Entry.Title, before.Entry.Title);
        EXPECT_EQ(after.Note, before.Note);
        EXPECT_EQ(after.Schedule, ByStartTime(before.Schedule));
    }
}

}  // namespace kelvane::cal::testing
