#include <gtest/gtest.h>

#include <QFileInfo>

#include "fixtures/CalRun.h"
#include "fixtures/ImportCommand.h"

// How an import reads an iCalendar file: what it passes over with a
// warning and what stops it, naming the line.
namespace kelvane::cal {
namespace {

using testing::CalData;
using testing::CalRun;
using testing::ImportCommand;
using testing::RunCal;

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

// Files libical rejects, each with the line and the problem the import names.
std::vector<Rejected> RejectedFiles() {
    return {
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
}

TEST_F(ImportCommand, RefusesWhatLibicalRejectsNamingTheLineAndWritesNothing) {
    for (const Rejected& rejected : RejectedFiles()) {
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

}  // namespace
}  // namespace kelvane::cal
