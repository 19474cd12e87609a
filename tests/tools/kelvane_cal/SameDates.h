#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "CalRun.h"
#include "calfile/Appointment.h"
#include "calfile/CalendarFile.h"

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

// `original` exported for `year` and imported back, through the real
// commands and files of `folder`, with neither saying a warning.
inline void ExpectTheSameBackFromAnExport(const CalendarFileContent& original, int year,
                                          const QString& folder) {
    const QString calendar = folder + QStringLiteral("/original.cal");
    const QString exported = folder + QStringLiteral("/exported.ics");
    const QString back = folder + QStringLiteral("/back.cal");
    ASSERT_TRUE(WriteCalendar(calendar, original));
    const QString yearText = QString::number(year);
    CalRun run = RunCal({"export", calendar, "--year", yearText, "-o", exported});
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    EXPECT_FALSE(run.Err.contains("warning")) << run.Err.toStdString();
    run = RunCal({"import", exported, "--year", yearText, "-o", back});
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    EXPECT_FALSE(run.Err.contains("warning")) << run.Err.toStdString();
    ExpectSameDates(original, ReadCalendarBytes(ReadBytes(back)));
}

}  // namespace kelvane::cal::testing
