#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include <sys/resource.h>
#include <sys/stat.h>
#include <csignal>

#include "calfile/CalendarFileOnDisk.h"
#include "support/CalendarFileLines.h"
#include "support/DocumentWorld.h"

namespace kelvane {
namespace {

using testing::CalendarFileLines;
using testing::DocumentWorld;

const QString kFilter = QStringLiteral("Calender Files (*.cal)|*.cal|All Files (*.*)|*.*");

bool WriteFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray ReadFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

MessageBoxRequest Critical(const QString& text) {
    return {text, QStringLiteral("Kelvane"), MessageButtons::Ok, MessageIcon::Critical};
}

MessageBoxRequest Question(const QString& text, const QString& title) {
    return {text, title, MessageButtons::YesNo, MessageIcon::Exclamation};
}

// A file holding one title on 2 January.
QByteArray OneTitleFile(const QByteArray& title) {
    CalendarFileLines file = CalendarFileLines::Empty();
    file.FillSlot(2, {" 1 ", title, "0,0,0,0,0", "0,0,0,0,0", " 0 ", " 0 "});
    return file.Bytes();
}

class DocumentCommandsTest : public ::testing::Test {
  protected:
    FakeMessageBoxes& Messages() { return world.world.platform.Messages; }
    FakeFileDialogs& Dialogs() { return world.world.platform.FileDialog; }
    QString Title(int month, int day) {
        return world.calender.Months[static_cast<std::size_t>(month - 1)]
            .Dates[day]
            .Title.Trimmed();
    }

    DocumentWorld world;
};

TEST_F(DocumentCommandsTest, NewWithUnsavedChangesAnsweredNoChangesNothing) {
    world.EditDate(1, 1, QStringLiteral("Keep me"), 1, QStringLiteral("note"));
    world.store.module1.CalendarDirty = true;
    Messages().Answer(MessageAnswer::No);
    world.commands.FileNew();
    EXPECT_EQ(
        Messages().Shown,
        (QList<MessageBoxRequest>{Question(QStringLiteral("Are you sure - changes have been made"),
                                           QStringLiteral("NEW DOCUMENT"))}));
    EXPECT_EQ(Title(1, 1), QStringLiteral("Keep me"));
    EXPECT_TRUE(world.store.module1.CalendarDirty);
    EXPECT_EQ(world.window.Caption, QStringLiteral("Kelvane v1.0"));
    world.store.appointments.LoadAppointments(QStringLiteral("0101"));
    EXPECT_EQ(world.store.appointments.CountAppointments(), 1);
    EXPECT_EQ(world.window.Starts, 1);
    EXPECT_EQ(world.window.Ends, 1);
}

TEST_F(DocumentCommandsTest, NewStartsAFreshDocument) {
    world.EditDate(1, 1, QStringLiteral("Gone"), 2, QStringLiteral("gone too"));
    world.store.calender.ColourList[0].Red = 99;
    world.calender.SetFont(QStringLiteral("Courier"), 20);
    world.store.module1.CalendarDirty = true;
    Messages().Answer(MessageAnswer::Yes);
    world.commands.FileNew();

    EXPECT_EQ(Title(1, 1), QString());
    world.store.appointments.LoadAppointments(QStringLiteral("0101"));
    EXPECT_EQ(world.store.appointments.CountAppointments(), 0);
    world.store.diary.LoadNote(QStringLiteral("0101"));
    EXPECT_TRUE(world.store.diary.NoteBuffer.IsBlank());
    EXPECT_EQ(world.store.calender.ColourList[0].Red, -25);
    QString font;
    qint16 size = 0;
    world.calender.GetFont(font, size);
    EXPECT_EQ(font, QStringLiteral("Arial"));
    EXPECT_EQ(size, 9);
    EXPECT_EQ(world.window.Caption, QStringLiteral("Kelvane"));
    EXPECT_FALSE(world.store.module1.CalendarDirty);
    EXPECT_EQ(world.window.Replacements, 1);
}

TEST_F(DocumentCommandsTest, NewWithoutChangesAsksNothing) {
    world.commands.FileNew();
    EXPECT_TRUE(Messages().Shown.isEmpty());
    EXPECT_EQ(world.window.Caption, QStringLiteral("Kelvane"));
}

TEST_F(DocumentCommandsTest, OpenShowsTheOpenDialogAndCancelDoesNothing) {
    world.commands.FileOpen();
    EXPECT_EQ(Dialogs().Shown,
              (QList<FileDialogRequest>{
                  {FileDialogKind::Open, QStringLiteral("Open"), QString(), kFilter}}));
    EXPECT_TRUE(Messages().Shown.isEmpty());
    EXPECT_EQ(world.window.Caption, QStringLiteral("Kelvane v1.0"));
    EXPECT_EQ(world.window.Starts, 1);
    EXPECT_EQ(world.window.Ends, 1);
}

TEST_F(DocumentCommandsTest, OpenLoadsWithoutAskingAnything) {
    const QString path = world.PathOf(QStringLiteral("plans.cal"));
    ASSERT_TRUE(WriteFile(path, OneTitleFile("Loaded")));
    Dialogs().Choose(path);
    world.commands.FileOpen();

    EXPECT_TRUE(Messages().Shown.isEmpty());
    EXPECT_EQ(Title(1, 2), QStringLiteral("Loaded"));
    EXPECT_EQ(world.window.Caption, QStringLiteral("Kelvane - plans.cal"));
    EXPECT_FALSE(world.store.module1.CalendarDirty);
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[1], path);
    EXPECT_EQ(world.window.Menu.Items[1].Caption, QStringLiteral("1)plans.cal"));
    EXPECT_TRUE(world.window.Menu.SeparatorVisible);
    EXPECT_EQ(world.window.Statuses.last(), QStringLiteral("Successful Load"));
    EXPECT_EQ(world.window.Replacements, 1);
}

// Open asks nothing and loads into the open document; the unsaved changes go to
// a copy of their own first, which File > 1 brings back.
TEST_F(DocumentCommandsTest, OpenKeepsUnsavedChangesInACopyFirst) {
    world.world.platform.Directory.UserData = world.PathOf(QStringLiteral("data"));
    ASSERT_TRUE(QDir().mkpath(world.world.platform.Directory.UserData));
    world.EditDate(1, 2, QStringLiteral("Unsaved"), 1, QStringLiteral("my note"));
    world.store.module1.CalendarDirty = true;
    const QString path = world.PathOf(QStringLiteral("plans.cal"));
    ASSERT_TRUE(WriteFile(path, OneTitleFile("Loaded")));
    Dialogs().Choose(path);
    world.commands.FileOpen();

    EXPECT_TRUE(Messages().Shown.isEmpty());
    EXPECT_EQ(Title(1, 2), QStringLiteral("Loaded"));
    EXPECT_EQ(world.window.Caption, QStringLiteral("Kelvane - plans.cal"));
    EXPECT_FALSE(world.store.module1.CalendarDirty);
    const QString copy = world.PathOf(QStringLiteral("data/unsaved-2000-03-15-090000.cal"));
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[1], copy);
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[2], path);
    EXPECT_EQ(world.window.Statuses.last(),
              QStringLiteral("Successful Load - unsaved changes kept in "
                             "unsaved-2000-03-15-090000.cal (File > 1)"));
    CalendarFileContent kept;
    ASSERT_EQ(ReadCalendarFileNamed(copy, kept).Status, CalendarFileStatus::Ok);
    ASSERT_EQ(kept.Dates.size(), 1u);
    EXPECT_EQ(kept.Dates[0].Entry.Title.Trimmed(), QStringLiteral("Unsaved"));
    EXPECT_EQ(Trim(kept.Dates[0].Note), QStringLiteral("my note"));
    EXPECT_EQ(kept.Dates[0].Schedule.size(), 1u);
}

// Without a copy the unsaved changes would be merged away: nothing is loaded.
TEST_F(DocumentCommandsTest, OpenWhereNoCopyCanBeKeptLoadsNothing) {
    const QString path = world.PathOf(QStringLiteral("plans.cal"));
    ASSERT_TRUE(WriteFile(path, OneTitleFile("Loaded")));
    // Folders inside a file, which can never be made.
    world.world.platform.Directory.UserData = path + QStringLiteral("/data");
    world.world.platform.Directory.Directory = path + QStringLiteral("/program");
    world.EditDate(1, 2, QStringLiteral("Unsaved"), 0);
    world.store.module1.CalendarDirty = true;
    Dialogs().Choose(path);
    world.commands.FileOpen();

    EXPECT_EQ(Messages().Shown,
              (QList<MessageBoxRequest>{Critical(
                  QStringLiteral("The unsaved changes could not be kept in a file of their own,\r"
                                 "so the file was not opened: use Save As first."))}));
    EXPECT_EQ(Title(1, 2), QStringLiteral("Unsaved"));
    EXPECT_TRUE(world.store.module1.CalendarDirty);
    EXPECT_EQ(world.window.Caption, QStringLiteral("Kelvane v1.0"));
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[1], QString());
}

TEST_F(DocumentCommandsTest, LoadingDrawsTheMonthOnce) {
    CalendarFileLines file = CalendarFileLines::Empty();
    for (int slot = 91; slot >= 61; --slot) {  // every day of March, the month shown
        file.FillSlot(slot, {" 1 ", "Busy", "0,0,0,0,0", "0,0,0,0,0", " 0 ", " 0 "});
    }
    const QString path = world.PathOf(QStringLiteral("march.cal"));
    ASSERT_TRUE(WriteFile(path, file.Bytes()));
    const int before = world.view.surface.clears;
    ASSERT_TRUE(world.commands.LoadFile(path));
    EXPECT_EQ(world.view.surface.clears, before + 1);
    EXPECT_EQ(world.view.CellTexts(5, 6), (std::vector<QString>{"31", "Busy"}));
}

TEST_F(DocumentCommandsTest, LoadingAppliesTheViewFlagsOfTheFile) {
    CalendarFileLines file = CalendarFileLines::Empty();
    file.lines[3] = " 0 ";
    const QString path = world.PathOf(QStringLiteral("flags.cal"));
    ASSERT_TRUE(WriteFile(path, file.Bytes()));
    ASSERT_TRUE(world.commands.LoadFile(path));
    EXPECT_EQ(world.window.ToolsToggles, 1);
    EXPECT_EQ(world.window.CalenderToggles, 0);
    EXPECT_FALSE(world.window.Tools);
}

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

TEST_F(DocumentCommandsTest, AMissingFileSaysSoAndChangesNothing) {
    world.commands.LoadFile(world.PathOf(QStringLiteral("missing.cal")));
    EXPECT_EQ(Messages().Shown,
              (QList<MessageBoxRequest>{Critical(QStringLiteral("File dosen't exist"))}));
    EXPECT_EQ(world.window.Caption, QStringLiteral("Kelvane v1.0"));
}

TEST_F(DocumentCommandsTest, AFileWithAnotherHeaderIsNotRecognised) {
    const QString path = world.PathOf(QStringLiteral("other.cal"));
    QByteArray bytes = OneTitleFile("x");
    bytes.replace("Marrowby Kelvane 2000 File", "MARROWBY KELVANE 2000 FILE");
    ASSERT_TRUE(WriteFile(path, bytes));
    world.store.module1.CalendarDirty = true;
    EXPECT_FALSE(world.commands.LoadFile(path));
    EXPECT_EQ(Messages().Shown,
              (QList<MessageBoxRequest>{Critical(QStringLiteral("Don't recognize file"))}));
    EXPECT_TRUE(world.store.module1.CalendarDirty);
    EXPECT_EQ(Title(1, 2), QString());
}

TEST_F(DocumentCommandsTest, ADamagedFileNamesItsLineAndChangesNothing) {
    world.EditDate(1, 2, QStringLiteral("Mine"), 1, QStringLiteral("my note"));
    world.commands.AddRecentFile(QStringLiteral("/earlier.cal"));
    world.store.module1.CalendarDirty = true;
    world.window.Caption = QStringLiteral("Kelvane - earlier.cal");
    const ColourListTable colours = world.store.calender.ColourList;

    CalendarFileLines file = CalendarFileLines::Empty();
    file.lines[1] = " -1 ";  // would make the year a common one
    file.lines[7] = "Changed";
    file.FillSlot(3, {" 1 ", "Bad", "0,0,0,0,0", "0,0,0,0,0", " 2 ", "One", "10,0", "9,0", "Two",
                      "ten,0", "9,0", " 0 "});
    file.FillSlot(2, {" 1 ", "Theirs", "0,0,0,0,0", "0,0,0,0,0", " 0 ", " 0 "});
    const QString path = world.PathOf(QStringLiteral("damaged.cal"));
    ASSERT_TRUE(WriteFile(path, file.Bytes()));

    EXPECT_FALSE(world.commands.LoadFile(path));
    EXPECT_EQ(Messages().Shown,
              (QList<MessageBoxRequest>{Critical(QStringLiteral("File is damaged - line 66"))}));
    EXPECT_EQ(Title(1, 2), QStringLiteral("Mine"));
    EXPECT_EQ(Title(1, 3), QString());
    EXPECT_EQ(world.calender.gLeapYear(), 1);
    EXPECT_EQ(world.store.calender.ColourList, colours);
    EXPECT_TRUE(world.store.module1.CalendarDirty);
    EXPECT_EQ(world.window.Caption, QStringLiteral("Kelvane - earlier.cal"));
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[1], QStringLiteral("/earlier.cal"));
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[2], QString());
    world.store.appointments.LoadAppointments(QStringLiteral("0102"));
    EXPECT_EQ(world.store.appointments.CountAppointments(), 1);
    world.store.diary.LoadNote(QStringLiteral("0102"));
    EXPECT_EQ(world.store.diary.NoteBuffer.Trimmed(), QStringLiteral("my note"));
    EXPECT_TRUE(world.window.Statuses.isEmpty());
}

TEST_F(DocumentCommandsTest, AFolderIsNotACalendarFile) {
    world.commands.LoadFile(world.PathOf(QString()));
    ASSERT_EQ(Messages().Shown.size(), 1);
    EXPECT_EQ(Messages().Shown[0].Icon, MessageIcon::Critical);
    EXPECT_EQ(world.window.Caption, QStringLiteral("Kelvane v1.0"));
}

TEST_F(DocumentCommandsTest, ARecentItemWithChangesAsksBeforeLoading) {
    const QString path = world.PathOf(QStringLiteral("recent.cal"));
    ASSERT_TRUE(WriteFile(path, OneTitleFile("Recent")));
    world.commands.AddRecentFile(path);
    world.store.module1.CalendarDirty = true;
    Messages().Answer(MessageAnswer::No);
    world.commands.FileRecent(1);
    EXPECT_EQ(Messages().Shown, (QList<MessageBoxRequest>{Question(
                                    QStringLiteral("Changes have been made to document - proceed"),
                                    QStringLiteral("oops!"))}));
    EXPECT_EQ(Title(1, 2), QString());

    Messages().Answer(MessageAnswer::Yes);
    world.commands.FileRecent(1);
    EXPECT_EQ(Title(1, 2), QStringLiteral("Recent"));
    EXPECT_EQ(world.window.Starts, world.window.Ends);
}

TEST_F(DocumentCommandsTest, ARecentFileThatWasDeletedSaysSoAndTheListStays) {
    const QString first = world.PathOf(QStringLiteral("first.cal"));
    const QString second = world.PathOf(QStringLiteral("second.cal"));
    world.commands.AddRecentFile(first);
    world.commands.AddRecentFile(second);
    world.commands.FileRecent(2);
    EXPECT_EQ(Messages().Shown,
              (QList<MessageBoxRequest>{Critical(QStringLiteral("File dosen't exist"))}));
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[1], second);
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[2], first);
}

TEST_F(DocumentCommandsTest, RecentItemsOutsideOneToFourAreIgnored) {
    world.commands.FileRecent(0);
    world.commands.FileRecent(5);
    EXPECT_TRUE(Messages().Shown.isEmpty());
    EXPECT_EQ(world.window.Starts, 0);
}

TEST_F(DocumentCommandsTest, TheRecentListIsKeptInFourLinesBesideTheProgram) {
    world.commands.AddRecentFile(QStringLiteral("/a/one.cal"));
    world.commands.AddRecentFile(QStringLiteral("/a/two.cal"));
    world.commands.SaveRecentList();
    EXPECT_EQ(world.commands.RecentListFileName(), world.PathOf(QStringLiteral("~tmpFileList")));
    EXPECT_EQ(ReadFile(world.commands.RecentListFileName()),
              QByteArray("/a/two.cal\r\n/a/one.cal\r\n\r\n\r\n"));

    DocumentWorld later;
    ASSERT_TRUE(WriteFile(later.commands.RecentListFileName(),
                          ReadFile(world.commands.RecentListFileName())));
    later.commands.LoadRecentList();
    EXPECT_EQ(later.commands.RecentFiles().RecentFiles[1], QStringLiteral("/a/two.cal"));
    EXPECT_EQ(later.commands.RecentFiles().RecentFiles[2], QStringLiteral("/a/one.cal"));
    EXPECT_EQ(later.window.Menu.Items[2].Caption, QStringLiteral("2)one.cal"));
    EXPECT_FALSE(later.window.Menu.Items[3].Visible);
}

TEST_F(DocumentCommandsTest, AMissingOrShortRecentListGivesWhatThereIs) {
    world.commands.AddRecentFile(QStringLiteral("/stale.cal"));
    world.commands.LoadRecentList();
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[1], QString());
    EXPECT_FALSE(world.window.Menu.SeparatorVisible);

    ASSERT_TRUE(WriteFile(world.commands.RecentListFileName(), "/only.cal"));
    world.commands.LoadRecentList();
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[1], QStringLiteral("/only.cal"));
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[2], QString());
}

TEST_F(DocumentCommandsTest, FileExistsOnlyForFilesThatOpen) {
    const QString path = world.PathOf(QStringLiteral("here.cal"));
    ASSERT_TRUE(WriteFile(path, "x"));
    EXPECT_TRUE(DocumentCommands::FileExists(path));
    EXPECT_FALSE(DocumentCommands::FileExists(world.PathOf(QStringLiteral("nowhere.cal"))));
    EXPECT_FALSE(DocumentCommands::FileExists(QString()));
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

TEST_F(DocumentCommandsTest, ADamagedRecentFileLeavesTheListInItsOrder) {
    const QString damaged = world.PathOf(QStringLiteral("damaged.cal"));
    ASSERT_TRUE(WriteFile(damaged, "Marrowby Kelvane 2000 File\r\n 2000 \r\n"));
    world.commands.AddRecentFile(damaged);
    world.commands.AddRecentFile(QStringLiteral("/newer.cal"));
    world.commands.FileRecent(2);
    EXPECT_EQ(Messages().Shown,
              (QList<MessageBoxRequest>{Critical(QStringLiteral("File is damaged - line 3"))}));
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[1], QStringLiteral("/newer.cal"));
    EXPECT_EQ(world.commands.RecentFiles().RecentFiles[2], damaged);
}

TEST_F(DocumentCommandsTest, APipeIsNeitherOpenedNorWaitedFor) {
    const QString pipe = world.PathOf(QStringLiteral("pipe.cal"));
    ASSERT_EQ(mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    EXPECT_FALSE(DocumentCommands::FileExists(pipe));
    EXPECT_FALSE(world.commands.LoadFile(pipe));
    EXPECT_EQ(Messages().Shown,
              (QList<MessageBoxRequest>{Critical(QStringLiteral("File dosen't exist"))}));
}

TEST_F(DocumentCommandsTest, AHugeFileIsNotReadIntoMemory) {
    const QString path = world.PathOf(QStringLiteral("huge.cal"));
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(CalendarFileLines::Empty().Bytes());
        ASSERT_TRUE(file.resize(300LL * 1024 * 1024));  // sparse: costs no disk
    }
    EXPECT_FALSE(world.commands.LoadFile(path));
    EXPECT_EQ(Messages().Shown,
              (QList<MessageBoxRequest>{Critical(QStringLiteral("Don't recognize file"))}));
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
