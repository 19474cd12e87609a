#include <gtest/gtest.h>

#include "fixtures/CalRun.h"

namespace kelvane::cal {
namespace {

using testing::CalRun;
using testing::RunCal;
using testing::StoreData;

TEST(ShowCommand, PrintsEveryDateWithContentInCalendarOrder) {
    const QString name = StoreData("known_document.cal");
    const CalRun run = RunCal({"show", name});
    EXPECT_EQ(run.Status, kDone);
    EXPECT_EQ(run.Err, "");
    EXPECT_EQ(run.Out,
              name + QStringLiteral(": a leap year, 1 January a Saturday\n"
                                    "Saturday 1 January: New Year\n"
                                    "  text colour: red (255, 0, 0)\n"
                                    "  back colour: the grid's own, red +10, green -10, blue +5\n"
                                    "  08:00-09:00 Breakfast\n"
                                    "  13:00       Nap\n"
                                    "Sunday 2 January: Leading blanks\n"
                                    "  note:\n"
                                    "    One line note\n"
                                    "Tuesday 29 February\n"
                                    "  note:\n"
                                    "    a\n"
                                    "    b\n"
                                    "    c\n"
                                    "Wednesday 15 March\n"
                                    "  note:\n"
                                    "    ends with a break\n"
                                    "    \n"
                                    "Tuesday 4 July: Gap\n"
                                    "Sunday 31 December: Year end\n"
                                    "  text colour: the grid's own\n"
                                    "  back colour: the grid's own\n"
                                    "  23:30-00:30 Party\n"));
}

CalendarFileContent ShuffledDay() {
    CalendarFileContent content;
    content.Settings.Year = -1;  // not leap
    content.Settings.FirstDay = 5;
    CalendarFileDate date;
    date.Month = 3;
    date.Day = 1;
    date.Entry.Title = "Busy";
    date.Schedule = {testing::Activity("Late", {17, 5}, {-1, 0}),
                     testing::Activity("Early", {7, 0}, {7, 45}),
                     testing::Activity("Noon", {12, 0}, {13, 0})};
    content.Dates = {date};
    return content;
}

TEST(ShowCommand, SortsActivitiesByStartAndCountsWeekdaysInTheFilesYear) {
    QTemporaryDir folder;
    const QString name = folder.filePath("busy.cal");
    ASSERT_TRUE(testing::WriteCalendar(name, ShuffledDay()));
    const CalRun run = RunCal({"show", name});
    // 1 January a Thursday and February of 28 days put 1 March on a Sunday.
    EXPECT_EQ(run.Out, name +
                           ": a year that is not leap, 1 January a Thursday\n"
                           "Sunday 1 March: Busy\n"
                           "  07:00-07:45 Early\n"
                           "  12:00-13:00 Noon\n"
                           "  17:05       Late\n");
}

TEST(ShowCommand, ShowsOneMonthOnAsk) {
    const QString name = StoreData("known_document.cal");
    const CalRun run = RunCal({"show", name, "--month", "12"});
    EXPECT_EQ(run.Status, kDone);
    EXPECT_EQ(run.Out.count('\n'), 5);
    EXPECT_TRUE(run.Out.contains("Sunday 31 December: Year end\n"));
    EXPECT_FALSE(run.Out.contains("New Year"));
}

TEST(ShowCommand, RefusesABadMonthOrAnyNumberOfFilesButOne) {
    for (const QStringList& words : {QStringList{"show"}, QStringList{"show", "a.cal", "b.cal"},
                                     QStringList{"show", "a.cal", "--month", "13"},
                                     QStringList{"show", "a.cal", "--month", "0"},
                                     QStringList{"show", "a.cal", "--month", "May"}}) {
        const CalRun run = RunCal(words);
        EXPECT_EQ(run.Status, kUsageError) << words.join(' ').toStdString();
        EXPECT_TRUE(run.Err.endsWith("Try 'kelvane-cal show --help'.\n"));
        EXPECT_EQ(run.Out, "");
    }
}

TEST(ShowCommand, NamesTheBadLineOfADamagedFile) {
    const QString name = StoreData("damaged/font_size_not_a_number.line-7.cal");
    const CalRun run = RunCal({"show", name});
    EXPECT_EQ(run.Status, kFileProblem);
    EXPECT_EQ(run.Out, "");
    EXPECT_EQ(run.Err, "kelvane-cal: " + name + ": line 7: a number was expected\n");
}

TEST(ShowCommand, HasHelp) {
    const CalRun run = RunCal({"show", "--help"});
    EXPECT_EQ(run.Status, kDone);
    EXPECT_TRUE(run.Out.startsWith("usage: kelvane-cal show FILE [--month M]\n"));
}

}  // namespace
}  // namespace kelvane::cal
