#include <gtest/gtest.h>

#include "fixtures/CalRun.h"
#include "fixtures/ImportCommand.h"

// What an import makes of the events it reads: their dates, times and zones.
namespace kelvane::cal {
namespace {

using testing::CalRun;
using testing::ICalLines;
using testing::ImportCommand;

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

}  // namespace
}  // namespace kelvane::cal
