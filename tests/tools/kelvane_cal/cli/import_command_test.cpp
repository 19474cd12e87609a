#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include "fixtures/CalRun.h"
#include "fixtures/ImportCommand.h"

namespace kelvane::cal {
namespace {

using testing::CalData;
using testing::CalRun;
using testing::ImportCommand;
using testing::RunCal;

TEST_F(ImportCommand, TurnsTheSampleFilesIntoTheExpectedCalendarsByteForByte) {
    for (const QString name :
         {"weekly_meetings", "all_day_events", "over_midnight", "time_zones"}) {
        SCOPED_TRACE(name.toStdString());
        const CalRun run = RunCal({"import", CalData(name + ".ics"), "--year", "2026", "--timezone",
                                   "Europe/London", "-o", Path(name + ".cal")});
        EXPECT_EQ(run.Status, kDone) << run.Err.toStdString();
        EXPECT_EQ(testing::ReadBytes(Path(name + ".cal")),
                  testing::ReadBytes(CalData(name + ".expected.cal")));
        EXPECT_EQ(RunCal({"check", Path(name + ".cal")}).Status, kDone);
    }
}

TEST_F(ImportCommand, SaysWhatItReadAndWhatItCut) {
    const CalRun run =
        RunCal({"import", CalData("all_day_events.ics"), "--year", "2026", "-o", Path("out.cal")});
    EXPECT_EQ(run.Out, "");
    EXPECT_EQ(run.Err, "kelvane-cal: warning: " + CalData("all_day_events.ics") +
                           ": 10 June: the note was cut to 800 characters\n" +
                           CalData("all_day_events.ics") +
                           ": 6 events read; 7 occurrences in 2026 on 6 dates\n");
}

TEST_F(ImportCommand, TakesOnlyTheEventsOfTheYearAsked) {
    const CalRun run = RunCal({"import", CalData("weekly_meetings.ics"), "--year", "2025",
                               "--timezone", "UTC", "-o", Path("2025.cal")});
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    const CalendarFileContent content =
        testing::ReadCalendarBytes(testing::ReadBytes(Path("2025.cal")));
    ASSERT_EQ(content.Dates.size(), 2u);
    EXPECT_EQ(content.Dates[0].Day, 15);
    EXPECT_EQ(content.Dates[1].Day, 29);
    EXPECT_EQ(content.Dates[1].Schedule[0].Description.Trimmed(), "Fortnightly review");
    EXPECT_EQ(content.Settings.Year, -2025);
    EXPECT_EQ(content.Settings.FirstDay, 4);  // 1 January 2025 is a Wednesday
}

TEST_F(ImportCommand, ReplacesAFileOnlyWithForce) {
    ASSERT_TRUE(testing::WriteBytes(Path("out.cal"), "keep me"));
    CalRun run =
        RunCal({"import", CalData("over_midnight.ics"), "--year", "2026", "-o", Path("out.cal")});
    EXPECT_EQ(run.Status, kFileProblem);
    EXPECT_EQ(run.Err,
              "kelvane-cal: " + Path("out.cal") + ": already exists; add --force to replace it\n");
    EXPECT_EQ(testing::ReadBytes(Path("out.cal")), "keep me");
    run = RunCal({"import", CalData("over_midnight.ics"), "--year", "2026", "-o", Path("out.cal"),
                  "--force"});
    EXPECT_EQ(run.Status, kDone);
    EXPECT_EQ(RunCal({"check", Path("out.cal")}).Status, kDone);
}

TEST_F(ImportCommand, WritesTheCalendarToTheStandardOutputWithoutAFileName) {
    const CalRun run = RunCal({"import", CalData("over_midnight.ics"), "--year", "2026"});
    EXPECT_EQ(run.Status, kDone);
    EXPECT_TRUE(run.Out.startsWith("Marrowby Kelvane 2000 File\r\n-2026 \r\n 5 \r\n"));
}

TEST_F(ImportCommand, ReadsTheStandardInputForADash) {
    QFile input(CalData("over_midnight.ics"));
    ASSERT_TRUE(input.open(QIODevice::ReadOnly));
    Environment environment = testing::FixedEnvironment();
    environment.StandardInput = &input;
    CalRun run;
    QTextStream out(&run.Out);
    QTextStream err(&run.Err);
    run.Status = RunCommand({"import", "-", "--year", "2026", "--timezone", "Europe/London", "-o",
                             Path("over_midnight.cal")},
                            environment, out, err);
    err.flush();
    EXPECT_EQ(run.Status, kDone) << run.Err.toStdString();
    EXPECT_TRUE(run.Err.startsWith("standard input: ")) << run.Err.toStdString();
    EXPECT_EQ(testing::ReadBytes(Path("over_midnight.cal")),
              testing::ReadBytes(CalData("over_midnight.expected.cal")));
}

// The program itself, its standard input a pipe that cannot be read twice.
TEST_F(ImportCommand, TheProgramReadsAPipedCalendarForADash) {
    QProcess import;
    import.start(QStringLiteral(KELVANE_CAL_BINARY),
                 {"import", "-", "--year", "2026", "--timezone", "Europe/London"});
    ASSERT_TRUE(import.waitForStarted());
    import.write(testing::ReadBytes(CalData("over_midnight.ics")));
    import.closeWriteChannel();
    ASSERT_TRUE(import.waitForFinished(30000));
    EXPECT_EQ(import.exitCode(), kDone) << import.readAllStandardError().toStdString();
    EXPECT_EQ(import.readAllStandardOutput(),
              testing::ReadBytes(CalData("over_midnight.expected.cal")));
}

// A .PP inside a command's entry would end the entry and push the rest of it
// out to the left margin.
TEST_F(ImportCommand, TheManualKeepsEveryParagraphOfACommandInItsEntry) {
    const QByteArray manual = testing::ReadBytes(
        QStringLiteral(KELVANE_CAL_DATA_DIR "/../../../../../packaging/kelvane-cal.1"));
    const qsizetype start = manual.indexOf("\n.SH COMMANDS\n");
    ASSERT_GE(start, 0);
    const QByteArray commands = manual.mid(start + 1, manual.indexOf("\n.SH ", start + 1) - start);
    EXPECT_TRUE(commands.contains("\n.BI import \" in.ics\"\n"));
    for (const QByteArray& line : commands.split('\n')) {
        EXPECT_FALSE(line == ".PP" || line == ".P" || line == ".LP") << line.toStdString();
    }
}

TEST_F(ImportCommand, RefusesBadWords) {
    for (const QStringList& words :
         {QStringList{"import", CalData("over_midnight.ics")},
          QStringList{"import", "--year", "2026"},
          QStringList{"import", CalData("over_midnight.ics"), "--year", "2026", "--timezone",
                      "Mars/Olympus"},
          QStringList{"import", CalData("over_midnight.ics"), "--year", "20x6"},
          QStringList{"import", CalData("over_midnight.ics"), "--year", "1901"},
          QStringList{"import", CalData("over_midnight.ics"), "--year", "9999"}}) {
        const CalRun run = RunCal(words);
        EXPECT_EQ(run.Status, kUsageError) << words.join(' ').toStdString();
        EXPECT_TRUE(run.Err.endsWith("Try 'kelvane-cal import --help'.\n"));
    }
    const CalRun missing = RunCal({"import", Path("nowhere.ics"), "--year", "2026"});
    EXPECT_EQ(missing.Status, kFileProblem);
    EXPECT_EQ(missing.Err,
              "kelvane-cal: " + Path("nowhere.ics") + ": cannot be read: no such file\n");
}

TEST_F(ImportCommand, HasHelp) {
    const CalRun run = RunCal({"import", "--help"});
    EXPECT_EQ(run.Status, kDone);
    EXPECT_TRUE(run.Out.startsWith("usage: kelvane-cal import IN.ics --year YYYY"));
}

TEST_F(ImportCommand, SaysWhenTheInputIsNoRegularFile) {
    const CalRun run = RunCal({"import", "/dev/null", "--year", "2026", "-o", Path("out.cal")});
    EXPECT_EQ(run.Status, kFileProblem);
    EXPECT_EQ(run.Err, "kelvane-cal: /dev/null: is not a regular file\n");
    EXPECT_FALSE(QFileInfo::exists(Path("out.cal")));
}

TEST_F(ImportCommand, SaysAFolderIsAFolder) {
    const CalRun run = RunCal({"import", folder_.path(), "--year", "2026", "-o", Path("out.cal")});
    EXPECT_EQ(run.Status, kFileProblem);
    EXPECT_EQ(run.Err, "kelvane-cal: " + folder_.path() + ": is a folder, not an iCalendar file\n");
    EXPECT_FALSE(QFileInfo::exists(Path("out.cal")));
}

}  // namespace
}  // namespace kelvane::cal
