// The text viewer's lines beyond memory, kept in a temporary file of records.
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

#include "report/DocViewerFixture.h"

namespace kelvane::doc_viewer_test {
namespace {

// --- the temporary file ---

TEST_F(DocViewerTest, MemoryHoldsAThousandLinesWithoutAFile) {
    FillMemory();
    EXPECT_EQ(viewer.GetLineCount(), 1000);
    EXPECT_EQ(viewer.GetLine(1000), Padded(QStringLiteral("line 1000")));
    EXPECT_EQ(viewer.OverflowFileNumber(), 0);
    EXPECT_TRUE(OverflowFiles(world).isEmpty());
}

TEST_F(DocViewerTest, Line1001IsTheFirstRecordOfTheTemporaryFile) {
    FillMemory();
    ASSERT_TRUE(viewer.AddLine(QStringLiteral("beyond memory")));
    viewer.RefreshDisplay();

    const QStringList files = OverflowFiles(world);
    ASSERT_EQ(files.size(), 1);
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^~tmpTXT[A-Z]{10}$")).match(files[0]).hasMatch())
        << files[0].toStdString();
    EXPECT_EQ(viewer.OverflowFilePath(), world.FilePath(files[0]));
    EXPECT_EQ(world.ReadFile(files[0]), Record(QStringLiteral("beyond memory")));
    EXPECT_EQ(viewer.GetLine(1001), Padded(QStringLiteral("beyond memory")));
    EXPECT_TRUE(world.module1.Files.InUse(viewer.OverflowFileNumber()));
}

// Lines beyond memory may wait in the file's buffer while they are added; a
// read of one of them finds it all the same.
TEST_F(DocViewerTest, ALineStillInTheFilesBufferReadsBack) {
    FillMemory();
    ASSERT_TRUE(viewer.AddLine(QStringLiteral("first")));
    ASSERT_TRUE(viewer.AddLine(QStringLiteral("second")));
    EXPECT_EQ(viewer.GetLine(1002), Padded(QStringLiteral("second")));
    ASSERT_TRUE(viewer.AddLine(QStringLiteral("third")));
    EXPECT_EQ(viewer.GetLine(1001), Padded(QStringLiteral("first")));
    EXPECT_EQ(viewer.GetLine(1003), Padded(QStringLiteral("third")));
}

TEST_F(DocViewerTest, LaterLinesFollowAsFurtherRecords) {
    AddNumberedLines(1003);
    viewer.RefreshDisplay();
    const QStringList files = OverflowFiles(world);
    ASSERT_EQ(files.size(), 1);
    const QByteArray bytes = world.ReadFile(files[0]);
    ASSERT_EQ(bytes.size(), 3 * kRecordBytes);
    EXPECT_EQ(bytes.mid(2 * kRecordBytes), Record(QStringLiteral("line 1003")));
    EXPECT_EQ(viewer.GetLine(1002), Padded(QStringLiteral("line 1002")));

    const QStringList shown = Shown().split(QLatin1Char('\n'));
    ASSERT_EQ(shown.size(), 1003);
    EXPECT_EQ(shown[999], QStringLiteral("line 1000"));
    EXPECT_EQ(shown[1002], QStringLiteral("line 1003"));
}

TEST_F(DocViewerTest, TheNameIsMadeFromTheRandomNumbers) {
    // Each letter is round(24 r + 65): 0 gives 'A', 0.999 gives 'Y'.
    world.platform.Random.Script = {0.0, 0.999, 0.5, 1.0 / 24, 0.2, 0.0, 0.0, 0.0, 0.0, 0.999};
    FillMemory();
    ASSERT_TRUE(viewer.AddLine(QStringLiteral("x")));
    EXPECT_EQ(viewer.OverflowFilePath(), world.FilePath(QStringLiteral("~tmpTXTAYMBFAAAAY")));
    EXPECT_TRUE(QFile::exists(world.FilePath(QStringLiteral("~tmpTXTAYMBFAAAAY"))));
}

TEST_F(DocViewerTest, ANameInUseIsPassedOver) {
    CreateFile(world, QStringLiteral("~tmpTXTAAAAAAAAAA"), "someone else's");
    ScriptName(world, 'A');
    ScriptName(world, 'Y');
    FillMemory();
    ASSERT_TRUE(viewer.AddLine(QStringLiteral("x")));
    EXPECT_EQ(viewer.OverflowFilePath(), world.FilePath(QStringLiteral("~tmpTXTYYYYYYYYYY")));
    EXPECT_EQ(world.ReadFile(QStringLiteral("~tmpTXTAAAAAAAAAA")), QByteArray("someone else's"));
}

TEST_F(DocViewerTest, TheSearchGoesOnPastTenNamesInUse) {
    for (char letter = 'A'; letter <= 'K'; ++letter) {
        CreateFile(world, QStringLiteral("~tmpTXT") + QString(10, QLatin1Char(letter)), "taken");
        ScriptName(world, letter);
    }
    ScriptName(world, 'L');
    FillMemory();
    ASSERT_TRUE(viewer.AddLine(QStringLiteral("x")));
    EXPECT_EQ(viewer.OverflowFilePath(), world.FilePath(QStringLiteral("~tmpTXTLLLLLLLLLL")));
}

TEST_F(DocViewerTest, TerminateDeletesTheFileAndFreesItsNumber) {
    FillMemory();
    ASSERT_TRUE(viewer.AddLine(QStringLiteral("x")));
    const qint16 number = viewer.OverflowFileNumber();
    ASSERT_NE(number, 0);

    viewer.Terminate();
    EXPECT_EQ(viewer.OverflowFileNumber(), 0);
    EXPECT_FALSE(world.module1.Files.InUse(number));
    EXPECT_TRUE(OverflowFiles(world).isEmpty());
    // The count stays, but the lines that were in the file are gone.
    EXPECT_EQ(viewer.GetLineCount(), 1001);
    EXPECT_EQ(viewer.GetLine(1001), QString());
    EXPECT_EQ(viewer.GetLine(1000), Padded(QStringLiteral("line 1000")));
}

TEST_F(DocViewerTest, TerminateWithoutAFileDoesNothing) {
    AddNumberedLines(2);
    viewer.Terminate();
    viewer.Terminate();
    EXPECT_EQ(viewer.GetLine(2), Padded(QStringLiteral("line 2")));
    EXPECT_TRUE(OverflowFiles(world).isEmpty());
}

TEST_F(DocViewerTest, TheNameIsKeptAfterTerminateAndUsedAgain) {
    ScriptName(world, 'C');
    FillMemory();
    ASSERT_TRUE(viewer.AddLine(QStringLiteral("first")));
    const QString path = viewer.OverflowFilePath();
    EXPECT_EQ(path, world.FilePath(QStringLiteral("~tmpTXTCCCCCCCCCC")));

    viewer.Terminate();
    EXPECT_EQ(viewer.OverflowFilePath(), path);
    ScriptName(world, 'D');
    ASSERT_TRUE(viewer.AddLine(QStringLiteral("second")));
    EXPECT_EQ(viewer.OverflowFilePath(), path);
    EXPECT_EQ(OverflowFiles(world), QStringList{QStringLiteral("~tmpTXTCCCCCCCCCC")});
    EXPECT_EQ(viewer.GetLine(1002), Padded(QStringLiteral("second")));
}

TEST(DocViewerLifetime, TheDestructorDeletesTheFile) {
    TestWorld world;
    qint16 number = 0;
    {
        usrDocViewer viewer(world.module1);
        for (int i = 1; i <= 1001; ++i) {
            ASSERT_TRUE(viewer.AddLine(QString::number(i)));
        }
        number = viewer.OverflowFileNumber();
        ASSERT_EQ(OverflowFiles(world).size(), 1);
    }
    EXPECT_TRUE(OverflowFiles(world).isEmpty());
    EXPECT_FALSE(world.module1.Files.InUse(number));
}

TEST(DocViewerLifetime, ADeletedParentTakesTheFileWithIt) {
    TestWorld world;
    auto parent = std::make_unique<QWidget>();
    auto* viewer = new usrDocViewer(world.module1, parent.get());
    for (int i = 1; i <= 1001; ++i) {
        ASSERT_TRUE(viewer->AddLine(QString::number(i)));
    }
    parent.reset();
    EXPECT_TRUE(OverflowFiles(world).isEmpty());
}

TEST(DocViewerNoDirectory, ALineThatCannotBeStoredStillCounts) {
    QTemporaryDir parent;
    TestWorld world(QDir(parent.path()).filePath(QStringLiteral("missing")));
    usrDocViewer viewer(world.module1);
    for (int i = 1; i <= 1000; ++i) {
        ASSERT_TRUE(viewer.AddLine(QString::number(i)));
    }

    EXPECT_FALSE(viewer.AddLine(QStringLiteral("lost")));
    EXPECT_EQ(viewer.GetLineCount(), 1001);
    EXPECT_EQ(viewer.GetLine(1001), QString());
    EXPECT_EQ(viewer.OverflowFileNumber(), 0);
    EXPECT_TRUE(world.platform.Messages.Shown.isEmpty());

    // Each further line tries again and fails the same way.
    EXPECT_FALSE(viewer.AddLine(QStringLiteral("lost too")));
    EXPECT_EQ(viewer.GetLineCount(), 1002);
    viewer.RefreshDisplay();
    const QStringList shown = TextBoxFound(viewer)->toPlainText().split(QLatin1Char('\n'));
    ASSERT_EQ(shown.size(), 1002);
    EXPECT_EQ(shown[999], QStringLiteral("1000"));
    EXPECT_EQ(shown[1000], QString());
    EXPECT_EQ(shown[1001], QString());
}

TEST_F(DocViewerTest, LinesAfterClearingOverwriteOldRecords) {
    AddNumberedLines(1002);
    viewer.ClearLines();
    AddNumberedLines(1000);
    ASSERT_TRUE(viewer.AddLine(QStringLiteral("new")));
    viewer.RefreshDisplay();

    const QStringList files = OverflowFiles(world);
    ASSERT_EQ(files.size(), 1);
    const QByteArray bytes = world.ReadFile(files[0]);
    EXPECT_EQ(bytes, Record(QStringLiteral("new")) + Record(QStringLiteral("line 1002")));
    EXPECT_EQ(viewer.GetLine(1001), Padded(QStringLiteral("new")));
    // The old second record is still on disk but no longer a line.
    EXPECT_EQ(viewer.GetLine(1002), QString());
}

TEST_F(DocViewerTest, TextInEveryScriptSurvivesTheFile) {
    FillMemory();
    ASSERT_TRUE(viewer.AddLine(kEveryScript));
    ASSERT_TRUE(viewer.AddLine(QString(79, u'b') + QStringLiteral("\U0001F389")));
    viewer.RefreshDisplay();

    const QStringList files = OverflowFiles(world);
    ASSERT_EQ(files.size(), 1);
    const QByteArray bytes = world.ReadFile(files[0]);
    ASSERT_EQ(bytes.size(), 2 * kRecordBytes);
    EXPECT_EQ(bytes.left(kRecordBytes), Record(kEveryScript));
    EXPECT_EQ(bytes.mid(kRecordBytes), Record(QString(79, u'b')));
    EXPECT_EQ(viewer.GetLine(1001), Padded(kEveryScript));
    EXPECT_EQ(viewer.GetLine(1002), Padded(QString(79, u'b')));
    EXPECT_TRUE(Shown().endsWith(QStringLiteral("\n") + kEveryScript + QStringLiteral("\n") +
                                 QString(79, u'b')));
}

TEST_F(DocViewerTest, ARecordHoldsTheLineInUtf16LittleEndian) {
    FillMemory();
    // Omega, a blank and U+1F389 as D83C DF89, then 76 blanks.
    ASSERT_TRUE(viewer.AddLine(QStringLiteral("\u03a9 \U0001F389")));
    viewer.RefreshDisplay();
    QByteArray expected("\xa9\x03\x20\x00\x3c\xd8\x89\xdf", 8);
    for (int blank = 4; blank < kLength; ++blank) {
        expected.append(" \x00", 2);
    }
    ASSERT_EQ(expected.size(), 160);
    EXPECT_EQ(world.ReadFile(OverflowFiles(world).value(0)), expected);
}

TEST_F(DocViewerTest, TheCountStopsAtTheLargest16BitNumber) {
    for (int i = 1; i <= usrDocViewer::MostLines; ++i) {
        ASSERT_TRUE(viewer.AddLine(QString::number(i)));
    }
    EXPECT_EQ(viewer.GetLineCount(), 32767);

    EXPECT_FALSE(viewer.AddLine(QStringLiteral("one too many")));
    EXPECT_EQ(viewer.GetLineCount(), 32767);
    EXPECT_EQ(viewer.GetLine(32767), Padded(QStringLiteral("32767")));

    viewer.RefreshDisplay();
    EXPECT_TRUE(Shown().endsWith(QStringLiteral("\n32766\n32767")));
}

}  // namespace
}  // namespace kelvane::doc_viewer_test
