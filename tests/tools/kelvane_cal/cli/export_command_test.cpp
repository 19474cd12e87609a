#include <gtest/gtest.h>

#include <QBuffer>
#include <QFileInfo>

#include <map>

#include "fixtures/CalRun.h"
#include "kelvane_cal/ical/ICalExport.h"
#include "kelvane_cal/ical/ICalReader.h"
#include "kelvane_cal/ical/LibIcal.h"
#include "kelvane_cal/ical/MarkedEnds.h"

namespace kelvane::cal {
namespace {

using testing::Activity;
using testing::CalRun;
using testing::DateOf;
using testing::RunCal;

CalendarFileContent SampleCalendar() {
    CalendarFileContent content;
    CalendarFileDate first = DateOf(1, 1);
    first.Entry.Title = "New Year";
    first.Note = "Sleep in\r\nThen a walk";
    first.Schedule = {Activity("Brunch", {11, 0}, {12, 30}), Activity("Film", {20, 15}, {-1, 0})};
    CalendarFileDate noteOnly = DateOf(2, 2);
    noteOnly.Note = "Only a note";
    CalendarFileDate leapDay = DateOf(2, 29);
    leapDay.Entry.Title = "Leap day";
    CalendarFileDate backwards = DateOf(6, 1);
    backwards.Schedule = {Activity("Late show", {23, 0}, {1, 0}), Activity("", {8, 0}, {9, 0}),
                          Activity("Broken", {24, 10}, {-1, 0})};
    CalendarFileDate colourOnly = DateOf(7, 7);
    colourOnly.Entry.BackColour = {255, 0, 0, true, true};
    content.Dates = {first, noteOnly, leapDay, backwards, colourOnly};
    return content;
}

// The events of an iCalendar text by UID, read as an import reads them: an
// empty text such as "SUMMARY:", which RFC 5545 allows but libical's parser
// takes for an error, is passed over. Fails the test on any other libical
// error and on any rule of RFC 5545 an event breaks.
std::map<QString, ComponentPtr> EventsOf(const QByteArray& text) {
    std::map<QString, ComponentPtr> events;
    QBuffer buffer;
    buffer.setData(text);
    EXPECT_TRUE(buffer.open(QIODevice::ReadOnly));
    ICalendarReader reader(buffer);
    ComponentPtr calendar(icalcomponent_new_vcalendar());
    icalcomponent_add_property(calendar.get(), icalproperty_new_version("2.0"));
    icalcomponent_add_property(calendar.get(), icalproperty_new_prodid("-//test//EN"));
    ComponentPtr component;
    int line = 0;
    while (reader.Next(component, line)) {
        EXPECT_EQ(FirstParseError(component.get()), "") << "line " << line;
        if (icalcomponent_isa(component.get()) == ICAL_VEVENT_COMPONENT) {
            events[FromIcal(icalcomponent_get_uid(component.get()))].reset(
                icalcomponent_new_clone(component.get()));
        }
        icalcomponent_add_component(calendar.get(), component.release());
    }
    EXPECT_FALSE(reader.Failed()) << reader.Problem().toStdString();
    EXPECT_TRUE(reader.Warnings().empty());
    EXPECT_TRUE(reader.TextWarnings().isEmpty());
    icalrestriction_check(calendar.get());
    EXPECT_EQ(FirstParseError(calendar.get()), "") << "breaks a rule of RFC 5545";
    return events;
}

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

QString Uid(int year, int month, int day, int slot) {
    return EventUid("plans.cal", year, month, day, slot);
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

class ExportCommand : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(folder_.isValid());
        ASSERT_TRUE(testing::WriteCalendar(Path("plans.cal"), SampleCalendar()));
    }
    QString Path(const QString& name) const { return folder_.filePath(name); }

    QTemporaryDir folder_;
};

TEST_F(ExportCommand, WritesTheFileAndSaysWhatItHolds) {
    const CalRun run =
        RunCal({"export", Path("plans.cal"), "--year", "2027", "-o", Path("out.ics")});
    EXPECT_EQ(run.Status, kDone);
    // Like the import's, the summary goes to the standard error.
    EXPECT_EQ(run.Out, "");
    EXPECT_EQ(run.Err,
              "kelvane-cal: warning: " + Path("plans.cal") +
                  ": 29 February is left out: 2027 has no 29 February\n"
                  "kelvane-cal: warning: " +
                  Path("plans.cal") +
                  ": 1 June: activity 3 (\"Broken\") starts at 24:10, which is no time of day; "
                  "left out\n" +
                  Path("out.ics") + ": 2 all-day and 3 timed events\n");
    EXPECT_EQ(EventsOf(testing::ReadBytes(Path("out.ics"))).size(), 5u);
}

TEST_F(ExportCommand, WritesToTheStandardOutputWithoutAFileName) {
    const CalRun run = RunCal({"export", Path("plans.cal"), "--year", "2028"});
    EXPECT_EQ(run.Status, kDone);
    EXPECT_TRUE(run.Out.startsWith("BEGIN:VCALENDAR\r\n"));
    EXPECT_EQ(EventsOf(run.Out.toUtf8()).size(), 6u);
    EXPECT_TRUE(run.Err.endsWith("\nstandard output: 3 all-day and 3 timed events\n"))
        << run.Err.toStdString();
}

TEST_F(ExportCommand, ReplacesAFileOnlyWithForce) {
    ASSERT_TRUE(testing::WriteBytes(Path("out.ics"), "keep me"));
    CalRun run = RunCal({"export", Path("plans.cal"), "--year", "2027", "-o", Path("out.ics")});
    EXPECT_EQ(run.Status, kFileProblem);
    EXPECT_EQ(run.Err,
              "kelvane-cal: " + Path("out.ics") + ": already exists; add --force to replace it\n");
    EXPECT_EQ(testing::ReadBytes(Path("out.ics")), "keep me");

    run = RunCal({"export", Path("plans.cal"), "--year", "2027", "-o", Path("out.ics"), "--force"});
    EXPECT_EQ(run.Status, kDone);
    EXPECT_TRUE(testing::ReadBytes(Path("out.ics")).startsWith("BEGIN:VCALENDAR"));
}

TEST_F(ExportCommand, WritesNothingForADamagedFile) {
    const QString damaged = testing::StoreData("damaged/cut_inside_an_entry.line-56.cal");
    const CalRun run = RunCal({"export", damaged, "--year", "2027", "-o", Path("out.ics")});
    EXPECT_EQ(run.Status, kFileProblem);
    EXPECT_EQ(run.Err, "kelvane-cal: " + damaged + ": line 56: the file ends early\n");
    EXPECT_FALSE(QFileInfo::exists(Path("out.ics")));
}

TEST_F(ExportCommand, WantsAYear) {
    for (const QStringList& words : {QStringList{"export", Path("plans.cal")},
                                     QStringList{"export", Path("plans.cal"), "--year", "0"},
                                     QStringList{"export", Path("plans.cal"), "--year", "10000"},
                                     QStringList{"export", "--year", "2026"}}) {
        const CalRun run = RunCal(words);
        EXPECT_EQ(run.Status, kUsageError) << words.join(' ').toStdString();
        EXPECT_TRUE(run.Err.endsWith("Try 'kelvane-cal export --help'.\n"));
    }
}

TEST_F(ExportCommand, WritesAYearAfter3000ThatAnImportReadsBack) {
    CalRun run = RunCal({"export", Path("plans.cal"), "--year", "3001", "-o", Path("out.ics")});
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    EXPECT_FALSE(testing::ReadBytes(Path("out.ics")).contains("00000000"));
    run = RunCal({"import", Path("out.ics"), "--year", "3001", "-o", Path("back.cal")});
    ASSERT_EQ(run.Status, kDone) << run.Err.toStdString();
    const CalendarFileContent back =
        testing::ReadCalendarBytes(testing::ReadBytes(Path("back.cal")));
    ASSERT_FALSE(back.Dates.empty());
    EXPECT_EQ(back.Dates[0].Entry.Title.Trimmed(), "New Year");
    ASSERT_EQ(back.Dates[0].Schedule.size(), 2u);
    EXPECT_EQ(back.Dates[0].Schedule[0].StartTime, (ClockTime{11, 0}));
}

TEST_F(ExportCommand, HasHelp) {
    const CalRun run = RunCal({"export", "--help"});
    EXPECT_EQ(run.Status, kDone);
    EXPECT_TRUE(run.Out.startsWith("usage: kelvane-cal export FILE --year YYYY"));
    EXPECT_TRUE(run.Out.contains("--uid-seed TEXT"));
}

// Two files of the same name in different folders, as a user keeps them.
TEST_F(ExportCommand, GivesFilesOfTheSameNameUidsOfTheirOwnWithASeed) {
    ASSERT_TRUE(QDir(Path("")).mkpath("work"));
    ASSERT_TRUE(QDir(Path("")).mkpath("home"));
    ASSERT_TRUE(testing::WriteCalendar(Path("work/plans.cal"), SampleCalendar()));
    ASSERT_TRUE(testing::WriteCalendar(Path("home/plans.cal"), SampleCalendar()));
    const CalRun work = RunCal({"export", Path("work/plans.cal"), "--year", "2028"});
    const CalRun home = RunCal({"export", Path("home/plans.cal"), "--year", "2028"});
    EXPECT_EQ(work.Out, home.Out) << "the name without its folder is the seed by default";

    const CalRun seeded = RunCal(
        {"export", Path("work/plans.cal"), "--year", "2028", "--uid-seed", "work/plans.cal"});
    EXPECT_EQ(seeded.Status, kDone);
    auto events = EventsOf(seeded.Out.toUtf8());
    EXPECT_EQ(events.size(), 6u);
    EXPECT_EQ(events.count(EventUid("work/plans.cal", 2028, 1, 1, 0)), 1u);
    EXPECT_EQ(events.count(Uid(2028, 1, 1, 0)), 0u);
}

TEST_F(ExportCommand, WantsASeedThatIsNotBlank) {
    const CalRun run = RunCal({"export", Path("plans.cal"), "--year", "2028", "--uid-seed", " "});
    EXPECT_EQ(run.Status, kUsageError);
    EXPECT_EQ(run.Err,
              "kelvane-cal: --uid-seed takes a text that is not blank\n"
              "Try 'kelvane-cal export --help'.\n");
}

// Blanks of any kind between words become one space, and roff's markup goes.
QString Words(QString text) {
    text.replace(QStringLiteral("\\-"), QStringLiteral("-"));
    QStringList kept;
    for (const QString& line : text.split(QLatin1Char('\n'))) {
        if (!line.startsWith(QLatin1Char('.'))) {
            kept << line;
        }
    }
    return kept.join(QLatin1Char(' ')).simplified();
}

TEST_F(ExportCommand, HelpReadmeAndManualSayTheSameAboutAllDayEvents) {
    const QString rule = QStringLiteral(
        "an all-day event for each date with a title or a note (the title is its summary, the "
        "note its description)");
    const QString sources = QStringLiteral(KELVANE_CAL_DATA_DIR "/../../../../../");
    EXPECT_TRUE(Words(RunCal({"export", "--help"}).Out).contains(rule));
    EXPECT_TRUE(Words(QString::fromUtf8(testing::ReadBytes(sources + "README.md"))).contains(rule));
    EXPECT_TRUE(Words(QString::fromUtf8(testing::ReadBytes(sources + "packaging/kelvane-cal.1")))
                    .contains(rule));
}

// Each text that names the years export and publish take says the same, once.
TEST_F(ExportCommand, HelpReadmeAndManualGiveTheYearsItTakesOnce) {
    const QString years = ExportYears();
    EXPECT_EQ(years, "1 to 9999");
    const QString option = "the year the dates are put in (" + years + ")";
    EXPECT_TRUE(Words(RunCal({"export", "--help"}).Out).contains(option));
    EXPECT_TRUE(Words(RunCal({"publish", "--help"}).Out).contains(option));
    EXPECT_TRUE(RunCal({"export", Path("plans.cal"), "--year", "10000"})
                    .Err.startsWith("kelvane-cal: --year takes a year from " + years + "\n"));
    EXPECT_TRUE(RunCal({"publish", Path("plans.cal"), "--year", "0"})
                    .Err.startsWith("kelvane-cal: --year takes a year from " + years + "\n"));
    const QString sources = QStringLiteral(KELVANE_CAL_DATA_DIR "/../../../../../");
    for (const char* document : {"README.md", "packaging/kelvane-cal.1"}) {
        const QString text = Words(QString::fromUtf8(testing::ReadBytes(sources + document)));
        EXPECT_EQ(text.count(years), 1) << document;
    }
}

}  // namespace
}  // namespace kelvane::cal
