#include <gtest/gtest.h>

#include "calfile/CalendarFile.h"
#include "calfile/ColourList.h"
#include "support/CalendarFileLines.h"
#include "support/LinesWritten.h"
#include "support/QtPrinting.h"

namespace kelvane {
namespace {

using testing::CalendarFileLines;

// Slot 60 is 29 February, 61 is 1 March.
const QList<QByteArray> kSimpleDate = {" 1 ", "Party", "0,0,0,0,0", "1,1,255,0,0", " 0 ", " 0 "};

CalendarFileReport Read(const QByteArray& bytes, CalendarFileContent& content) {
    return ReadCalendarFile(bytes, content);
}

CalendarFileContent ReadOk(const QByteArray& bytes) {
    CalendarFileContent content;
    const CalendarFileReport report = Read(bytes, content);
    EXPECT_EQ(report.Status, CalendarFileStatus::Ok) << report.DamagedLine << report.Reason;
    return content;
}

// The first bad line of a damaged file; 0 when it is not damaged.
int DamagedLine(const QByteArray& bytes) {
    CalendarFileContent content;
    const CalendarFileReport report = Read(bytes, content);
    return report.Status == CalendarFileStatus::Damaged ? report.DamagedLine : 0;
}

QByteArray Write(const CalendarFileContent& content) {
    return testing::LinesWritten([&content](LineWriter& out) { WriteCalendarFile(out, content); });
}

CalendarFileSettings DefaultSettings() {
    CalendarFileSettings settings;
    settings.Year = 2000;
    settings.FirstDay = 7;
    settings.FontName = QStringLiteral("Arial");
    settings.FontSize = 9;
    BuildColourList(settings.ColourList);
    return settings;
}

TEST(CalendarFileWriter, AnEmptyDocumentIsHeaderSettingsColoursAnd366Zeros) {
    const QByteArray bytes = Write(CalendarFileContent{DefaultSettings(), {}});
    EXPECT_EQ(bytes, CalendarFileLines::Empty().Bytes());
    EXPECT_EQ(bytes.count("\r\n"), 7 + 42 + 366);
}

TEST(CalendarFileWriter, WritesNumbersInPrintFormAndValueListsWithoutBlanks) {
    CalendarFileContent content{DefaultSettings(), {}};
    content.Settings.Year = -3;
    content.Settings.ToolsShown = false;
    const QByteArray bytes = Write(content);
    EXPECT_TRUE(
        bytes.startsWith("Marrowby Kelvane 2000 File\r\n-3 \r\n 7 \r\n 0 \r\n 1 \r\n"
                         "Arial\r\n 9 \r\nBack Colour\r\n0,1,-25,-5,20\r\n"));
}

TEST(CalendarFileWriter, PutsTheEndTimeBeforeTheStartTime) {
    CalendarFileDate date;
    date.Month = 1;
    date.Day = 1;
    Appointment meeting;
    meeting.Description = QStringLiteral("  Meeting");
    meeting.StartTime = ClockTime{9, 0};
    meeting.EndTime = ClockTime{10, 30};
    date.Schedule.push_back(meeting);
    const QByteArray bytes = Write(CalendarFileContent{DefaultSettings(), {date}});
    EXPECT_TRUE(
        bytes.contains("\r\n 1 \r\n\r\n0,0,0,0,0\r\n0,0,0,0,0\r\n 1 \r\n"
                       "Meeting\r\n10,30\r\n9,0\r\n 0 \r\n"));
}

TEST(CalendarFileWriter, WritesWhatItReadsBack) {
    CalendarFileDate date;
    date.Month = 2;
    date.Day = 29;
    date.Entry.Title = QStringLiteral("Leap day");
    date.Entry.TextColour = ColourChoice{-5, 300, 7, true, false};
    date.Entry.BackColour = ColourChoice{1, 2, 3, false, true};
    date.Schedule.push_back(Appointment{QStringLiteral("Walk"), {7, 15}, {-1, 0}});
    date.Note = QStringLiteral("first\r\nsecond");
    CalendarFileContent content{DefaultSettings(), {date}};
    content.Settings.ColourList[5] =
        MakeColourListItem(QStringLiteral("Mine"), 1, 2, 3, true, true);

    EXPECT_EQ(ReadOk(Write(content)), content);
}

TEST(CalendarFileReader, ReadsAnEmptyFile) {
    const CalendarFileContent content = ReadOk(CalendarFileLines::Empty().Bytes());
    EXPECT_EQ(content.Settings, DefaultSettings());
    EXPECT_TRUE(content.Dates.empty());
}

TEST(CalendarFileReader, ReadsADateInItsSlot) {
    CalendarFileLines file = CalendarFileLines::Empty();
    file.FillSlot(61, kSimpleDate);
    const CalendarFileContent content = ReadOk(file.Bytes());
    ASSERT_EQ(content.Dates.size(), 1u);
    EXPECT_EQ(content.Dates[0].Month, 3);
    EXPECT_EQ(content.Dates[0].Day, 1);
    EXPECT_EQ(content.Dates[0].Entry.Title, QStringLiteral("Party"));
    EXPECT_EQ(content.Dates[0].Entry.BackColour, (ColourChoice{255, 0, 0, true, true}));
}

TEST(CalendarFileReader, TakesAnyNonZeroNumberAsTrue) {
    CalendarFileLines file = CalendarFileLines::Empty();
    file.FillSlot(1, {" -1 ", "", "-2,7,0,0,0", "0,0,0,0,0", " 0 ", " 0 "});
    file.lines[3] = " -1 ";
    file.lines[4] = " 0 ";
    const CalendarFileContent content = ReadOk(file.Bytes());
    EXPECT_TRUE(content.Settings.ToolsShown);
    EXPECT_FALSE(content.Settings.CalenderShown);
    ASSERT_EQ(content.Dates.size(), 1u);
    EXPECT_TRUE(content.Dates[0].Entry.TextColour.Absolute);
    EXPECT_TRUE(content.Dates[0].Entry.TextColour.Enabled);
}

TEST(CalendarFileReader, RejectsAHeaderThatDiffersOnlyInCase) {
    CalendarFileLines file = CalendarFileLines::Empty();
    file.lines[0] = "marrowby kelvane 2000 file";
    CalendarFileContent content;
    EXPECT_EQ(Read(file.Bytes(), content).Status, CalendarFileStatus::Unrecognized);
}

TEST(CalendarFileReader, RejectsAnEmptyFileAndAHeaderWithABlank) {
    CalendarFileContent content;
    EXPECT_EQ(Read(QByteArray(), content).Status, CalendarFileStatus::Unrecognized);
    EXPECT_EQ(Read("Marrowby Kelvane 2000 File \r\n", content).Status,
              CalendarFileStatus::Unrecognized);
}

TEST(CalendarFileReader, AHeaderFollowedByNothingIsDamagedAtLineTwo) {
    EXPECT_EQ(DamagedLine("Marrowby Kelvane 2000 File\r\n"), 2);
    EXPECT_EQ(DamagedLine("Marrowby Kelvane 2000 File"), 2);
}

TEST(CalendarFileReader, AFileCutAnywhereIsDamagedAtTheFirstMissingLine) {
    CalendarFileLines file = CalendarFileLines::Empty();
    file.FillSlot(61, {" 1 ", "T", "0,0,0,0,0", "0,0,0,0,0", " 1 ", "Walk", "10,30", "9,0", " 1 ",
                       " 1 ", "line one", "line two"});
    for (int kept = 1; kept < file.lines.size(); kept += 7) {
        CalendarFileLines cut = file;
        cut.lines.resize(kept);
        EXPECT_EQ(DamagedLine(cut.Bytes()), kept + 1) << kept;
    }
}

TEST(CalendarFileReader, NamesTheLineWhereANumberIsNotANumber) {
    CalendarFileLines file = CalendarFileLines::Empty();
    file.lines[2] = "seven";
    EXPECT_EQ(DamagedLine(file.Bytes()), 3);

    file = CalendarFileLines::Empty();
    file.lines[CalendarFileLines::FirstSlotLine - 1 + 9] = " 1x ";
    EXPECT_EQ(DamagedLine(file.Bytes()), CalendarFileLines::FirstSlotLine + 9);

    file = CalendarFileLines::Empty();
    file.lines[8] = "0,1,-25,-5";
    EXPECT_EQ(DamagedLine(file.Bytes()), 9);
}

TEST(CalendarFileReader, NumbersBeyondSixteenBitsAreDamage) {
    CalendarFileLines file = CalendarFileLines::Empty();
    file.lines[8] = "0,1,40000,-5,20";
    EXPECT_EQ(DamagedLine(file.Bytes()), 9);
    file = CalendarFileLines::Empty();
    file.lines[1] = " 1e400 ";
    EXPECT_EQ(DamagedLine(file.Bytes()), 2);
}

TEST(CalendarFileReader, NulBytesInANumberAreDamage) {
    CalendarFileLines file = CalendarFileLines::Empty();
    file.lines[6] = QByteArray(" 9\0 ", 4);
    EXPECT_EQ(DamagedLine(file.Bytes()), 7);
}

TEST(CalendarFileReader, ANegativeScheduleCountMeansNoEntries) {
    CalendarFileLines file = CalendarFileLines::Empty();
    file.FillSlot(2, {" 1 ", "Second", "0,0,0,0,0", "0,0,0,0,0", " 0 ", " 0 "});
    file.FillSlot(1, {" 1 ", "First", "0,0,0,0,0", "0,0,0,0,0", " -5 ", " 0 "});
    const CalendarFileContent content = ReadOk(file.Bytes());
    ASSERT_EQ(content.Dates.size(), 2u);
    EXPECT_TRUE(content.Dates[0].Schedule.empty());
    EXPECT_EQ(content.Dates[1].Entry.Title, QStringLiteral("Second"));
}

TEST(CalendarFileReader, AHugeScheduleCountRunsIntoTheEndOfTheFile) {
    CalendarFileLines file = CalendarFileLines::Empty();
    file.FillSlot(366,
                  {" 1 ", "Last", "0,0,0,0,0", "0,0,0,0,0", " 30000 ", "Walk", "10,30", "9,0"});
    EXPECT_EQ(DamagedLine(file.Bytes()), file.lines.size() + 1);
}

TEST(CalendarFileReader, ACountBeyondSixteenBitsIsDamageOnItsOwnLine) {
    CalendarFileLines file = CalendarFileLines::Empty();
    file.FillSlot(
        1, {" 1 ", "First", "0,0,0,0,0", "0,0,0,0,0", " 100000 ", "Walk", "10,30", "9,0", " 0 "});
    EXPECT_EQ(DamagedLine(file.Bytes()), CalendarFileLines::FirstSlotLine + 4);
    file = CalendarFileLines::Empty();
    file.FillSlot(1, {" 1 ", "First", "0,0,0,0,0", "0,0,0,0,0", " 0 ", " 1 ", " 40000 ", "x"});
    EXPECT_EQ(DamagedLine(file.Bytes()), CalendarFileLines::FirstSlotLine + 6);
}

TEST(CalendarFileReader, CutsALongFontName) {
    CalendarFileLines file = CalendarFileLines::Empty();
    file.lines[5] = QByteArray(1000, 'F');
    EXPECT_EQ(ReadOk(file.Bytes()).Settings.FontName, QString(255, QLatin1Char('F')));
}

TEST(CalendarFileReader, KeepsFortyEntriesAndReadsPastTheRest) {
    QList<QByteArray> slot = {" 1 ", "Busy", "0,0,0,0,0", "0,0,0,0,0", " 45 "};
    for (int i = 1; i <= 45; ++i) {
        slot << "Entry " + QByteArray::number(i) << "-1,0" << QByteArray::number(i % 24) + ",0";
    }
    slot << " 0 ";
    CalendarFileLines file = CalendarFileLines::Empty();
    file.FillSlot(2, kSimpleDate);
    file.FillSlot(1, slot);
    const CalendarFileContent content = ReadOk(file.Bytes());
    ASSERT_EQ(content.Dates.size(), 2u);
    ASSERT_EQ(content.Dates[0].Schedule.size(), 40u);
    EXPECT_EQ(content.Dates[0].Schedule[39].Description, QStringLiteral("Entry 40"));
    EXPECT_EQ(content.Dates[0].Schedule[39].EndTime, (ClockTime{-1, 0}));
    EXPECT_EQ(content.Dates[1].Day, 2);
    EXPECT_EQ(content.Dates[1].Entry.Title, QStringLiteral("Party"));
}

TEST(CalendarFileReader, CutsOverlongTextsToTheirFields) {
    CalendarFileLines file = CalendarFileLines::Empty();
    file.FillSlot(1, {" 1 ", QByteArray(300, 'T'), "0,0,0,0,0", "0,0,0,0,0", " 1 ",
                      QByteArray(60, 'D'), "10,0", "9,0", " 1 ", " 0 ", QByteArray(1000, 'N')});
    file.lines[7] = "   " + QByteArray(25, 'C');
    const CalendarFileContent content = ReadOk(file.Bytes());
    EXPECT_EQ(content.Settings.ColourList[0].Name.Value(), QString(20, QLatin1Char('C')));
    ASSERT_EQ(content.Dates.size(), 1u);
    EXPECT_EQ(content.Dates[0].Entry.Title.Value(), QString(255, QLatin1Char('T')));
    EXPECT_EQ(content.Dates[0].Schedule[0].Description.Value(), QString(50, QLatin1Char('D')));
    EXPECT_EQ(content.Dates[0].Note, QString(800, QLatin1Char('N')));
}

TEST(CalendarFileReader, CutsTextsOnlyBetweenGraphemes) {
    const QString acute = QStringLiteral("e\u0301");
    const QString family = QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467");
    CalendarFileLines file = CalendarFileLines::Empty();
    file.FillSlot(1, {" 1 ", (QString(254, u'T') + acute).toUtf8(), "0,0,0,0,0", "0,0,0,0,0", " 1 ",
                      (QString(45, u'D') + family).toUtf8(), "10,0", "9,0", " 1 ", " 1 ",
                      QByteArray(798, 'N') + "\r", "x"});
    file.lines[7] = (QString(19, u'C') + acute).toUtf8();
    const CalendarFileContent content = ReadOk(file.Bytes());
    EXPECT_EQ(content.Settings.ColourList[0].Name.Trimmed(), QString(19, u'C'));
    ASSERT_EQ(content.Dates.size(), 1u);
    EXPECT_EQ(content.Dates[0].Entry.Title.Trimmed(), QString(254, u'T'));
    EXPECT_EQ(content.Dates[0].Schedule[0].Description.Trimmed(), QString(45, u'D'));
    // The first line ends in a lone CR: CR LF between the lines is one break.
    EXPECT_EQ(content.Dates[0].Note, QString(798, u'N') + QLatin1Char('\r'));
}

TEST(CalendarFileReader, ReadsALineOfAMegabyte) {
    CalendarFileLines file = CalendarFileLines::Empty();
    file.FillSlot(1, {" 1 ", QByteArray(1 << 20, 'x'), "0,0,0,0,0", "0,0,0,0,0", " 0 ", " 0 "});
    const CalendarFileContent content = ReadOk(file.Bytes());
    ASSERT_EQ(content.Dates.size(), 1u);
    EXPECT_EQ(content.Dates[0].Entry.Title.Value(), QString(255, QLatin1Char('x')));
}

TEST(CalendarFileReader, ReadsLineFeedsAndWindows1252) {
    CalendarFileLines file = CalendarFileLines::Empty();
    file.FillSlot(1, {" 1 ", "Caf\xe9 \x80", "0,0,0,0,0", "0,0,0,0,0", " 0 ", " 0 "});
    const CalendarFileContent content = ReadOk(file.Bytes("\n"));
    ASSERT_EQ(content.Dates.size(), 1u);
    EXPECT_EQ(content.Dates[0].Entry.Title.Trimmed(), QStringLiteral("Caf\u00e9 \u20ac"));
}

TEST(CalendarFileReader, IgnoresWhatFollowsTheLastSlot) {
    CalendarFileLines file = CalendarFileLines::Empty();
    file.lines << "anything at all";
    EXPECT_EQ(DamagedLine(file.Bytes()), 0);
}

}  // namespace
}  // namespace kelvane
