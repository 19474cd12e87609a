#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include "support/EveryScript.h"
#include "support/TestWorld.h"

namespace kelvane {
namespace {

using testing::TestWorld;
using testing::Utf16Le;

const QString kFileName = QStringLiteral("~tmpDiaryCal");
constexpr qint64 kRecordBytes = 1600;

// A note in many scripts: Polish, Chinese, Greek, Russian, an emoji (two code
// units), combining accents, Hebrew and Arabic (written right to left).
const QString kEveryScript = QStringLiteral(
    "\u0141\u00f3d\u017a \u5317\u4eac\r\n\u03a9\u03bc\u03ad\u03b3\u03b1 "
    "\u041f\u0440\u0438\u0432\u0435\u0442 \U0001F389\r\ne\u0301a\u0308 "
    "\u05e9\u05dc\u05d5\u05dd \u0645\u0631\u062d\u0628\u0627");

// A note record: the text padded with blanks to 800 characters.
QByteArray NoteRecord(const QString& text) {
    return Utf16Le(text.leftJustified(800, QLatin1Char(' ')));
}

// The note section of `note` as the calendar file holds it.
QByteArray SectionOf(const QString& note) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    LineWriter out(buffer);
    WriteNoteSection(out, note);
    out.Flush();
    return buffer.data();
}

class DiaryStoreTest : public ::testing::Test {
  protected:
    void SetUp() override { world.OpenStores(); }

    qint64 FileSize() const { return QFileInfo(world.FilePath(kFileName)).size(); }

    TestWorld world;
    DiaryMOD& diary = world.diary;
};

TEST(DayOfYearSlot, CountsTheSlotsOfTheMonthsBefore) {
    TestWorld world;
    const MonthLengths& days = world.module1.DaysInMonth;
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("0101"), days), 1);
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("0131"), days), 31);
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("0201"), days), 32);
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("0229"), days), 60);
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("0301"), days), 61);
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("1231"), days), 366);
}

TEST(DayOfYearSlot, ChecksNothingElse) {
    TestWorld world;
    const MonthLengths& days = world.module1.DaysInMonth;
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("0231"), days), 62);
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("0100"), days), 0);
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("0015"), days), 15);  // month 0 adds nothing
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("-115"), days), 15);  // nor does a negative one
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("1299"), days), 335 + 99);
    EXPECT_EQ(DayOfYearSlot(QStringLiteral("1301"), days), std::nullopt);
    EXPECT_EQ(DayOfYearSlot(QString(), days), 0);
}

TEST(NoteSection, AnEmptyNoteIsOneZeroLine) {
    EXPECT_EQ(SectionOf(QString()), QByteArray(" 0 \r\n"));
    EXPECT_EQ(SectionOf(QStringLiteral("      ")), QByteArray(" 0 \r\n"));
}

TEST(NoteSection, OneLineIsWrittenAsOneZeroText) {
    EXPECT_EQ(SectionOf(QStringLiteral("Buy milk")), QByteArray(" 1 \r\n 0 \r\nBuy milk\r\n"));
}

TEST(NoteSection, ThreeLinesTakeFiveLines) {
    EXPECT_EQ(SectionOf(QStringLiteral("a\r\nb\r\nc")),
              QByteArray(" 1 \r\n 2 \r\na\r\nb\r\nc\r\n"));
}

TEST(NoteSection, LeadingBlanksOfTheFirstLineAreLost) {
    EXPECT_EQ(SectionOf(QStringLiteral("   indented\r\n   second")),
              QByteArray(" 1 \r\n 1 \r\nindented\r\n   second\r\n"));
}

TEST(NoteSection, ATrailingBreakIsCountedAndRoundTrips) {
    const QString note = QStringLiteral("last line\r\n");
    const QByteArray section = SectionOf(note);
    EXPECT_EQ(section, QByteArray(" 1 \r\n 1 \r\nlast line\r\n\r\n"));
    LineReader in(section);
    QString read;
    ASSERT_TRUE(ReadNoteSection(in, read));
    EXPECT_EQ(read, note);
    EXPECT_TRUE(in.AtEnd());
}

TEST(NoteSection, LoneBreaksAreWrittenAsFullLineBreaks) {
    EXPECT_EQ(SectionOf(QStringLiteral("a\nb\rc")), QByteArray(" 1 \r\n 2 \r\na\r\nb\r\nc\r\n"));
}

TEST(NoteSection, RoundTripsBreaksAndBlankLines) {
    const QString notes[] = {
        QStringLiteral("single"),
        QStringLiteral("one\r\ntwo"),
        QStringLiteral("first\r\n\r\n\r\nafter two blank lines"),
        QStringLiteral("a\r\nb\r\nc\r\nd\r\ne\r\nf\r\ng\r\nh"),
        QStringLiteral("trailing\r\n"),
        QStringLiteral("two trailing\r\n\r\n"),
        QStringLiteral("\r\nleading break"),
        QStringLiteral("Caf\u00e9 \u20ac \u4e2d"),
        kEveryScript,
    };
    for (const QString& note : notes) {
        LineReader in(SectionOf(note));
        QString read = QStringLiteral("junk");
        ASSERT_TRUE(ReadNoteSection(in, read)) << note.toStdString();
        EXPECT_EQ(read, note);
        EXPECT_TRUE(in.AtEnd());
    }
}

TEST(NoteSection, ReadingZeroOrLessGivesAnEmptyNote) {
    for (const char* section : {" 0 \r\n", "-3\r\n"}) {
        LineReader in{QByteArray(section)};
        QString note = QStringLiteral("old");
        ASSERT_TRUE(ReadNoteSection(in, note));
        EXPECT_TRUE(note.isEmpty());
    }
}

TEST(NoteSection, ANegativeBreakCountReadsNoLinesAndGivesAnEmptyNote) {
    for (const char* breaks : {"-1 ", " -1 ", "-3", "-32768"}) {
        LineReader in(" 1 \r\n" + QByteArray(breaks) + "\r\n 1 \r\n");
        QString note = QStringLiteral("old");
        ASSERT_TRUE(ReadNoteSection(in, note)) << breaks;
        EXPECT_TRUE(note.isEmpty()) << breaks;
        // Reading goes on with the line after the count.
        EXPECT_EQ(in.LineNumber(), 2);
        qint16 next = 0;
        ASSERT_TRUE(in.ReadNumber16(next));
        EXPECT_EQ(next, 1);
    }
}

TEST(NoteSection, ANoteLongerThan800CharactersIsCut) {
    const QByteArray section =
        " 1 \r\n 1 \r\n" + QByteArray(700, 'a') + "\r\n" + QByteArray(700, 'b') + "\r\n";
    LineReader in(section);
    QString note;
    ASSERT_TRUE(ReadNoteSection(in, note));
    EXPECT_EQ(note.size(), 800);
    EXPECT_EQ(note, QString(700, u'a') + QStringLiteral("\r\n") + QString(98, u'b'));
    EXPECT_TRUE(in.AtEnd());
}

TEST(NoteSection, ACutInsideAnEmojiDropsIt) {
    const QString line = QString(799, u'a') + QStringLiteral("\U0001F389");
    LineReader in(" 1 \r\n 0 \r\n" + line.toUtf8() + "\r\n");
    QString note;
    ASSERT_TRUE(ReadNoteSection(in, note));
    EXPECT_EQ(note, QString(799, u'a'));
    EXPECT_TRUE(in.AtEnd());
}

TEST(NoteSection, ManyLinesAreReadPastToTheEnd) {
    QByteArray section = " 1 \r\n 2999 \r\n";
    for (int i = 0; i < 3000; ++i) {
        section += "line\r\n";
    }
    section += "next\r\n";
    LineReader in(section);
    QString note;
    ASSERT_TRUE(ReadNoteSection(in, note));
    EXPECT_EQ(note.size(), 800);
    QString next;
    ASSERT_TRUE(in.ReadLine(next));
    EXPECT_EQ(next, QStringLiteral("next"));
}

struct DamagedSection {
    const char* bytes;
    int line;
};

TEST(NoteSection, DamageIsReportedWithItsLine) {
    const DamagedSection cases[] = {
        {"", 1},                              // ends before the section
        {"note\r\n", 1},                      // not a number
        {" 1 \r\n", 2},                       // ends before the break count
        {" 1 \r\nmany\r\n", 2},               // break count not a number
        {" 1 \r\n 2 \r\none\r\ntwo\r\n", 5},  // ends before the last line
        {" 1 \r\n 30000 \r\nonly\r\n", 4},    // ends long before the last line
        {" 1 \r\n 100000 \r\nonly\r\n", 2},   // a break count beyond 16 bits
    };
    for (const DamagedSection& damaged : cases) {
        LineReader in{QByteArray(damaged.bytes)};
        QString note = QStringLiteral("untouched");
        EXPECT_FALSE(ReadNoteSection(in, note)) << damaged.bytes;
        EXPECT_EQ(note, QStringLiteral("untouched"));
        EXPECT_EQ(in.FailureLine(), damaged.line) << damaged.bytes;
    }
}

TEST_F(DiaryStoreTest, InitStartsEmptyWithAnOpenFile) {
    EXPECT_EQ(diary.NoteRecordCount, 0);
    EXPECT_TRUE(diary.NoteBuffer.IsBlank());
    EXPECT_EQ(diary.NoteBuffer.Value().size(), 800);
    for (qint16 record : diary.NoteIndex) {
        EXPECT_EQ(record, 0);
    }
    EXPECT_EQ(diary.DiaryFileName, world.FilePath(kFileName));
    EXPECT_NE(diary.DiaryFileNumber, 0);
    EXPECT_NE(diary.DiaryFileNumber, world.appointments.AppointmentFileNumber);
    EXPECT_TRUE(QFile::exists(world.FilePath(kFileName)));
}

TEST_F(DiaryStoreTest, TellsWhetherADateHasAStoredNoteWithoutTouchingTheBuffer) {
    diary.NoteBuffer = QStringLiteral("Bring the slides");
    diary.SaveNote(QStringLiteral("0317"));
    diary.NoteBuffer = QStringLiteral("   ");
    diary.SaveNote(QStringLiteral("0318"));
    diary.NoteBuffer = QStringLiteral("Typed, not saved");
    EXPECT_TRUE(diary.HasStoredNote(QStringLiteral("0317")));
    EXPECT_FALSE(diary.HasStoredNote(QStringLiteral("0318")));
    EXPECT_FALSE(diary.HasStoredNote(QStringLiteral("0319")));
    EXPECT_FALSE(diary.HasStoredNote(QStringLiteral("1301")));
    EXPECT_EQ(diary.NoteBuffer.Trimmed(), QStringLiteral("Typed, not saved"));
}

TEST_F(DiaryStoreTest, SavingABlankNoteForANewDateHandsOutNoRecord) {
    diary.NoteBuffer = QStringLiteral("   ");
    diary.SaveNote(QStringLiteral("0704"));
    EXPECT_EQ(diary.NoteRecordCount, 0);
    EXPECT_EQ(diary.NoteIndex[31 + 29 + 31 + 30 + 31 + 30 + 4], 0);
    EXPECT_EQ(FileSize(), 0);
}

TEST_F(DiaryStoreTest, SavingABlankNoteOverADateWithARecordOverwritesIt) {
    diary.NoteBuffer = QStringLiteral("Picnic");
    diary.SaveNote(QStringLiteral("0704"));
    ASSERT_EQ(diary.NoteRecordCount, 1);
    diary.NoteBuffer = QString();
    diary.SaveNote(QStringLiteral("0704"));
    EXPECT_EQ(diary.NoteRecordCount, 1);
    EXPECT_EQ(world.ReadFile(kFileName), NoteRecord(QString()));
}

TEST_F(DiaryStoreTest, RecordsAre1600BytesInTheOrderOfFirstSaving) {
    diary.NoteBuffer = QStringLiteral("December");
    diary.SaveNote(QStringLiteral("1225"));
    diary.NoteBuffer = QStringLiteral("January\r\nsecond line");
    diary.SaveNote(QStringLiteral("0101"));
    EXPECT_EQ(diary.NoteIndex[359 + 1], 1);
    EXPECT_EQ(diary.NoteIndex[1], 2);
    EXPECT_EQ(FileSize(), 2 * kRecordBytes);
    const QByteArray bytes = world.ReadFile(kFileName);
    EXPECT_EQ(bytes.left(kRecordBytes), NoteRecord(QStringLiteral("December")));
    EXPECT_EQ(bytes.mid(kRecordBytes), NoteRecord(QStringLiteral("January\r\nsecond line")));
}

TEST_F(DiaryStoreTest, ARecordHoldsTheNoteInUtf16LittleEndian) {
    // Omega, CR LF and U+1F389 as D83C DF89, then 796 blanks.
    diary.NoteBuffer = QStringLiteral("\u03a9\r\n\U0001F389");
    diary.SaveNote(QStringLiteral("0101"));
    QByteArray expected("\xa9\x03\x0d\x00\x0a\x00\x3c\xd8\x89\xdf", 10);
    for (int blank = 5; blank < 800; ++blank) {
        expected.append(" \x00", 2);
    }
    ASSERT_EQ(expected.size(), 1600);
    EXPECT_EQ(world.ReadFile(kFileName), expected);
}

TEST_F(DiaryStoreTest, TextInEveryScriptRoundTripsThroughTheFile) {
    diary.NoteBuffer = kEveryScript;
    diary.SaveNote(QStringLiteral("0229"));
    EXPECT_EQ(world.ReadFile(kFileName), NoteRecord(kEveryScript));
    diary.NoteBuffer = QStringLiteral("something else");
    diary.LoadNote(QStringLiteral("0229"));
    EXPECT_EQ(diary.NoteBuffer.Trimmed(), kEveryScript);
}

TEST_F(DiaryStoreTest, NulsInARecordReadAsBlanks) {
    diary.NoteBuffer = QStringLiteral("x");
    diary.SaveNote(QStringLiteral("0101"));
    {
        QFile file(world.FilePath(kFileName));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.seek(2));
        ASSERT_EQ(file.write(QByteArray(4, '\0')), 4);
    }
    diary.LoadNote(QStringLiteral("0101"));
    EXPECT_EQ(diary.NoteBuffer.Value(), QStringLiteral("x").leftJustified(800, u' '));
}

TEST_F(DiaryStoreTest, LoadGivesBackTheSavedNote) {
    diary.NoteBuffer = QStringLiteral("line one\r\nline two");
    diary.SaveNote(QStringLiteral("0229"));
    diary.NoteBuffer = QStringLiteral("something else");
    diary.LoadNote(QStringLiteral("0229"));
    EXPECT_EQ(diary.NoteBuffer.Trimmed(), QStringLiteral("line one\r\nline two"));
    EXPECT_EQ(diary.CurrentNoteSlot, 60);
    diary.LoadNote(QStringLiteral("0301"));
    EXPECT_TRUE(diary.NoteBuffer.IsBlank());
    EXPECT_EQ(diary.CurrentNoteSlot, 61);
}

TEST_F(DiaryStoreTest, ClearBlanksTheBufferAndTheRecord) {
    diary.NoteBuffer = QStringLiteral("to be cleared");
    diary.SaveNote(QStringLiteral("0505"));
    diary.ClearNote(QStringLiteral("0505"));
    EXPECT_TRUE(diary.NoteBuffer.IsBlank());
    EXPECT_EQ(world.ReadFile(kFileName), NoteRecord(QString()));
    diary.ClearNote(QStringLiteral("0606"));  // no record: nothing written
    EXPECT_EQ(diary.NoteRecordCount, 1);
    EXPECT_EQ(FileSize(), kRecordBytes);
}

TEST_F(DiaryStoreTest, KeysOutsideTheYearLeaveEverythingAsItWas) {
    diary.NoteBuffer = QStringLiteral("kept");
    diary.CurrentNoteSlot = 5;
    for (const char* key : {"0100", "1301", "1299", "-1-1"}) {
        diary.LoadNote(QString::fromLatin1(key));
        diary.SaveNote(QString::fromLatin1(key));
        diary.ClearNote(QString::fromLatin1(key));
    }
    EXPECT_EQ(diary.NoteBuffer.Trimmed(), QStringLiteral("kept"));
    EXPECT_EQ(diary.CurrentNoteSlot, 5);
    EXPECT_EQ(diary.NoteRecordCount, 0);
    EXPECT_TRUE(world.platform.Messages.Shown.isEmpty());
}

TEST_F(DiaryStoreTest, CloseDeletesTheFileAndResetsTheNumber) {
    diary.CloseDiaryStore();
    EXPECT_FALSE(QFile::exists(world.FilePath(kFileName)));
    EXPECT_EQ(diary.DiaryFileNumber, 0);
    diary.CloseDiaryStore();
    EXPECT_EQ(diary.DiaryFileNumber, 0);
}

TEST_F(DiaryStoreTest, ReinitialisingStartsOver) {
    diary.NoteBuffer = QStringLiteral("old");
    diary.SaveNote(QStringLiteral("0101"));
    diary.CloseDiaryStore();
    diary.InitDiaryStore();
    EXPECT_EQ(diary.NoteRecordCount, 0);
    EXPECT_EQ(diary.NoteIndex[1], 0);
    EXPECT_TRUE(diary.NoteBuffer.IsBlank());
    EXPECT_EQ(FileSize(), 0);
}

TEST_F(DiaryStoreTest, WriteNoteToFileWritesTheTrimmedBuffer) {
    diary.NoteBuffer = QStringLiteral("  hello\r\nworld  ");
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    LineWriter out(buffer);
    diary.WriteNoteToFile(out);
    out.Flush();
    EXPECT_EQ(buffer.data(), QByteArray(" 1 \r\n 1 \r\nhello\r\nworld\r\n"));
}

TEST_F(DiaryStoreTest, ReadNoteFromFileFillsTheBuffer) {
    LineReader in{QByteArray(" 1 \r\n 1 \r\nfirst\r\nsecond\r\n")};
    ASSERT_TRUE(diary.ReadNoteFromFile(in));
    EXPECT_EQ(diary.NoteBuffer.Trimmed(), QStringLiteral("first\r\nsecond"));
    LineReader empty{QByteArray(" 0 \r\n")};
    ASSERT_TRUE(diary.ReadNoteFromFile(empty));
    EXPECT_TRUE(diary.NoteBuffer.IsBlank());
}

TEST_F(DiaryStoreTest, ADamagedSectionLeavesTheBufferAsItWas) {
    diary.NoteBuffer = QStringLiteral("before");
    LineReader in{QByteArray(" 1 \r\n 3 \r\nonly one line\r\n")};
    EXPECT_FALSE(diary.ReadNoteFromFile(in));
    EXPECT_EQ(diary.NoteBuffer.Trimmed(), QStringLiteral("before"));
    EXPECT_EQ(in.FailureLine(), 4);
    EXPECT_EQ(in.FailureReason(), QStringLiteral("the file ends early"));
}

// Without its file the store keeps the notes in memory.
TEST(DiaryStore, AFileThatCannotBeOpenedIsReportedOnceAndKeepsItAllInMemory) {
    TestWorld world;
    ASSERT_TRUE(QDir(world.directory.path()).mkdir(kFileName));
    world.diary.InitDiaryStore();
    EXPECT_EQ(world.diary.DiaryFileNumber, 0);
    ASSERT_EQ(world.platform.Messages.Shown.size(), 1);
    EXPECT_EQ(
        world.platform.Messages.Shown[0],
        (MessageBoxRequest{QStringLiteral("Could not open diary temporary file"),
                           QStringLiteral("Kelvane"), MessageButtons::Ok, MessageIcon::None}));
    world.diary.NoteBuffer = QStringLiteral("in memory");
    world.diary.SaveNote(QStringLiteral("0101"));
    world.diary.NoteBuffer = QString();
    world.diary.LoadNote(QStringLiteral("0101"));
    EXPECT_EQ(world.diary.NoteBuffer.Trimmed(), QStringLiteral("in memory"));
    world.diary.ClearNote(QStringLiteral("0101"));
    world.diary.LoadNote(QStringLiteral("0101"));
    EXPECT_TRUE(world.diary.NoteBuffer.IsBlank());
    world.diary.CloseDiaryStore();
    EXPECT_TRUE(QFileInfo(world.FilePath(kFileName)).isDir());
    EXPECT_EQ(world.platform.Messages.Shown.size(), 1);
}

#ifdef Q_OS_LINUX
// The person is told once, and the notes wait in memory.
TEST(DiaryStore, AFullDiskIsReportedOnceAndLosesNothing) {
    TestWorld world;
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/full"), world.FilePath(kFileName)));
    world.diary.InitDiaryStore();
    ASSERT_NE(world.diary.DiaryFileNumber, 0);
    for (const char* key : {"0101", "0102"}) {
        world.diary.NoteBuffer = QStringLiteral("note ") + QString::fromLatin1(key);
        world.diary.SaveNote(QString::fromLatin1(key));
    }
    ASSERT_EQ(world.platform.Messages.Shown.size(), 1);
    EXPECT_EQ(
        world.platform.Messages.Shown[0].Text,
        QStringLiteral("Could not write diary temporary file\r"
                       "Nothing is lost: the note is kept in memory until it can be written."));
    world.diary.LoadNote(QStringLiteral("0101"));
    EXPECT_EQ(world.diary.NoteBuffer.Trimmed(), QStringLiteral("note 0101"));
}
#endif

}  // namespace
}  // namespace kelvane
