#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include <sys/resource.h>
#include <csignal>

#include "store/DocumentCommandsTest.h"

namespace kelvane {
namespace {

using testing::CalendarFileLines;
using testing::Critical;
using testing::DocumentCommandsTest;
using testing::DocumentWorld;
using testing::kFilter;
using testing::OneTitleFile;
using testing::Question;
using testing::ReadFile;
using testing::WriteFile;

TEST_F(DocumentCommandsTest, SaveAsWritesTheFileAndNamesTheWindowAfterIt) {
    world.EditDate(1, 2, QStringLiteral("Saved"));
    world.store.module1.CalendarDirty = true;
    const QString path = world.PathOf(QStringLiteral("saved.cal"));
    Dialogs().Choose(path);
    world.commands.FileSaveAs();

    EXPECT_EQ(Dialogs().Shown.first(),
              (FileDialogRequest{FileDialogKind::Save, QStringLiteral("Save Calender"), QString(),
                                 kFilter}));
    EXPECT_TRUE(Messages().Shown.isEmpty());
    EXPECT_EQ(ReadFile(path), OneTitleFile("Saved"));
    EXPECT_FALSE(world.store.module1.CalendarDirty);
    EXPECT_EQ(world.window.Caption, QStringLiteral("Kelvane - saved.cal"));
    EXPECT_EQ(world.window.Statuses.last(), QStringLiteral("Successful Save"));
    EXPECT_EQ(world.window.Statuses.first(), QStringLiteral("Saving 8%"));
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[1], path);
}

// A calendar file whose texts are in many scripts: Polish, Chinese, Greek,
// Russian, Japanese and Korean, emoji (two code units each), combining
// accents, Hebrew and Arabic (written right to left).
QByteArray EveryScriptFile() {
    const auto utf8 = [](const QString& text) { return text.toUtf8(); };
    CalendarFileLines file = CalendarFileLines::Empty();
    file.lines[13] = utf8(QStringLiteral("\u015awi\u0119ta \u795d\u65e5 \U0001F389"));
    file.FillSlot(
        366,
        {" 1 ",
         utf8(QStringLiteral(
             "\u041f\u0440\u0438\u0432\u0435\u0442 \U0001F389 \u03a9\u03bc\u03ad\u03b3\u03b1")),
         "0,0,0,0,0", "0,1,10,-10,5", " 2 ",
         utf8(QStringLiteral("\u0141\u00f3d\u017a \u5317\u4eac \u03a9\u03bc\u03ad\u03b3\u03b1")),
         "10,30", "9,0",
         utf8(QStringLiteral(
             "\u05e9\u05dc\u05d5\u05dd \u05e2\u05d5\u05dc\u05dd "
             "\u0645\u0631\u062d\u0628\u0627 \u0628\u0627\u0644\u0639\u0627\u0644\u0645")),
         "-1,0", "12,0", " 1 ", " 2 ",
         utf8(QStringLiteral(
             "\u03a9\u03bc\u03ad\u03b3\u03b1 \u041f\u0440\u0438\u0432\u0435\u0442 \U0001F389")),
         utf8(QStringLiteral("e\u0301a\u0308n\u0303 \U0001F469\u200D\U0001F4BB")),
         utf8(QStringLiteral("\u05e9\u05dc\u05d5\u05dd \u0645\u0631\u062d\u0628\u0627"))});
    file.FillSlot(
        60,
        {" 1 ",
         utf8(QStringLiteral("\u0141\u00f3d\u017a \u5317\u4eac \u03a9\u03bc\u03ad\u03b3\u03b1 "
                             "\u041f\u0440\u0438\u0432\u0435\u0442 \U0001F389")),
         "0,0,0,0,0", "0,0,0,0,0", " 1 ",
         utf8(QStringLiteral("\U0001F389\U0001F389\U0001F389 \u6771\u4eac \uc11c\uc6b8")), "23,59",
         "23,0", " 1 ", " 0 ",
         utf8(QStringLiteral(
             "\u0627\u0644\u0631\u064a\u0627\u0636 \u05d9\u05e8\u05d5\u05e9\u05dc\u05d9\u05dd"))});
    return file.Bytes();
}

TEST_F(DocumentCommandsTest, TextInEveryScriptSurvivesALoadAndASaveAsByteForByte) {
    const QString opened = world.PathOf(QStringLiteral("scripts.cal"));
    const QString saved = world.PathOf(QStringLiteral("saved.cal"));
    ASSERT_TRUE(WriteFile(opened, EveryScriptFile()));
    ASSERT_TRUE(world.commands.LoadFile(opened));
    EXPECT_EQ(Title(2, 29),
              QStringLiteral("\u0141\u00f3d\u017a \u5317\u4eac \u03a9\u03bc\u03ad\u03b3\u03b1 "
                             "\u041f\u0440\u0438\u0432\u0435\u0442 \U0001F389"));
    world.store.appointments.LoadAppointments(QStringLiteral("1231"));
    EXPECT_EQ(world.store.appointments.AppointmentList[1].Description.Trimmed(),
              QStringLiteral("\u0141\u00f3d\u017a \u5317\u4eac \u03a9\u03bc\u03ad\u03b3\u03b1"));

    Dialogs().Choose(saved);
    world.commands.FileSaveAs();
    EXPECT_TRUE(Messages().Shown.isEmpty());
    EXPECT_EQ(ReadFile(saved), ReadFile(opened));
}

TEST_F(DocumentCommandsTest, SaveAsCancelledDoesNothing) {
    world.store.module1.CalendarDirty = true;
    world.commands.FileSaveAs();
    EXPECT_TRUE(world.store.module1.CalendarDirty);
    EXPECT_TRUE(world.window.Statuses.isEmpty());
    EXPECT_EQ(world.window.Ends, 1);
}

TEST_F(DocumentCommandsTest, SaveAsOverAnExistingFileAsksFirst) {
    const QString path = world.PathOf(QStringLiteral("old.cal"));
    ASSERT_TRUE(WriteFile(path, "old contents"));
    Dialogs().Choose(path);
    Messages().Answer(MessageAnswer::No);
    world.commands.FileSaveAs();
    EXPECT_EQ(
        Messages().Shown,
        (QList<MessageBoxRequest>{Question(QStringLiteral("File exists - do you wish to replace"),
                                           QStringLiteral("Watch out ***"))}));
    EXPECT_EQ(ReadFile(path), QByteArray("old contents"));

    Dialogs().Choose(path);
    Messages().Answer(MessageAnswer::Yes);
    world.commands.FileSaveAs();
    EXPECT_TRUE(ReadFile(path).startsWith("Marrowby Kelvane 2000 File\r\n"));
}

TEST_F(DocumentCommandsTest, SaveAsWhereNoFileCanBeMadeSaysSo) {
    world.store.module1.CalendarDirty = true;
    Dialogs().Choose(world.PathOf(QStringLiteral("no such folder/x.cal")));
    world.commands.FileSaveAs();
    EXPECT_EQ(Messages().Shown, (QList<MessageBoxRequest>{Critical(QStringLiteral(
                                    "Could not create file - try different filename\r"
                                    "No such file or directory"))}));
    EXPECT_TRUE(world.store.module1.CalendarDirty);
    EXPECT_EQ(world.window.Caption, QStringLiteral("Kelvane v1.0"));
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[1], QString());
}

// Lets a test make every write past a size fail, as a full disk would.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &saved_);
        rlimit limit = saved_;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &saved_);
        std::signal(SIGXFSZ, SIG_DFL);
    }

  private:
    rlimit saved_{};
};

TEST_F(DocumentCommandsTest, ASaveThatFailsHalfWayLeavesTheOldFileWhole) {
    const QString path = world.PathOf(QStringLiteral("whole.cal"));
    const QByteArray old = OneTitleFile("Old");
    ASSERT_TRUE(WriteFile(path, old));
    for (qint16 day = 1; day <= 31; ++day) {
        world.EditDate(1, day, QString(200, QLatin1Char('x')), 39);
    }
    world.store.module1.CalendarDirty = true;
    Dialogs().Choose(path);
    Messages().Answer(MessageAnswer::Yes);
    {
        FileSizeLimit limit(8192);
        world.commands.FileSaveAs();
    }
    EXPECT_EQ(ReadFile(path), old);
    ASSERT_EQ(Messages().Shown.size(), 2);
    EXPECT_EQ(Messages().Shown[1],
              Critical(QStringLiteral("Could not create file - try different filename\r"
                                      "File too large")));
    EXPECT_TRUE(world.store.module1.CalendarDirty);
    EXPECT_EQ(world.window.Caption, QStringLiteral("Kelvane v1.0"));
    EXPECT_EQ(QDir(world.PathOf(QString())).entryList(QDir::Files | QDir::Hidden).filter(".cal"),
              QStringList{QStringLiteral("whole.cal")});
}

// The number the next file opened would get.
qint16 NextFileNumber(FileNumbers& numbers) {
    const qint16 number = numbers.Take();
    numbers.Release(number);
    return number;
}

TEST_F(DocumentCommandsTest, EverySaveGivesItsFileNumberBack) {
    FileNumbers& numbers = world.store.module1.Files;
    const qint16 next = NextFileNumber(numbers);
    Dialogs().Choose(world.PathOf(QStringLiteral("a.cal")));
    world.commands.FileSaveAs();
    EXPECT_EQ(NextFileNumber(numbers), next);
    Dialogs().Choose(world.PathOf(QStringLiteral("missing folder/b.cal")));
    world.commands.FileSaveAs();
    EXPECT_EQ(NextFileNumber(numbers), next);
    world.commands.FileSaveAs();  // cancelled
    world.commands.SaveRecentList();
    EXPECT_EQ(NextFileNumber(numbers), next);
}

// Windows' rules, wherever the tests run.
class WindowsDocumentCommandsTest : public ::testing::Test {
  protected:
    DocumentWorld world{2000, 3, 15, WindowsFileNameRules()};
};

TEST_F(WindowsDocumentCommandsTest, SavingThenLoadingInAnotherCaseKeepsOneEntry) {
    const QString saved = world.PathOf(QStringLiteral("Data.cal"));
    world.world.platform.FileDialog.Choose(saved);
    world.commands.FileSaveAs();
    EXPECT_EQ(world.window.Caption, QStringLiteral("Kelvane - Data.cal"));
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[1], saved.toUpper());

    world.commands.AddRecentFile(world.PathOf(QStringLiteral("DATA.cal")).toLower());
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[1], saved.toUpper());
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[2], QString());
    EXPECT_EQ(world.window.Menu.Items[1].Caption, QStringLiteral("1)DATA.CAL"));
}

}  // namespace
}  // namespace kelvane
