#include <gtest/gtest.h>

#include "fixtures/CalFiles.h"
#include "fixtures/ExportSample.h"
#include "kelvane_cal/ical/ICalExport.h"
#include "kelvane_cal/ical/LibIcal.h"
#include "kelvane_cal/ical/MarkedEnds.h"

namespace kelvane::cal {
namespace {

using testing::Activity;
using testing::DateOf;
using testing::EventsOf;
using testing::SampleCalendar;
using testing::Uid;

// The lines of the event with `uid` as the text writes them, without folding.
QByteArrayList EventLines(const QByteArray& text, const QString& uid) {
    QByteArray unfolded = text;
    unfolded.replace("\r\n ", "");
    QByteArrayList lines;
    bool found = false;
    for (const QByteArray& line : unfolded.split('\n')) {
        const QByteArray trimmed = line.trimmed();
        if (trimmed == "BEGIN:VEVENT") {
            lines.clear();
        }
        lines << trimmed;
        found = found || trimmed == "UID:" + uid.toUtf8();
        if (trimmed == "END:VEVENT" && found) {
            return lines;
        }
    }
    return {};
}

QString Property(icalcomponent* event, icalproperty_kind kind) {
    icalproperty* property = icalcomponent_get_first_property(event, kind);
    return property == nullptr ? QString() : FromIcal(icalproperty_get_value_as_string(property));
}

TEST(ExportToICalendar, WritesAnEventForEachTitleNoteAndActivity) {
    const ExportResult result = ExportToICalendar(
        SampleCalendar(),
        {"/somewhere/plans.cal", 2028, QDateTime(QDate(2026, 11, 23), QTime(9, 30), Qt::UTC), {}});
    auto events = EventsOf(result.Text);
    EXPECT_EQ(events.size(), 6u);
    EXPECT_EQ(result.AllDayEvents, 3);
    EXPECT_EQ(result.TimedEvents, 3);

    icalcomponent* day = events[Uid(2028, 1, 1, 0)].get();
    ASSERT_NE(day, nullptr);
    EXPECT_EQ(Property(day, ICAL_DTSTART_PROPERTY), "20280101");
    EXPECT_EQ(Property(day, ICAL_DTEND_PROPERTY), "20280102");
    EXPECT_EQ(Property(day, ICAL_SUMMARY_PROPERTY), "New Year");
    EXPECT_EQ(FromIcal(icalcomponent_get_description(day)), "Sleep in\nThen a walk");
    EXPECT_EQ(Property(day, ICAL_DTSTAMP_PROPERTY), "20261123T093000Z");

    icalcomponent* brunch = events[Uid(2028, 1, 1, 1)].get();
    ASSERT_NE(brunch, nullptr);
    EXPECT_EQ(Property(brunch, ICAL_DTSTART_PROPERTY), "20280101T110000");
    EXPECT_EQ(Property(brunch, ICAL_DTEND_PROPERTY), "20280101T123000");
    EXPECT_EQ(Property(brunch, ICAL_SUMMARY_PROPERTY), "Brunch");
    EXPECT_FALSE(result.Text.contains("TZID")) << "activities are in floating time";

    icalcomponent* film = events[Uid(2028, 1, 1, 2)].get();
    ASSERT_NE(film, nullptr);
    EXPECT_EQ(Property(film, ICAL_DTSTART_PROPERTY), "20280101T201500");
    EXPECT_EQ(icalcomponent_get_first_property(film, ICAL_DTEND_PROPERTY), nullptr);
    EXPECT_EQ(icalcomponent_get_first_property(film, ICAL_DURATION_PROPERTY), nullptr);

    icalcomponent* note = events[Uid(2028, 2, 2, 0)].get();
    ASSERT_NE(note, nullptr);
    EXPECT_TRUE(EventLines(result.Text, Uid(2028, 2, 2, 0)).contains("SUMMARY:"))
        << "an empty summary: calcurse fails on an event without one";
    EXPECT_EQ(FromIcal(icalcomponent_get_description(note)), "Only a note");

    EXPECT_NE(events[Uid(2028, 2, 29, 0)], nullptr) << "2028 has a 29 February";
    EXPECT_EQ(events.count(Uid(2028, 7, 7, 0)), 0u) << "colours alone export nothing";
}

TEST(ExportToICalendar, EndsAnActivityThatEndsBeforeItStartsOnTheNextDay) {
    const ExportResult result = ExportToICalendar(SampleCalendar(), {"plans.cal", 2028, {}, {}});
    auto events = EventsOf(result.Text);
    icalcomponent* late = events[Uid(2028, 6, 1, 1)].get();
    ASSERT_NE(late, nullptr);
    EXPECT_EQ(Property(late, ICAL_DTSTART_PROPERTY), "20280601T230000");
    EXPECT_EQ(Property(late, ICAL_DTEND_PROPERTY), "20280602T010000");
    EXPECT_FALSE(result.Warnings.join('\n').contains("Late show"));
    // Slot 2 is empty, and slot 3 has no time of day.
    EXPECT_EQ(events.count(Uid(2028, 6, 1, 2)), 0u);
    EXPECT_EQ(events.count(Uid(2028, 6, 1, 3)), 0u);
    EXPECT_TRUE(result.Warnings.contains(
        "1 June: activity 3 (\"Broken\") starts at 24:10, which is no time of day; left out"));
}

TEST(ExportToICalendar, EndsAnActivityPastMidnightOn31DecemberInTheNextYear) {
    CalendarFileContent content;
    CalendarFileDate date = DateOf(12, 31);
    date.Schedule = {Activity("Party", {23, 0}, {1, 0})};
    content.Dates = {date};
    ExportResult result = ExportToICalendar(content, {"plans.cal", 2028, {}, {}});
    auto events = EventsOf(result.Text);
    ASSERT_NE(events[Uid(2028, 12, 31, 1)], nullptr);
    EXPECT_EQ(Property(events[Uid(2028, 12, 31, 1)].get(), ICAL_DTEND_PROPERTY), "20290101T010000");
    EXPECT_TRUE(result.Warnings.isEmpty());

    // No DTEND can be in the year 10000.
    result = ExportToICalendar(content, {"plans.cal", 9999, {}, {}});
    EXPECT_FALSE(result.Text.contains("DTEND"));
    EXPECT_EQ(result.Warnings, QStringList{"31 December: activity 1 (\"Party\") ends at 01:00 on "
                                           "the next day, which is past the year 9999; exported "
                                           "without an end"});
}

TEST(ExportToICalendar, LeavesOut29FebruaryInAYearWithoutOne) {
    const ExportResult result = ExportToICalendar(SampleCalendar(), {"plans.cal", 2027, {}, {}});
    auto events = EventsOf(result.Text);
    EXPECT_EQ(events.count(Uid(2027, 2, 29, 0)), 0u);
    EXPECT_EQ(events.count(Uid(2027, 3, 1, 0)), 0u);
    EXPECT_EQ(events.size(), 5u);
    EXPECT_TRUE(result.Warnings.contains("29 February is left out: 2027 has no 29 February"));
}

TEST(ExportToICalendar, GivesStableUidsMadeOfTheFileNameDateAndSlot) {
    const QByteArray once = ExportToICalendar(SampleCalendar(), {"a/plans.cal", 2028, {}, {}}).Text;
    const QByteArray again =
        ExportToICalendar(SampleCalendar(), {"b/plans.cal", 2028, {}, {}}).Text;
    EXPECT_EQ(once, again);
    const QString uid = EventUid("plans.cal", 2028, 6, 1, 3);
    EXPECT_TRUE(uid.startsWith("20280601-a3-"));
    EXPECT_TRUE(uid.endsWith("@kelvane"));
    EXPECT_NE(uid, EventUid("other.cal", 2028, 6, 1, 3));
    EXPECT_NE(uid, EventUid("plans.cal", 2029, 6, 1, 3));
    EXPECT_NE(EventUid("plans.cal", 2028, 6, 1, 0), EventUid("plans.cal", 2028, 6, 2, 0));
}

// The UIDs are kept in publish states and on servers, so their text stays
// exactly as it was: four-digit year, two-digit month and day, the slot.
TEST(ExportToICalendar, WritesUidsDigitForDigit) {
    const QString ending = EventUidEnding(QStringLiteral("plans.cal"));
    EXPECT_EQ(EventUid("plans.cal", 2028, 1, 9, 0), "20280109-day" + ending);
    EXPECT_EQ(EventUid("plans.cal", 987, 12, 31, 40), "09871231-a40" + ending);
    EXPECT_EQ(EventUid("plans.cal", 12345, 10, 10, 7), "123451010-a7" + ending);
    EXPECT_EQ(EventUid("plans.cal", 2028, 2, 3, -1), "20280203-a-1" + ending);
    EXPECT_TRUE(ending.startsWith("-") && ending.endsWith("@kelvane"));
}

TEST(ExportToICalendar, MakesUidsOfTheSeedAskedFor) {
    const QByteArray plain =
        ExportToICalendar(SampleCalendar(), {"a/plans.cal", 2028, {}, {}}).Text;
    const QByteArray work =
        ExportToICalendar(SampleCalendar(), {"a/plans.cal", 2028, {}, "work"}).Text;
    const QByteArray home =
        ExportToICalendar(SampleCalendar(), {"b/plans.cal", 2028, {}, "home"}).Text;
    EXPECT_NE(work, home);
    EXPECT_NE(work, plain);
    EXPECT_EQ(EventsOf(work).count(EventUid("work", 2028, 1, 1, 1)), 1u);
    EXPECT_EQ(EventsOf(home).count(EventUid("home", 2028, 1, 1, 1)), 1u);
    EXPECT_EQ(EventsOf(plain).count(EventUid("plans.cal", 2028, 1, 1, 1)), 1u);
}

TEST(ExportToICalendar, KeepsTextsThatAreNotPlainAscii) {
    CalendarFileContent content;
    CalendarFileDate date = DateOf(3, 3);
    date.Entry.Title = QString::fromUtf8("Café, Grüße; naïve \"quotes\", back\\slash");
    date.Note = QString(300, QChar(0x00E9));
    content.Dates = {date};
    auto events = EventsOf(ExportToICalendar(content, {"plans.cal", 2026, {}, {}}).Text);
    icalcomponent* event = events[Uid(2026, 3, 3, 0)].get();
    ASSERT_NE(event, nullptr);
    EXPECT_EQ(FromIcal(icalcomponent_get_summary(event)), date.Entry.Title.Trimmed());
    EXPECT_EQ(FromIcal(icalcomponent_get_description(event)), date.Note);
}

// libical leaves VALUE=DATE out in year 1, which calcurse then refuses.
TEST(ExportToICalendar, MarksEveryDateAsADateInYear1Too) {
    for (const int year : {1, 2028}) {
        const ExportResult result =
            ExportToICalendar(SampleCalendar(), {"plans.cal", year, {}, {}});
        const QByteArray digits = QByteArray::number(year).rightJustified(4, '0');
        const QByteArrayList lines = EventLines(result.Text, Uid(year, 1, 1, 0));
        EXPECT_TRUE(lines.contains("DTSTART;VALUE=DATE:" + digits + "0101")) << year;
        EXPECT_TRUE(lines.contains("DTEND;VALUE=DATE:" + digits + "0102")) << year;
        EXPECT_EQ(EventsOf(result.Text).size(), QDate::isLeapYear(year) ? 6u : 5u);
    }
}

TEST(ExportToICalendar, WritesAnActivityThatEndsWhenItStartsAsOneMarkedSecond) {
    CalendarFileContent content;
    CalendarFileDate date = DateOf(3, 15);
    date.Schedule = {Activity("Stand-up", {12, 0}, {12, 0})};
    content.Dates = {date};
    const ExportResult result = ExportToICalendar(content, {"plans.cal", 2028, {}, {}});
    auto events = EventsOf(result.Text);
    icalcomponent* event = events[Uid(2028, 3, 15, 1)].get();
    ASSERT_NE(event, nullptr);
    EXPECT_EQ(Property(event, ICAL_DTSTART_PROPERTY), "20280315T120000");
    // calcurse refuses an end equal to the start and a DURATION of zero; a
    // second reads as 12:00-12:00 in calcurse and khal alike.
    EXPECT_EQ(icalcomponent_get_first_property(event, ICAL_DTEND_PROPERTY), nullptr);
    EXPECT_EQ(Property(event, ICAL_DURATION_PROPERTY), "PT1S");
    EXPECT_TRUE(EventLines(result.Text, Uid(2028, 3, 15, 1))
                    .contains(QByteArray(kZeroLengthProperty) + ":TRUE"));
    EXPECT_TRUE(result.Warnings.isEmpty());
}

TEST(ExportToICalendar, WritesTheDatesAndTimesOfYearsAfter3000) {
    ExportResult result = ExportToICalendar(SampleCalendar(), {"plans.cal", 5000, {}, {}});
    EXPECT_FALSE(result.Text.contains("00000000"));
    auto events = EventsOf(result.Text);
    ASSERT_NE(events[Uid(5000, 1, 1, 0)], nullptr);
    EXPECT_EQ(Property(events[Uid(5000, 1, 1, 0)].get(), ICAL_DTSTART_PROPERTY), "50000101");
    EXPECT_EQ(Property(events[Uid(5000, 1, 1, 0)].get(), ICAL_DTEND_PROPERTY), "50000102");
    ASSERT_NE(events[Uid(5000, 1, 1, 1)], nullptr);
    EXPECT_EQ(Property(events[Uid(5000, 1, 1, 1)].get(), ICAL_DTSTART_PROPERTY), "50000101T110000");
    EXPECT_EQ(Property(events[Uid(5000, 1, 1, 1)].get(), ICAL_DTEND_PROPERTY), "50000101T123000");
    EXPECT_EQ(Property(events[Uid(5000, 6, 1, 1)].get(), ICAL_DTEND_PROPERTY), "50000602T010000");

    // 31 December 9999 lasts a day; the next day has no iCalendar date.
    CalendarFileContent content;
    CalendarFileDate last = DateOf(12, 31);
    last.Entry.Title = "Last";
    content.Dates = {last};
    result = ExportToICalendar(content, {"plans.cal", 9999, {}, {}});
    events = EventsOf(result.Text);
    icalcomponent* event = events[Uid(9999, 12, 31, 0)].get();
    ASSERT_NE(event, nullptr);
    EXPECT_EQ(Property(event, ICAL_DTSTART_PROPERTY), "99991231");
    EXPECT_EQ(icalcomponent_get_first_property(event, ICAL_DTEND_PROPERTY), nullptr);
    EXPECT_EQ(Property(event, ICAL_DURATION_PROPERTY), "P1D");
    EXPECT_TRUE(result.Warnings.isEmpty());
}

}  // namespace
}  // namespace kelvane::cal
