#include <gtest/gtest.h>

#include <algorithm>

#include "fixtures/CalRun.h"
#include "fixtures/SameDates.h"
#include "kelvane_cal/ical/ICalExport.h"
#include "kelvane_cal/ical/ImportedDates.h"

namespace kelvane::cal {
namespace {

using testing::Activity;
using testing::CalRun;
using testing::RunCal;

// A date of the busy year: a title on odd days, up to four activities, a
// late show past midnight now and then, and a note on every third day.
CalendarFileDate BusyDate(qint16 month, qint16 day) {
    CalendarFileDate date;
    date.Month = month;
    date.Day = day;
    if (day % 2 == 1) {
        date.Entry.Title = QStringLiteral("Day %1 of %2 – très bien").arg(day).arg(month);
    }
    for (int i = 0; i < (day + month) % 5; ++i) {
        const ClockTime start{static_cast<qint16>(8 + i), static_cast<qint16>(5 * i)};
        const ClockTime end =
            i % 2 == 0 ? ClockTime{-1, 0} : ClockTime{static_cast<qint16>(9 + i), 0};
        date.Schedule.push_back(Activity(QStringLiteral("Task %1").arg(i), start, end));
    }
    if (day % 4 == 1) {
        date.Schedule.push_back(Activity("Late show", {23, 0}, {1, 0}));
    }
    if (day % 3 == 0) {
        date.Note = QStringLiteral("Line one\r\nLine two for %1/%2").arg(day).arg(month);
    }
    return date;
}

// 29 February, as full as a date gets: the longest title and note, and 39 activities.
CalendarFileDate FullDate() {
    CalendarFileDate full;
    full.Month = 2;
    full.Day = 29;
    full.Entry.Title = QString(255, QLatin1Char('T'));
    full.Note = QString(400, QLatin1Char('a')) + "\r\n" + QString(398, QLatin1Char('b'));
    for (int i = 0; i < 39; ++i) {
        full.Schedule.push_back(Activity(QString(50, QLatin1Char('A' + i % 26)),
                                         {static_cast<qint16>(i % 24), static_cast<qint16>(i)},
                                         {static_cast<qint16>(i % 24), 59}));
    }
    return full;
}

// Dates all over a leap year with titles, activities and notes, within the
// limits an import keeps: at most 39 activities, notes of at most 800
// characters, no activity longer than a day. Some activities go past
// midnight, the last one into the next year.
CalendarFileContent BusyYear() {
    CalendarFileContent content;
    for (qint16 month = 1; month <= 12; ++month) {
        // 29 February is the full date below.
        for (qint16 day = 1; day <= SlotsPerMonth[month - 1] - (month == 2 ? 1 : 0); day += month) {
            const CalendarFileDate date = BusyDate(month, day);
            if (!date.Entry.Title.Trimmed().isEmpty() || !date.Schedule.empty() ||
                !date.Note.isEmpty()) {
                content.Dates.push_back(date);
            }
        }
    }
    const auto place = std::find_if(content.Dates.begin(), content.Dates.end(),
                                    [](const CalendarFileDate& d) { return d.Month > 2; });
    content.Dates.insert(place, FullDate());
    CalendarFileDate lastNight;
    lastNight.Month = 12;
    lastNight.Day = 31;
    lastNight.Entry.Title = "New Year's Eve";
    lastNight.Schedule.push_back(Activity("Party", {23, 0}, {1, 0}));
    content.Dates.push_back(lastNight);
    return content;
}

TEST(RoundTrip, ExportedAndImportedBackGivesEveryTitleActivityAndNote) {
    QTemporaryDir folder;
    testing::ExpectTheSameBackFromAnExport(BusyYear(), 2028, folder.path());
}

TEST(RoundTrip, ACalendarImportedFromItsOwnExportIntoItselfStaysTheSame) {
    QTemporaryDir folder;
    const CalendarFileContent original = BusyYear();
    ASSERT_TRUE(testing::WriteCalendar(folder.filePath("busy.cal"), original));
    ASSERT_EQ(RunCal({"export", folder.filePath("busy.cal"), "--year", "2028", "-o",
                      folder.filePath("busy.ics")})
                  .Status,
              kDone);
    const CalRun run = RunCal({"import", folder.filePath("busy.ics"), "--year", "2028", "--into",
                               folder.filePath("busy.cal"), "-o", folder.filePath("same.cal")});
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    EXPECT_EQ(testing::ReadBytes(folder.filePath("same.cal")),
              testing::ReadBytes(folder.filePath("busy.cal")));
}

TEST(RoundTrip, KeepsAnActivityPastMidnightFromACalendarFile) {
    QTemporaryDir folder;
    const QString original = testing::CalData("export_over_midnight.cal");
    CalRun run = RunCal({"export", original, "--year", "2026", "-o", folder.filePath("night.ics")});
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    EXPECT_FALSE(run.Err.contains("warning")) << run.Err.toStdString();
    run = RunCal({"import", folder.filePath("night.ics"), "--year", "2026", "-o",
                  folder.filePath("back.cal")});
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    const CalendarFileContent was = testing::ReadCalendarBytes(testing::ReadBytes(original));
    const CalendarFileContent is =
        testing::ReadCalendarBytes(testing::ReadBytes(folder.filePath("back.cal")));
    ASSERT_EQ(is.Dates.size(), was.Dates.size());
    for (std::size_t i = 0; i < was.Dates.size(); ++i) {
        EXPECT_EQ(is.Dates[i].Schedule, was.Dates[i].Schedule);
    }
    ASSERT_FALSE(was.Dates.empty());
    const CalendarFileDate& last = was.Dates.back();
    EXPECT_EQ(last.Month, 12);
    EXPECT_EQ(last.Day, 31);
    ASSERT_EQ(last.Schedule.size(), 1u);
    EXPECT_EQ(last.Schedule[0].EndTime, (ClockTime{1, 0}));
}

TEST(RoundTrip, ImportingTheSameFileIntoACalendarTwiceChangesNothingTheSecondTime) {
    QTemporaryDir folder;
    QStringList warnings;
    CalendarFileContent held = ImportedDates().NewCalendar(2026, warnings);
    CalendarFileDate date;
    date.Month = 5;
    date.Day = 12;
    date.Entry.Title = "Team";
    date.Note = "Room 12";
    held.Dates = {date};
    ASSERT_TRUE(testing::WriteCalendar(folder.filePath("held.cal"), held));

    const QString input = testing::CalData("merge_twice.ics");
    CalRun run = RunCal({"import", input, "--year", "2026", "--into", folder.filePath("held.cal"),
                         "-o", folder.filePath("once.cal")});
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    run = RunCal({"import", input, "--year", "2026", "--into", folder.filePath("once.cal"), "-o",
                  folder.filePath("twice.cal")});
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();

    const CalendarFileContent once =
        testing::ReadCalendarBytes(testing::ReadBytes(folder.filePath("once.cal")));
    ASSERT_EQ(once.Dates.size(), 1u);
    EXPECT_EQ(once.Dates[0].Entry.Title.Trimmed(), "Team; Team; Offsite; Lunch");
    EXPECT_EQ(once.Dates[0].Note, "Room 12\r\nRoom 1\r\nBring the slides\r\nand the cake");
    ASSERT_EQ(once.Dates[0].Schedule.size(), 1u);
    EXPECT_EQ(once.Dates[0].Schedule[0].Description.Trimmed(),
              "Launch of the new planner with everyone in the ha");
    EXPECT_EQ(testing::ReadBytes(folder.filePath("twice.cal")),
              testing::ReadBytes(folder.filePath("once.cal")));
}

// The form publish sends activities in that some servers would refuse: no
// end, or an end at the start.
TEST(RoundTrip, AnActivityMarkedOneSecondLongReadsBackAsItWas) {
    CalendarFileContent content;
    CalendarFileDate date;
    date.Month = 3;
    date.Day = 17;
    date.Schedule = {Activity("Stand-up", {9, 0}, {9, 15}), Activity("Review", {14, 0}, {-1, 0}),
                     Activity("Call", {16, 0}, {16, 0})};
    content.Dates = {date};
    ExportRequest request{"plans.cal", 2026, {}, {}};
    request.EndEveryActivity = true;
    const QByteArray marked = ExportToICalendar(content, request).Text;
    EXPECT_EQ(marked.count("DURATION:PT1S\r\n"), 2) << marked.toStdString();
    EXPECT_EQ(marked.count("X-KELVANE-NO-END:TRUE\r\n"), 1);
    EXPECT_EQ(marked.count("X-KELVANE-ZERO-LENGTH:TRUE\r\n"), 1);

    QTemporaryDir folder;
    ASSERT_TRUE(testing::WriteBytes(folder.filePath("marked.ics"), marked));
    const CalRun run = RunCal({"import", folder.filePath("marked.ics"), "--year", "2026", "-o",
                               folder.filePath("marked.cal")});
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    const CalendarFileContent back =
        testing::ReadCalendarBytes(testing::ReadBytes(folder.filePath("marked.cal")));
    ASSERT_EQ(back.Dates.size(), 1u);
    EXPECT_EQ(back.Dates[0].Schedule, date.Schedule);
}

// Someone who made a published activity longer on a phone keeps that length.
TEST(RoundTrip, AMarkOnAnEventMadeLongerSinceIsPassedOver) {
    QTemporaryDir folder;
    ASSERT_TRUE(testing::WriteBytes(
        folder.filePath("longer.ics"),
        testing::ICalLines({"BEGIN:VCALENDAR", "VERSION:2.0", "PRODID:-//Kelvane tests//EN",
                            "BEGIN:VEVENT", "UID:a", "DTSTAMP:20260101T000000Z",
                            "DTSTART:20260317T140000", "DURATION:PT30M", "X-KELVANE-NO-END:TRUE",
                            "SUMMARY:Review", "END:VEVENT", "END:VCALENDAR"})));
    const CalRun run = RunCal({"import", folder.filePath("longer.ics"), "--year", "2026", "-o",
                               folder.filePath("longer.cal")});
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    const CalendarFileContent back =
        testing::ReadCalendarBytes(testing::ReadBytes(folder.filePath("longer.cal")));
    ASSERT_EQ(back.Dates.size(), 1u);
    EXPECT_EQ(back.Dates[0].Schedule,
              std::vector<Appointment>{Activity("Review", {14, 0}, {14, 30})});
}

}  // namespace
}  // namespace kelvane::cal
