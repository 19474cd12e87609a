#include <gtest/gtest.h>

#include <QFileInfo>

#include "fixtures/CalRun.h"
#include "fixtures/ImportCommand.h"

// An import into a copy of an existing calendar file (--into).
namespace kelvane::cal {
namespace {

using testing::CalData;
using testing::CalRun;
using testing::ICalLines;
using testing::ImportCommand;
using testing::RunCal;

// An existing calendar: 5 January with a title, a stand-up and a note, and
// 4 July, which the import does not touch.
CalendarFileContent Existing() {
    CalendarFileContent content;
    content.Settings.Year = 2024;
    content.Settings.FirstDay = 2;
    content.Settings.FontName = "Courier New";
    content.Settings.FontSize = 11;
    CalendarFileDate fifth;
    fifth.Month = 1;
    fifth.Day = 5;
    fifth.Entry.Title = "Back to work";
    fifth.Entry.BackColour = {0, 40, 0, false, true};
    fifth.Schedule = {testing::Activity("Stand-up", {9, 15}, {9, 30}),
                      testing::Activity("Gym", {7, 0}, {8, 0})};
    fifth.Note = "Water the plants";
    CalendarFileDate july;
    july.Month = 7;
    july.Day = 4;
    july.Entry.Title = "Picnic";
    content.Dates = {fifth, july};
    return content;
}

TEST_F(ImportCommand, MergesIntoACopyOfAnExistingCalendar) {
    ASSERT_TRUE(testing::WriteCalendar(Path("mine.cal"), Existing()));
    const QByteArray before = testing::ReadBytes(Path("mine.cal"));
    ASSERT_TRUE(testing::WriteBytes(
        Path("in.ics"),
        ICalLines(testing::VCalendar(
            testing::VEvent(
                "s", {"DTSTART:20260105T091500", "DTEND:20260105T093000", "SUMMARY:Stand-up"}) +
            testing::VEvent("r", {"DTSTART:20260105T140000", "SUMMARY:Review"}) +
            testing::VEvent("d", {"DTSTART;VALUE=DATE:20260105", "SUMMARY:Sprint starts",
                                  "DESCRIPTION:Plan the sprint"}) +
            testing::VEvent("n", {"DTSTART;VALUE=DATE:20260106", "SUMMARY:Epiphany"})))));
    CalRun run = RunCal({"import", Path("in.ics"), "--year", "2026", "--into", Path("mine.cal"),
                         "-o", Path("merged.cal")});
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    EXPECT_EQ(testing::ReadBytes(Path("mine.cal")), before) << "the existing file is not changed";

    const CalendarFileContent merged =
        testing::ReadCalendarBytes(testing::ReadBytes(Path("merged.cal")));
    EXPECT_EQ(merged.Settings, Existing().Settings);
    ASSERT_EQ(merged.Dates.size(), 3u);
    const CalendarFileDate& fifth = merged.Dates[0];
    EXPECT_EQ(fifth.Entry.Title.Trimmed(), "Back to work; Sprint starts");
    EXPECT_EQ(fifth.Entry.BackColour, (ColourChoice{0, 40, 0, false, true}));
    ASSERT_EQ(fifth.Schedule.size(), 3u);
    EXPECT_EQ(fifth.Schedule[0].Description.Trimmed(), "Stand-up");
    EXPECT_EQ(fifth.Schedule[1].Description.Trimmed(), "Gym");
    EXPECT_EQ(fifth.Schedule[2].Description.Trimmed(), "Review");
    EXPECT_EQ(fifth.Note, "Water the plants\r\nPlan the sprint");
    EXPECT_EQ(merged.Dates[1].Entry.Title.Trimmed(), "Epiphany");
    EXPECT_EQ(merged.Dates[2], Existing().Dates[1]);

    // Merging the same events again changes nothing.
    run = RunCal({"import", Path("in.ics"), "--year", "2026", "--into", Path("merged.cal"), "-o",
                  Path("again.cal")});
    ASSERT_EQ(run.Status, kDone);
    EXPECT_EQ(testing::ReadBytes(Path("again.cal")), testing::ReadBytes(Path("merged.cal")));
}

TEST_F(ImportCommand, MergesIntoTheExistingFileItselfOnlyWithForce) {
    ASSERT_TRUE(testing::WriteCalendar(Path("mine.cal"), Existing()));
    const QStringList words = {"import", CalData("over_midnight.ics"),
                               "--year", "2026",
                               "--into", Path("mine.cal"),
                               "-o",     Path("mine.cal")};
    EXPECT_EQ(RunCal(words).Status, kFileProblem);
    EXPECT_EQ(RunCal(words + QStringList{"--force"}).Status, kDone);
    const CalendarFileContent merged =
        testing::ReadCalendarBytes(testing::ReadBytes(Path("mine.cal")));
    EXPECT_EQ(merged.Dates.size(), 6u);
}

TEST_F(ImportCommand, WritesNothingWhenTheCalendarToMergeIntoIsDamaged) {
    const QString damaged = testing::StoreData("damaged/year_not_a_number.line-2.cal");
    const CalRun run = RunCal({"import", CalData("over_midnight.ics"), "--year", "2026", "--into",
                               damaged, "-o", Path("out.cal")});
    EXPECT_EQ(run.Status, kFileProblem);
    EXPECT_EQ(run.Err, "kelvane-cal: " + damaged + ": line 2: a number was expected\n");
    EXPECT_FALSE(QFileInfo::exists(Path("out.cal")));
}

// A calendar file laid out as a leap year or not, with 1 January on `firstDay`
// (1 = Sunday).
CalendarFileContent LaidOut(bool leap, qint16 firstDay) {
    CalendarFileContent content;
    content.Settings.Year = leap ? 1 : -1;
    content.Settings.FirstDay = firstDay;
    return content;
}

TEST_F(ImportCommand, WarnsWhenTheCalendarMergedIntoShowsOtherWeekdays) {
    struct Layout {
        const char* what;
        CalendarFileContent content;
        QString from;  // the first date whose weekday differs; empty for none
    };
    const std::vector<Layout> layouts = {
        {"2024's own", LaidOut(true, 2), "1 January"},
        {"2026 as Kelvane saves it", LaidOut(true, 5), "1 March"},
        {"2026's own", LaidOut(false, 5), ""},
    };
    for (const Layout& layout : layouts) {
        SCOPED_TRACE(layout.what);
        ASSERT_TRUE(testing::WriteCalendar(Path("mine.cal"), layout.content));
        const CalRun run =
            RunCal({"import", CalData("over_midnight.ics"), "--year", "2026", "--into",
                    Path("mine.cal"), "-o", Path("merged.cal"), "--force"});
        ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
        const QString warning =
            QStringLiteral(
                "kelvane-cal: warning: %1: it lays out a%2 with 1 January a %3, so "
                "from %4 on the weekdays shown for it differ from those of 2026\n")
                .arg(Path("mine.cal"),
                     layout.content.Settings.Year > 0 ? " leap year" : " year that is not leap",
                     layout.content.Settings.FirstDay == 2 ? "Monday" : "Thursday", layout.from);
        if (layout.from.isEmpty()) {
            EXPECT_FALSE(run.Err.contains("lays out")) << run.Err.toStdString();
        } else {
            EXPECT_TRUE(run.Err.startsWith(warning)) << run.Err.toStdString();
        }
    }
}

}  // namespace
}  // namespace kelvane::cal
