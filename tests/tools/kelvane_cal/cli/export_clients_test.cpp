#include <gtest/gtest.h>

#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>

#include <algorithm>

#include "fixtures/CalRun.h"
#include "fixtures/SameDates.h"
#include "kelvane_cal/ical/ICalExport.h"

// Exports read by other calendar programs: calcurse and python-icalendar, run
// as they are installed.
namespace kelvane::cal {
namespace {

using testing::Activity;
using testing::CalRun;
using testing::DateOf;
using testing::RunCal;

const QString kCalcurse = QStringLiteral("/usr/bin/calcurse");
const QString kKhal = QStringLiteral("/usr/bin/khal");
// Debian's own Python, which python3-icalendar installs into.
const QString kPython = QStringLiteral("/usr/bin/python3");

// A calendar with every kind of event an export writes, in several scripts.
CalendarFileContent RichCalendar() {
    CalendarFileDate newYear = DateOf(1, 1);
    newYear.Entry.Title = QStringLiteral("New Year – Neujahr");
    newYear.Note = QStringLiteral("Sleep in\r\nThen a walk; by the river, \"slowly\"");
    newYear.Schedule = {Activity("Brunch", {11, 0}, {12, 30}), Activity("Film", {20, 15}, {-1, 0})};
    CalendarFileDate noteOnly = DateOf(2, 2);
    noteOnly.Note = QStringLiteral("Only a note — nur eine Notiz");
    CalendarFileDate leapDay = DateOf(2, 29);
    leapDay.Entry.Title = QStringLiteral("Leap day");
    leapDay.Schedule = {Activity("Run", {7, 0}, {7, 45})};
    CalendarFileDate scripts = DateOf(3, 15);
    scripts.Schedule = {Activity(QStringLiteral("Ελληνικά"), {9, 0}, {10, 0}),
                        Activity("Stand-up", {12, 0}, {12, 0}),
                        Activity(QStringLiteral("日本語の授業"), {13, 0}, {-1, 0}),
                        Activity(QStringLiteral("Русский; с запятой, и \\"), {14, 0}, {15, 30}),
                        Activity(QStringLiteral("درس عربي"), {16, 0}, {17, 0})};
    CalendarFileDate lateShow = DateOf(6, 1);
    lateShow.Schedule = {Activity("Late show", {23, 0}, {1, 0})};
    CalendarFileDate fest = DateOf(7, 4);
    fest.Entry.Title = QStringLiteral("🎉 Fest");
    fest.Schedule = {Activity("Midnight", {0, 0}, {0, 0})};
    CalendarFileDate longNote = DateOf(7, 10);
    longNote.Note = QStringLiteral("Line one\r\nLine two\r\n") + QString(200, QChar(0x00E9));
    CalendarFileDate lastNight = DateOf(12, 31);
    lastNight.Entry.Title = QStringLiteral("New Year's Eve");
    lastNight.Schedule = {Activity("Party", {23, 0}, {1, 0})};
    CalendarFileContent content;
    content.Dates = {newYear, noteOnly, leapDay, scripts, lateShow, fest, longNote, lastNight};
    return content;
}

// The years the tests export to: a leap and a common year, the first and the
// last year, and one past the 3000 libical stops writing at.
const int kYears[] = {2024, 2025, 1, 9999, 5000};

struct ProgramRun {
    bool Started = false;
    int Status = -1;
    QString Output;  // the standard output and error together
};

ProgramRun RunProgram(const QString& program, const QStringList& arguments,
                      const QString& home = {}) {
    QProcess process;
    if (!home.isEmpty()) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), home);
        environment.insert(QStringLiteral("TMPDIR"), home);
        process.setProcessEnvironment(environment);
    }
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments);
    ProgramRun run;
    run.Started = process.waitForStarted() && process.waitForFinished(60000);
    run.Output = QString::fromUtf8(process.readAll());
    run.Status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    return run;
}

// What calcurse says it imported: appointments, events, to-dos and items skipped.
struct CalcurseCount {
    int Appointments = -1;
    int Events = -1;
    int Skipped = -1;
};

CalcurseCount CalcurseImport(const QString& icsFile, const QString& folder) {
    const ProgramRun run =
        RunProgram(kCalcurse, {"-D", folder + QStringLiteral("/data"), "-i", icsFile}, folder);
    EXPECT_TRUE(run.Started);
    EXPECT_EQ(run.Status, 0) << run.Output.toStdString();
    static const QRegularExpression kReport(
        QStringLiteral(R"((\d+) apps? / (\d+) events? / (\d+) todos? / (\d+) skipped)"));
    const QRegularExpressionMatch match = kReport.match(run.Output);
    EXPECT_TRUE(match.hasMatch()) << run.Output.toStdString();
    CalcurseCount count;
    if (match.hasMatch()) {
        count.Appointments = match.captured(1).toInt();
        count.Events = match.captured(2).toInt();
        count.Skipped = match.captured(4).toInt();
    }
    return count;
}

// Reads a file with python-icalendar and checks what RFC 5545 asks of each
// event; prints the number of events, then any problem found.
const char* const kIcalendarCheck = R"(
import sys, icalendar
calendar = icalendar.Calendar.from_ical(open(sys.argv[1], "rb").read())
problems = [c.name + ": " + str(e) for c in calendar.walk() for e in c.errors]
events = calendar.walk("VEVENT")
for event in events:
    start = event.decoded("DTSTART")
    for name in ("UID", "DTSTAMP", "SUMMARY"):
        if name not in event:
            problems.append(str(start) + ": no " + name)
    if "DTEND" in event and "DURATION" in event:
        problems.append(str(start) + ": both DTEND and DURATION")
    if "DTEND" in event and not event.decoded("DTEND") > start:
        problems.append(str(start) + ": DTEND is not after DTSTART")
print(len(events))
print("\n".join(problems))
)";

bool HasPythonIcalendar() {
    const ProgramRun run = RunProgram(kPython, {"-c", "import icalendar"});
    return run.Started && run.Status == 0;
}

class ExportReadByClients : public ::testing::TestWithParam<int> {
  protected:
    void SetUp() override {
        ASSERT_TRUE(folder_.isValid());
        export_ = ExportToICalendar(
            RichCalendar(),
            {"rich.cal", GetParam(), QDateTime(QDate(2026, 11, 23), QTime(9, 30), Qt::UTC), {}});
        ASSERT_TRUE(testing::WriteBytes(IcsFile(), export_.Text));
    }
    QString IcsFile() const { return folder_.filePath("rich.ics"); }

    QTemporaryDir folder_;
    ExportResult export_;
};

TEST_P(ExportReadByClients, CalcurseImportsEveryEventAndSkipsNone) {
    if (!QFileInfo(kCalcurse).isExecutable()) {
        GTEST_SKIP() << "calcurse is not installed (scripts/install-deps.sh installs it)";
    }
    const CalcurseCount count = CalcurseImport(IcsFile(), folder_.path());
    EXPECT_EQ(count.Skipped, 0);
    EXPECT_EQ(count.Appointments, export_.TimedEvents);
    EXPECT_EQ(count.Events, export_.AllDayEvents);
    // The activity that ends as it starts is one of no length at 12:00.
    const QString appointments =
        QString::fromUtf8(testing::ReadBytes(folder_.filePath("data/apts")));
    const QString day = QStringLiteral("03/15/%1").arg(GetParam(), 4, 10, QLatin1Char('0'));
    EXPECT_TRUE(appointments.contains(day + " @ 12:00 -> " + day + " @ 12:00|Stand-up"))
        << appointments.toStdString();
}

// khal's own settings: one calendar in a folder, dates and times as ISO 8601.
void WriteKhalConfig(const QString& home) {
    QDir(home).mkpath(".config/khal");
    QDir(home).mkpath("calendar");
    const QString config = QStringLiteral(
                               "[calendars]\n[[plans]]\npath = %1/calendar\ntype = calendar\n"
                               "[locale]\ntimeformat = %H:%M\ndateformat = %Y-%m-%d\n"
                               "longdateformat = %Y-%m-%d\n"
                               "datetimeformat = %Y-%m-%d %H:%M\n"
                               "longdatetimeformat = %Y-%m-%d %H:%M\n")
                               .arg(home);
    ASSERT_TRUE(testing::WriteBytes(home + "/.config/khal/config", config.toUtf8()));
}

TEST_P(ExportReadByClients, KhalImportsEveryEventAtItsTime) {
    if (!QFileInfo(kKhal).isExecutable()) {
        GTEST_SKIP() << "khal is not installed (scripts/install-deps.sh installs it)";
    }
    if (GetParam() == 9999) {
        // Python's dates end on 31 December 9999: khal fails on any event
        // that ends after it, such as an all-day event of that day.
        GTEST_SKIP() << "khal cannot read events that end after the year 9999";
    }
    const QString home = folder_.path();
    WriteKhalConfig(home);
    const ProgramRun imported =
        RunProgram(kKhal, {"import", "--batch", "-a", "plans", IcsFile()}, home);
    ASSERT_TRUE(imported.Started);
    ASSERT_EQ(imported.Status, 0) << imported.Output.toStdString();
    EXPECT_EQ(QDir(home + "/calendar").entryList(QDir::Files).size(),
              export_.AllDayEvents + export_.TimedEvents);
    const ProgramRun listed =
        RunProgram(kKhal,
                   {"list", "--format", "{start-time}-{end-time} {title}", "--day-format", "",
                    QStringLiteral("%1-03-15").arg(GetParam(), 4, 10, QLatin1Char('0')), "1d"},
                   home);
    ASSERT_EQ(listed.Status, 0) << listed.Output.toStdString();
    EXPECT_TRUE(listed.Output.contains("12:00-12:00 Stand-up")) << listed.Output.toStdString();
    EXPECT_TRUE(listed.Output.contains(QStringLiteral("09:00-10:00 Ελληνικά")))
        << listed.Output.toStdString();
}

TEST_P(ExportReadByClients, PythonIcalendarReadsEveryEventWithoutAProblem) {
    if (!HasPythonIcalendar()) {
        GTEST_SKIP() << "python3-icalendar is not installed (scripts/install-deps.sh installs it)";
    }
    const ProgramRun run = RunProgram(kPython, {"-c", kIcalendarCheck, IcsFile()});
    ASSERT_TRUE(run.Started);
    EXPECT_EQ(run.Status, 0) << run.Output.toStdString();
    EXPECT_EQ(run.Output.trimmed(), QString::number(export_.AllDayEvents + export_.TimedEvents));
}

INSTANTIATE_TEST_SUITE_P(Years, ExportReadByClients, ::testing::ValuesIn(kYears));

// Years an import takes: all but the first and the last.
class RichRoundTrip : public ::testing::TestWithParam<int> {};

TEST_P(RichRoundTrip, ImportGivesBackTheCalendarExported) {
    const int year = GetParam();
    QTemporaryDir folder;
    CalendarFileContent original = RichCalendar();
    if (!QDate::isLeapYear(year)) {
        std::erase_if(original.Dates, [](const CalendarFileDate& date) {
            return date.Month == 2 && date.Day == 29;
        });
    }
    testing::ExpectTheSameBackFromAnExport(original, year, folder.path());
}

INSTANTIATE_TEST_SUITE_P(Years, RichRoundTrip, ::testing::Values(2024, 2025, 5000));

}  // namespace
}  // namespace kelvane::cal
