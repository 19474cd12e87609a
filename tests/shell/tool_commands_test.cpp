#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>

#include "colourfill/frmColourFill.h"
#include "dialogs/frmAbout.h"
#include "dialogs/frmOptions.h"
#include "dialogs/frmTip.h"
#include "report/frmCommingUp.h"
#include "support/MainWindowWorld.h"
#include "support/ModalDialogs.h"

namespace kelvane {
namespace {

using testing::MainWindowWorld;
using testing::WhenModalOpens;

// Runs `act` on the dialog of type Dialog once a command has opened it, with
// the watch's announcements checked to be off meanwhile.
template <typename Dialog>
void WhenOpens(MainWindowWorld& w, std::function<void(Dialog&)> act) {
    WhenModalOpens([&w, act = std::move(act)](QWidget* widget) {
        auto* dialog = dynamic_cast<Dialog*>(widget);
        ASSERT_NE(dialog, nullptr) << "another dialog opened";
        EXPECT_FALSE(w.watch.AlertsEnabled);
        act(*dialog);
    });
}

template <typename Dialog>
void CloseWhenOpens(MainWindowWorld& w) {
    WhenOpens<Dialog>(w, [](Dialog& dialog) { dialog.close(); });
}

TEST(ToolCommands, EveryMenuEntryOpensItsDialogWithTheAlertsOff) {
    MainWindowWorld w;
    const MainMenu& menu = w.main.Menu();
    CloseWhenOpens<frmCommingUp>(w);
    menu.mnuToolsCommingUp->trigger();
    EXPECT_TRUE(w.watch.AlertsEnabled);
    CloseWhenOpens<frmColourFill>(w);
    menu.mnuToolsColourFill->trigger();
    EXPECT_TRUE(w.watch.AlertsEnabled);
    CloseWhenOpens<frmOptions>(w);
    menu.mnuViewOptions->trigger();
    EXPECT_TRUE(w.watch.AlertsEnabled);
    CloseWhenOpens<frmTip>(w);
    menu.mnuHelpTips->trigger();
    EXPECT_TRUE(w.watch.AlertsEnabled);
    CloseWhenOpens<frmAbout>(w);
    menu.mnuHelpAbout->trigger();
    EXPECT_TRUE(w.watch.AlertsEnabled);
    EXPECT_TRUE(w.platform.Messages.Shown.isEmpty());
    EXPECT_FALSE(w.store.module1.CalendarDirty);
}

TEST(ToolCommands, TipsHaveTheirShortcut) {
    MainWindowWorld w;
    EXPECT_EQ(w.main.Menu().mnuHelpTips->shortcut(), QKeySequence(QStringLiteral("Ctrl+T")));
}

TEST(ToolCommands, ToolbarButtonsSevenAndFifteenOpenTheFillAndTheReport) {
    MainWindowWorld w;
    CloseWhenOpens<frmColourFill>(w);
    w.main.Toolbar().Buttons[7]->trigger();
    CloseWhenOpens<frmCommingUp>(w);
    w.main.Toolbar().Buttons[15]->trigger();
    EXPECT_TRUE(w.watch.AlertsEnabled);
}

TEST(ToolCommands, TheReportListsTodaysTitle) {
    MainWindowWorld w;
    w.main.Calender1().SetDate(2000, 3, 7);
    w.store.calender.CurrentEntry.Title = QStringLiteral("Market day");
    w.main.Calender1().UpdateSelectedDate(false);
    QString shown;
    WhenOpens<frmCommingUp>(w, [&shown](frmCommingUp& dialog) {
        shown = dialog.usrDocViewer1->GetLine(4).trimmed() + QLatin1Char('|') +
                dialog.usrDocViewer1->GetLine(5).trimmed();
        dialog.close();
    });
    w.main.mnuToolsCommingUp_Click();
    EXPECT_EQ(shown, "Market day|7-3-2026 (Saturday)");
    EXPECT_FALSE(w.store.module1.CalendarDirty);
}

TEST(ToolCommands, AFillThatRanMarksTheDocumentChangedAndRedrawsTheGrid) {
    MainWindowWorld w;
    w.main.show();
    QCoreApplication::processEvents();
    const QImage before = w.main.CalenderView().Surface().Image();
    ASSERT_FALSE(before.isNull());
    WhenOpens<frmColourFill>(w, [](frmColourFill& dialog) {
        dialog.Colours->txtBCRed->setText(QStringLiteral("250"));
        dialog.Colours->txtBCRed_KeyUp();
        dialog.Colours->chkBCValid->setChecked(true);
        dialog.Colours->chkBCValid_Click();
        dialog.Colours->chkBCAbsolute->setChecked(true);
        dialog.Colours->chkBCAbsolute_Click();
        dialog.chkFill[1]->setChecked(true);
        QTest::mouseClick(dialog.cmdDoIt, Qt::LeftButton);
    });
    w.main.mnuToolsColourFill_Click();
    EXPECT_TRUE(w.store.module1.CalendarDirty);
    const DateEntry& today = w.main.Calender1().Months[2].Dates[7];
    EXPECT_EQ(today.BackColour, (ColourChoice{250, 0, 0, true, true}));
    EXPECT_NE(w.main.CalenderView().Surface().Image(), before);
}

TEST(ToolCommands, ACancelledFillLeavesTheDocumentUnchanged) {
    MainWindowWorld w;
    WhenOpens<frmColourFill>(
        w, [](frmColourFill& dialog) { QTest::mouseClick(dialog.cmdCancel, Qt::LeftButton); });
    w.main.mnuToolsColourFill_Click();
    EXPECT_FALSE(w.store.module1.CalendarDirty);
}

TEST(ToolCommands, OptionsThatChangeTheFontMarkTheDocumentChanged) {
    MainWindowWorld w;
    WhenOpens<frmOptions>(w, [](frmOptions& dialog) {
        dialog.txtFontSize->setText(QStringLiteral("17"));
        QTest::mouseClick(dialog.cmdOK, Qt::LeftButton);
    });
    w.main.mnuViewOptions_Click();
    QString name;
    qint16 size = 0;
    w.main.Calender1().GetFont(name, size);
    EXPECT_EQ(size, 17);
    EXPECT_TRUE(w.store.module1.CalendarDirty);
}

TEST(ToolCommands, OptionsLeftAsTheyWereDoNotMarkTheDocumentChanged) {
    MainWindowWorld w;
    WhenOpens<frmOptions>(
        w, [](frmOptions& dialog) { QTest::mouseClick(dialog.cmdOK, Qt::LeftButton); });
    w.main.mnuViewOptions_Click();
    EXPECT_FALSE(w.store.module1.CalendarDirty);
    WhenOpens<frmOptions>(w, [](frmOptions& dialog) {
        dialog.chkEnabled->setChecked(false);
        dialog.chkEnabled_Click();
        QTest::mouseClick(dialog.cmdCancel, Qt::LeftButton);
    });
    w.main.mnuViewOptions_Click();
    EXPECT_FALSE(w.store.module1.CalendarDirty);
}

TEST(ToolCommands, ColourEditsKeptByOkMarkTheDocumentChanged) {
    MainWindowWorld w;
    WhenOpens<frmOptions>(w, [](frmOptions& dialog) {
        dialog.chkEnabled->setChecked(false);
        dialog.chkEnabled_Click();
        QTest::mouseClick(dialog.cmdOK, Qt::LeftButton);
    });
    w.main.mnuViewOptions_Click();
    EXPECT_FALSE(w.store.calender.ColourList[0].Enabled);
    EXPECT_TRUE(w.store.module1.CalendarDirty);
}

}  // namespace
}  // namespace kelvane
