#include <QDialog>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <optional>

#include "colourfill/frmColourFill.h"
#include "dialogs/frmAbout.h"
#include "dialogs/frmOptions.h"
#include "dialogs/frmTip.h"
#include "report/frmCommingUp.h"
#include "shell/WatchHold.h"
#include "support/MainWindowWorld.h"
#include "support/ModalDialogs.h"
#include "support/NineOClockWorld.h"

// While a command holds the working copies or shows a modal window, the
// watch's ticks only gather what starts and ends; what gathered is shown, and
// today's schedule rebuilt, as soon as the last hold ends.
namespace kelvane::testing {
namespace {

TEST(WatchHold, TicksWhileTheEditorIsOpenLeaveItsDateAloneAndAnnounceOnceAfter) {
    NineOClockWorld world;
    MainWindowWorld& w = world.w;
    ASSERT_EQ(w.watch.WatchTime, (ClockTime{9, 0}));
    w.ClickDay(25);
    qsizetype boxesWhileOpen = -1;
    CalDate loadedWhileOpen;
    w.WhenEditorOpens([&](frmEdit& editor) {
        w.TickAt(9, 0, 10);  // sees the starts and ends of 9:00
        w.TickAt(9, 0, 50);  // the same minute again
        w.TickAt(9, 1, 30);  // past WatchTime
        boxesWhileOpen = w.platform.Messages.Shown.size();
        loadedWhileOpen = w.store.calender.CurrentEntryDate;
        editor.txtTitle->setText(QStringLiteral("Dentist"));
        editor.cmdOK->click();
    });
    w.main.mnuEditDate_Click();

    EXPECT_EQ(boxesWhileOpen, 0);
    EXPECT_EQ(loadedWhileOpen.Month, 3);
    EXPECT_EQ(loadedWhileOpen.Day, 25);
    EXPECT_EQ(world.TitleOf(3, 25), QStringLiteral("Dentist"));
    EXPECT_EQ(world.TitleOf(3, 7), QStringLiteral("Busy day"));
    EXPECT_EQ(world.CountOn(3, 25), 0);
    EXPECT_EQ(world.CountOn(3, 7), 2);

    w.TickAt(9, 2, 10);
    EXPECT_EQ(w.ShownTexts(), QStringList{kNineOClock});
    EXPECT_EQ(w.watch.WatchTime, (ClockTime{9, 30}));
    EXPECT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 25, 3}));
}

TEST(WatchHold, TicksWhileDeleteDateAsksLeaveTodayAloneAndAnnounceOnceAfter) {
    NineOClockWorld world;
    MainWindowWorld& w = world.w;
    w.store.diary.NoteBuffer = QStringLiteral("Call the plumber");
    w.store.diary.SaveNote(MakeDateKey(3, 25));
    w.ClickDay(25);
    qsizetype boxesWhileAsking = -1;
    w.platform.Messages.WhileShown = [&](const MessageBoxRequest& box) {
        if (box.Text == QStringLiteral("Delete Date?")) {
            w.TickAt(9, 0, 10);
            w.TickAt(9, 1, 30);
            boxesWhileAsking = w.platform.Messages.Shown.size();
        }
    };
    w.platform.Messages.Answer(MessageAnswer::Yes);
    w.main.Toolbar().Buttons[6]->trigger();
    w.platform.Messages.WhileShown = nullptr;

    EXPECT_EQ(boxesWhileAsking, 1);  // the question alone
    EXPECT_EQ(world.NoteOf(3, 25), QString());
    EXPECT_EQ(world.TitleOf(3, 7), QStringLiteral("Busy day"));
    EXPECT_EQ(world.CountOn(3, 7), 2);
    EXPECT_TRUE(w.store.module1.CalendarDirty);

    w.TickAt(9, 2, 10);
    EXPECT_EQ(w.ShownTexts(), (QStringList{"Delete Date?", kNineOClock}));
}

TEST(WatchHold, TicksWhileAnyModalWindowIsUpShowNothingAndRebuildNothing) {
    NineOClockWorld world;
    MainWindowWorld& w = world.w;
    w.ClickDay(12);
    QStringList linesWhileOpen;
    WhenModalOpens([&](QWidget* dialog) {
        w.TickAt(9, 0, 10);
        w.TickAt(9, 1, 30);
        linesWhileOpen = w.ScheduleLines();
        dialog->close();
    });
    QDialog stranger(&w.main);
    stranger.exec();
    EXPECT_TRUE(w.platform.Messages.Shown.isEmpty());
    EXPECT_TRUE(linesWhileOpen.contains(QStringLiteral("Time to watch:9:00 am")));
    w.TickAt(9, 2, 10);
    EXPECT_EQ(w.ShownTexts(), QStringList{kNineOClock});
}

TEST(WatchHold, EveryDialogOfTheMainWindowHoldsTheWatchWhileItIsUp) {
    MainWindowWorld w;
    const MainMenu& menu = w.main.Menu();
    const std::vector<std::pair<const char*, QAction*>> commands = {
        {"edit", menu.mnuEditDate},       {"colour fill", menu.mnuToolsColourFill},
        {"options", menu.mnuViewOptions}, {"coming up", menu.mnuToolsCommingUp},
        {"tips", menu.mnuHelpTips},       {"about", menu.mnuHelpAbout},
    };
    for (const auto& [name, action] : commands) {
        bool heldWhileOpen = false;
        WhenModalOpens([&](QWidget* dialog) {
            heldWhileOpen = w.watch.Held();
            dialog->close();
        });
        action->trigger();
        EXPECT_TRUE(heldWhileOpen) << name;
        EXPECT_FALSE(w.watch.Held()) << name;
    }
}

TEST(WatchHold, EveryFileDialogAndQuestionOfTheMainWindowHoldsTheWatch) {
    QTemporaryDir folder;
    const QString existing = folder.filePath(QStringLiteral("there.bmp"));
    QFile(existing).open(QIODevice::WriteOnly);
    MainWindowWorld w;
    int asked = 0;
    int heldWhileAsked = 0;
    auto note = [&] {
        ++asked;
        heldWhileAsked += w.watch.Held() ? 1 : 0;
    };
    w.platform.Messages.WhileShown = [&](const MessageBoxRequest&) { note(); };
    w.platform.FileDialog.WhileShown = [&](const FileDialogRequest&) { note(); };
    const MainMenu& menu = w.main.Menu();

    menu.mnuFileOpen->trigger();    // the Open dialog, cancelled
    menu.mnuFileSaveAs->trigger();  // the Save dialog, cancelled
    w.platform.FileDialog.Choose(existing);
    menu.mnuFileSaveCalImage->trigger();  // the Save dialog and the replace question
    w.store.module1.CalendarDirty = true;
    menu.mnuFileNew->trigger();  // "Are you sure - changes have been made"
    w.main.Commands().AddRecentFile(existing);
    menu.mnufileMRU[1]->trigger();  // "Changes have been made to document - proceed"
    w.ClickDay(12);
    w.main.close();  // the quit question, answered No
    w.main.Calender1().Months[2].Dates[12].Title = QStringLiteral("Something");
    w.platform.Messages.Answer(MessageAnswer::No);
    w.main.Toolbar().Buttons[6]->trigger();  // "Delete Date?"

    EXPECT_EQ(asked, 8);
    EXPECT_EQ(heldWhileAsked, asked);
    EXPECT_FALSE(w.watch.Held());
    EXPECT_EQ(w.platform.Messages.UnscriptedQuestions, 4);
}

template <typename Watch>
concept HoldsByHand = requires(Watch& watch) {
    watch.Hold();
}
|| requires(Watch& watch) {
    watch.Release();
};

TEST(WatchHold, OnlyTheScopeObjectsHoldTheWatch) {
    EXPECT_FALSE(HoldsByHand<ActivityWatch>);
}

TEST(WatchHold, HoldsNestAndTheLastReleaseEndsThem) {
    MainWindowWorld w;
    std::optional<WatchHold> outer(std::in_place, w.watch);
    {
        const WatchHold inner(w.watch);
        EXPECT_TRUE(w.watch.Held());
    }
    EXPECT_TRUE(w.watch.Held());
    outer.reset();
    EXPECT_FALSE(w.watch.Held());
}

// The file commands' hooks come in pairs; an end without a start is no
// release of anybody's hold and turns nothing on.
TEST(WatchHold, TheFileCommandHooksNestAndAnUnmatchedEndChangesNothing) {
    MainWindowWorld w;
    w.main.StartFileCommand();
    w.main.StartFileCommand();
    w.main.EndFileCommand();
    EXPECT_TRUE(w.watch.Held());
    w.main.EndFileCommand();
    EXPECT_FALSE(w.watch.Held());
    EXPECT_TRUE(w.watch.AlertsEnabled);
    w.watch.BuildTodaysSchedule();  // nothing to watch today: "warn" is hidden
    ASSERT_FALSE(w.watch.AlertsEnabled);
    w.main.EndFileCommand();
    EXPECT_FALSE(w.watch.AlertsEnabled);
    EXPECT_TRUE(w.main.sbStatusBar().Panel(2)->isHidden());
}

TEST(WatchHold, AMinuteIsGatheredOnceWhenNoRebuildMovedTheWatchOn) {
    NineOClockWorld world;
    MainWindowWorld& w = world.w;
    std::optional<WatchHold> hold(std::in_place, w.watch);
    w.TickAt(9, 0, 5);
    w.TickAt(9, 0, 45);
    EXPECT_EQ(w.watch.PendingAlertText, kNineOClock);
    w.TickAt(9, 30, 5);  // the end of Stand-up, still gathered while held
    hold.reset();
    w.TickAt(9, 30, 45);
    EXPECT_EQ(w.ShownTexts(), QStringList{kNineOClock + "\rending Stand-up"});
}

}  // namespace
}  // namespace kelvane::testing
