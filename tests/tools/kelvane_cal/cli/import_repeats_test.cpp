#include <gtest/gtest.h>

#include <QDate>

#include <functional>

#include "fixtures/CalRun.h"
#include "fixtures/ImportFixture.h"

// Repeating events are imported on the days and at the times their rules say,
// past the years libical follows and across a change of the clocks.
namespace kelvane::cal {
namespace {

using testing::CalRun;
using testing::RunCal;

class ImportRepeats : public testing::ImportFixture {
  protected:
    // Imports one event with these properties for `year` into "out.cal",
    // with times put into `zone`.
    CalRun Import(const QStringList& properties, int year, const QString& zone = "UTC") {
        return ImportLines(testing::VCalendar(testing::VEvent("a", properties)), year, zone);
    }
    // The imported activities as "d/M hh:mm".
    QStringList ImportedTimes() const {
        QStringList times;
        for (const CalendarFileDate& date : Imported().Dates) {
            for (const Appointment& activity : date.Schedule) {
                times << QStringLiteral("%1/%2 %3:%4")
                             .arg(date.Day)
                             .arg(date.Month)
                             .arg(activity.StartTime.Hour, 2, 10, QLatin1Char('0'))
                             .arg(activity.StartTime.Minute, 2, 10, QLatin1Char('0'));
            }
        }
        return times;
    }
};

// The days of `year` on which `occurs` holds, as "d/M" and `clock` after it.
QStringList DaysAt(int year, const QString& clock,
                   const std::function<bool(const QDate&)>& occurs) {
    QStringList days;
    for (QDate date(year, 1, 1); date.year() == year; date = date.addDays(1)) {
        if (occurs(date)) {
            days << date.toString("d/M") + clock;
        }
    }
    return days;
}

QStringList DaysAtTen(int year, const std::function<bool(const QDate&)>& occurs) {
    return DaysAt(year, " 10:00", occurs);
}

qint64 MonthsBetween(const QDate& from, const QDate& to) {
    return (to.year() - from.year()) * 12 + to.month() - from.month();
}

bool IsLeapDay(const QDate& date) {
    return date.month() == 2 && date.day() == 29;
}

struct FarRule {
    const char* what;
    QStringList properties;
    std::vector<int> years;
    std::function<bool(const QDate&)> occurs;
};

// These rules come back to the same days only after 1200 or 2800 years,
// longer than the years between libical's last and the import's.
TEST_F(ImportRepeats, FollowsRulesOfLongCyclesPastTheYearsLibicalFollows) {
    const QDate seventh(2026, 1, 31);
    const std::vector<FarRule> rules = {
        {"every third year from 2020",
         {"DTSTART:20200101T100000", "RRULE:FREQ=YEARLY;INTERVAL=3"},
         {2999, 3001, 5000, 9998},
         [](const QDate& date) { return date.dayOfYear() == 1 && (date.year() - 2020) % 3 == 0; }},
        {"every third year from 1583",
         {"DTSTART:15830101T100000", "RRULE:FREQ=YEARLY;INTERVAL=3"},
         {2999, 5000, 9998},
         [](const QDate& date) { return date.dayOfYear() == 1 && (date.year() - 1583) % 3 == 0; }},
        {"every seventh month on the 31st",
         {"DTSTART:20260131T100000", "RRULE:FREQ=MONTHLY;INTERVAL=7"},
         {2583, 2800, 3001, 3002},
         [&](const QDate& date) {
             return date.day() == 31 && MonthsBetween(seventh, date) % 7 == 0;
         }},
        {"every seventh year on 29 February",
         {"DTSTART:20240229T100000", "RRULE:FREQ=YEARLY;INTERVAL=7"},
         {3004, 3032, 3033},
         [](const QDate& date) { return IsLeapDay(date) && (date.year() - 2024) % 7 == 0; }},
    };
    for (const FarRule& rule : rules) {
        for (int year : rule.years) {
            SCOPED_TRACE(QStringLiteral("%1 in %2").arg(rule.what).arg(year).toStdString());
            const CalRun run = Import(rule.properties + QStringList{"SUMMARY:Far"}, year);
            ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
            EXPECT_FALSE(run.Err.contains("warning")) << run.Err.toStdString();
            EXPECT_EQ(ImportedTimes(), DaysAtTen(year, rule.occurs));
        }
    }
}

// libical takes 1700 for a leap year, which puts every day it steps to
// across it one day early.
TEST_F(ImportRepeats, FollowsRulesThatStepAcross1700) {
    const QDate start(1600, 8, 28);
    const auto everyDays = [start](qint64 days) {
        return [start, days](const QDate& date) { return start.daysTo(date) % days == 0; };
    };
    const QStringList from1600 = {"DTSTART:16000828T233000", "SUMMARY:Early"};
    const std::vector<FarRule> rules = {
        {"every 365 days",
         from1600 + QStringList{"RRULE:FREQ=DAILY;INTERVAL=365"},
         {1950, 2583, 3000, 4220},
         everyDays(365)},
        {"every 30 days",
         from1600 + QStringList{"RRULE:FREQ=DAILY;INTERVAL=30"},
         {1902, 2582, 4220},
         everyDays(30)},
        {"every 30 days, 20000 times",
         from1600 + QStringList{"RRULE:FREQ=DAILY;INTERVAL=30;COUNT=20000"},
         {1950, 2582, 2583, 2900},
         everyDays(30)},
        {"every 53 weeks",
         from1600 + QStringList{"RRULE:FREQ=WEEKLY;INTERVAL=53"},
         {1950, 2582, 4220},
         everyDays(53 * 7)},
    };
    for (const FarRule& rule : rules) {
        for (int year : rule.years) {
            SCOPED_TRACE(QStringLiteral("%1 in %2").arg(rule.what).arg(year).toStdString());
            const CalRun run = Import(rule.properties, year);
            ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
            EXPECT_EQ(ImportedTimes(), DaysAt(year, " 23:30", rule.occurs));
        }
    }
}

// libical moves the time out of the gap on the day the clocks skip it, and
// keeps it moved for every later occurrence.
TEST_F(ImportRepeats, KeepsTheClockTimeOfTheStartAfterTheSpringGap) {
    const QStringList weekly = {"DTSTART;TZID=Europe/Berlin:20240324T023000",
                                "RRULE:FREQ=WEEKLY;COUNT=3", "SUMMARY:Weekly"};
    ASSERT_EQ(Import(weekly, 2024, "Europe/Berlin").Status, kDone);
    EXPECT_EQ(ImportedTimes(), QStringList({"24/3 02:30", "31/3 03:30", "7/4 02:30"}));
    ASSERT_EQ(Import(weekly, 2024).Status, kDone);
    EXPECT_EQ(ImportedTimes(), QStringList({"24/3 01:30", "31/3 01:30", "7/4 00:30"}));

    const QStringList daily = {"DTSTART;TZID=America/New_York:20240309T023000",
                               "RRULE:FREQ=DAILY;UNTIL=20240312T000000Z", "SUMMARY:Daily"};
    ASSERT_EQ(Import(daily, 2024).Status, kDone);
    EXPECT_EQ(ImportedTimes(), QStringList({"9/3 07:30", "10/3 07:30", "11/3 06:30"}));
}

struct EarlyRule {
    const char* what;
    QStringList properties;
    std::function<bool(const QDate&)> occurs;
};

// libical counts seconds from 1970 only back to 1902; a rule that starts
// earlier still has its occurrences in the years after.
TEST_F(ImportRepeats, FollowsRulesThatStartBefore1902) {
    const std::vector<EarlyRule> rules = {
        {"daily from 1901",
         {"DTSTART:19011214T100000", "RRULE:FREQ=DAILY"},
         [](const QDate&) { return true; }},
        {"weekly on Mondays from 1800",
         {"DTSTART:18000828T100000", "RRULE:FREQ=WEEKLY;BYDAY=MO"},
         [](const QDate& date) { return date.dayOfWeek() == Qt::Monday; }},
        {"monthly on the 3rd from 1753",
         {"DTSTART:17530828T100000", "RRULE:FREQ=MONTHLY;BYMONTHDAY=3"},
         [](const QDate& date) { return date.day() == 3; }},
    };
    for (const EarlyRule& rule : rules) {
        for (int year : {1902, 1903, 1950, 1969}) {
            SCOPED_TRACE(QStringLiteral("%1 in %2").arg(rule.what).arg(year).toStdString());
            const CalRun run = Import(rule.properties + QStringList{"SUMMARY:Early"}, year);
            ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
            EXPECT_EQ(ImportedTimes(), DaysAtTen(year, rule.occurs));
        }
    }
}

TEST_F(ImportRepeats, FollowsAllDayRulesThatStartBefore1902) {
    const QStringList mondays = {"DTSTART;VALUE=DATE:18000828", "RRULE:FREQ=WEEKLY;BYDAY=MO",
                                 "SUMMARY:Early"};
    for (int year : {1902, 1950, 1969}) {
        SCOPED_TRACE(year);
        ASSERT_EQ(Import(mondays, year).Status, kDone);
        EXPECT_EQ(ImportedDays(), DaysAt(year, "", [](const QDate& date) {
                      return date.dayOfWeek() == Qt::Monday;
                  }));
    }
}

// The zone's offsets before 1902 are read too, for the start of the rule.
TEST_F(ImportRepeats, FollowsAZonedRuleThatStartsBefore1902) {
    const QStringList birthday = {"DTSTART;TZID=Europe/Berlin:18500315T100000",
                                  "DTEND;TZID=Europe/Berlin:18500315T110000", "RRULE:FREQ=YEARLY",
                                  "SUMMARY:Birthday"};
    for (int year : {1950, 2024}) {
        SCOPED_TRACE(year);
        ASSERT_EQ(Import(birthday, year, "Europe/Berlin").Status, kDone);
        EXPECT_EQ(ImportedTimes(), QStringList({"15/3 10:00"}));
        ASSERT_EQ(Import(birthday, year).Status, kDone);
        EXPECT_EQ(ImportedTimes(), QStringList({"15/3 09:00"}));
    }
}

struct ClockRule {
    const char* what;
    QStringList properties;
    QStringList inLondon;
    QStringList inUtc;
};

// A rule with hours or minutes of its own keeps them after the spring gap
// too; the time in the gap is read with the offset before it, a time the
// autumn shows twice as the first.
TEST_F(ImportRepeats, KeepsTheHoursOfTheRuleAfterTheSpringGap) {
    const std::vector<ClockRule> rules = {
        {"daily at 1 and 13",
         {"DTSTART;TZID=Europe/London:20240329T010000", "RRULE:FREQ=DAILY;BYHOUR=1,13;COUNT=10"},
         {"29/3 01:00", "29/3 13:00", "30/3 01:00", "30/3 13:00", "31/3 02:00", "31/3 13:00",
          "1/4 01:00", "1/4 13:00", "2/4 01:00", "2/4 13:00"},
         {"29/3 01:00", "29/3 13:00", "30/3 01:00", "30/3 13:00", "31/3 01:00", "31/3 12:00",
          "1/4 00:00", "1/4 12:00", "2/4 00:00", "2/4 12:00"}},
        {"daily at 1:15 and 1:45",
         {"DTSTART;TZID=Europe/London:20240329T011500",
          "RRULE:FREQ=DAILY;BYHOUR=1;BYMINUTE=15,45;COUNT=8"},
         {"29/3 01:15", "29/3 01:45", "30/3 01:15", "30/3 01:45", "31/3 02:15", "31/3 02:45",
          "1/4 01:15", "1/4 01:45"},
         {"29/3 01:15", "29/3 01:45", "30/3 01:15", "30/3 01:45", "31/3 01:15", "31/3 01:45",
          "1/4 00:15", "1/4 00:45"}},
        {"Sundays and Mondays at 1",
         {"DTSTART;TZID=Europe/London:20240324T010000",
          "RRULE:FREQ=WEEKLY;BYDAY=SU,MO;BYHOUR=1;COUNT=5"},
         {"24/3 01:00", "25/3 01:00", "31/3 02:00", "1/4 01:00", "7/4 01:00"},
         {"24/3 01:00", "25/3 01:00", "31/3 01:00", "1/4 00:00", "7/4 00:00"}},
        {"daily at 1 and 13 until an instant",
         {"DTSTART;TZID=Europe/London:20240329T010000",
          "RRULE:FREQ=DAILY;BYHOUR=1,13;UNTIL=20240401T000000Z"},
         {"29/3 01:00", "29/3 13:00", "30/3 01:00", "30/3 13:00", "31/3 02:00", "31/3 13:00",
          "1/4 01:00"},
         {"29/3 01:00", "29/3 13:00", "30/3 01:00", "30/3 13:00", "31/3 01:00", "31/3 12:00",
          "1/4 00:00"}},
        {"daily at 1:30 and 13:30 in the autumn",
         {"DTSTART;TZID=Europe/London:20241026T013000",
          "RRULE:FREQ=DAILY;BYHOUR=1,13;BYMINUTE=30;COUNT=6"},
         {"26/10 01:30", "26/10 13:30", "27/10 01:30", "27/10 13:30", "28/10 01:30", "28/10 13:30"},
         {"26/10 00:30", "26/10 12:30", "27/10 00:30", "27/10 13:30", "28/10 01:30",
          "28/10 13:30"}},
    };
    for (const ClockRule& rule : rules) {
        SCOPED_TRACE(rule.what);
        const QStringList properties = rule.properties + QStringList{"SUMMARY:Clock"};
        ASSERT_EQ(Import(properties, 2024, "Europe/London").Status, kDone);
        EXPECT_EQ(ImportedTimes(), rule.inLondon);
        ASSERT_EQ(Import(properties, 2024).Status, kDone);
        EXPECT_EQ(ImportedTimes(), rule.inUtc);
    }
}

}  // namespace
}  // namespace kelvane::cal
