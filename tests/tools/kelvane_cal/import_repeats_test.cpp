#include <gtest/gtest.h>

#include <QDate>

#include <functional>

#include "CalRun.h"

// Repeating events are imported on the days and at the times their rules say,
// past the years libical follows and across a change of the clocks.
namespace kelvane::cal {
namespace {

using testing::CalRun;
using testing::ICalLines;
using testing::RunCal;

class ImportRepeats : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(folder_.isValid()); }
    QString Path(const QString& name) const { return folder_.filePath(name); }
    // Imports one event with these properties for `year` into "out.cal",
    // with times put into `zone`.
    CalRun Import(const QStringList& properties, int year, const QString& zone = "UTC") {
        EXPECT_TRUE(testing::WriteBytes(
            Path("in.ics"), ICalLines(testing::VCalendar(testing::VEvent("a", properties)))));
        return RunCal({"import", Path("in.ics"), "--year", QString::number(year), "--timezone",
                       zone, "-o", Path("out.cal"), "--force"});
    }
    CalendarFileContent Imported() const {
        return testing::ReadCalendarBytes(testing::ReadBytes(Path("out.cal")));
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

    QTemporaryDir folder_;
};

// The days of `year` on which `occurs` holds, as "d/M 10:00".
QStringList DaysAtTen(int year, const std::function<bool(const QDate&)>& occurs) {
    QStringList days;
    for (QDate date(year, 1, 1); date.year() == year; date = date.addDays(1)) {
        if (occurs(date)) {
            days << date.toString("d/M") + " 10:00";
        }
    }
    return days;
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

}  // namespace
}  // namespace kelvane::cal
