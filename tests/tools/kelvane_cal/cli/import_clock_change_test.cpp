#include <gtest/gtest.h>

#include "fixtures/CalRun.h"

// Events that run while the clocks go back.
namespace kelvane::cal {
namespace {

using testing::RunCal;

// The one activity an import of one event for 2024 in `zone` makes.
Appointment ImportedActivity(const QStringList& properties, const QString& zone) {
    QTemporaryDir folder;
    EXPECT_TRUE(testing::WriteBytes(
        folder.filePath("in.ics"),
        testing::ICalLines(testing::VCalendar(testing::VEvent("one", properties)))));
    const testing::CalRun run = RunCal({"import", folder.filePath("in.ics"), "--year", "2024",
                                        "--timezone", zone, "-o", folder.filePath("out.cal")});
    EXPECT_EQ(run.Status, kDone) << run.Err.toStdString();
    const CalendarFileContent content =
        testing::ReadCalendarBytes(testing::ReadBytes(folder.filePath("out.cal")));
    if (content.Dates.size() != 1 || content.Dates[0].Schedule.size() != 1) {
        ADD_FAILURE() << "not one activity on one date";
        return {};
    }
    return content.Dates[0].Schedule[0];
}

// 02:30 on 27 October 2024 in Berlin is the first of the two 02:30s; half an
// hour later it is 02:00 again. An end before the start would read as past
// midnight, an activity of 23 and a half hours.
TEST(ImportAtAClockChange, AnEventInTheHourTheClocksGoBackKeepsItsLength) {
    const Appointment activity = ImportedActivity(
        {"DTSTART;TZID=Europe/Berlin:20241027T023000", "DURATION:PT30M", "SUMMARY:Handover"},
        "Europe/Berlin");
    EXPECT_EQ(activity.StartTime, (ClockTime{2, 30}));
    EXPECT_EQ(activity.EndTime, (ClockTime{3, 0}));
}

// In London the hour from 01:30 on 27 October 2024 ends at 01:30 again,
// which would read as no length.
TEST(ImportAtAClockChange, AnEventAsLongAsTheHourTheClocksGoBackIsNoShorter) {
    const Appointment activity = ImportedActivity(
        {"DTSTART;TZID=Europe/London:20241027T013000", "DURATION:PT1H", "SUMMARY:Handover"},
        "Europe/London");
    EXPECT_EQ(activity.StartTime, (ClockTime{1, 30}));
    EXPECT_EQ(activity.EndTime, (ClockTime{2, 30}));
}

}  // namespace
}  // namespace kelvane::cal
