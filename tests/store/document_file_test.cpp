#include <gtest/gtest.h>

#include <QFile>

#include "store/DocumentFile.h"
#include "support/CalendarFileLines.h"
#include "support/DocumentWorld.h"
#include "support/LinesWritten.h"

namespace kelvane {
namespace {

using testing::CalendarFileLines;
using testing::DocumentWorld;

QByteArray DataFile(const QString& name) {
    QFile file(QStringLiteral(KELVANE_TEST_DATA_DIR "/") + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll();
}

QByteArray WriteToBytes(DocumentWorld& world, ViewFlags flags = {}) {
    return testing::LinesWritten([&world, flags](LineWriter& out) {
        WriteDocument(world.store, world.calender, flags, out,
                      [&world](const QString& text) { world.window.ShowStatus(text); });
    });
}

void Load(DocumentWorld& world, const QByteArray& bytes) {
    CalendarFileContent content;
    ASSERT_EQ(ReadCalendarFile(bytes, content).Status, CalendarFileStatus::Ok);
    ApplyDocument(world.store, world.calender, content,
                  [&world](const QString& text) { world.window.ShowStatus(text); });
}

QList<QByteArray> Lines(const QByteArray& bytes) {
    QList<QByteArray> lines = bytes.split('\n');
    lines.removeLast();  // after the last line end
    for (QByteArray& line : lines) {
        line.chop(1);  // the carriage return
    }
    return lines;
}

const DateEntry& SlotOf(DocumentWorld& world, int month, int day) {
    return world.calender.Months[static_cast<std::size_t>(month - 1)].Dates[day];
}

void SetSchedule(DocumentWorld& world, qint16 month, qint16 day,
                 const std::vector<std::pair<int, Appointment>>& entries) {
    const QString key = MakeDateKey(month, day);
    world.store.appointments.LoadAppointments(key);
    for (const auto& [slot, entry] : entries) {
        world.store.appointments.AppointmentList[slot] = entry;
    }
    world.store.appointments.SaveAppointments(key);
}

void SetNote(DocumentWorld& world, qint16 month, qint16 day, const QString& note) {
    world.store.diary.NoteBuffer = note;
    world.store.diary.SaveNote(MakeDateKey(month, day));
}

// Titles, every combination of the colour flags, schedules with and without
// end times, notes of none, one and three lines and one ending in a line
// break, an entry behind a gap, a colour of its own and a font of its own.
void MakeKnownDocument(DocumentWorld& world) {
    auto& dates = world.calender.Months;
    DateEntry& newYear = dates[0].Dates[1];
    newYear.Title = QStringLiteral("New Year");
    newYear.TextColour = ColourChoice{255, 0, 0, true, true};
    newYear.BackColour = ColourChoice{10, -10, 5, false, true};
    SetSchedule(world, 1, 1,
                {{1, {QStringLiteral("Breakfast"), {8, 0}, {9, 0}}},
                 {2, {QStringLiteral("Nap"), {13, 0}, {-1, 0}}}});

    DateEntry& second = dates[0].Dates[2];
    second.Title = QStringLiteral("   Leading blanks");
    second.TextColour = ColourChoice{1, 2, 3, true, false};
    second.BackColour = ColourChoice{0, 0, 7, false, false};
    SetNote(world, 1, 2, QStringLiteral("One line note"));

    SetNote(world, 2, 29, QStringLiteral("a\r\nb\r\nc"));
    SetNote(world, 3, 15, QStringLiteral("ends with a break\r\n"));

    dates[6].Dates[4].Title = QStringLiteral("Gap");
    SetSchedule(world, 7, 4, {{2, {QStringLiteral("Fireworks"), {21, 0}, {22, 0}}}});

    DateEntry& yearEnd = dates[11].Dates[31];
    yearEnd.Title = QStringLiteral("Year end");
    yearEnd.BackColour = ColourChoice{0, 0, 0, false, true};
    SetSchedule(world, 12, 31, {{1, {QStringLiteral("Party"), {23, 30}, {0, 30}}}});

    world.store.calender.ColourList[3] =
        MakeColourListItem(QStringLiteral("Holidays"), 200, 220, 255, true, true);
    world.calender.SetFont(QStringLiteral("Courier New"), 11);
}

TEST(DocumentWriter, AnEmptyDocumentIsHeaderSettingsColoursAnd366Zeros) {
    DocumentWorld world;
    const QList<QByteArray> lines = Lines(WriteToBytes(world));
    ASSERT_EQ(lines.size(), 7 + 42 + 366);
    EXPECT_EQ(lines.mid(0, 49), CalendarFileLines::Empty().lines.mid(0, 49));
    for (qsizetype i = 49; i < lines.size(); ++i) {
        EXPECT_EQ(lines[i], " 0 ") << i;
    }
}

TEST(DocumentWriter, WritesTodaysYearAndTheWeekdayOfTheFirstOfJanuary) {
    DocumentWorld world(2001, 6, 1);
    const QList<QByteArray> lines = Lines(WriteToBytes(world, {false, true}));
    EXPECT_EQ(lines[1], " 2001 ");
    EXPECT_EQ(lines[2], " 2 ");  // 1 January 2001 was a Monday
    EXPECT_EQ(lines[3], " 0 ");
    EXPECT_EQ(lines[4], " 1 ");
}

TEST(DocumentWriter, WritesADateWithOnlyABackColourInFull) {
    DocumentWorld world;
    world.calender.Months[0].Dates[1].BackColour = ColourChoice{0, 0, 0, false, true};
    const QList<QByteArray> lines = Lines(WriteToBytes(world));
    EXPECT_EQ(lines.mid(49, 7),
              (QList<QByteArray>{" 1 ", "", "0,0,0,0,0", "0,1,0,0,0", " 0 ", " 0 ", " 0 "}));
    EXPECT_EQ(lines.size(), 7 + 42 + 366 + 5);
}

TEST(DocumentWriter, WritesAnEntryFromNineToHalfPastTenEndFirst) {
    DocumentWorld world;
    SetSchedule(world, 1, 1, {{1, {QStringLiteral("Meeting"), {9, 0}, {10, 30}}}});
    const QList<QByteArray> lines = Lines(WriteToBytes(world));
    EXPECT_EQ(lines.mid(49, 10), (QList<QByteArray>{" 1 ", "", "0,0,0,0,0", "0,0,0,0,0", " 1 ",
                                                    "Meeting", "10,30", "9,0", " 0 ", " 0 "}));
}

TEST(DocumentWriter, ATitleLosesItsLeadingBlanks) {
    DocumentWorld world;
    world.calender.Months[0].Dates[1].Title = QStringLiteral("   Spaced");
    const QList<QByteArray> lines = Lines(WriteToBytes(world));
    EXPECT_EQ(lines[50], "Spaced");
}

TEST(DocumentWriter, ReportsProgressAfterEveryMonth) {
    DocumentWorld world;
    WriteToBytes(world);
    EXPECT_EQ(world.window.Statuses,
              (QStringList{"Saving 8%", "Saving 16%", "Saving 25%", "Saving 33%", "Saving 41%",
                           "Saving 50%", "Saving 58%", "Saving 66%", "Saving 75%", "Saving 83%",
                           "Saving 91%", "Saving 100%"}));
}

TEST(DocumentWriter, LeavesTheLastDateSelected) {
    DocumentWorld world;
    world.calender.Months[11].Dates[31].Title = QStringLiteral("Last");
    WriteToBytes(world);
    EXPECT_EQ(world.calender.SelectedDate, (CalDate{2000, 31, 12}));
    EXPECT_EQ(world.store.calender.CurrentEntry.Title, QStringLiteral("Last"));
}

TEST(DocumentWriter, WritesTheKnownDocumentByteForByte) {
    DocumentWorld world;
    MakeKnownDocument(world);
    EXPECT_EQ(WriteToBytes(world, {false, true}), DataFile(QStringLiteral("known_document.cal")));
}

TEST(DocumentReader, ReadsTheKnownDocumentBackFieldByField) {
    DocumentWorld written;
    MakeKnownDocument(written);
    DocumentWorld world;
    Load(world, DataFile(QStringLiteral("known_document.cal")));

    for (int month = 1; month <= 12; ++month) {
        for (int day = 1; day < 36; ++day) {
            DateEntry expected = SlotOf(written, month, day);
            expected.Title = expected.Title.Trimmed();
            EXPECT_EQ(SlotOf(world, month, day), expected) << month << "-" << day;
        }
    }
    for (qint16 month = 1; month <= 12; ++month) {
        for (qint16 day = 1; day <= world.store.module1.DaysInMonth[month]; ++day) {
            const QString key = MakeDateKey(month, day);
            written.store.appointments.LoadAppointments(key);
            world.store.appointments.LoadAppointments(key);
            const qint16 count = written.store.appointments.CountAppointments();
            for (int slot = 1; slot <= 40; ++slot) {
                const Appointment expected = slot <= count
                                                 ? written.store.appointments.AppointmentList[slot]
                                                 : Appointment{};
                EXPECT_EQ(world.store.appointments.AppointmentList[slot], expected) << key;
            }
            written.store.diary.LoadNote(key);
            world.store.diary.LoadNote(key);
            EXPECT_EQ(world.store.diary.NoteBuffer.Trimmed(),
                      written.store.diary.NoteBuffer.Trimmed())
                << key;
        }
    }
    EXPECT_EQ(world.store.calender.ColourList, written.store.calender.ColourList);
    QString font;
    qint16 size = 0;
    world.calender.GetFont(font, size);
    EXPECT_EQ(font, QStringLiteral("Courier New"));
    EXPECT_EQ(size, 11);
}

TEST(DocumentReader, ReadingThenWritingReproducesTheFileExceptTheYear) {
    const QByteArray original = DataFile(QStringLiteral("known_document.cal"));
    DocumentWorld world(2026, 11, 23);
    Load(world, original);
    QList<QByteArray> expected = Lines(original);
    expected[1] = " 2026 ";
    EXPECT_EQ(Lines(WriteToBytes(world, {false, true})), expected);
}

// The known document with a break count of -1 for the note of 29 February
// (and none of its three lines): no lines are read, so the note is empty and
// the rest of the file reads on as before.
TEST(DocumentReader, ANoteWithANegativeBreakCountIsEmpty) {
    DocumentWorld world;
    Load(world, DataFile(QStringLiteral("note_with_negative_breaks.cal")));
    world.store.diary.LoadNote(QStringLiteral("0229"));
    EXPECT_TRUE(world.store.diary.NoteBuffer.IsBlank());
    world.store.diary.LoadNote(QStringLiteral("0315"));
    EXPECT_EQ(world.store.diary.NoteBuffer.Trimmed(), QStringLiteral("ends with a break\r\n"));

    DocumentWorld known;
    Load(known, DataFile(QStringLiteral("known_document.cal")));
    known.store.diary.ClearNote(QStringLiteral("0229"));
    EXPECT_EQ(WriteToBytes(world), WriteToBytes(known));
}

TEST(DocumentReader, CutsNeverSplitAnEmoji) {
    const QString party = QStringLiteral("\U0001F389");
    DocumentWorld world;
    CalendarFileLines file = CalendarFileLines::Empty();
    file.lines[7] = (QString(19, u'c') + party).toUtf8();
    file.FillSlot(1, {" 1 ", (QString(254, u't') + party).toUtf8(), "0,0,0,0,0", "0,0,0,0,0", " 1 ",
                      (QString(49, u'd') + party).toUtf8(), "10,0", "9,0", " 1 ", " 0 ",
                      (QString(799, u'n') + party).toUtf8()});
    Load(world, file.Bytes());

    EXPECT_EQ(world.store.calender.ColourList[0].Name.Value(),
              QString(19, u'c') + QLatin1Char(' '));
    EXPECT_EQ(SlotOf(world, 1, 1).Title.Value(), QString(254, u't') + QLatin1Char(' '));
    world.store.appointments.LoadAppointments(QStringLiteral("0101"));
    EXPECT_EQ(world.store.appointments.AppointmentList[1].Description.Value(),
              QString(49, u'd') + QLatin1Char(' '));
    world.store.diary.LoadNote(QStringLiteral("0101"));
    EXPECT_EQ(world.store.diary.NoteBuffer.Value(), QString(799, u'n') + QLatin1Char(' '));
}

// Each field of a file cut one code unit into a character of several: a mark
// on its letter, a ZWJ family, a Hangul syllable in jamo, a flag, a line break.
TEST(DocumentReader, CutsNeverSplitAGrapheme) {
    const QString acute = QStringLiteral("e\u0301");
    const QString family = QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467");
    const QString hangul = QStringLiteral("\u1100\u1161\u11A8");
    const QString france = QStringLiteral("\U0001F1EB\U0001F1F7");
    DocumentWorld world;
    CalendarFileLines file = CalendarFileLines::Empty();
    file.lines[7] = (QString(19, u'c') + acute).toUtf8();
    file.FillSlot(2, {" 1 ", (QString(252, u't') + france).toUtf8(), "0,0,0,0,0", "0,0,0,0,0",
                      " 0 ", " 1 ", " 1 ", QByteArray(799, 'n'), "x"});
    file.FillSlot(1, {" 1 ", (QString(250, u't') + family).toUtf8(), "0,0,0,0,0", "0,0,0,0,0",
                      " 1 ", (QString(48, u'd') + hangul).toUtf8(), "10,0", "9,0", " 1 ", " 0 ",
                      (QString(797, u'n') + acute + acute).toUtf8()});
    Load(world, file.Bytes());

    EXPECT_EQ(world.store.calender.ColourList[0].Name.Value(),
              QString(19, u'c') + QLatin1Char(' '));
    EXPECT_EQ(SlotOf(world, 1, 1).Title.Trimmed(), QString(250, u't'));
    EXPECT_EQ(SlotOf(world, 1, 2).Title.Trimmed(), QString(252, u't'));
    world.store.appointments.LoadAppointments(QStringLiteral("0101"));
    EXPECT_EQ(world.store.appointments.AppointmentList[1].Description.Trimmed(), QString(48, u'd'));
    world.store.diary.LoadNote(QStringLiteral("0101"));
    EXPECT_EQ(world.store.diary.NoteBuffer.Trimmed(), QString(797, u'n') + acute);
    // 799 letters, then CR LF would take units 800 and 801: the break goes whole.
    world.store.diary.LoadNote(QStringLiteral("0102"));
    EXPECT_EQ(world.store.diary.NoteBuffer.Value(), QString(799, u'n') + QLatin1Char(' '));
}

TEST(DocumentReader, KeepsTheDatesTheFileMarksAsEmpty) {
    DocumentWorld world;
    world.EditDate(1, 1, QStringLiteral("Kept"), 2, QStringLiteral("kept note"));
    CalendarFileLines file = CalendarFileLines::Empty();
    file.FillSlot(2, {" 1 ", "Loaded", "0,0,0,0,0", "0,0,0,0,0", " 0 ", " 0 "});
    Load(world, file.Bytes());

    EXPECT_EQ(SlotOf(world, 1, 1).Title.Trimmed(), QStringLiteral("Kept"));
    EXPECT_EQ(SlotOf(world, 1, 2).Title.Trimmed(), QStringLiteral("Loaded"));
    world.store.appointments.LoadAppointments(QStringLiteral("0101"));
    EXPECT_EQ(world.store.appointments.CountAppointments(), 2);
    world.store.diary.LoadNote(QStringLiteral("0101"));
    EXPECT_EQ(world.store.diary.NoteBuffer.Trimmed(), QStringLiteral("kept note"));
}

TEST(DocumentReader, ReplacesTheScheduleAndNoteOfADateItLoads) {
    DocumentWorld world;
    world.EditDate(1, 1, QStringLiteral("Old"), 3, QStringLiteral("old note"));
    CalendarFileLines file = CalendarFileLines::Empty();
    file.FillSlot(1, {" 1 ", "New", "0,0,0,0,0", "0,0,0,0,0", " 1 ", "Only", "10,0", "9,0", " 0 "});
    Load(world, file.Bytes());
    world.store.appointments.LoadAppointments(QStringLiteral("0101"));
    EXPECT_EQ(world.store.appointments.CountAppointments(), 1);
    EXPECT_EQ(world.store.appointments.AppointmentList[1].Description.Trimmed(),
              QStringLiteral("Only"));
    world.store.diary.LoadNote(QStringLiteral("0101"));
    EXPECT_TRUE(world.store.diary.NoteBuffer.IsBlank());
}

TEST(DocumentReader, EveryLoadedCalendarIsALeapYear) {
    DocumentWorld world(2001, 6, 1);
    ASSERT_EQ(world.calender.Months[1].Days, 28);
    CalendarFileLines file = CalendarFileLines::Empty();
    file.lines[1] = " 2001 ";
    file.lines[2] = " 2 ";
    Load(world, file.Bytes());
    EXPECT_EQ(world.calender.gLeapYear(), 1);
    EXPECT_EQ(world.calender.Months[1].Days, 29);
    EXPECT_EQ(world.calender.Months[0].FirstDay, 2);
}

TEST(DocumentReader, ReportsProgressWithoutABlank) {
    DocumentWorld world;
    Load(world, CalendarFileLines::Empty().Bytes());
    ASSERT_EQ(world.window.Statuses.size(), 12);
    EXPECT_EQ(world.window.Statuses.first(), QStringLiteral("Loading8%"));
    EXPECT_EQ(world.window.Statuses.last(), QStringLiteral("Loading100%"));
}

}  // namespace
}  // namespace kelvane
