#include <gtest/gtest.h>

#include <QFileInfo>

#include "fixtures/CalRun.h"
#include "fixtures/ExportSample.h"
#include "kelvane_cal/ical/ICalExport.h"

namespace kelvane::cal {
namespace {

using testing::CalRun;
using testing::EventsOf;
using testing::RunCal;
using testing::SampleCalendar;
using testing::Uid;

class ExportCommand : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(folder_.isValid());
        ASSERT_TRUE(testing::WriteCalendar(Path("plans.cal"), SampleCalendar()));
    }
    QString Path(const QString& name) const { return folder_.filePath(name); }

    QTemporaryDir folder_;
};

TEST_F(ExportCommand, WritesTheFileAndSaysWhatItHolds) {
    const CalRun run =
        RunCal({"export", Path("plans.cal"), "--year", "2027", "-o", Path("out.ics")});
    EXPECT_EQ(run.Status, kDone);
    // Like the import's, the summary goes to the standard error.
    EXPECT_EQ(run.Out, "");
    EXPECT_EQ(run.Err,
              "kelvane-cal: warning: " + Path("plans.cal") +
                  ": 29 February is left out: 2027 has no 29 February\n"
                  "kelvane-cal: warning: " +
                  Path("plans.cal") +
                  ": 1 June: activity 3 (\"Broken\") starts at 24:10, which is no time of day; "
                  "left out\n" +
                  Path("out.ics") + ": 2 all-day and 3 timed events\n");
    EXPECT_EQ(EventsOf(testing::ReadBytes(Path("out.ics"))).size(), 5u);
}

TEST_F(ExportCommand, WritesToTheStandardOutputWithoutAFileName) {
    const CalRun run = RunCal({"export", Path("plans.cal"), "--year", "2028"});
    EXPECT_EQ(run.Status, kDone);
    EXPECT_TRUE(run.Out.startsWith("BEGIN:VCALENDAR\r\n"));
    EXPECT_EQ(EventsOf(run.Out.toUtf8()).size(), 6u);
    EXPECT_TRUE(run.Err.endsWith("\nstandard output: 3 all-day and 3 timed events\n"))
        << run.Err.toStdString();
}

TEST_F(ExportCommand, ReplacesAFileOnlyWithForce) {
    ASSERT_TRUE(testing::WriteBytes(Path("out.ics"), "keep me"));
    CalRun run = RunCal({"export", Path("plans.cal"), "--year", "2027", "-o", Path("out.ics")});
    EXPECT_EQ(run.Status, kFileProblem);
    EXPECT_EQ(run.Err,
              "kelvane-cal: " + Path("out.ics") + ": already exists; add --force to replace it\n");
    EXPECT_EQ(testing::ReadBytes(Path("out.ics")), "keep me");

    run = RunCal({"export", Path("plans.cal"), "--year", "2027", "-o", Path("out.ics"), "--force"});
    EXPECT_EQ(run.Status, kDone);
    EXPECT_TRUE(testing::ReadBytes(Path("out.ics")).startsWith("BEGIN:VCALENDAR"));
}

TEST_F(ExportCommand, WritesNothingForADamagedFile) {
    const QString damaged = testing::StoreData("damaged/cut_inside_an_entry.line-56.cal");
    const CalRun run = RunCal({"export", damaged, "--year", "2027", "-o", Path("out.ics")});
    EXPECT_EQ(run.Status, kFileProblem);
    EXPECT_EQ(run.Err, "kelvane-cal: " + damaged + ": line 56: the file ends early\n");
    EXPECT_FALSE(QFileInfo::exists(Path("out.ics")));
}

TEST_F(ExportCommand, WantsAYear) {
    for (const QStringList& words : {QStringList{"export", Path("plans.cal")},
                                     QStringList{"export", Path("plans.cal"), "--year", "0"},
                                     QStringList{"export", Path("plans.cal"), "--year", "10000"},
                                     QStringList{"export", "--year", "2026"}}) {
        const CalRun run = RunCal(words);
        EXPECT_EQ(run.Status, kUsageError) << words.join(' ').toStdString();
        EXPECT_TRUE(run.Err.endsWith("Try 'kelvane-cal export --help'.\n"));
    }
}

TEST_F(ExportCommand, WritesAYearAfter3000ThatAnImportReadsBack) {
    CalRun run = RunCal({"export", Path("plans.cal"), "--year", "3001", "-o", Path("out.ics")});
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    EXPECT_FALSE(testing::ReadBytes(Path("out.ics")).contains("00000000"));
    run = RunCal({"import", Path("out.ics"), "--year", "3001", "-o", Path("back.cal")});
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    const CalendarFileContent back =
        testing::ReadCalendarBytes(testing::ReadBytes(Path("back.cal")));
    ASSERT_FALSE(back.Dates.empty());
    EXPECT_EQ(back.Dates[0].Entry.Title.Trimmed(), "New Year");
    ASSERT_EQ(back.Dates[0].Schedule.size(), 2u);
    EXPECT_EQ(back.Dates[0].Schedule[0].StartTime, (ClockTime{11, 0}));
}

TEST_F(ExportCommand, HasHelp) {
    const CalRun run = RunCal({"export", "--help"});
    EXPECT_EQ(run.Status, kDone);
    EXPECT_TRUE(run.Out.startsWith("usage: kelvane-cal export FILE --year YYYY"));
    EXPECT_TRUE(run.Out.contains("--uid-seed TEXT"));
}

// Two files of the same name in different folders, as a user keeps them.
TEST_F(ExportCommand, GivesFilesOfTheSameNameUidsOfTheirOwnWithASeed) {
    ASSERT_TRUE(QDir(Path("")).mkpath("work"));
    ASSERT_TRUE(QDir(Path("")).mkpath("home"));
    ASSERT_TRUE(testing::WriteCalendar(Path("work/plans.cal"), SampleCalendar()));
    ASSERT_TRUE(testing::WriteCalendar(Path("home/plans.cal"), SampleCalendar()));
    const CalRun work = RunCal({"export", Path("work/plans.cal"), "--year", "2028"});
    const CalRun home = RunCal({"export", Path("home/plans.cal"), "--year", "2028"});
    EXPECT_EQ(work.Out, home.Out) << "the name without its folder is the seed by default";

    const CalRun seeded = RunCal(
        {"export", Path("work/plans.cal"), "--year", "2028", "--uid-seed", "work/plans.cal"});
    EXPECT_EQ(seeded.Status, kDone);
    auto events = EventsOf(seeded.Out.toUtf8());
    EXPECT_EQ(events.size(), 6u);
    EXPECT_EQ(events.count(EventUid("work/plans.cal", 2028, 1, 1, 0)), 1u);
    EXPECT_EQ(events.count(Uid(2028, 1, 1, 0)), 0u);
}

TEST_F(ExportCommand, WantsASeedThatIsNotBlank) {
    const CalRun run = RunCal({"export", Path("plans.cal"), "--year", "2028", "--uid-seed", " "});
    EXPECT_EQ(run.Status, kUsageError);
    EXPECT_EQ(run.Err,
              "kelvane-cal: --uid-seed takes a text that is not blank\n"
              "Try 'kelvane-cal export --help'.\n");
}

// Blanks of any kind between words become one space, and roff's markup goes.
QString Words(QString text) {
    text.replace(QStringLiteral("\\-"), QStringLiteral("-"));
    QStringList kept;
    for (const QString& line : text.split(QLatin1Char('\n'))) {
        if (!line.startsWith(QLatin1Char('.'))) {
            kept << line;
        }
    }
    return kept.join(QLatin1Char(' ')).simplified();
}

TEST_F(ExportCommand, HelpReadmeAndManualSayTheSameAboutAllDayEvents) {
    const QString rule = QStringLiteral(
        "an all-day event for each date with a title or a note (the title is its summary, the "
        "note its description)");
    const QString sources = QStringLiteral(KELVANE_CAL_DATA_DIR "/../../../../../");
    EXPECT_TRUE(Words(RunCal({"export", "--help"}).Out).contains(rule));
    EXPECT_TRUE(Words(QString::fromUtf8(testing::ReadBytes(sources + "README.md"))).contains(rule));
    EXPECT_TRUE(Words(QString::fromUtf8(testing::ReadBytes(sources + "packaging/kelvane-cal.1")))
                    .contains(rule));
}

// Each text that names the years export and publish take says the same, once.
TEST_F(ExportCommand, HelpReadmeAndManualGiveTheYearsItTakesOnce) {
    const QString years = ExportYears();
    EXPECT_EQ(years, "1 to 9999");
    const QString option = "the year the dates are put in (" + years + ")";
    EXPECT_TRUE(Words(RunCal({"export", "--help"}).Out).contains(option));
    EXPECT_TRUE(Words(RunCal({"publish", "--help"}).Out).contains(option));
    EXPECT_TRUE(RunCal({"export", Path("plans.cal"), "--year", "10000"})
                    .Err.startsWith("kelvane-cal: --year takes a year from " + years + "\n"));
    EXPECT_TRUE(RunCal({"publish", Path("plans.cal"), "--year", "0"})
                    .Err.startsWith("kelvane-cal: --year takes a year from " + years + "\n"));
    const QString sources = QStringLiteral(KELVANE_CAL_DATA_DIR "/../../../../../");
    for (const char* document : {"README.md", "packaging/kelvane-cal.1"}) {
        const QString text = Words(QString::fromUtf8(testing::ReadBytes(sources + document)));
        EXPECT_EQ(text.count(years), 1) << document;
    }
}

}  // namespace
}  // namespace kelvane::cal
