#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QScreen>

#include <gtest/gtest.h>

#include "shell/Application.h"
#include "shell/frmMain.h"
#include "support/TestWorld.h"

namespace kelvane {
namespace {

using testing::TestWorld;

// Notes what start-up asks of the splash and the tips, and whether the main
// window was up by then.
struct RecordingStartupDialogs final : StartupDialogs {
    void ShowSplash() override { Calls << QStringLiteral("splash") + MainWindowState(); }
    void CloseSplash() override { Calls << QStringLiteral("close splash") + MainWindowState(); }
    void ShowTips(QWidget* owner) override {
        Calls << QStringLiteral("tips") + MainWindowState();
        TipsOwner = owner;
    }
    static QString MainWindowState() {
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            if (window->objectName() == QStringLiteral("frmMain")) {
                return window->isVisible() ? QStringLiteral(" (shown)")
                                           : QStringLiteral(" (hidden)");
            }
        }
        return QStringLiteral(" (none)");
    }
    QStringList Calls;
    QWidget* TipsOwner = nullptr;
};

// A program over a fresh world, started with a command line of the test's choosing.
struct Program {
    explicit Program(const QString& programDirectory = QString()) : world(programDirectory) {}
    ~Program() { application.Finish(); }

    QString Setting(const char* key) const {
        return world.platform.Settings.Values.value(FakeSettingsStore::Key(
            QStringLiteral("Kelvane"), QStringLiteral("Settings"), QString::fromLatin1(key)));
    }
    void SetSetting(const char* key, const QString& value) {
        world.platform.Settings.Values.insert(
            FakeSettingsStore::Key(QStringLiteral("Kelvane"), QStringLiteral("Settings"),
                                   QString::fromLatin1(key)),
            value);
    }
    // The program directory's files, sorted.
    QStringList Files() const {
        return QDir(world.directory.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    frmMain& Main() { return *application.MainWindow(); }
    double Dpi() { return Main().screen()->logicalDotsPerInch(); }

    TestWorld world;
    RecordingStartupDialogs dialogs;
    Application application{world.platform.Services, dialogs};
};

const QString kAppointments = QStringLiteral("~tempAppoint.tmp");
const QString kDiary = QStringLiteral("~tmpDiaryCal");
const QString kRecentList = QStringLiteral("~tmpFileList");

TEST(Application, TheCommandLineIsTheArgumentsJoinedByBlanks) {
    EXPECT_EQ(Application::CommandLineOf({"kelvane"}), QString());
    EXPECT_EQ(Application::CommandLineOf({"kelvane", "/data/my", "plans.cal"}),
              QStringLiteral("/data/my plans.cal"));
}

TEST(Application, StartOpensBothStoresAndShowsTheLoadedMainWindow) {
    Program program;
    ASSERT_TRUE(program.application.Start(QString()));
    EXPECT_EQ(program.Files(), (QStringList{kAppointments, kDiary}));
    EXPECT_FALSE(program.application.Document().module1.CalendarDirty);
    EXPECT_TRUE(program.Main().isVisible());
    EXPECT_EQ(program.Main().sbStatusBar().Message(), QStringLiteral("I am ready!"));
    EXPECT_TRUE(program.Main().Calender1().CalenderOn);
    EXPECT_TRUE(program.Main().Watch().AlertsEnabled);
    EXPECT_FALSE(program.Main().Watch().ExamineActive);
    EXPECT_TRUE(program.world.platform.Messages.Shown.isEmpty());
}

TEST(Application, WithoutACommandLineTheSplashCoversTheLoadAndTheTipsFollow) {
    Program program;
    program.application.Start(QStringLiteral("   "));
    EXPECT_EQ(program.dialogs.Calls,
              (QStringList{"splash (none)", "close splash (hidden)", "tips (shown)"}));
    EXPECT_EQ(program.dialogs.TipsOwner, &program.Main());
}

TEST(Application, AnotherCopyRunningStopsStartUpWithTheTwoLineMessage) {
    Program program;
    {
        QFile first(program.world.FilePath(kAppointments));
        ASSERT_TRUE(first.open(QIODevice::WriteOnly));
        first.write("first copy's schedules");
    }
    program.world.platform.Instance.OtherCopy = true;
    EXPECT_FALSE(program.application.Start(QStringLiteral("plans.cal")));
    ASSERT_EQ(program.world.platform.Messages.Shown.size(), 1);
    const MessageBoxRequest& box = program.world.platform.Messages.Shown[0];
    EXPECT_EQ(box.Text, QStringLiteral("There is another 'me' running\r"
                                       "Cannot have more than one 'Kelvane' running"));
    EXPECT_EQ(box.Title, QStringLiteral("Kelvane"));
    EXPECT_EQ(box.Icon, MessageIcon::Critical);
    EXPECT_EQ(box.Buttons, MessageButtons::Ok);
    EXPECT_EQ(program.application.MainWindow(), nullptr);
    EXPECT_TRUE(program.dialogs.Calls.isEmpty());
    program.application.Finish();
    EXPECT_EQ(program.Files(), (QStringList{kAppointments}));
    EXPECT_EQ(program.world.ReadFile(kAppointments), QByteArray("first copy's schedules"));
}

// Records whether the main window was on screen when each box appeared.
struct VisibilityRecordingMessages final : MessageBoxes {
    QStringList Seen;

  protected:
    MessageAnswer Present(const MessageBoxRequest& request) override {
        Seen << request.Text + RecordingStartupDialogs::MainWindowState();
        return MessageAnswer::Ok;
    }
};

TEST(Application, AFileNamedOnTheCommandLineLoadsOnceTheWindowIsShownWithoutSplashOrTips) {
    TestWorld world;
    VisibilityRecordingMessages messages;
    FakePlatform& fake = world.platform;
    const Platform services{messages,        fake.Clock,        fake.Random, fake.Directory,
                            fake.FileDialog, fake.ColourDialog, fake.Fonts,  fake.Settings,
                            fake.Instance,   fake.Accessibility};
    RecordingStartupDialogs dialogs;
    Application application(services, dialogs);
    application.Start(QStringLiteral("  /no/such/plans.cal  "));
    EXPECT_EQ(messages.Seen, (QStringList{"File dosen't exist (shown)"}));
    EXPECT_TRUE(dialogs.Calls.isEmpty());
    application.Finish();
}

TEST(Application, BlanksAroundTheFileNameAreDropped) {
    Program program;
    const QString path = program.world.directory.filePath(QStringLiteral("plans.cal"));
    {
        Program writer;
        writer.application.Start(QStringLiteral(""));
        writer.world.platform.FileDialog.Choose(path);
        writer.Main().Menu().mnuFileSaveAs->trigger();
        ASSERT_TRUE(QFile::exists(path));
    }
    program.application.Start(QStringLiteral("   ") + path + QStringLiteral("  "));
    EXPECT_EQ(program.Main().windowTitle(), QStringLiteral("Kelvane - plans.cal"));
    EXPECT_EQ(program.Main().sbStatusBar().Message(), QStringLiteral("Successful Load"));
    EXPECT_TRUE(program.world.platform.Messages.Shown.isEmpty());
}

TEST(Application, AQuotedPathKeepsItsQuotesAndNamesNoFile) {
    Program program;
    const QString path = program.world.directory.filePath(QStringLiteral("plans.cal"));
    QFile(path).open(QIODevice::WriteOnly);
    program.application.Start(QLatin1Char('"') + path + QLatin1Char('"'));
    EXPECT_EQ(program.world.platform.Messages.Shown.size(), 1);
    EXPECT_EQ(program.world.platform.Messages.Shown[0].Text, QStringLiteral("File dosen't exist"));
    EXPECT_EQ(program.Main().windowTitle(), QStringLiteral("Kelvane v1.0"));
    EXPECT_TRUE(program.Main().isVisible());
    EXPECT_TRUE(program.application.Document().calender.CurrentEntry.Title.IsBlank());
}

TEST(Application, TheFirstRunOpensTheWindowAtItsDefaultGeometry) {
    Program program;
    program.application.Start(QString());
    const double dpi = program.Dpi();
    EXPECT_EQ(program.Main().pos(), QPoint(TwipsToPixels(1000, dpi), TwipsToPixels(1000, dpi)));
    EXPECT_EQ(program.Main().size(), QSize(TwipsToPixels(6500, dpi), TwipsToPixels(6500, dpi)));
}

TEST(Application, TheStoredGeometryIsUsedAndWrittenBackInTwipsOnQuit) {
    Program program;
    program.SetSetting("MainLeft", QStringLiteral("1500"));
    program.SetSetting("MainTop", QStringLiteral("750.5"));
    program.SetSetting("MainWidth", QStringLiteral("9000"));
    program.SetSetting("MainHeight", QStringLiteral("7200"));
    program.application.Start(QString());
    const double dpi = program.Dpi();
    EXPECT_EQ(program.Main().pos(), QPoint(TwipsToPixels(1500, dpi), TwipsToPixels(750.5, dpi)));
    EXPECT_EQ(program.Main().size(), QSize(TwipsToPixels(9000, dpi), TwipsToPixels(7200, dpi)));

    program.Main().move(TwipsToPixels(2880, dpi), TwipsToPixels(1440, dpi));
    EXPECT_TRUE(program.Main().close());
    EXPECT_EQ(program.Setting("MainLeft"), QStringLiteral("2880"));
    EXPECT_EQ(program.Setting("MainTop"), QStringLiteral("1440"));
    EXPECT_EQ(Val(program.Setting("MainWidth")), PixelsToTwips(TwipsToPixels(9000, dpi), dpi));
    EXPECT_EQ(Val(program.Setting("MainHeight")), PixelsToTwips(TwipsToPixels(7200, dpi), dpi));
}

TEST(Application, SettingsThatAreNotNumbersCountAsZeroAndTheWindowKeepsItsDesignedSize) {
    Program program;
    program.SetSetting("MainLeft", QStringLiteral("abc"));
    program.SetSetting("MainWidth", QStringLiteral("wide"));
    program.application.Start(QString());
    EXPECT_EQ(program.Main().pos().x(), 0);
    EXPECT_EQ(program.Main().width(), program.Main().DesignWidth);
    EXPECT_EQ(program.Main().height(), TwipsToPixels(6500, program.Dpi()));
}

TEST(Application, AbsurdGeometryStillLeavesTheWindowOnScreen) {
    for (const auto& [left, top, width, height] :
         {std::tuple{"-1e9", "-50000", "1e30", "-7"}, std::tuple{"1e9", "1e9", "1", "1e9"},
          std::tuple{"-1e308", "1e308", "-1e308", "1e308"}}) {
        Program program;
        program.SetSetting("MainLeft", QString::fromLatin1(left));
        program.SetSetting("MainTop", QString::fromLatin1(top));
        program.SetSetting("MainWidth", QString::fromLatin1(width));
        program.SetSetting("MainHeight", QString::fromLatin1(height));
        program.application.Start(QString());
        const QRect screen = program.Main().screen()->availableGeometry();
        const QRect window(program.Main().pos(), program.Main().size());
        EXPECT_TRUE(screen.contains(window.topLeft())) << left << " " << top;
        EXPECT_LE(window.width(), std::max(screen.width(), program.Main().DesignWidth));
        EXPECT_LE(window.height(), std::max(screen.height(), program.Main().DesignHeight));
        EXPECT_GE(window.width(), program.Main().DesignWidth);
        EXPECT_GE(window.height(), program.Main().DesignHeight);
    }
}

TEST(Application, QuittingFromAMaximisedWindowKeepsTheLastNormalGeometry) {
    Program program;
    program.SetSetting("MainLeft", QStringLiteral("1234"));
    program.application.Start(QString());
    program.Main().showMaximized();
    EXPECT_TRUE(program.Main().close());
    EXPECT_EQ(program.world.platform.Settings.Saves, 0);
    EXPECT_EQ(program.Setting("MainLeft"), QStringLiteral("1234"));
}

TEST(Application, QuittingWithChangesAnsweredNoKeepsTheProgramGoing) {
    Program program;
    program.application.Start(QString());
    program.application.Document().module1.CalendarDirty = true;
    program.Main().Watch().AlertsOff();
    program.world.platform.Messages.Answer(MessageAnswer::No);
    EXPECT_FALSE(program.Main().close());
    const MessageBoxRequest& box = program.world.platform.Messages.Shown.last();
    EXPECT_EQ(box.Text,
              QStringLiteral("Are you sure you wish to quit\r-current document has changed"));
    EXPECT_EQ(box.Title, QStringLiteral("**WAIT**"));
    EXPECT_EQ(box.Buttons, MessageButtons::YesNo);
    EXPECT_EQ(box.Icon, MessageIcon::Exclamation);
    EXPECT_TRUE(program.Main().isVisible());
    EXPECT_TRUE(program.Main().sbStatusBar().Panel(2)->isVisible());
    EXPECT_EQ(program.Main().sbStatusBar().Panel(2)->text(), QStringLiteral("warn"));
    EXPECT_TRUE(program.Main().Timer1.isActive());
    EXPECT_EQ(program.world.platform.Settings.Saves, 0);
    EXPECT_EQ(program.Files(), (QStringList{kAppointments, kDiary}));
    EXPECT_NE(program.application.Document().appointments.AppointmentFileNumber, 0);
}

TEST(Application, QuittingWithChangesAnsweredYesDiscardsThem) {
    Program program;
    program.application.Start(QString());
    program.application.Document().module1.CalendarDirty = true;
    program.world.platform.Messages.Answer(MessageAnswer::Yes);
    EXPECT_TRUE(program.Main().close());
    EXPECT_FALSE(program.Main().Timer1.isActive());
    EXPECT_EQ(program.world.platform.Settings.Saves, 4);
    program.application.Finish();
    EXPECT_EQ(program.Files(), (QStringList{kRecentList}));
}

// A dialog that notes how many settings were saved when it was closed.
struct WatchingDialog final : QDialog {
    explicit WatchingDialog(const FakeSettingsStore& settings) : settings_(settings) {}
    void closeEvent(QCloseEvent* event) override {
        SavesWhenClosed = settings_.Saves;
        QDialog::closeEvent(event);
    }
    int SavesWhenClosed = -1;

  private:
    const FakeSettingsStore& settings_;
};

TEST(Application, OtherOpenWindowsAreClosedBeforeTheSettingsAreWritten) {
    Program program;
    program.application.Start(QString());
    WatchingDialog report(program.world.platform.Settings);
    report.setWindowTitle(QStringLiteral("Comming Up..."));
    report.show();
    EXPECT_TRUE(program.Main().close());
    EXPECT_FALSE(report.isVisible());
    EXPECT_EQ(report.SavesWhenClosed, 0);
    EXPECT_EQ(program.world.platform.Settings.Saves, 4);
}

TEST(Application, HiddenWindowsAreClosedTooOnQuit) {
    Program program;
    program.application.Start(QString());
    WatchingDialog hidden(program.world.platform.Settings);
    EXPECT_TRUE(program.Main().close());
    EXPECT_EQ(hidden.SavesWhenClosed, 0);
}

TEST(Application, QuittingLeavesOnlyTheRecentListBehindAfterNewAFailedLoadAndAnOverflow) {
    Program program;
    program.application.Start(QString());
    program.Main().Menu().mnuFileNew->trigger();
    EXPECT_FALSE(program.Main().LoadFile(program.world.directory.filePath("missing.cal")));
    usrDocViewer& schedule = program.Main().usrTodaysSchedule();
    for (int line = 0; line < 1005; ++line) {
        schedule.AddLine(QStringLiteral("line"));
    }
    ASSERT_EQ(program.Files().filter(QStringLiteral("~tmpTXT")).size(), 1);
    EXPECT_TRUE(program.Main().close());
    program.application.Finish();
    EXPECT_EQ(program.Files(), (QStringList{kRecentList}));
    EXPECT_EQ(program.world.ReadFile(kRecentList), QByteArray("\r\n\r\n\r\n\r\n"));
}

TEST(Application, AnUnwritableDirectoryShowsTheStoreMessagesAndStillRunsAndQuits) {
    Program program(QStringLiteral("/nonexistent-kelvane-dir"));
    ASSERT_TRUE(program.application.Start(QString()));
    const auto& shown = program.world.platform.Messages.Shown;
    ASSERT_EQ(shown.size(), 2);
    EXPECT_EQ(shown[0].Text, QStringLiteral("Could not open a 'temporary' file.\r"
                                            "Make sure there is enough space on 'drive'"));
    EXPECT_EQ(shown[1].Text, QStringLiteral("Could not open diary temporary file"));
    EXPECT_TRUE(program.Main().isVisible());
    program.Main().Toolbar().Buttons[11]->trigger();
    EXPECT_TRUE(program.Main().close());
    program.application.Finish();
    EXPECT_EQ(shown.size(), 2);
    EXPECT_FALSE(QDir(QStringLiteral("/nonexistent-kelvane-dir")).exists());
}

TEST(Application, AWholeSession) {
    QTemporaryDir data;
    const QString original = data.filePath(QStringLiteral("year.cal"));
    const QString copy = data.filePath(QStringLiteral("copy.cal"));
    {
        Program first;
        first.application.Start(QString());
        first.world.platform.FileDialog.Choose(original);
        first.Main().Menu().mnuFileSaveAs->trigger();
        EXPECT_TRUE(first.Main().close());
    }

    Program program;
    program.world.platform.Clock.Set(2026, 3, 7, 9, 0);
    program.application.Start(original);
    frmMain& main = program.Main();
    EXPECT_EQ(main.windowTitle(), QStringLiteral("Kelvane - year.cal"));
    main.Toolbar().Buttons[11]->trigger();
    main.Toolbar().Buttons[11]->trigger();
    main.Toolbar().Buttons[9]->trigger();
    EXPECT_EQ(main.Calender1().GetDisplayMonth(), 4);
    program.world.platform.FileDialog.Choose(copy);
    main.Menu().mnuFileSaveAs->trigger();
    EXPECT_EQ(main.windowTitle(), QStringLiteral("Kelvane - copy.cal"));
    EXPECT_EQ(main.Menu().mnufileMRU[1]->text(), QStringLiteral("1)copy.cal"));
    EXPECT_EQ(main.Menu().mnufileMRU[2]->text(), QStringLiteral("2)year.cal"));

    program.application.Document().module1.CalendarDirty = true;
    program.world.platform.Messages.Answer(MessageAnswer::No);
    EXPECT_FALSE(main.close());
    program.world.platform.Messages.Answer(MessageAnswer::Yes);
    EXPECT_TRUE(main.close());
    program.application.Finish();
    EXPECT_EQ(program.Files(), (QStringList{kRecentList}));
    EXPECT_EQ(program.world.ReadFile(kRecentList),
              (copy + QStringLiteral("\r\n") + original + QStringLiteral("\r\n\r\n\r\n")).toUtf8());
}

}  // namespace
}  // namespace kelvane
