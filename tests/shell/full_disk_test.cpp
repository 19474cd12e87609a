#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include "calfile/CalendarFileOnDisk.h"
#include "gui/QtSettingsStore.h"
#include "support/MainWindowWorld.h"
#include "support/PermissionsApply.h"
#include "support/TinyDisk.h"

// Saving on a disk that fills up: a write that fails is never reported as
// done, never costs the old file, and never loses what was typed.
namespace kelvane::testing {
namespace {

const QString kCannotCreate = QStringLiteral("Could not create file - try different filename");

QByteArray ReadAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

MessageBoxRequest Critical(const QString& text) {
    return {text, QStringLiteral("Kelvane"), MessageButtons::Ok, MessageIcon::Critical};
}

// Titles on every day of January: a calendar of some 9 KiB.
void FillJanuary(MainWindowWorld& w, const QString& title) {
    for (qint16 day = 1; day <= 31; ++day) {
        w.main.Calender1().SetDate(2000, 1, day);
        w.store.calender.CurrentEntry.Title = title + QString(250 - title.size(), QLatin1Char('.'));
        w.main.Calender1().UpdateSelectedDate(false);
    }
    w.store.module1.CalendarDirty = true;
}

void SaveAs(MainWindowWorld& w, const QString& path) {
    w.platform.FileDialog.Choose(path);
    w.main.Menu().mnuFileSaveAs->trigger();
}

class FullDisk : public ::testing::Test {
  protected:
    void SetUp() override { KELVANE_SKIP_UNLESS_MOUNTED(disk); }

    TinyDisk disk;
    MainWindowWorld w;
};

TEST_F(FullDisk, SaveAsOverACalendarKeepsItWholeAndSaysWhy) {
    const QString path = disk.FilePath(QStringLiteral("plans.cal"));
    FillJanuary(w, QStringLiteral("Old"));
    SaveAs(w, path);
    ASSERT_EQ(w.main.sbStatusBar().Message(), QStringLiteral("Successful Save"));
    const QByteArray old = ReadAll(path);
    const QString caption = w.main.windowTitle();
    const RecentFileList recent = w.main.Commands().RecentFiles();

    FillJanuary(w, QStringLiteral("New and longer"));
    ASSERT_TRUE(disk.Fill());
    w.platform.Messages.Answer(MessageAnswer::Yes);  // "File exists - do you wish to replace"
    SaveAs(w, path);

    ASSERT_EQ(w.platform.Messages.Shown.size(), 2);
    EXPECT_EQ(w.platform.Messages.Shown[1],
              Critical(kCannotCreate + QStringLiteral("\rNo space left on device")));
    EXPECT_EQ(ReadAll(path), old);
    EXPECT_TRUE(w.store.module1.CalendarDirty);
    EXPECT_EQ(w.main.windowTitle(), caption);
    EXPECT_EQ(w.main.Commands().RecentFiles().RecentFiles, recent.RecentFiles);
    EXPECT_NE(w.main.sbStatusBar().Message(), QStringLiteral("Successful Save"));
    EXPECT_EQ(QDir(disk.Path()).entryList({QStringLiteral("plans*")}, QDir::Files | QDir::Hidden),
              QStringList{QStringLiteral("plans.cal")});

    w.platform.Messages.Answer(MessageAnswer::No);
    w.main.close();  // Exit still asks: the changes are not saved
    EXPECT_EQ(w.platform.Messages.Shown.last().Title, QStringLiteral("**WAIT**"));
}

TEST_F(FullDisk, SaveAsToANewNameWithFourKilobytesFreeWritesNoFile) {
    FillJanuary(w, QStringLiteral("New"));
    ASSERT_TRUE(disk.Fill(4096));
    const QString path = disk.FilePath(QStringLiteral("new.cal"));
    SaveAs(w, path);
    EXPECT_EQ(w.platform.Messages.Shown,
              (QList<MessageBoxRequest>{
                  Critical(kCannotCreate + QStringLiteral("\rNo space left on device"))}));
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_EQ(QDir(disk.Path()).entryList({QStringLiteral("new*")}, QDir::Files | QDir::Hidden),
              QStringList());
    EXPECT_TRUE(w.store.module1.CalendarDirty);
    EXPECT_EQ(w.main.windowTitle(), QStringLiteral("Kelvane v1.0"));
}

// A folder that lets its files be rewritten but no file be made: the calendar
// is rewritten in place, and when the disk fills up half-way it gets its old
// content back.
TEST_F(FullDisk, RewritingInPlaceThatFailsHalfWayPutsTheOldFileBack) {
    const QString folder = disk.FilePath(QStringLiteral("shared"));
    ASSERT_TRUE(QDir().mkdir(folder));
    const QString path = folder + QStringLiteral("/plans.cal");
    FillJanuary(w, QStringLiteral("Old"));
    SaveAs(w, path);
    const QByteArray old = ReadAll(path);
    ASSERT_GT(old.size(), 4096);
    ASSERT_EQ(Chmod(path, 0666), 0);
    ASSERT_EQ(Chmod(folder, 0555), 0);
    QTemporaryDir userData;
    ASSERT_EQ(Chmod(userData.path(), 0777), 0);
    w.platform.Directory.UserData = userData.path();

    for (qint16 day = 1; day <= 29; ++day) {  // February too: twice the size
        w.main.Calender1().SetDate(2000, 2, day);
        w.store.calender.CurrentEntry.Title = QString(250, QLatin1Char('n'));
        w.main.Calender1().UpdateSelectedDate(false);
    }
    w.store.module1.CalendarDirty = true;
    ASSERT_TRUE(disk.Fill(4096));
    w.platform.Messages.Answer(MessageAnswer::Yes);
    {
        // Root in a user namespace of its own cannot become anyone else.
        PermissionsApply permissions;
        if (!permissions.Active()) {
            GTEST_SKIP() << "file permissions cannot be made to count here";
        }
        SaveAs(w, path);
    }
    ASSERT_EQ(w.platform.Messages.Shown.size(), 2);
    EXPECT_EQ(
        w.platform.Messages.Shown[1],
        Critical(kCannotCreate +
                 QStringLiteral("\rNo space left on device\rThe file was put back as it was.")));
    EXPECT_EQ(ReadAll(path), old);
    EXPECT_EQ(QDir(userData.path()).entryList(QDir::Files | QDir::Hidden), QStringList());
    EXPECT_TRUE(w.store.module1.CalendarDirty);
    Chmod(folder, 0755);
}

// The program's own folder fills up: what the editor gave is kept in memory,
// the person is told, and a save elsewhere holds all of it.
TEST_F(FullDisk, AnEditTheTemporaryStoresCannotTakeIsKeptForTheNextSave) {
    w.store.appointments.CloseAppointmentStore();
    w.store.diary.CloseDiaryStore();
    w.platform.Directory.Directory = disk.Path();
    w.store.appointments.InitAppointmentStore();
    w.store.diary.InitDiaryStore();
    ASSERT_TRUE(disk.Fill());

    w.ClickDay(12);
    w.WhenEditorOpens([](frmEdit& editor) {
        QTest::keyClicks(editor.txtTitle, QStringLiteral("Dentist"));
        editor.txtStartTime->setText(QStringLiteral("9:30"));
        editor.txtEndTime->setText(QStringLiteral("10:00"));
        editor.txtAppDescription->setText(QStringLiteral("Check-up"));
        editor.cmdAddAppointment->click();
        editor.txtNotes->setPlainText(QStringLiteral("Bring the card"));
        editor.cmdOK->click();
    });
    w.main.mnuEditDate_Click();
    EXPECT_EQ(
        w.ShownTexts(),
        (QStringList{QStringLiteral("Could not write a 'temporary' file.\r"
                                    "Make sure there is enough space on 'drive'\r"
                                    "Nothing is lost: the schedule is kept in memory until it can "
                                    "be written."),
                     QStringLiteral("Could not write diary temporary file\r"
                                    "Nothing is lost: the note is kept in memory until it can be "
                                    "written.")}));
    w.ClickDay(13);  // other dates go through the working copies meanwhile
    w.main.Dates().ExamineSelectedDate();

    QTemporaryDir elsewhere;
    const QString path = elsewhere.filePath(QStringLiteral("kept.cal"));
    SaveAs(w, path);
    CalendarFileContent content;
    ASSERT_EQ(ReadCalendarFileNamed(path, content).Status, CalendarFileStatus::Ok);
    ASSERT_EQ(content.Dates.size(), 1U);
    const CalendarFileDate& date = content.Dates[0];
    EXPECT_EQ(date.Entry.Title.Trimmed(), QStringLiteral("Dentist"));
    ASSERT_EQ(date.Schedule.size(), 1U);
    EXPECT_EQ(date.Schedule[0].Description.Trimmed(), QStringLiteral("Check-up"));
    EXPECT_EQ(Trim(date.Note), QStringLiteral("Bring the card"));
}

TEST_F(FullDisk, TheRecentListThatCannotBeWrittenStaysAsItWas) {
    const QString list = disk.FilePath(QStringLiteral("~tmpFileList"));
    w.platform.Directory.Directory = disk.Path();
    w.main.Commands().AddRecentFile(QStringLiteral("/plans/first.cal"));
    w.main.Commands().SaveRecentList();
    const QByteArray old = ReadAll(list);
    ASSERT_FALSE(old.isEmpty());
    ASSERT_TRUE(disk.Fill());
    w.main.Commands().AddRecentFile(QStringLiteral("/plans/second.cal"));
    w.main.Commands().SaveRecentList();
    EXPECT_EQ(ReadAll(list), old);
}

TEST_F(FullDisk, APictureOfTheMonthThatCannotBeWrittenLeavesTheOldOne) {
    TinyDisk disk(8 * 1024 * 1024);  // room for one picture
    KELVANE_SKIP_UNLESS_MOUNTED(disk);
    w.ShowWindow();
    const QString path = disk.FilePath(QStringLiteral("month.bmp"));
    w.platform.FileDialog.Choose(path);
    w.main.mnuFileSaveCalImage_Click();
    const QByteArray old = ReadAll(path);
    ASSERT_FALSE(old.isEmpty());
    ASSERT_TRUE(disk.Fill());
    w.platform.FileDialog.Choose(path);
    w.platform.Messages.Answer(MessageAnswer::Yes);
    w.main.mnuFileSaveCalImage_Click();
    ASSERT_EQ(w.platform.Messages.Shown.size(), 2);
    EXPECT_EQ(w.platform.Messages.Shown[1],
              Critical(QStringLiteral("Could not save the picture of the month to\r") + path +
                       QStringLiteral("\rNo space left on device")));
    EXPECT_EQ(ReadAll(path), old);
}

// QSettings alone would count a file cut short written: here a new value
// longer than the room left.
TEST(FullDiskSettings, SettingsThatCannotBeWrittenStayAsTheyWere) {
    TinyDisk disk;
    KELVANE_SKIP_UNLESS_MOUNTED(disk);
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, disk.Path());
    QtSettingsStore settings;
    const QString app = QStringLiteral("Kelvane");
    const QString section = QStringLiteral("Settings");
    settings.SaveSetting(app, section, QStringLiteral("MainLeft"), QStringLiteral("1000"));
    settings.SaveSetting(app, section, QStringLiteral("MainTop"), QStringLiteral("1200"));
    const QString file = QSettings(QStringLiteral("Kelvane"), app).fileName();
    ASSERT_TRUE(file.startsWith(disk.Path()));
    const QByteArray old = ReadAll(file);
    ASSERT_TRUE(old.contains("MainTop"));

    ASSERT_TRUE(disk.Fill(4096));
    settings.SaveSetting(app, section, QStringLiteral("MainLeft"), QString(6000, u'7'));
    EXPECT_EQ(ReadAll(file), old);
    EXPECT_EQ(settings.GetSetting(app, section, QStringLiteral("MainTop"), QString()),
              QStringLiteral("1200"));
    disk.Empty();
    settings.SaveSetting(app, section, QStringLiteral("MainLeft"), QStringLiteral("2500"));
    EXPECT_EQ(settings.GetSetting(app, section, QStringLiteral("MainLeft"), QString()),
              QStringLiteral("2500"));
}

}  // namespace
}  // namespace kelvane::testing
