#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "store/DiaryStoreTest.h"
#include "support/LinesWritten.h"

namespace kelvane {
namespace {

using testing::DiaryStoreTest;
using testing::kEveryScriptNote;
using testing::kNoteFileName;
using testing::kNoteRecordBytes;
using testing::NoteRecord;
using testing::TestWorld;

TEST_F(DiaryStoreTest, InitStartsEmptyWithAnOpenFile) {
    EXPECT_EQ(diary.NoteRecordCount, 0);
    EXPECT_TRUE(diary.NoteBuffer.IsBlank());
    EXPECT_EQ(diary.NoteBuffer.Value().size(), 800);
    for (qint16 record : diary.NoteIndex) {
        EXPECT_EQ(record, 0);
    }
    EXPECT_EQ(diary.DiaryFileName, world.FilePath(kNoteFileName));
    EXPECT_NE(diary.DiaryFileNumber, 0);
    EXPECT_NE(diary.DiaryFileNumber, world.appointments.AppointmentFileNumber);
    EXPECT_TRUE(QFile::exists(world.FilePath(kNoteFileName)));
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
    EXPECT_EQ(world.ReadFile(kNoteFileName), NoteRecord(QString()));
}

TEST_F(DiaryStoreTest, RecordsAre1600BytesInTheOrderOfFirstSaving) {
    diary.NoteBuffer = QStringLiteral("December");
    diary.SaveNote(QStringLiteral("1225"));
    diary.NoteBuffer = QStringLiteral("January\r\nsecond line");
    diary.SaveNote(QStringLiteral("0101"));
    EXPECT_EQ(diary.NoteIndex[359 + 1], 1);
    EXPECT_EQ(diary.NoteIndex[1], 2);
    EXPECT_EQ(FileSize(), 2 * kNoteRecordBytes);
    const QByteArray bytes = world.ReadFile(kNoteFileName);
    EXPECT_EQ(bytes.left(kNoteRecordBytes), NoteRecord(QStringLiteral("December")));
    EXPECT_EQ(bytes.mid(kNoteRecordBytes), NoteRecord(QStringLiteral("January\r\nsecond line")));
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
    EXPECT_EQ(world.ReadFile(kNoteFileName), expected);
}

TEST_F(DiaryStoreTest, TextInEveryScriptRoundTripsThroughTheFile) {
    diary.NoteBuffer = kEveryScriptNote;
    diary.SaveNote(QStringLiteral("0229"));
    EXPECT_EQ(world.ReadFile(kNoteFileName), NoteRecord(kEveryScriptNote));
    diary.NoteBuffer = QStringLiteral("something else");
    diary.LoadNote(QStringLiteral("0229"));
    EXPECT_EQ(diary.NoteBuffer.Trimmed(), kEveryScriptNote);
}

TEST_F(DiaryStoreTest, NulsInARecordReadAsBlanks) {
    diary.NoteBuffer = QStringLiteral("x");
    diary.SaveNote(QStringLiteral("0101"));
    {
        QFile file(world.FilePath(kNoteFileName));
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
    EXPECT_EQ(world.ReadFile(kNoteFileName), NoteRecord(QString()));
    diary.ClearNote(QStringLiteral("0606"));  // no record: nothing written
    EXPECT_EQ(diary.NoteRecordCount, 1);
    EXPECT_EQ(FileSize(), kNoteRecordBytes);
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
    EXPECT_FALSE(QFile::exists(world.FilePath(kNoteFileName)));
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
    EXPECT_EQ(testing::LinesWritten([this](LineWriter& out) { diary.WriteNoteToFile(out); }),
              QByteArray(" 1 \r\n 1 \r\nhello\r\nworld\r\n"));
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
    ASSERT_TRUE(QDir(world.directory.path()).mkdir(kNoteFileName));
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
    EXPECT_TRUE(QFileInfo(world.FilePath(kNoteFileName)).isDir());
    EXPECT_EQ(world.platform.Messages.Shown.size(), 1);
}

#ifdef Q_OS_LINUX
// The person is told once, and the notes wait in memory.
TEST(DiaryStore, AFullDiskIsReportedOnceAndLosesNothing) {
    TestWorld world;
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/full"), world.FilePath(kNoteFileName)));
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
