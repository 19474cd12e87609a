#include <QTest>

#include <gtest/gtest.h>

#include "colourfill/frmColourFill.h"
#include "dialogs/frmOptions.h"
#include "report/frmCommingUp.h"
#include "support/ModalDialogs.h"
#include "support/SelectionWorld.h"

// Edit, Erase and Examine act on the date the grid highlights: a selected date
// of a month that is not shown is shown first, and the tools that only read
// dates leave the selection and the working copies alone. The person has
// clicked 17 November; today is 10 November.
namespace kelvane::testing {
namespace {

template <typename Dialog>
void WhenOpens(std::function<void(Dialog&)> act) {
    WhenModalOpens([act = std::move(act)](QWidget* widget) {
        auto* dialog = dynamic_cast<Dialog*>(widget);
        ASSERT_NE(dialog, nullptr) << "another dialog opened";
        act(*dialog);
    });
}

// What the grid shows while the date editor is open.
struct ShownWhileEditing {
    QString Date;
    qint16 Month = 0;
    qint16 CheckedMonth = 0;
    qint16 Highlighted = -1;
};

ShownWhileEditing EditFromToolbar(NovemberWorld& november) {
    ShownWhileEditing shown;
    november.w.WhenEditorOpens([&](frmEdit& editor) {
        shown.Date = editor.lblDate->text();
        shown.Month = november.w.main.Calender1().GetDisplayMonth();
        shown.CheckedMonth = november.CheckedMonth();
        shown.Highlighted = HighlightedDayOf(november.w.main);
        editor.cmdCancel->click();
    });
    november.w.main.Toolbar().Buttons[5]->trigger();
    return shown;
}

void ExpectSeventeenthSelectedAndHighlighted(MainWindowWorld& w) {
    EXPECT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 17, 11}));
    EXPECT_EQ(w.main.Calender1().GetDisplayMonth(), 11);
    EXPECT_EQ(w.HighlightedDay(), 17);
}

TEST(HighlightedDate, EditAfterTheNextMonthButtonShowsTheDateItOpens) {
    NovemberWorld november;
    MainWindowWorld& w = november.w;
    w.main.Toolbar().Buttons[11]->trigger();
    ASSERT_EQ(w.main.Calender1().GetDisplayMonth(), 12);
    EXPECT_EQ(w.HighlightedDay(), 0);
    EXPECT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 17, 11}));

    const ShownWhileEditing shown = EditFromToolbar(november);
    EXPECT_EQ(shown.Date, QStringLiteral("17 / 11"));
    EXPECT_EQ(shown.Month, 11);
    EXPECT_EQ(shown.CheckedMonth, 11);
    EXPECT_EQ(shown.Highlighted, 17);
    ExpectSeventeenthSelectedAndHighlighted(w);
}

TEST(HighlightedDate, EraseAfterTheMonthMenuShowsTheDateItEmpties) {
    NovemberWorld november;
    MainWindowWorld& w = november.w;
    w.main.Menu().Months[1]->trigger();
    ASSERT_EQ(w.main.Calender1().GetDisplayMonth(), 1);
    november.ExpectEraseEmptiesTheSeventeenth();
    EXPECT_EQ(november.CheckedMonth(), 11);
}

TEST(HighlightedDate, ExamineAfterThePreviousMonthButtonShowsTheExaminedDate) {
    NovemberWorld november;
    MainWindowWorld& w = november.w;
    w.main.Toolbar().Buttons[9]->trigger();
    ASSERT_EQ(w.main.Calender1().GetDisplayMonth(), 10);
    const WorkingCopies before(w.store);
    w.main.Menu().mnuEditExamineDate_Selected->trigger();
    EXPECT_TRUE(w.watch.ExamineActive);
    EXPECT_EQ(w.watch.ExamineDate.Month, 11);
    EXPECT_EQ(w.watch.ExamineDate.Day, 17);
    EXPECT_TRUE(w.ScheduleLines().contains(QStringLiteral("Dentist")));
    EXPECT_EQ(november.CheckedMonth(), 11);
    ExpectSeventeenthSelectedAndHighlighted(w);
    EXPECT_TRUE(WorkingCopies(w.store) == before);
}

TEST(HighlightedDate, ACommandOnTheShownMonthLeavesItShown) {
    NovemberWorld november;
    const ShownWhileEditing shown = EditFromToolbar(november);
    EXPECT_EQ(shown.Date, QStringLiteral("17 / 11"));
    EXPECT_EQ(shown.Highlighted, 17);
    ExpectSeventeenthSelectedAndHighlighted(november.w);
}

// Month(s) walks the report over the rest of November; closing it leaves the
// person's 17 November as it was.
TEST(HighlightedDate, TheComingUpReportKeepsTheSelectionAndTheWorkingCopies) {
    NovemberWorld november;
    MainWindowWorld& w = november.w;
    const WorkingCopies before(w.store);
    QStringList report;
    WhenOpens<frmCommingUp>([&report](frmCommingUp& dialog) {
        QTest::mouseClick(dialog.optTimeDuration[2], Qt::LeftButton);
        for (qint16 line = 1; line <= dialog.usrDocViewer1->GetLineCount(); ++line) {
            report << dialog.usrDocViewer1->GetLine(line).trimmed();
        }
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    w.main.Toolbar().Buttons[15]->trigger();
    EXPECT_TRUE(report.contains(QStringLiteral("To 30-11-2026  (Monday)"))) << report.join('|');
    EXPECT_TRUE(report.contains(QStringLiteral("Dentist")));
    ExpectSeventeenthSelectedAndHighlighted(w);
    EXPECT_TRUE(WorkingCopies(w.store) == before);
    november.ExpectEraseEmptiesTheSeventeenth();
}

// The fill colours 10 to 19 November red and keeps the person's selection; it
// changes no schedule or note, so those working copies stay as they were.
TEST(HighlightedDate, TheColourFillKeepsTheSelection) {
    NovemberWorld november;
    MainWindowWorld& w = november.w;
    const WorkingCopies before(w.store);
    WhenOpens<frmColourFill>([](frmColourFill& dialog) {
        dialog.txtUnit->setText(QStringLiteral("10"));
        ColourChoiceControls& colours = *dialog.Colours;
        colours.txtBCRed->setText(QStringLiteral("250"));
        colours.txtBCRed_KeyUp();
        colours.chkBCValid->setChecked(true);
        colours.chkBCValid_Click();
        colours.chkBCAbsolute->setChecked(true);
        colours.chkBCAbsolute_Click();
        dialog.chkFill[0]->setChecked(true);
        dialog.chkFill[1]->setChecked(true);
        QTest::mouseClick(dialog.cmdDoIt, Qt::LeftButton);
    });
    w.main.Toolbar().Buttons[7]->trigger();
    const Calender& calender = w.main.Calender1();
    ASSERT_EQ(calender.Months[10].Dates[19].BackColour, (ColourChoice{250, 0, 0, true, true}));
    EXPECT_EQ(calender.Months[10].Dates[20].BackColour, ColourChoice{});
    ExpectSeventeenthSelectedAndHighlighted(w);
    const WorkingCopies after(w.store);
    EXPECT_EQ(after.EntryDate.Month, 11);
    EXPECT_EQ(after.EntryDate.Day, 17);
    EXPECT_EQ(after.Entry, calender.Months[10].Dates[17]);
    EXPECT_EQ(after.Schedule, before.Schedule);
    EXPECT_EQ(after.Note, before.Note);
    november.ExpectEraseEmptiesTheSeventeenth();
}

TEST(HighlightedDate, TheOptionsAndTheirPreviewKeepTheSelectionAndTheWorkingCopies) {
    NovemberWorld november;
    MainWindowWorld& w = november.w;
    const WorkingCopies before(w.store);
    WhenOpens<frmOptions>([](frmOptions& dialog) {
        dialog.lstColourList->setCurrentRow(1);
        dialog.lstColourList_Click();
        dialog.txtRed->setText(QStringLiteral("120"));
        dialog.txtRed_KeyUp();
        dialog.txtFontSize->setText(QStringLiteral("12"));
        QTest::mouseClick(dialog.cmdOK, Qt::LeftButton);
    });
    w.main.Menu().mnuViewOptions->trigger();
    ASSERT_EQ(w.store.calender.ColourList[1].Red, 120);
    ExpectSeventeenthSelectedAndHighlighted(w);
    EXPECT_TRUE(WorkingCopies(w.store) == before);
}

}  // namespace
}  // namespace kelvane::testing
