#include <gtest/gtest.h>

#include <QDir>
#include <QRegularExpression>

#include "fixtures/CalRun.h"
#include "support/DocumentWorld.h"

namespace kelvane::cal {
namespace {

using testing::CalRun;
using testing::RunCal;
using testing::StoreData;

TEST(CheckCommand, CountsWhatAGoodFileHolds) {
    const CalRun run = RunCal({"check", StoreData("known_document.cal")});
    EXPECT_EQ(run.Status, kDone);
    EXPECT_EQ(run.Out, StoreData("known_document.cal") +
                           ": ok: 6 dates with content, 3 activities, 3 notes\n");
    EXPECT_EQ(run.Err, "");
}

TEST(CheckCommand, SaysOneOfAKindInTheSingular) {
    QTemporaryDir folder;
    CalendarFileContent content;
    CalendarFileDate date;
    date.Month = 3;
    date.Day = 7;
    date.Schedule = {testing::Activity("Dentist", {9, 0}, {-1, 0}),
                     testing::Activity("", {10, 0}, {-1, 0})};
    date.Note = "Bring the card";
    content.Dates = {date};
    ASSERT_TRUE(testing::WriteCalendar(folder.filePath("one.cal"), content));
    EXPECT_EQ(RunCal({"check", folder.filePath("one.cal")}).Out,
              folder.filePath("one.cal") + ": ok: 1 date with content, 1 activity, 1 note\n");

    content.Dates.clear();
    ASSERT_TRUE(testing::WriteCalendar(folder.filePath("empty.cal"), content));
    EXPECT_EQ(RunCal({"check", folder.filePath("empty.cal")}).Out,
              folder.filePath("empty.cal") + ": ok: 0 dates with content, 0 activities, 0 notes\n");
}

QStringList DamagedFiles() {
    return QDir(StoreData("damaged")).entryList({"*.cal"}, QDir::Files, QDir::Name);
}

// The line the desktop program's message names for a damaged file.
int DesktopLine(const QString& fileName) {
    kelvane::testing::DocumentWorld world;
    world.commands.LoadFile(fileName);
    const auto& shown = world.world.platform.Messages.Shown;
    if (shown.size() != 1) {
        return -1;
    }
    const QRegularExpressionMatch match =
        QRegularExpression("^File is damaged - line (\\d+)$").match(shown[0].Text);
    return match.hasMatch() ? match.captured(1).toInt() : -1;
}

TEST(CheckCommand, NamesTheLineTheProgramNamesForEveryDamagedFile) {
    ASSERT_GE(DamagedFiles().size(), 15);
    for (const QString& name : DamagedFiles()) {
        SCOPED_TRACE(name.toStdString());
        const QString path = StoreData("damaged/" + name);
        const int desktopLine = DesktopLine(path);
        ASSERT_GT(desktopLine, 0);
        const CalRun run = RunCal({"check", path});
        EXPECT_EQ(run.Status, kFileProblem);
        EXPECT_TRUE(run.Out.startsWith(QStringLiteral("%1: line %2: ").arg(path).arg(desktopLine)))
            << run.Out.toStdString();
        EXPECT_TRUE(run.Out.endsWith('\n'));
        EXPECT_EQ(run.Out.count('\n'), 1);
    }
}

TEST(CheckCommand, ReportsEveryFileAndFailsWhenOneIsBad) {
    const QString good = StoreData("known_document.cal");
    const QString bad = StoreData("damaged/header_only.line-2.cal");
    const CalRun run = RunCal({"check", good, bad, good});
    EXPECT_EQ(run.Status, kFileProblem);
    const QStringList lines = run.Out.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 3);
    EXPECT_TRUE(lines[0].endsWith("ok: 6 dates with content, 3 activities, 3 notes"));
    EXPECT_EQ(lines[1], bad + ": line 2: the file ends early");
    EXPECT_TRUE(lines[2].startsWith(good + ": ok"));
}

TEST(CheckCommand, NamesMissingAndForeignFiles) {
    QTemporaryDir folder;
    const QString missing = folder.filePath("missing.cal");
    const QString foreign = folder.filePath("notes.txt");
    ASSERT_TRUE(testing::WriteBytes(foreign, "Dear diary\r\n"));
    const CalRun run = RunCal({"check", missing, foreign, folder.path()});
    EXPECT_EQ(run.Status, kFileProblem);
    EXPECT_EQ(run.Out, missing + ": no such file\n" + foreign + ": line 1: not a calendar file\n" +
                           folder.path() + ": is a folder, not a calendar file\n");
}

TEST(CheckCommand, WantsAFileAndKnowsNoOptions) {
    CalRun run = RunCal({"check"});
    EXPECT_EQ(run.Status, kUsageError);
    EXPECT_EQ(run.Err, "kelvane-cal: no calendar file given\nTry 'kelvane-cal check --help'.\n");
    run = RunCal({"check", "--month", "3", "a.cal"});
    EXPECT_EQ(run.Status, kUsageError);
    EXPECT_EQ(run.Out, "");
}

TEST(CheckCommand, HasHelp) {
    const CalRun run = RunCal({"check", "--help"});
    EXPECT_EQ(run.Status, kDone);
    EXPECT_TRUE(run.Out.startsWith("usage: kelvane-cal check FILE...\n"));
}

TEST(Commands, HaveHelpAVersionAndRefuseUnknownCommands) {
    CalRun run = RunCal({"--help"});
    EXPECT_EQ(run.Status, kDone);
    EXPECT_TRUE(run.Out.startsWith("usage: kelvane-cal COMMAND"));
    for (const char* command : {"check", "show", "export", "import"}) {
        EXPECT_TRUE(run.Out.contains(QStringLiteral("  %1 ").arg(command))) << command;
    }
    run = RunCal({"--version"});
    EXPECT_EQ(run.Out, "kelvane-cal 1.0.0\n");
    run = RunCal({});
    EXPECT_EQ(run.Status, kUsageError);
    EXPECT_EQ(run.Err, "kelvane-cal: no command given\nTry 'kelvane-cal --help'.\n");
    run = RunCal({"convert", "a.cal"});
    EXPECT_EQ(run.Status, kUsageError);
    EXPECT_EQ(run.Err, "kelvane-cal: unknown command 'convert'\nTry 'kelvane-cal --help'.\n");
}

}  // namespace
}  // namespace kelvane::cal
