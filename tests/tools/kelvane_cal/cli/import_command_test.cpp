#include <gtest/gtest.h>

#include <QFileInfo>
#include <QProcess>

#include "fixtures/CalRun.h"

namespace kelvane::cal {
namespace {

using testing::CalData;
using testing::CalRun;
using testing::ICalLines;
using testing::RunCal;

class ImportCommand : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(folder_.isValid()); }
    QString Path(const QString& name) const { return folder_.filePath(name); }
    // Writes an iCalendar file of these lines and imports it into `out` for 2026.
    CalRun ImportLines(const QStringList& lines, const QString& out = "out.cal") {
        EXPECT_TRUE(testing::WriteBytes(Path("in.ics"), ICalLines(lines)));
        return RunCal({"import", Path("in.ics"), "--year", "2026", "-o", Path(out)});
    }

    QTemporaryDir folder_;
};

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

TEST_F(ImportCommand, KeepsTheThirtyNineEarliestActivitiesOfADate) {
    QStringList events;
    for (int i = 40; i >= 0; --i) {
        events << testing::VEvent(QStringLiteral("e%1").arg(i),
                                  {QStringLiteral("DTSTART:20260301T%1%2000")
                                       .arg(i / 4 + 6, 2, 10, QLatin1Char('0'))
                                       .arg((i % 4) * 15, 2, 10, QLatin1Char('0')),
                                   QStringLiteral("SUMMARY:Slot %1").arg(i)});
    }
    const CalRun run = ImportLines(testing::VCalendar(events));
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    EXPECT_TRUE(run.Err.contains("kelvane-cal: warning: " + Path("in.ics") +
                                 ": 1 March: 2 activities after the 39 earliest left out\n"));
    const CalendarFileContent content =
        testing::ReadCalendarBytes(testing::ReadBytes(Path("out.cal")));
    ASSERT_EQ(content.Dates.size(), 1u);
    const auto& schedule = content.Dates[0].Schedule;
    ASSERT_EQ(schedule.size(), 39u);
    EXPECT_EQ(schedule.front().Description.Trimmed(), "Slot 0");
    EXPECT_EQ(schedule.back().Description.Trimmed(), "Slot 38");
    EXPECT_EQ(schedule.back().StartTime, (ClockTime{15, 30}));
}

// Every other Monday and Thursday from 7 January 2019, and the last day of every
// month from January 2019: the rules run for years before the year asked.
TEST_F(ImportCommand, ExpandsRulesThatBeganYearsBefore) {
    const CalRun run = ImportLines(testing::VCalendar(
        testing::VEvent("a", {"DTSTART:20190107T090000", "RRULE:FREQ=WEEKLY;INTERVAL=2;BYDAY=MO,TH",
                              "SUMMARY:Fortnightly"}) +
        testing::VEvent("b", {"DTSTART;VALUE=DATE:20190131", "RRULE:FREQ=MONTHLY;BYMONTHDAY=-1",
                              "SUMMARY:Month end"})));
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    const CalendarFileContent content =
        testing::ReadCalendarBytes(testing::ReadBytes(Path("out.cal")));
    QStringList expected;
    QStringList found;
    const QDate first(2019, 1, 7);
    for (QDate date(2026, 1, 1); date.year() == 2026; date = date.addDays(1)) {
        const bool fortnightly =
            (first.daysTo(date) / 7) % 2 == 0 &&
            (date.dayOfWeek() == Qt::Monday || date.dayOfWeek() == Qt::Thursday);
        if (fortnightly || date.day() == date.daysInMonth()) {
            expected << date.toString("d/M");
        }
    }
    for (const CalendarFileDate& date : content.Dates) {
        found << QStringLiteral("%1/%2").arg(date.Day).arg(date.Month);
    }
    EXPECT_EQ(found, expected);
    EXPECT_EQ(expected.size(), 53 + 12 - 2);  // 30 November and 31 December are both
}

TEST_F(ImportCommand, JoinsTheTitlesOfOneDay) {
    const CalRun run = ImportLines(testing::VCalendar(
        testing::VEvent("a", {"DTSTART;VALUE=DATE:20260405", "SUMMARY:Easter"}) +
        testing::VEvent("b", {"DTSTART;VALUE=DATE:20260405", "SUMMARY:Lunch at Mum's"}) +
        testing::VEvent("c", {"DTSTART;VALUE=DATE:20260405", "SUMMARY:Easter"}) +
        testing::VEvent("d", {"DTSTART;VALUE=DATE:20260405", "DESCRIPTION:Bring eggs"})));
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    const CalendarFileContent content =
        testing::ReadCalendarBytes(testing::ReadBytes(Path("out.cal")));
    ASSERT_EQ(content.Dates.size(), 1u);
    EXPECT_EQ(content.Dates[0].Entry.Title.Trimmed(), "Easter; Lunch at Mum's");
    EXPECT_EQ(content.Dates[0].Note, "Bring eggs");
}

TEST_F(ImportCommand, LeavesOutEventsWithoutAStartAndSaysWhere) {
    const CalRun run = ImportLines(testing::VCalendar(
        testing::VEvent("a", {"SUMMARY:When?"}) + testing::VEvent("b", {"SUMMARY:Again?"}) +
        testing::VEvent("c", {"DTSTART:20260102T100000", "SUMMARY:Fine"})));
    ASSERT_EQ(run.Status, kDone);
    EXPECT_TRUE(run.Err.contains(
        Path("in.ics") + ": line 4: an event without DTSTART is left out (and 1 more like it)\n"))
        << run.Err.toStdString();
}

TEST_F(ImportCommand, TakesAnUnknownZoneAsLocalTime) {
    const CalRun run = ImportLines(testing::VCalendar(
        testing::VEvent("a", {"DTSTART;TZID=Atlantis/Capital:20260102T100000", "SUMMARY:Sunken"})));
    ASSERT_EQ(run.Status, kDone);
    EXPECT_TRUE(run.Err.contains(": line 4: a time zone nobody knows is taken as local time\n"));
    const CalendarFileContent content =
        testing::ReadCalendarBytes(testing::ReadBytes(Path("out.cal")));
    ASSERT_EQ(content.Dates.size(), 1u);
    EXPECT_EQ(content.Dates[0].Schedule[0].StartTime, (ClockTime{10, 0}));
}

TEST_F(ImportCommand, LeavesOutAStartThatIsNoDate) {
    const CalRun run =
        ImportLines(testing::VCalendar(testing::VEvent("a", {"DTSTART:20260231", "SUMMARY:x"})));
    ASSERT_EQ(run.Status, kDone);
    EXPECT_TRUE(run.Err.contains(": line 4: an event with an impossible start is left out\n"));
    EXPECT_TRUE(testing::ReadCalendarBytes(testing::ReadBytes(Path("out.cal"))).Dates.empty());
}

TEST_F(ImportCommand, DoesNotFollowRulesThatRepeatEverySecondOrMinute) {
    const CalRun run = ImportLines(testing::VCalendar(
        testing::VEvent("a", {"DTSTART:20260102T100000",
                              "RRULE:FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30", "SUMMARY:Never"}) +
        testing::VEvent("b", {"DTSTART:20260103T100000", "RRULE:FREQ=MINUTELY", "SUMMARY:Tick"})));
    ASSERT_EQ(run.Status, kDone);
    EXPECT_TRUE(
        run.Err.contains(": line 4: a rule that repeats every minute or second is not "
                         "followed (and 1 more like it)\n"))
        << run.Err.toStdString();
    const CalendarFileContent content =
        testing::ReadCalendarBytes(testing::ReadBytes(Path("out.cal")));
    ASSERT_EQ(content.Dates.size(), 2u);
    EXPECT_EQ(content.Dates[1].Schedule.size(), 1u);
}

TEST_F(ImportCommand, KeepsTheStepOfARuleThatRepeatsHourly) {
    const CalRun run = ImportLines(testing::VCalendar(testing::VEvent(
        "a", {"DTSTART:20251231T220000", "RRULE:FREQ=HOURLY;INTERVAL=5", "SUMMARY:Every five"})));
    ASSERT_EQ(run.Status, kDone);
    const CalendarFileContent content =
        testing::ReadCalendarBytes(testing::ReadBytes(Path("out.cal")));
    ASSERT_EQ(content.Dates.size(), 365u);
    QStringList starts;
    for (const Appointment& entry : content.Dates[0].Schedule) {
        starts << QStringLiteral("%1:%2").arg(entry.StartTime.Hour).arg(entry.StartTime.Minute);
    }
    EXPECT_EQ(starts, (QStringList{"3:0", "8:0", "13:0", "18:0", "23:0"}));
}

TEST_F(ImportCommand, PassesOverPropertiesWithoutAValue) {
    const CalRun run = ImportLines(testing::VCalendar(testing::VEvent(
        "a", {"DTSTART:20260102T100000", "DESCRIPTION:", "LOCATION:", "SUMMARY:Fine"})));
    EXPECT_EQ(run.Status, kDone) << run.Err.toStdString();
    EXPECT_FALSE(run.Err.contains("warning")) << run.Err.toStdString();
}

TEST_F(ImportCommand, LeavesOutOtherLinesLibicalCannotReadWithAWarning) {
    const CalRun run = ImportLines(testing::VCalendar(testing::VEvent(
        "a", {"DTSTART:20260102T100000", "DTEND:20260102T110000", "SUMMARY:Kept", "BEGIN:VALARM",
              "ACTION:DISPLAY", "TRIGGER:soon", "END:VALARM", "CLASS;=x:PUBLIC"})));
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    EXPECT_TRUE(
        run.Err.contains(": line 12: Can't parse as DURATION value in TRIGGER property. "
                         "Removing entire property: soon; the line is left out\n"))
        << run.Err.toStdString();
    EXPECT_TRUE(
        run.Err.contains(": line 14: Can't parse parameter name: =x; the line is left out\n"))
        << run.Err.toStdString();
    const CalendarFileContent content =
        testing::ReadCalendarBytes(testing::ReadBytes(Path("out.cal")));
    ASSERT_EQ(content.Dates.size(), 1u);
    EXPECT_EQ(content.Dates[0].Schedule[0].Description.Trimmed(), "Kept");
}

TEST_F(ImportCommand, MeasuresAnEventBetweenTwoZones) {
    const CalRun run = ImportLines(testing::VCalendar(
        testing::VEvent("a", {"DTSTART;TZID=America/New_York:20260310T090000",
                              "DTEND:20260310T140000Z", "SUMMARY:Ends in UTC"})));
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    const CalendarFileContent content =
        testing::ReadCalendarBytes(testing::ReadBytes(Path("out.cal")));
    ASSERT_EQ(content.Dates.size(), 1u);
    // 09:00 in New York is 13:00 UTC and in London, which is on GMT until 29 March.
    EXPECT_EQ(content.Dates[0].Schedule[0].StartTime, (ClockTime{13, 0}));
    EXPECT_EQ(content.Dates[0].Schedule[0].EndTime, (ClockTime{14, 0}));
}

TEST_F(ImportCommand, LeavesOutAnExceptionGivenInAZoneOfAFloatingSeries) {
    const CalRun run = ImportLines(testing::VCalendar(
        testing::VEvent("a", {"DTSTART:20260105T091500", "RRULE:FREQ=DAILY;COUNT=3",
                              "EXDATE;TZID=Europe/Paris:20260106T091500", "SUMMARY:Daily"})));
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    const CalendarFileContent content =
        testing::ReadCalendarBytes(testing::ReadBytes(Path("out.cal")));
    ASSERT_EQ(content.Dates.size(), 2u);
    EXPECT_EQ(content.Dates[0].Day, 5);
    EXPECT_EQ(content.Dates[1].Day, 7);
}

TEST_F(ImportCommand, PutsAnAllDayEventOnEveryDateItCoversInTheYear) {
    const CalRun run = ImportLines(testing::VCalendar(
        testing::VEvent(
            "a", {"DTSTART;VALUE=DATE:20200101", "DTEND;VALUE=DATE:20300101", "SUMMARY:Decade"}) +
        testing::VEvent("b", {"DTSTART;VALUE=DATE:20260601", "DURATION:P2D", "SUMMARY:Two days"}) +
        testing::VEvent("c",
                        {"DTSTART;VALUE=DATE:20260701", "RDATE;VALUE=PERIOD:20260801T090000/PT1H",
                         "SUMMARY:Also in August"})));
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    const CalendarFileContent content =
        testing::ReadCalendarBytes(testing::ReadBytes(Path("out.cal")));
    EXPECT_EQ(content.Dates.size(), 365u);
    QStringList titled;
    for (const CalendarFileDate& date : content.Dates) {
        if (date.Entry.Title.Trimmed() != "Decade") {
            titled << QStringLiteral("%1/%2 %3")
                          .arg(date.Day)
                          .arg(date.Month)
                          .arg(date.Entry.Title.Trimmed());
        }
    }
    EXPECT_EQ(titled, (QStringList{"1/6 Decade; Two days", "2/6 Decade; Two days",
                                   "1/7 Decade; Also in August", "1/8 Decade; Also in August"}));
}

TEST_F(ImportCommand, PutsZonedTimesIntoUtcWhenTheSystemsZoneIsUnknown) {
    ASSERT_TRUE(testing::WriteBytes(
        Path("in.ics"), ICalLines(testing::VCalendar(testing::VEvent(
                            "a", {"DTSTART;TZID=Asia/Tokyo:20260601T090000", "SUMMARY:x"})))));
    Environment environment = testing::FixedEnvironment();
    environment.SystemZone = "Nowhere/Special";
    QString out;
    QString err;
    QTextStream outStream(&out);
    QTextStream errStream(&err);
    const int status =
        RunCommand({"import", Path("in.ics"), "--year", "2026", "-o", Path("out.cal")}, environment,
                   outStream, errStream);
    errStream.flush();
    EXPECT_EQ(status, kDone);
    EXPECT_TRUE(
        err.startsWith("kelvane-cal: warning: libical does not know the system's time "
                       "zone 'Nowhere/Special'; times with a zone are put into UTC"))
        << err.toStdString();
    const CalendarFileContent content =
        testing::ReadCalendarBytes(testing::ReadBytes(Path("out.cal")));
    ASSERT_EQ(content.Dates.size(), 1u);
    EXPECT_EQ(content.Dates[0].Schedule[0].StartTime, (ClockTime{0, 0}));
}

TEST_F(ImportCommand, SaysSoForLinesThatEndInCarriageReturnsAlone) {
    ASSERT_TRUE(testing::WriteBytes(Path("in.ics"),
                                    "BEGIN:VCALENDAR\rBEGIN:VEVENT\rEND:VEVENT\r"
                                    "END:VCALENDAR\r"));
    const CalRun run = RunCal({"import", Path("in.ics"), "--year", "2026", "-o", Path("out.cal")});
    EXPECT_EQ(run.Status, kFileProblem);
    EXPECT_EQ(run.Err, "kelvane-cal: " + Path("in.ics") +
                           ": line 1: the lines end in CR alone; save the file with CR LF or LF "
                           "line ends; nothing was written\n");
}

// The first bytes of a program: a CR among them makes no file of CR line ends.
TEST_F(ImportCommand, SaysABinaryFileIsNoICalendarFile) {
    // The start of a program, with a CR and a CR LF among its bytes.
    static const char kProgram[] =
        "\x7f"
        "ELF\x02\x01\x01\x00\x00\x00\r\x00\x03\x00>\x00\x01\xf0=\r\n\x00@";
    const QByteArray binary(kProgram, sizeof kProgram - 1);
    ASSERT_TRUE(testing::WriteBytes(Path("program"), binary));
    const CalRun run = RunCal({"import", Path("program"), "--year", "2026", "-o", Path("out.cal")});
    EXPECT_EQ(run.Status, kFileProblem);
    EXPECT_EQ(run.Err, "kelvane-cal: " + Path("program") +
                           ": line 1: not an iCalendar file: it does not start with "
                           "BEGIN:VCALENDAR; nothing was written\n");
    EXPECT_FALSE(QFileInfo::exists(Path("out.cal")));
}

TEST_F(ImportCommand, NamesAFileWhoseNameLooksLikeAPlaceholder) {
    ASSERT_TRUE(testing::WriteBytes(Path("a%1%2.ics"), "nothing\r\n"));
    const CalRun run = RunCal({"import", Path("a%1%2.ics"), "--year", "2026"});
    EXPECT_EQ(run.Err, "kelvane-cal: " + Path("a%1%2.ics") +
                           ": line 1: not an iCalendar file: it does not start with "
                           "BEGIN:VCALENDAR; nothing was written\n");
}

struct Rejected {
    const char* what;
    QStringList lines;
    int line;
    QString problem;
};

TEST_F(ImportCommand, RefusesWhatLibicalRejectsNamingTheLineAndWritesNothing) {
    const std::vector<Rejected> cases = {
        {"a bad date", testing::VCalendar(testing::VEvent("a", {"DTSTART:soon", "SUMMARY:x"})), 7,
         "the DTSTART value 'soon' is not a date or a date and time"},
        {"a bad rule",
         testing::VCalendar(
             testing::VEvent("a", {"DTSTART:20260102T100000", "RRULE:FREQ=SOMETIMES"})),
         8, "the RRULE value 'FREQ=SOMETIMES' is not a repeat rule"},
        {"an empty start", testing::VCalendar(testing::VEvent("a", {"DTSTART:", "SUMMARY:x"})), 7,
         "the DTSTART value '' is not a date or a date and time"},
        {"a line without a name",
         testing::VCalendar(
             testing::VEvent("a", {"DTSTART:20260102T100000", "just words", "SUMMARY:x"})),
         8, "the line 'just words' is neither a property nor a BEGIN or END"},
        {"a bad parameter",
         testing::VCalendar(testing::VEvent("a", {"DTSTART;=x:20260102T100000"})), 7,
         "the parameters of DTSTART cannot be read: '=x'"},
        {"no calendar",
         {"BEGIN:VEVENT", "END:VEVENT"},
         1,
         "not an iCalendar file: it does not start with BEGIN:VCALENDAR"},
        {"an empty file", {""}, 1, "not an iCalendar file: there is no BEGIN:VCALENDAR"},
        {"an unclosed event", QStringList{"BEGIN:VCALENDAR", "BEGIN:VEVENT", "UID:a", "SUMMARY:x"},
         4, "the file ends inside the VEVENT begun on line 2"},
        {"an unclosed calendar", QStringList{"BEGIN:VCALENDAR", "VERSION:2.0"}, 2,
         "the file ends before END:VCALENDAR"},
        {"crossed ends",
         testing::VCalendar({"BEGIN:VEVENT", "BEGIN:VALARM", "END:VEVENT", "END:VALARM"}), 6,
         "END:VEVENT does not close the VALARM begun on line 5"},
        {"an end without a begin", testing::VCalendar({"END:VTODO"}), 4,
         "END:VTODO without its BEGIN"},
        {"text after the end", testing::VCalendar({}) + QStringList{"trailing"}, 5,
         "there is text after END:VCALENDAR"},
    };
    for (const Rejected& rejected : cases) {
        SCOPED_TRACE(rejected.what);
        const CalRun run = ImportLines(rejected.lines);
        EXPECT_EQ(run.Status, kFileProblem);
        EXPECT_EQ(run.Err, QStringLiteral("kelvane-cal: %1: line %2: %3; nothing was written\n")
                               .arg(Path("in.ics"))
                               .arg(rejected.line)
                               .arg(rejected.problem));
        EXPECT_FALSE(QFileInfo::exists(Path("out.cal")));
        EXPECT_EQ(run.Out, "");
    }
}

TEST_F(ImportCommand, FindsTheLineOfAnErrorAfterFoldedLines) {
    const CalRun run = ImportLines(testing::VCalendar(testing::VEvent(
        "a", {"SUMMARY:A long", " summary folded", "\tover three lines", "DTEND:tomorrow"})));
    EXPECT_EQ(run.Status, kFileProblem);
    EXPECT_TRUE(run.Err.contains(": line 10: the DTEND value 'tomorrow' is not a date"))
        << run.Err.toStdString();
}

TEST_F(ImportCommand, ReadsAByteOrderMarkAndBareLineFeeds) {
    ASSERT_TRUE(
        testing::WriteBytes(Path("in.ics"),
                            "\xEF\xBB\xBF"
                            "BEGIN:VCALENDAR\nBEGIN:VEVENT\nUID:a\nDTSTART:20260102T100000\n"
                            "SUMMARY:Fine\nEND:VEVENT\nEND:VCALENDAR\n\n"));
    const CalRun run = RunCal({"import", Path("in.ics"), "--year", "2026", "-o", Path("out.cal")});
    EXPECT_EQ(run.Status, kDone) << run.Err.toStdString();
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

// The one date of month `month` and day `day` in an imported calendar file.
CalendarFileDate DateIn(const QString& fileName, int month, int day) {
    for (const CalendarFileDate& date :
         testing::ReadCalendarBytes(testing::ReadBytes(fileName)).Dates) {
        if (date.Month == month && date.Day == day) {
            return date;
        }
    }
    ADD_FAILURE() << "no " << day << "/" << month << " in " << fileName.toStdString();
    return {};
}

TEST_F(ImportCommand, KeepsValuesThatEndInAColon) {
    const QString input = CalData("reader_values_ending_in_colon.ics");
    const CalRun run = RunCal({"import", input, "--year", "2026", "-o", Path("out.cal")});
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    EXPECT_EQ(run.Err, input + ": 3 events read; 3 occurrences in 2026 on 3 dates\n");
    const CalendarFileDate todo = DateIn(Path("out.cal"), 3, 2);
    EXPECT_EQ(todo.Entry.Title.Trimmed(), "To do:");
    EXPECT_EQ(todo.Note, "Items:");
    const CalendarFileDate agenda = DateIn(Path("out.cal"), 3, 3);
    ASSERT_EQ(agenda.Schedule.size(), 1u);
    EXPECT_EQ(agenda.Schedule[0].Description.Trimmed(), "Agenda:");
    const CalendarFileDate review = DateIn(Path("out.cal"), 3, 4);
    EXPECT_EQ(review.Entry.Title.Trimmed(), "Review");
    EXPECT_EQ(review.Note, "text");
}

// The two warnings an RDATE and an EXDATE without dates give, followed by
// the import's summary line.
QString NoDatesWarnings(const QString& input, const QString& summary) {
    return "kelvane-cal: warning: " + input +
           ": line 9: RDATE has no value; the line is left out\n"
           "kelvane-cal: warning: " +
           input + ": line 10: EXDATE has no value; the line is left out\n" + input + ": " +
           summary + "\n";
}

TEST_F(ImportCommand, PassesOverAnEmptyRdateOrExdateWithAWarning) {
    const QString input = CalData("reader_empty_dates.ics");
    const CalRun run = RunCal({"import", input, "--year", "2026", "-o", Path("out.cal")});
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    EXPECT_EQ(run.Err, NoDatesWarnings(input, "1 event read; 3 occurrences in 2026 on 3 dates"));
    const CalendarFileContent content =
        testing::ReadCalendarBytes(testing::ReadBytes(Path("out.cal")));
    ASSERT_EQ(content.Dates.size(), 3u);
    EXPECT_EQ(content.Dates[2].Day, 19);
}

TEST_F(ImportCommand, PassesOverAnRdateOrExdateOfBlanksAlone) {
    const QString input = CalData("reader_blank_dates.ics");
    const CalRun run = RunCal({"import", input, "--year", "2026", "-o", Path("out.cal")});
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    EXPECT_EQ(run.Err, NoDatesWarnings(input, "1 event read; 1 occurrence in 2026 on 1 date"));
}

TEST_F(ImportCommand, SaysWhenTheInputIsNoRegularFile) {
    const CalRun run = RunCal({"import", "/dev/null", "--year", "2026", "-o", Path("out.cal")});
    EXPECT_EQ(run.Status, kFileProblem);
    EXPECT_EQ(run.Err, "kelvane-cal: /dev/null: is not a regular file\n");
    EXPECT_FALSE(QFileInfo::exists(Path("out.cal")));
}

TEST_F(ImportCommand, SkipsBlankLinesInsideFoldedLinesWithOneWarning) {
    const QString input = CalData("reader_blank_lines_in_folds.ics");
    const CalRun run = RunCal({"import", input, "--year", "2026", "-o", Path("out.cal")});
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    EXPECT_EQ(run.Err, "kelvane-cal: warning: " + input +
                           ": line 3: a blank line inside a folded line is skipped (and 2 more "
                           "like it)\n" +
                           input + ": 1 event read; 1 occurrence in 2026 on 1 date\n");
    EXPECT_EQ(DateIn(Path("out.cal"), 4, 10).Entry.Title.Trimmed(), "Spring cleaning");
}

TEST_F(ImportCommand, ReadsWindows1252TextWithOneWarning) {
    const QString input = CalData("reader_windows_1252.ics");
    const CalRun run = RunCal({"import", input, "--year", "2026", "-o", Path("out.cal")});
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    EXPECT_EQ(run.Err, "kelvane-cal: warning: " + input +
                           ": line 8: a line that is not UTF-8 is read as Windows-1252 (and 1 "
                           "more like it)\n" +
                           input + ": 1 event read; 1 occurrence in 2026 on 1 date\n");
    const CalendarFileDate date = DateIn(Path("out.cal"), 5, 12);
    EXPECT_EQ(date.Entry.Title.Trimmed(), QString::fromUtf8("Caf\u00e9 \u2013 \u20ac5"));
    EXPECT_EQ(date.Note, QString::fromUtf8("Bring Ren\u00e9e\u2019s book"));
}

TEST_F(ImportCommand, SaysAFolderIsAFolder) {
    const CalRun run = RunCal({"import", folder_.path(), "--year", "2026", "-o", Path("out.cal")});
    EXPECT_EQ(run.Status, kFileProblem);
    EXPECT_EQ(run.Err, "kelvane-cal: " + folder_.path() + ": is a folder, not an iCalendar file\n");
    EXPECT_FALSE(QFileInfo::exists(Path("out.cal")));
}

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
