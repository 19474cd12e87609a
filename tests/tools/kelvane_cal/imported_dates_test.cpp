#include <gtest/gtest.h>

#include "kelvane_cal/ImportedDates.h"

namespace kelvane::cal {
namespace {

const CalendarFileDate* Find(const CalendarFileContent& content, int month, int day) {
    for (const CalendarFileDate& date : content.Dates) {
        if (date.Month == month && date.Day == day) {
            return &date;
        }
    }
    return nullptr;
}

TEST(ImportedDates, LaysOutAYearWithout29FebruaryAsNotLeap) {
    ImportedDates dates;
    QStringList warnings;
    const CalendarFileContent content = dates.NewCalendar(2026, warnings);
    EXPECT_EQ(content.Settings.Year, -2026);
    EXPECT_EQ(content.Settings.FirstDay, 5);  // 1 January 2026 is a Thursday
}

TEST(ImportedDates, MakesANewCalendarWithTheDefaultLook) {
    ImportedDates dates;
    dates.AddTitle(2, 29, "Leap");
    QStringList warnings;
    const CalendarFileContent content = dates.NewCalendar(2028, warnings);
    EXPECT_EQ(content.Settings.Year, 2028);
    EXPECT_EQ(content.Settings.FirstDay, 7);  // 1 January 2028 is a Saturday
    EXPECT_EQ(content.Settings.FontName, "Arial");
    EXPECT_EQ(content.Settings.FontSize, 9);
    EXPECT_EQ(content.Settings.ColourList[0].Name.Trimmed(), "Back Colour");
    EXPECT_TRUE(content.Settings.ToolsShown);
    EXPECT_TRUE(content.Settings.CalenderShown);
    ASSERT_NE(Find(content, 2, 29), nullptr);
    EXPECT_TRUE(warnings.isEmpty());
}

TEST(ImportedDates, CutsJoinedTitlesToTheTitlesLengthAndSaysSo) {
    ImportedDates dates;
    for (int i = 0; i < 100; ++i) {
        dates.AddTitle(3, 3, QStringLiteral("Event number %1").arg(i));
    }
    QStringList warnings;
    const CalendarFileContent content = dates.NewCalendar(2026, warnings);
    EXPECT_EQ(Find(content, 3, 3)->Entry.Title.Trimmed().size(), 255);
    EXPECT_TRUE(
        Find(content, 3, 3)->Entry.Title.Trimmed().startsWith("Event number 0; Event number 1; "));
    EXPECT_EQ(warnings, QStringList{"3 March: the title was cut to 255 characters"});
}

TEST(ImportedDates, CutsNotesTo800CharactersAndSaysSo) {
    ImportedDates dates;
    dates.AddNote(4, 4, QString(500, QLatin1Char('x')));
    dates.AddNote(4, 4, QString(500, QLatin1Char('y')));
    dates.AddNote(4, 4, "never kept");
    QStringList warnings;
    const CalendarFileContent content = dates.NewCalendar(2026, warnings);
    const QString note = Find(content, 4, 4)->Note;
    EXPECT_EQ(note.size(), 800);
    EXPECT_TRUE(note.startsWith(QString(500, QLatin1Char('x')) + "\r\ny"));
    EXPECT_EQ(warnings, QStringList{"4 April: the note was cut to 800 characters"});
}

TEST(ImportedDates, CutsNeverSplitAnEmoji) {
    const QString party = QStringLiteral("\U0001F389");  // two code units
    ImportedDates dates;
    dates.AddTitle(6, 6, QString(254, QLatin1Char('t')) + party);
    dates.AddNote(6, 6, QString(799, QLatin1Char('n')) + party);
    QStringList warnings;
    const CalendarFileContent content = dates.NewCalendar(2026, warnings);
    EXPECT_EQ(Find(content, 6, 6)->Entry.Title.Trimmed(), QString(254, QLatin1Char('t')));
    EXPECT_EQ(Find(content, 6, 6)->Note, QString(799, QLatin1Char('n')));
    EXPECT_EQ(warnings.size(), 2);
}

TEST(ImportedDates, KeepsANoteOfExactly800CharactersWhole) {
    ImportedDates dates;
    dates.AddNote(4, 4, QString(800, QLatin1Char('x')));
    QStringList warnings;
    EXPECT_EQ(Find(dates.NewCalendar(2026, warnings), 4, 4)->Note.size(), 800);
    EXPECT_TRUE(warnings.isEmpty());
}

TEST(ImportedDates, TurnsLineFeedsIntoTheNotesLineBreaks) {
    ImportedDates dates;
    dates.AddNote(5, 5, "one\ntwo\r\nthree\rfour");
    QStringList warnings;
    EXPECT_EQ(Find(dates.NewCalendar(2026, warnings), 5, 5)->Note, "one\r\ntwo\r\nthree\r\nfour");
}

TEST(ImportedDates, KeepsActivitiesByStartTimeAndDropsTheLatest) {
    ImportedDates dates;
    for (int i = 0; i < 45; ++i) {
        const int minute = (i * 37) % 45;  // every minute 0..44 once, out of order
        dates.AddActivity(6, 6, QStringLiteral("m%1").arg(minute),
                          {10, static_cast<qint16>(minute)}, {-1, 0});
    }
    QStringList warnings;
    const CalendarFileContent content = dates.NewCalendar(2026, warnings);
    const auto& schedule = Find(content, 6, 6)->Schedule;
    ASSERT_EQ(schedule.size(), 39u);
    for (int i = 0; i < 39; ++i) {
        EXPECT_EQ(schedule[static_cast<std::size_t>(i)].StartTime.Minute, i);
    }
    EXPECT_EQ(warnings, QStringList{"6 June: 6 activities after the 39 earliest left out"});
}

TEST(ImportedDates, KeepsActivitiesThatStartTogetherInTheOrderTheyCame) {
    ImportedDates dates;
    dates.AddActivity(6, 7, "first", {9, 0}, {-1, 0});
    dates.AddActivity(6, 7, "second", {9, 0}, {10, 0});
    dates.AddActivity(6, 7, "first", {9, 0}, {-1, 0});  // another event just like it
    QStringList warnings;
    const CalendarFileContent content = dates.NewCalendar(2026, warnings);
    const auto& schedule = Find(content, 6, 7)->Schedule;
    ASSERT_EQ(schedule.size(), 3u);
    EXPECT_EQ(schedule[0].Description.Trimmed(), "first");
    EXPECT_EQ(schedule[1].Description.Trimmed(), "second");
    EXPECT_EQ(schedule[2].Description.Trimmed(), "first");
}

TEST(ImportedDates, TouchesNoDateWithNothingToPutOnIt) {
    ImportedDates dates;
    dates.AddTitle(3, 3, "  ");
    dates.AddNote(3, 3, "\r\n");
    EXPECT_TRUE(dates.Empty());
    QStringList warnings;
    EXPECT_TRUE(dates.NewCalendar(2026, warnings).Dates.empty());
}

TEST(ImportedDates, GivesUntitledActivitiesANameAndCutsLongOnes) {
    ImportedDates dates;
    dates.AddActivity(7, 1, "  ", {9, 0}, {-1, 0});
    dates.AddActivity(7, 1, QString(60, QLatin1Char('z')), {10, 0}, {-1, 0});
    dates.AddActivity(7, 1, "two\r\nlines", {11, 0}, {-1, 0});
    QStringList warnings;
    const CalendarFileContent content = dates.NewCalendar(2026, warnings);
    const auto& schedule = Find(content, 7, 1)->Schedule;
    ASSERT_EQ(schedule.size(), 3u);
    EXPECT_EQ(schedule[0].Description.Trimmed(), "(no title)");
    EXPECT_EQ(schedule[1].Description.Trimmed().size(), 50);
    EXPECT_EQ(schedule[2].Description.Trimmed(), "two  lines");
    EXPECT_EQ(warnings, QStringList{"1 activity description was cut to 50 characters"});
}

TEST(ImportedDates, IgnoresDatesNoSlotHolds) {
    ImportedDates dates;
    dates.AddTitle(2, 30, "no such day");
    dates.AddTitle(13, 1, "no such month");
    dates.AddActivity(0, 1, "nowhere", {9, 0}, {-1, 0});
    EXPECT_TRUE(dates.Empty());
}

TEST(ImportedDates, FillsUpAnExistingScheduleTo39AndKeepsAllItHeld) {
    CalendarFileContent calendar;
    CalendarFileDate date;
    date.Month = 8;
    date.Day = 8;
    for (int i = 0; i < 38; ++i) {
        Appointment entry;
        entry.Description = QStringLiteral("held %1").arg(i);
        entry.StartTime = {20, static_cast<qint16>(i)};
        entry.EndTime = {-1, 0};
        date.Schedule.push_back(entry);
    }
    calendar.Dates = {date};
    ImportedDates dates;
    dates.AddActivity(8, 8, "new early", {6, 0}, {-1, 0});
    dates.AddActivity(8, 8, "new later", {7, 0}, {-1, 0});
    QStringList warnings;
    dates.MergeInto(calendar, warnings);
    const auto& schedule = calendar.Dates[0].Schedule;
    ASSERT_EQ(schedule.size(), 39u);
    EXPECT_EQ(schedule[0].Description.Trimmed(), "held 0");
    EXPECT_EQ(schedule[38].Description.Trimmed(), "new early");
    EXPECT_EQ(warnings, QStringList{"8 August: 1 activity after the 39 earliest left out"});
}

}  // namespace
}  // namespace kelvane::cal
