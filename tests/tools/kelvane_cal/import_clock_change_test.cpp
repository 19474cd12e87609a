#include <gtest/gtest.h>

#include "CalRun.h"

// Events that run while the clocks go back.
namespace kelvane::cal {
namespace {

using testing::RunCal;

// 02:30 on 27 October 2024 in Berlin is the first of the two 02:30s; half an
// hour later it is 02:00 again. An end before the start would read as past
// midnight, an activity of 23 and a half hours.
TEST(ImportAtAClockChange, AnEventInTheHourTheClocksGoBackKeepsItsLength) {
    QTemporaryDir folder;
    ASSERT_TRUE(testing::WriteBytes(
        folder.filePath("in.ics"),
        testing::ICalLines(testing::VCalendar(
            testing::VEvent("back", {"DTSTART;TZID=Europe/Berlin:20241027T023000", "DURATION:PT30M",
                                     "SUMMARY:Night shift handover"})))));
    const testing::CalRun run =
        RunCal({"import", folder.filePath("in.ics"), "--year", "2024", "--timezone",
                "Europe/Berlin", "-o", folder.filePath("out.cal")});
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    const CalendarFileContent content =
        testing::ReadCalendarBytes(testing::ReadBytes(folder.filePath("out.cal")));
    ASSERT_EQ(content.Dates.size(), 1u);
    ASSERT_EQ(content.Dates[0].Schedule.size(), 1u);
    EXPECT_EQ(content.Dates[0].Schedule[0].StartTime, (ClockTime{2, 30}));
    EXPECT_EQ(content.Dates[0].Schedule[0].EndTime, (ClockTime{3, 0}));
}

}  // namespace
}  // namespace kelvane::cal
