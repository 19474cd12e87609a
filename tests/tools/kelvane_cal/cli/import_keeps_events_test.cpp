#include <gtest/gtest.h>

#include <QDate>

#include <QFileInfo>

#include "fixtures/CalRun.h"
#include "fixtures/DateLookup.h"
#include "fixtures/ImportFixture.h"

// An import neither loses events nor moves them in time.
namespace kelvane::cal {
namespace {

using testing::CalRun;
using testing::FindDate;
using testing::RunCal;

class ImportKeepsEvents : public testing::ImportFixture {
  protected:
    CalRun Import(const QStringList& lines, int year, const QString& zone = "UTC") {
        return ImportLines(lines, year, zone);
    }
};

template <typename Test>
QStringList DaysOfYear(int year, Test test) {
    QStringList days;
    for (QDate date(year, 1, 1); date.year() == year; date = date.addDays(1)) {
        if (test(date)) {
            days << date.toString("d/M");
        }
    }
    return days;
}

TEST_F(ImportKeepsEvents, ExpandsRepeatingEventsInTheYearsLibicalStopsBefore) {
    const QStringList lines = testing::VCalendar(
        testing::VEvent("weekly",
                        {"DTSTART:20260105T090000", "RRULE:FREQ=WEEKLY", "SUMMARY:Weekly"}) +
        testing::VEvent("fortnightly",
                        {"DTSTART;VALUE=DATE:20260101", "RRULE:FREQ=WEEKLY;INTERVAL=2;BYDAY=TH",
                         "SUMMARY:Fortnightly"}) +
        testing::VEvent("month-end", {"DTSTART;VALUE=DATE:20260131",
                                      "RRULE:FREQ=MONTHLY;BYMONTHDAY=-1", "SUMMARY:Month end"}) +
        testing::VEvent("leap-day",
                        {"DTSTART;VALUE=DATE:20280229", "RRULE:FREQ=YEARLY", "SUMMARY:Leap day"}));
    const QDate firstThursday(2026, 1, 1);
    for (int year : {2582, 2583, 2800, 3001, 5555, 9998}) {
        SCOPED_TRACE(year);
        const CalRun run = Import(lines, year);
        ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
        EXPECT_FALSE(run.Err.contains("warning")) << run.Err.toStdString();
        const QStringList expected = DaysOfYear(year, [&](const QDate& date) {
            const bool fortnightly =
                date.dayOfWeek() == Qt::Thursday && firstThursday.daysTo(date) % 14 == 0;
            return date.dayOfWeek() == Qt::Monday || fortnightly ||
                   date.day() == date.daysInMonth() || (date.month() == 2 && date.day() == 29);
        });
        EXPECT_EQ(ImportedDays(), expected);
        QDate firstMonday(year, 1, 1);
        while (firstMonday.dayOfWeek() != Qt::Monday) {
            firstMonday = firstMonday.addDays(1);
        }
        const CalendarFileDate* monday = ImportedDate(1, firstMonday.day());
        ASSERT_NE(monday, nullptr);
        ASSERT_EQ(monday->Schedule.size(), 1u);
        EXPECT_EQ(monday->Schedule[0].StartTime, (ClockTime{9, 0}));
    }
}

TEST_F(ImportKeepsEvents, ExpandsARuleOfAZoneAndAnEndInTheYearsLibicalStopsBefore) {
    const CalRun run = Import(testing::VCalendar(testing::VEvent(
                                  "a", {"DTSTART;TZID=Europe/Berlin:20260102T120000",
                                        "RRULE:FREQ=DAILY;INTERVAL=3;UNTIL=30001231T000000Z",
                                        "SUMMARY:Every third day"})),
                              3000);
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    const QDate first(2026, 1, 2);
    EXPECT_EQ(ImportedDays(), DaysOfYear(3000, [&](const QDate& date) {
                  return first.daysTo(date) % 3 == 0 && date.month() * 100 + date.day() < 1231;
              }));
}

TEST_F(ImportKeepsEvents, ExpandsACountedRuleInTheYearsLibicalStopsBefore) {
    const QStringList lines = testing::VCalendar(
        testing::VEvent("a", {"DTSTART;TZID=Europe/Berlin:20260101T100000",
                              "RRULE:FREQ=WEEKLY;COUNT=50000;BYDAY=TH", "SUMMARY:Counted"}) +
        testing::VEvent("b", {"DTSTART;VALUE=DATE:20260131",
                              "RRULE:FREQ=MONTHLY;BYMONTHDAY=-1;COUNT=9000", "SUMMARY:Month end"}));
    const QDate last = QDate(2026, 1, 1).addDays(7 * 49999);  // 1 April 2984
    for (int year : {2800, 2984}) {
        SCOPED_TRACE(year);
        const CalRun run = Import(lines, year);
        ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
        EXPECT_FALSE(run.Err.contains("warning")) << run.Err.toStdString();
        EXPECT_EQ(ImportedDays(), DaysOfYear(year, [&](const QDate& date) {
                      return date.dayOfWeek() == Qt::Thursday && date <= last;
                  }));
    }
    const CalRun run = Import(lines, 2775);  // the last of the 9000 months
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    EXPECT_EQ(ImportedDays(), DaysOfYear(2775, [](const QDate& date) {
                  return date.dayOfWeek() == Qt::Thursday || date.day() == date.daysInMonth();
              }));
    ASSERT_NE(ImportedDate(12, 31), nullptr);
    EXPECT_EQ(ImportedDate(12, 31)->Entry.Title.Trimmed(), "Month end");
}

// Every seventh month comes back to the same months only after 2800 years,
// and a count must be counted from the start; libical stops in 2582.
TEST_F(ImportKeepsEvents, StopsWhenARuleCannotBeFollowedPastTheYearsLibicalFollows) {
    const auto seventhMonth = [](int count) {
        return testing::VCalendar(testing::VEvent(
            "a", {"DTSTART:20260131T100000",
                  QStringLiteral("RRULE:FREQ=MONTHLY;INTERVAL=7;COUNT=%1").arg(count),
                  "SUMMARY:Seventh month"}));
    };
    const CalRun run = Import(seventhMonth(2000), 3001);
    EXPECT_EQ(run.Status, kFileProblem);
    EXPECT_EQ(run.Err, "kelvane-cal: " + Path("in.ics") +
                           ": line 4: a repeat rule can be followed up to the year 2582 only, "
                           "not in the year 3001; nothing was written\n");
    EXPECT_FALSE(QFileInfo::exists(Path("out.cal")));

    // A count that ends before 2582 is followed to its end.
    const CalRun ended = Import(seventhMonth(10), 3001);
    ASSERT_EQ(ended.Status, kDone) << ended.Err.toStdString();
    EXPECT_FALSE(ended.Err.contains("warning")) << ended.Err.toStdString();
    EXPECT_TRUE(Imported().Dates.empty());
}

TEST_F(ImportKeepsEvents, ReadsATimeInTheSpringGapWithTheOffsetBeforeIt) {
    const QStringList lines = testing::VCalendar(
        testing::VEvent("gap", {"DTSTART;TZID=Europe/Berlin:20240331T023000",
                                "DTEND;TZID=Europe/Berlin:20240331T040000", "SUMMARY:Gap"}));
    ASSERT_EQ(Import(lines, 2024).Status, kDone);
    const CalendarFileDate* inUtc = ImportedDate(3, 31);
    ASSERT_NE(inUtc, nullptr);
    ASSERT_EQ(inUtc->Schedule.size(), 1u);
    EXPECT_EQ(inUtc->Schedule[0].StartTime, (ClockTime{1, 30}));
    EXPECT_EQ(inUtc->Schedule[0].EndTime, (ClockTime{2, 0}));

    ASSERT_EQ(Import(lines, 2024, "Europe/Berlin").Status, kDone);
    const CalendarFileDate* inBerlin = ImportedDate(3, 31);
    ASSERT_NE(inBerlin, nullptr);
    ASSERT_EQ(inBerlin->Schedule.size(), 1u);
    EXPECT_EQ(inBerlin->Schedule[0].StartTime, (ClockTime{3, 30}));
    EXPECT_EQ(inBerlin->Schedule[0].EndTime, (ClockTime{4, 0}));
}

TEST_F(ImportKeepsEvents, ReadsATimeTheAutumnShowsTwiceAsTheFirst) {
    const QStringList lines = testing::VCalendar(
        testing::VEvent("twice", {"DTSTART;TZID=Europe/Berlin:20241027T023000", "DURATION:PT1H",
                                  "SUMMARY:Twice"}) +
        testing::VEvent("daily", {"DTSTART;TZID=Europe/Berlin:20241020T023000",
                                  "RRULE:FREQ=DAILY;COUNT=10", "SUMMARY:Daily"}));
    ASSERT_EQ(Import(lines, 2024).Status, kDone);
    const CalendarFileDate* inUtc = ImportedDate(10, 27);
    ASSERT_NE(inUtc, nullptr);
    ASSERT_EQ(inUtc->Schedule.size(), 2u);
    EXPECT_EQ(inUtc->Schedule[0].StartTime, (ClockTime{0, 30}));
    EXPECT_EQ(inUtc->Schedule[0].EndTime, (ClockTime{1, 30}));
    EXPECT_EQ(inUtc->Schedule[1].StartTime, (ClockTime{0, 30}));

    ASSERT_EQ(Import(lines, 2024, "Europe/Berlin").Status, kDone);
    for (int day = 20; day <= 29; ++day) {
        const CalendarFileDate* inBerlin = ImportedDate(10, day);
        ASSERT_NE(inBerlin, nullptr) << day;
        EXPECT_EQ(inBerlin->Schedule[0].StartTime, (ClockTime{2, 30})) << day;
    }
}

TEST_F(ImportKeepsEvents, PutsATimedEventsDescriptionIntoTheDatesNote) {
    const CalRun run =
        Import(testing::VCalendar(
                   testing::VEvent("a", {"DTSTART;VALUE=DATE:20260310", "SUMMARY:Board day",
                                         "DESCRIPTION:Bring the figures"}) +
                   testing::VEvent("b", {"DTSTART:20260310T100000", "DTEND:20260310T110000",
                                         "SUMMARY:Meeting", "DESCRIPTION:agenda\\nminutes"}) +
                   testing::VEvent("c", {"DTSTART:20260310T140000", "DESCRIPTION:no summary"}) +
                   testing::VEvent("d", {"DTSTART:20260311T090000", "SUMMARY:Long",
                                         "DESCRIPTION:" + QString(900, QLatin1Char('x'))})),
               2026);
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    EXPECT_TRUE(run.Err.contains(": 11 March: the note was cut to 800 characters\n"))
        << run.Err.toStdString();
    const CalendarFileContent content = Imported();
    const CalendarFileDate* tenth = FindDate(content, 3, 10);
    ASSERT_NE(tenth, nullptr);
    EXPECT_EQ(tenth->Note,
              "Bring the figures\r\n10:00 Meeting: "
              "agenda\r\nminutes\r\n14:00 (no title): no "
              "summary");
    ASSERT_EQ(tenth->Schedule.size(), 2u);
    EXPECT_EQ(tenth->Schedule[0].Description.Trimmed(), "Meeting");
    const CalendarFileDate* eleventh = FindDate(content, 3, 11);
    ASSERT_NE(eleventh, nullptr);
    EXPECT_EQ(eleventh->Note.size(), NoteLength);
    EXPECT_TRUE(eleventh->Note.startsWith("09:00 Long: xxx"));
}

TEST_F(ImportKeepsEvents, KeepsTheDescriptionsNoteExactThroughAnExportAndImport) {
    ASSERT_EQ(
        Import(testing::VCalendar(testing::VEvent(
                   "b", {"DTSTART:20260310T100000", "SUMMARY:Meeting", "DESCRIPTION:agenda"})),
               2026)
            .Status,
        kDone);
    const QByteArray first = testing::ReadBytes(Path("out.cal"));
    ASSERT_EQ(RunCal({"export", Path("out.cal"), "--year", "2026", "-o", Path("back.ics")}).Status,
              kDone);
    ASSERT_EQ(
        RunCal({"import", Path("back.ics"), "--year", "2026", "-o", Path("again.cal")}).Status,
        kDone);
    EXPECT_EQ(testing::ReadBytes(Path("again.cal")), first);
    ASSERT_EQ(RunCal({"import", Path("back.ics"), "--year", "2026", "--into", Path("out.cal"), "-o",
                      Path("merged.cal")})
                  .Status,
              kDone);
    EXPECT_EQ(testing::ReadBytes(Path("merged.cal")), first);
    const CalendarFileDate* tenth = ImportedDate(3, 10);
    ASSERT_NE(tenth, nullptr);
    EXPECT_EQ(tenth->Note, "10:00 Meeting: agenda");
}

// A day or longer has no end a date's clock can tell from its start.
TEST_F(ImportKeepsEvents, GivesAnEventOfADayOrLongerNoEndAndAShorterOneItsEnd) {
    const CalRun run = Import(
        testing::VCalendar(
            testing::VEvent("a", {"DTSTART:20260105T090000", "DURATION:PT24H", "SUMMARY:Hours"}) +
            testing::VEvent("b", {"DTSTART:20260106T090000", "DURATION:P1D", "SUMMARY:Day"}) +
            testing::VEvent("c",
                            {"DTSTART:20260107T090000", "DTEND:20260108T090000", "SUMMARY:Until"}) +
            testing::VEvent("d",
                            {"DTSTART:20260108T090000", "DURATION:PT23H59M", "SUMMARY:Nearly"})),
        2026);
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    const CalendarFileContent content = Imported();
    for (int day : {5, 6, 7}) {
        const CalendarFileDate* date = FindDate(content, 1, day);
        ASSERT_NE(date, nullptr) << day;
        EXPECT_EQ(date->Schedule[0].EndTime, (ClockTime{-1, 0})) << day;
    }
    EXPECT_EQ(FindDate(content, 1, 8)->Schedule[0].EndTime, (ClockTime{8, 59}));
}

}  // namespace
}  // namespace kelvane::cal
