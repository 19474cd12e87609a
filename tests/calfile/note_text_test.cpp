
#include <gtest/gtest.h>

#include "calfile/NoteText.h"
#include "support/EveryScript.h"
#include "support/LinesWritten.h"

namespace kelvane {
namespace {

using testing::kEveryScriptNote;

// The note section of `note` as the calendar file holds it.
QByteArray SectionOf(const QString& note) {
    return testing::LinesWritten([&note](LineWriter& out) { WriteNoteSection(out, note); });
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
        kEveryScriptNote,
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

TEST(NoteLines, SplitsAtLineBreaksOfAnyKind) {
    EXPECT_EQ(NoteLines(QStringLiteral("one")), QStringList({"one"}));
    EXPECT_EQ(NoteLines(QStringLiteral("a\r\nb\nc\rd")), QStringList({"a", "b", "c", "d"}));
    EXPECT_EQ(NoteLines(QStringLiteral("a\r\n\r\nb")), QStringList({"a", "", "b"}));
    EXPECT_EQ(NoteLines(QStringLiteral("a\n\rb")), QStringList({"a", "", "b"}));
}

TEST(NoteLines, AreTheLinesBetweenTheBreaksWithCrLfBreaksMakes) {
    const QStringList notes = {QStringLiteral("a\r\r\nb"),   QStringLiteral("\n\r\n\r"),
                               QStringLiteral("\r\n\n\r\r"), QStringLiteral("a\rb\r\nc\nd\n\re"),
                               QStringLiteral("\r"),         QStringLiteral("x\n"),
                               QStringLiteral("x\r"),        QStringLiteral("\r\r")};
    for (const QString& note : notes) {
        EXPECT_EQ(NoteLines(note), WithCrLfBreaks(note).split(kNoteLineBreak)) << qPrintable(note);
    }
}

// Lines of every length from 0 to 40 units, so that breaks of every kind fall
// on, before and after every place of a block of units looked at together.
QString NoteOfManyLengths(const QString& lineBreak) {
    QString note = QStringLiteral("start");
    for (int length = 0; length <= 40; ++length) {
        note += lineBreak + QString(length, QLatin1Char('x'));
    }
    return note + lineBreak + QStringLiteral("end");
}

TEST(NoteLines, FindBreaksWhereverTheyFallInLongLines) {
    for (const QString& lineBreak : {QStringLiteral("\r\n"), QStringLiteral("\r"),
                                     QStringLiteral("\n"), QStringLiteral("\n\r")}) {
        const QString note = NoteOfManyLengths(lineBreak);
        EXPECT_EQ(NoteLines(note), WithCrLfBreaks(note).split(kNoteLineBreak));
    }
}

TEST(NoteSection, CountsAndWritesTheLinesOfLongLines) {
    for (const QString& lineBreak : {QStringLiteral("\r\n"), QStringLiteral("\r"),
                                     QStringLiteral("\n"), QStringLiteral("\n\r")}) {
        const QString note = NoteOfManyLengths(lineBreak);
        const QStringList lines = WithCrLfBreaks(note).split(kNoteLineBreak);
        QByteArray expected = " 1 \r\n " + QByteArray::number(lines.size() - 1) + " \r\n";
        for (const QString& line : lines) {
            expected += line.toUtf8() + "\r\n";
        }
        EXPECT_EQ(SectionOf(note), expected);
    }
}

TEST(NoteLines, GivesOneEmptyLineForAnEmptyNote) {
    EXPECT_EQ(NoteLines(QString()), QStringList({""}));
}

TEST(NoteLines, GivesAnEmptyLastLineAfterATrailingBreak) {
    EXPECT_EQ(NoteLines(QStringLiteral("last\r\n")), QStringList({"last", ""}));
    EXPECT_EQ(NoteLines(QStringLiteral("\r\n")), QStringList({"", ""}));
}

TEST(NoteLfBreaks, TurnEachLfIntoTheNotesBreakAndBack) {
    EXPECT_EQ(kNoteLineBreak, QLatin1String("\r\n"));
    EXPECT_EQ(NoteFromLfBreaks(QStringLiteral("a\nb\n")), QStringLiteral("a\r\nb\r\n"));
    EXPECT_EQ(NoteFromLfBreaks(QStringLiteral("a\rb")), QStringLiteral("a\rb"));
    EXPECT_EQ(NoteWithLfBreaks(QStringLiteral("a\r\nb\rc\n")), QStringLiteral("a\nb\rc\n"));
}

}  // namespace
}  // namespace kelvane
