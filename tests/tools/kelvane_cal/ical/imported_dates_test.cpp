#include <gtest/gtest.h>

#include "fixtures/DateLookup.h"
#include "kelvane_cal/ical/ImportedDates.h"
#include "support/QtPrinting.h"

namespace kelvane::cal {
namespace {

using testing::FindDate;

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
    ASSERT_NE(FindDate(content, 2, 29), nullptr);
    EXPECT_TRUE(warnings.isEmpty());
}

TEST(ImportedDates, CutsJoinedTitlesToTheTitlesLengthAndSaysSo) {
    ImportedDates dates;
    for (int i = 0; i < 100; ++i) {
        dates.AddTitle(3, 3, QStringLiteral("Event number %1").arg(i));
    }
    QStringList warnings;
    const CalendarFileContent content = dates.NewCalendar(2026, warnings);
    EXPECT_EQ(FindDate(content, 3, 3)->Entry.Title.Trimmed().size(), 255);
    EXPECT_TRUE(FindDate(content, 3, 3)
                    ->Entry.Title.Trimmed()
                    .startsWith("Event number 0; Event number 1; "));
    EXPECT_EQ(warnings, QStringList{"3 March: the title was cut to 255 characters"});
}

TEST(ImportedDates, CutsNotesTo800CharactersAndSaysSo) {
    ImportedDates dates;
    dates.AddNote(4, 4, QString(500, QLatin1Char('x')));
    dates.AddNote(4, 4, QString(500, QLatin1Char('y')));
    dates.AddNote(4, 4, "never kept");
    QStringList warnings;
    const CalendarFileContent content = dates.NewCalendar(2026, warnings);
    const QString note = FindDate(content, 4, 4)->Note;
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
    EXPECT_EQ(FindDate(content, 6, 6)->Entry.Title.Trimmed(), QString(254, QLatin1Char('t')));
    EXPECT_EQ(FindDate(content, 6, 6)->Note, QString(799, QLatin1Char('n')));
    EXPECT_EQ(warnings.size(), 2);
}

TEST(ImportedDates, CutsNeverSplitAGrapheme) {
    const QString family = QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467");
    const QString france = QStringLiteral("\U0001F1EB\U0001F1F7");
    ImportedDates dates;
    dates.AddTitle(6, 6, QString(250, QLatin1Char('t')) + family);
    dates.AddNote(6, 6, QString(799, QLatin1Char('n')) + QStringLiteral("e\u0301"));
    dates.AddActivity(6, 6, QString(48, QLatin1Char('d')) + france, {9, 0}, {-1, -1});
    QStringList warnings;
    const CalendarFileContent content = dates.NewCalendar(2026, warnings);
    EXPECT_EQ(FindDate(content, 6, 6)->Entry.Title.Trimmed(), QString(250, QLatin1Char('t')));
    EXPECT_EQ(FindDate(content, 6, 6)->Note, QString(799, QLatin1Char('n')));
    ASSERT_EQ(FindDate(content, 6, 6)->Schedule.size(), 1u);
    EXPECT_EQ(FindDate(content, 6, 6)->Schedule[0].Description.Trimmed(),
              QString(48, QLatin1Char('d')));
}

TEST(ImportedDates, KeepsANoteOfExactly800CharactersWhole) {
    ImportedDates dates;
    dates.AddNote(4, 4, QString(800, QLatin1Char('x')));
    QStringList warnings;
    EXPECT_EQ(FindDate(dates.NewCalendar(2026, warnings), 4, 4)->Note.size(), 800);
    EXPECT_TRUE(warnings.isEmpty());
}

TEST(ImportedDates, TurnsLineFeedsIntoTheNotesLineBreaks) {
    ImportedDates dates;
    dates.AddNote(5, 5, "one\ntwo\r\nthree\rfour");
    QStringList warnings;
    EXPECT_EQ(FindDate(dates.NewCalendar(2026, warnings), 5, 5)->Note,
              "one\r\ntwo\r\nthree\r\nfour");
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
    const auto& schedule = FindDate(content, 6, 6)->Schedule;
    ASSERT_EQ(schedule.size(), 39u);
    for (int i = 0; i < 39; ++i) {
        EXPECT_EQ(schedule[static_cast<std::size_t>(i)].StartTime.Minute, i);
    }
    EXPECT_EQ(warnings, QStringList{"6 June: 6 activities after the 39 earliest left out"});
}

// On a full date an activity that starts with the last one comes after it,
// and is the one left out.
TEST(ImportedDates, LeavesOutAnActivityThatStartsWithTheLastOfAFullDate) {
    ImportedDates dates;
    for (int i = 0; i < ImportedDates::kActivitiesPerDate; ++i) {
        dates.AddActivity(6, 6, QStringLiteral("m%1").arg(i), {10, static_cast<qint16>(i)},
                          {-1, 0});
    }
    dates.AddActivity(6, 6, QStringLiteral("late tie"), {10, 38}, {-1, 0});
    dates.AddActivity(6, 6, QStringLiteral("early tie"), {10, 0}, {-1, 0});
    QStringList warnings;
    QStringList descriptions;
    const CalendarFileContent content = dates.NewCalendar(2026, warnings);
    for (const Appointment& activity : FindDate(content, 6, 6)->Schedule) {
        descriptions << activity.Description.Trimmed();
    }
    ASSERT_EQ(descriptions.size(), 39);
    EXPECT_EQ(descriptions.mid(0, 3), (QStringList{"m0", "early tie", "m1"}));
    EXPECT_EQ(descriptions.last(), "m37");
    EXPECT_EQ(warnings, QStringList{"6 June: 2 activities after the 39 earliest left out"});
}

TEST(ImportedDates, KeepsActivitiesThatStartTogetherInTheOrderTheyCame) {
    ImportedDates dates;
    dates.AddActivity(6, 7, "first", {9, 0}, {-1, 0});
    dates.AddActivity(6, 7, "second", {9, 0}, {10, 0});
    dates.AddActivity(6, 7, "first", {9, 0}, {-1, 0});  // another event just like it
    QStringList warnings;
    const CalendarFileContent content = dates.NewCalendar(2026, warnings);
    const auto& schedule = FindDate(content, 6, 7)->Schedule;
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
    const auto& schedule = FindDate(content, 7, 1)->Schedule;
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

// A calendar whose 8 August holds `count` activities from 20:00, a minute apart.
CalendarFileContent HeldOn8August(int count) {
    CalendarFileDate date;
    date.Month = 8;
    date.Day = 8;
    for (int i = 0; i < count; ++i) {
        Appointment entry;
        entry.Description = QStringLiteral("held %1").arg(i);
        entry.StartTime = {20, static_cast<qint16>(i)};
        entry.EndTime = {-1, 0};
        date.Schedule.push_back(entry);
    }
    CalendarFileContent calendar;
    calendar.Dates = {date};
    return calendar;
}

TEST(ImportedDates, FillsUpAnExistingScheduleTo39WithTheEarliestOfAll) {
    CalendarFileContent calendar = HeldOn8August(38);
    ImportedDates dates;
    dates.AddActivity(8, 8, "new early", {6, 0}, {-1, 0});
    dates.AddActivity(8, 8, "new later", {7, 0}, {-1, 0});
    QStringList warnings;
    dates.MergeInto(calendar, warnings);
    const auto& schedule = calendar.Dates[0].Schedule;
    ASSERT_EQ(schedule.size(), 39u);
    EXPECT_EQ(schedule[0].Description.Trimmed(), "held 0");
    EXPECT_EQ(schedule[36].Description.Trimmed(), "held 36");
    EXPECT_EQ(schedule[37].Description.Trimmed(), "new early");
    EXPECT_EQ(schedule[38].Description.Trimmed(), "new later");
    EXPECT_EQ(warnings, QStringList{"8 August: 1 activity after the 39 earliest left out"});
}

TEST(ImportedDates, KeepsTheEarliestOfHeldAndImportedActivitiesOfAFullDate) {
    CalendarFileContent calendar = HeldOn8August(ImportedDates::kActivitiesPerDate);
    ImportedDates dates;
    dates.AddActivity(8, 8, "new early", {6, 0}, {-1, 0});
    dates.AddActivity(8, 8, "new too late", {21, 0}, {-1, 0});
    QStringList warnings;
    dates.MergeInto(calendar, warnings);
    const auto& schedule = calendar.Dates[0].Schedule;
    ASSERT_EQ(schedule.size(), 39u);
    EXPECT_EQ(schedule[0].Description.Trimmed(), "held 0");
    EXPECT_EQ(schedule[37].Description.Trimmed(), "held 37");
    EXPECT_EQ(schedule[38].Description.Trimmed(), "new early");
    EXPECT_EQ(warnings, QStringList{"8 August: 2 activities after the 39 earliest left out"});
}

CalendarFileContent HeldCalendar(const QString& title, const QString& note) {
    CalendarFileContent calendar;
    CalendarFileDate date;
    date.Month = 5;
    date.Day = 12;
    date.Entry.Title = title;
    date.Note = note;
    calendar.Dates = {date};
    return calendar;
}

TEST(ImportedDates, FindsAHeldTitleThatHoldsTheSeparatorItself) {
    CalendarFileContent calendar = HeldCalendar("Team; Offsite; Lunch", "");
    ImportedDates dates;
    dates.AddTitle(5, 12, "Team; Offsite");
    dates.AddTitle(5, 12, "Lunch");
    QStringList warnings;
    dates.MergeInto(calendar, warnings);
    EXPECT_EQ(calendar.Dates[0].Entry.Title.Trimmed(), "Team; Offsite; Lunch");
    EXPECT_TRUE(warnings.isEmpty());
}

TEST(ImportedDates, TakesATitleAndANoteCutByAnEarlierImportAsHeld) {
    const QString longTitle = QString(300, QLatin1Char('t'));
    const QString longNote = QString(900, QLatin1Char('n'));
    CalendarFileContent calendar = HeldCalendar(longTitle.left(255), longNote.left(800));
    ImportedDates dates;
    dates.AddTitle(5, 12, longTitle);
    dates.AddNote(5, 12, longNote);
    QStringList warnings;
    dates.MergeInto(calendar, warnings);
    EXPECT_EQ(calendar.Dates[0].Entry.Title.Trimmed(), longTitle.left(255));
    EXPECT_EQ(calendar.Dates[0].Note, longNote.left(800));
    EXPECT_TRUE(warnings.isEmpty()) << warnings.join('\n').toStdString();
}

// A title of separate imported parts that the held title already shows, as
// parts or as a run of them, is taken as held: the date reads the same.
TEST(ImportedDates, TakesTitlesThatAreHeldPartsAsHeld) {
    CalendarFileContent calendar = HeldCalendar("Team; Offsite", "Room 12\r\nBring a pen");
    ImportedDates dates;
    dates.AddTitle(5, 12, "Team");
    dates.AddTitle(5, 12, "Offsite");
    dates.AddNote(5, 12, "Bring a pen");
    QStringList warnings;
    dates.MergeInto(calendar, warnings);
    EXPECT_EQ(calendar.Dates[0].Entry.Title.Trimmed(), "Team; Offsite");
    EXPECT_EQ(calendar.Dates[0].Note, "Room 12\r\nBring a pen");
}

TEST(ImportedDates, AddsATitleThatIsOnlyTheStartOfAHeldPart) {
    CalendarFileContent calendar = HeldCalendar("Teamwork", "");
    ImportedDates dates;
    dates.AddTitle(5, 12, "Team");
    QStringList warnings;
    dates.MergeInto(calendar, warnings);
    EXPECT_EQ(calendar.Dates[0].Entry.Title.Trimmed(), "Teamwork; Team");
}

TEST(ImportedDates, AddsANoteThatIsOnlyPartOfAHeldLine) {
    CalendarFileContent calendar = HeldCalendar("", "Room 12\r\nBring a pen");
    ImportedDates dates;
    dates.AddNote(5, 12, "Room 1");
    dates.AddNote(5, 12, "Bring a pen");
    dates.AddNote(5, 12, "Room 12\nBring a pen");
    QStringList warnings;
    dates.MergeInto(calendar, warnings);
    EXPECT_EQ(calendar.Dates[0].Note, "Room 12\r\nBring a pen\r\nRoom 1");
}

TEST(ImportedDates, MergingTheSameTwiceChangesNothingTheSecondTime) {
    const QString party = QStringLiteral("\U0001F389");
    ImportedDates dates;
    dates.AddTitle(5, 12, "Team; Offsite");
    dates.AddTitle(5, 12, "Lunch");
    dates.AddNote(5, 12, "Room 1");
    dates.AddActivity(5, 12, QString(49, QLatin1Char('x')) + party + "more", {10, 0}, {11, 0});
    CalendarFileContent calendar = HeldCalendar("Team", "Room 12");
    QStringList warnings;
    dates.MergeInto(calendar, warnings);
    const CalendarFileContent once = calendar;
    EXPECT_EQ(once.Dates[0].Entry.Title.Trimmed(), "Team; Team; Offsite; Lunch");
    EXPECT_EQ(once.Dates[0].Note, "Room 12\r\nRoom 1");
    ASSERT_EQ(once.Dates[0].Schedule.size(), 1u);
    EXPECT_EQ(once.Dates[0].Schedule[0].Description.Trimmed(), QString(49, QLatin1Char('x')));
    dates.MergeInto(calendar, warnings);
    EXPECT_EQ(calendar, once);
}

TEST(ImportedDates, LeavesAFullTitleAndNoteAsTheyAre) {
    const QString party = QStringLiteral("\U0001F389");
    // Cut where the emoji would have been split: one unit short of full.
    const QString title = QString(254, QLatin1Char('t'));
    const QString note = QString(799, QLatin1Char('n'));
    CalendarFileContent calendar = HeldCalendar(title, note);
    ImportedDates dates;
    dates.AddTitle(5, 12, title + party);
    dates.AddNote(5, 12, note + party);
    QStringList warnings;
    dates.MergeInto(calendar, warnings);
    EXPECT_EQ(calendar.Dates[0].Entry.Title.Trimmed(), title);
    EXPECT_EQ(calendar.Dates[0].Note, note);
}

TEST(ImportedDates, LeavesATitleFullUpToAGraphemeAsItIs) {
    // An earlier import cut the title where a ZWJ sequence of eight code units
    // would have begun: five units short of full.
    const QString family = QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467");
    const QString title = QString(250, QLatin1Char('t'));
    CalendarFileContent calendar = HeldCalendar(title, QString());
    ImportedDates dates;
    dates.AddTitle(5, 12, title + family);
    QStringList warnings;
    dates.MergeInto(calendar, warnings);
    EXPECT_EQ(calendar.Dates[0].Entry.Title.Trimmed(), title);
    EXPECT_TRUE(warnings.isEmpty()) << warnings.join(", ").toStdString();
}

}  // namespace
}  // namespace kelvane::cal
