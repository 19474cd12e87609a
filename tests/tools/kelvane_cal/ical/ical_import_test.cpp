#include <gtest/gtest.h>

#include <QBuffer>
#include <QFile>

#include "fixtures/CalFiles.h"
#include "fixtures/DateLookup.h"
#include "kelvane_cal/ical/ICalImport.h"
#include "kelvane_cal/ical/ImportedDates.h"
#include "support/QtPrinting.h"

#include "calfile/LineWriter.h"

namespace kelvane::cal {
namespace {

using testing::FindDate;

// The import of a sample file with its warnings, into a new calendar of 2026.
CalendarFileContent ImportSample(const QString& name, ImportReport& report) {
    QFile file(QStringLiteral(KELVANE_CAL_DATA_DIR "/") + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    ImportedDates dates;
    EXPECT_TRUE(ImportICalendar(file, {2026, nullptr}, dates, report))
        << report.Problem.toStdString();
    QStringList warnings;
    return dates.NewCalendar(2026, warnings);
}

TEST(ImportICalendar, TakesAnEventThatEndsBeforeItStartsAsHavingNoEnd) {
    ImportReport report;
    const CalendarFileContent content = ImportSample("merge_end_before_start.ics", report);
    const CalendarFileDate* second = FindDate(content, 1, 2);
    ASSERT_NE(second, nullptr) << "an end a month early must not hide the event";
    ASSERT_EQ(second->Schedule.size(), 1u);
    EXPECT_EQ(second->Schedule[0].Description.Trimmed(), "Ends a month early");
    EXPECT_EQ(second->Schedule[0].StartTime, (ClockTime{10, 0}));
    EXPECT_EQ(second->Schedule[0].EndTime, (ClockTime{-1, 0}));
    const CalendarFileDate* third = FindDate(content, 1, 3);
    ASSERT_NE(third, nullptr);
    EXPECT_EQ(third->Entry.Title.Trimmed(), "Backwards day");
    EXPECT_EQ(FindDate(content, 1, 4), nullptr);
    EXPECT_EQ(report.Warnings,
              (QStringList{"line 4: an event that ends (DTEND 20251201T100000) before it starts "
                           "(DTSTART 20260102T100000) is taken as having no end (and 1 more like "
                           "it)",
                           "line 11: an event with a DURATION of P999999999999999999W, longer "
                           "than the years 1902 to 9999, is taken as having no end"}));
}

TEST(ImportICalendar, TakesAnEndlessDurationAsNoEndNotAsOneBelowZero) {
    ImportReport report;
    const CalendarFileContent content = ImportSample("merge_end_before_start.ics", report);
    const CalendarFileDate* fifth = FindDate(content, 1, 5);
    ASSERT_NE(fifth, nullptr);
    ASSERT_EQ(fifth->Schedule.size(), 1u);
    EXPECT_EQ(fifth->Schedule[0].Description.Trimmed(), "Goes on and on");
    EXPECT_EQ(fifth->Schedule[0].EndTime, (ClockTime{-1, 0}));
    EXPECT_FALSE(report.Warnings.join('\n').contains("before it starts (DTSTART 20260105"));
}

TEST(ImportICalendar, ReadsTheLengthOfADurationFromTheFilesOwnText) {
    ImportReport report;
    const CalendarFileContent content = ImportSample("merge_wrapping_durations.ics", report);
    for (int day : {5, 6, 7}) {
        const CalendarFileDate* date = FindDate(content, 1, day);
        ASSERT_NE(date, nullptr) << day;
        ASSERT_EQ(date->Schedule.size(), 1u) << day;
        EXPECT_EQ(date->Schedule[0].EndTime, (ClockTime{-1, 0})) << "longer than a day, " << day;
    }
    EXPECT_EQ(report.Warnings,
              QStringList{"line 4: an event with a DURATION of P4294967296D, longer than the years "
                          "1902 to 9999, is taken as having no end (and 1 more like it)"});
}

TEST(ImportICalendar, PlacesEachDayOfALongRepeatingAllDayEventOnce) {
    ImportReport report;
    const CalendarFileContent content = ImportSample("merge_long_daily.ics", report);
    EXPECT_EQ(content.Dates.size(), 365u);
    EXPECT_EQ(report.Occurrences, 365);
    EXPECT_EQ(FindDate(content, 7, 4)->Entry.Title.Trimmed(), "Always");
}

// The calendar file of `year` an import of `text` writes, or nothing when
// the import fails.
QByteArray ImportedBytes(const QStringList& text, int year, ImportReport& report,
                         ImportedDates& dates) {
    QByteArray bytes = testing::ICalLines(text);
    QBuffer file(&bytes);
    file.open(QIODevice::ReadOnly);
    if (!ImportICalendar(file, {year, nullptr}, dates, report)) {
        return {};
    }
    QStringList warnings;
    QBuffer calendar;
    calendar.open(QIODevice::WriteOnly);
    LineWriter out(calendar);
    WriteCalendarFile(out, dates.NewCalendar(year, warnings));
    out.Flush();
    return calendar.data();
}

QByteArray ImportedBytes(const QStringList& text, ImportReport& report) {
    ImportedDates dates;
    return ImportedBytes(text, 2026, report, dates);
}

const QStringList kWeekly =
    testing::VEvent("weekly", {"DTSTART:20260105T091500", "DTEND:20260105T093000",
                               "RRULE:FREQ=WEEKLY;COUNT=4", "SUMMARY:Weekly"});
const QStringList kMoved = testing::VEvent(
    "weekly", {"RECURRENCE-ID:20260112T091500", "DTSTART:20260113T100000", "SUMMARY:Moved"});

TEST(ImportICalendar, PlacesTheSameWhetherAMovedOccurrenceComesBeforeOrAfterItsSeries) {
    ImportReport first;
    ImportReport last;
    const QByteArray movedFirst = ImportedBytes(testing::VCalendar(kMoved + kWeekly), first);
    ASSERT_FALSE(movedFirst.isEmpty()) << first.Problem.toStdString();
    EXPECT_EQ(ImportedBytes(testing::VCalendar(kWeekly + kMoved), last), movedFirst);
    EXPECT_EQ(first.Events, 2);
    EXPECT_EQ(last.Events, 2);
    EXPECT_EQ(first.Occurrences, 4);
    EXPECT_EQ(last.Occurrences, 4);
}

// A rule that stops the import leaves the reading of the rest of the file to
// find a line that stops it first: the file's problem is told, and nothing is
// placed.
TEST(ImportICalendar, TellsALaterUnreadableLineRatherThanARuleCutShort) {
    const QStringList seventhMonth =
        testing::VEvent("a", {"DTSTART:20260131T100000", "RRULE:FREQ=MONTHLY;INTERVAL=7;COUNT=2000",
                              "SUMMARY:Seventh month"});
    const QStringList placed = testing::VEvent("b", {"DTSTART:30010105", "SUMMARY:Placed"});
    const QStringList unreadable = testing::VEvent("c", {"DTSTART:soon"});
    ImportReport report;
    ImportedDates dates;
    EXPECT_TRUE(
        ImportedBytes(testing::VCalendar(placed + seventhMonth + unreadable), 3001, report, dates)
            .isEmpty());
    EXPECT_EQ(report.ProblemLine, 20);
    EXPECT_EQ(report.Problem, "the DTSTART value 'soon' is not a date or a date and time");
    EXPECT_EQ(report.Events, 0);
    EXPECT_EQ(report.Occurrences, 0);
    EXPECT_TRUE(dates.Empty());

    ImportReport cutShort;
    ImportedDates some;
    EXPECT_TRUE(
        ImportedBytes(testing::VCalendar(placed + seventhMonth), 3001, cutShort, some).isEmpty());
    EXPECT_EQ(cutShort.ProblemLine, 10);
    EXPECT_EQ(cutShort.Problem,
              "a repeat rule can be followed up to the year 2582 only, not in the year 3001");
    EXPECT_EQ(cutShort.Events, 2);
}

// The lines the import does not hand to libical are only ones libical reads
// without a warning; a DTSTAMP it cannot read is still told.
TEST(ImportICalendar, TellsOfAnUnreadableStampAndPlacesAnEventWithALocation) {
    const QStringList event = {"BEGIN:VEVENT",    "UID:a",
                               "DTSTAMP:soon",    "DTSTART:20260105T100000",
                               "LOCATION:Room 5", "LAST-MODIFIED:20260101T000000Z",
                               "SUMMARY:Meeting", "END:VEVENT"};
    ImportReport report;
    ImportedDates dates;
    EXPECT_FALSE(ImportedBytes(testing::VCalendar(event), 2026, report, dates).isEmpty());
    ASSERT_EQ(report.Warnings.size(), 1);
    EXPECT_TRUE(report.Warnings[0].startsWith("line 6: ")) << report.Warnings[0].toStdString();
    EXPECT_TRUE(report.Warnings[0].endsWith("; the line is left out"));
    EXPECT_EQ(report.Occurrences, 1);
}

// Of two DTSTARTs the first is the event's start, whichever of them libical
// parses.
TEST(ImportICalendar, TakesTheFirstOfTwoStartsWhicheverFormEachHas) {
    const auto startedOn = [](const QString& first, const QString& second) {
        ImportReport report;
        ImportedDates dates;
        const QStringList event = testing::VEvent("a", {first, second, "SUMMARY:Twice"});
        EXPECT_FALSE(ImportedBytes(testing::VCalendar(event), 2026, report, dates).isEmpty());
        QStringList warnings;
        const CalendarFileContent content = dates.NewCalendar(2026, warnings);
        return FindDate(content, 1, 5) != nullptr ? 5 : FindDate(content, 1, 6) != nullptr ? 6 : 0;
    };
    EXPECT_EQ(startedOn("DTSTART:20260105T100000", "dtstart:20260106T100000"), 5);
    EXPECT_EQ(startedOn("dtstart:20260106T100000", "DTSTART:20260105T100000"), 6);
    EXPECT_EQ(startedOn("DTSTART;VALUE=DATE:20260105", "DTSTART:20260106T100000"), 5);
    EXPECT_EQ(startedOn("DTSTART;VALUE=DATE-TIME:20260106T100000", "DTSTART;VALUE=DATE:20260105"),
              6);
}

}  // namespace
}  // namespace kelvane::cal
