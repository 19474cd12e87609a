#include <QTest>

#include <gtest/gtest.h>

#include <memory>

#include "colourfill/frmColourFill.h"
#include "support/DatesWorld.h"

namespace kelvane {
namespace {

using testing::DatesWorld;

const ColourChoice kOwnFont{1, 2, 3, true, true};
const ColourChoice kOwnBack{40, 50, 60, false, true};

class ColourFillTest : public ::testing::Test {
  protected:
    frmColourFill& Open() {
        dialog = std::make_unique<frmColourFill>(dates.world.store, *dates.view.calender);
        dialog->show();
        return *dialog;
    }
    // The whole text at once, as pasting puts it in.
    void SetUnits(const QString& text) {
        dialog->txtUnit->selectAll();
        dialog->txtUnit->insert(text);
    }
    void StartFromSelected() {
        QTest::mouseClick(
            dialog->lstDateFrom->viewport(), Qt::LeftButton, {},
            dialog->lstDateFrom->visualItemRect(dialog->lstDateFrom->item(1)).center());
    }
    void Weekly() { DatesWorld::Click(dialog->optUnit[1]); }
    void Check(int box) { DatesWorld::Click(dialog->chkFill[box]); }
    // Back colour 200, 100, 50, absolute and enabled, typed into the boxes.
    void ChooseAbsoluteBack() {
        ColourChoiceControls& colours = *dialog->Colours;
        DatesWorld::Type(colours.txtBCRed, "200");
        DatesWorld::Type(colours.txtBCGreen, "100");
        DatesWorld::Type(colours.txtBCblue, "50");
        DatesWorld::Click(colours.chkBCValid);
        DatesWorld::Click(colours.chkBCAbsolute);
    }
    // Gives dates their own colours, so that a fill shows where it went.
    void ColourDates(qint16 month, qint16 first, qint16 last) {
        for (qint16 day = first; day <= last; ++day) {
            dates.PutColours(month, day, kOwnFont, kOwnBack);
        }
    }
    bool Filled(qint16 month, qint16 day) const {
        return dates.Entry(month, day).BackColour == dialog->BackColour &&
               dates.Entry(month, day).TextColour == dialog->FontColour;
    }
    bool Untouched(qint16 month, qint16 day) const {
        return dates.Entry(month, day).BackColour == kOwnBack &&
               dates.Entry(month, day).TextColour == kOwnFont;
    }

    DatesWorld dates;
    std::unique_ptr<frmColourFill> dialog;
};

const ColourChoice kChosenBack{200, 100, 50, true, true};

TEST_F(ColourFillTest, ShowsItsCaptionAndNamedControls) {
    Open();
    EXPECT_EQ(dialog->windowTitle(), "Colour Fill");
    EXPECT_EQ(dialog->Label2->text(), "From");
    EXPECT_EQ(dialog->Label1->text(), "Units");
    EXPECT_EQ(dialog->txtUnit->text(), "1");
    EXPECT_EQ(dialog->optUnit[0]->text(), "Dayly");
    EXPECT_EQ(dialog->optUnit[1]->text(), "Weekly");
    EXPECT_TRUE(dialog->optUnit[0]->isChecked());
    EXPECT_EQ(dialog->Label4->text(), "Fill What?");
    EXPECT_EQ(dialog->chkFill[0]->text(), "Edited");
    EXPECT_EQ(dialog->chkFill[1]->text(), "Un-Edited");
    EXPECT_FALSE(dialog->chkFill[0]->isChecked());
    EXPECT_FALSE(dialog->chkFill[1]->isChecked());
    EXPECT_EQ(dialog->cmdDoIt->text(), "Do It!");
    EXPECT_EQ(dialog->cmdCancel->text(), "Cancel");
    for (const char* name :
         {"cmdFontCol", "cmdBackCol", "chkFCValid", "chkBCValid", "chkFCAbsolute", "chkBCAbsolute",
          "txtFCred", "txtFCgreen", "txtFCBlue", "txtBCRed", "txtBCGreen", "txtBCblue", "lblSample",
          "txtDateTo", "lstDateFrom"}) {
        EXPECT_NE(dialog->findChild<QWidget*>(QString::fromLatin1(name)), nullptr) << name;
    }
    EXPECT_EQ(dialog->Colours->chkFCAbsolute->text(), "Absoloute");
    EXPECT_EQ(dialog->Colours->lblSample->text(), "Sample");
}

TEST_F(ColourFillTest, OpensOnTodayForOneDayWithBothColoursAllZero) {
    dates.Select(7, 17);
    Open();
    EXPECT_EQ(dialog->lstDateFrom->item(0)->text(), "Today: 15-3-2000");
    EXPECT_EQ(dialog->lstDateFrom->item(1)->text(), "Selected:17-7-2000");
    EXPECT_EQ(dialog->txtDateTo->text(), "15-3-2000 Wednesday");
    EXPECT_EQ(dialog->FontColour, ColourChoice{});
    EXPECT_EQ(dialog->BackColour, ColourChoice{});
    EXPECT_EQ(dialog->Colours->txtBCRed->text(), "0");
    EXPECT_FALSE(dialog->Colours->chkBCValid->isChecked());
}

TEST_F(ColourFillTest, NeitherBoxCheckedAsksWhatToFillAndChangesNothing) {
    ColourDates(3, 15, 15);
    Open();
    ChooseAbsoluteBack();
    DatesWorld::Click(dialog->cmdDoIt);
    ASSERT_EQ(dates.world.platform.Messages.Shown.size(), 1);
    EXPECT_EQ(dates.world.platform.Messages.Shown[0],
              (MessageBoxRequest{"'Fill What' has not been checked", "what?", MessageButtons::Ok,
                                 MessageIcon::Question}));
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_FALSE(dialog->Filled());
    EXPECT_TRUE(Untouched(3, 15));
}

TEST_F(ColourFillTest, BothBoxesColourEveryDateOfTheRun) {
    ColourDates(3, 14, 18);
    dates.PutTitle(3, 16, "Edited");
    dates.Select(3, 20);
    Open();
    SetUnits("3");
    EXPECT_EQ(dialog->txtDateTo->text(), "17-3-2000 Friday");
    ChooseAbsoluteBack();
    Check(0);
    Check(1);
    DatesWorld::Click(dialog->cmdDoIt);
    EXPECT_TRUE(dialog->Filled());
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->BackColour, kChosenBack);
    EXPECT_TRUE(Untouched(3, 14));
    EXPECT_TRUE(Filled(3, 15));
    EXPECT_TRUE(Filled(3, 16));
    EXPECT_TRUE(Filled(3, 17));
    EXPECT_TRUE(Untouched(3, 18));
    EXPECT_EQ(dates.Entry(3, 16).Title.Trimmed(), "Edited");
    // The selection stays where it was.
    EXPECT_EQ(dates.Selected(), (CalDate{2000, 20, 3}));
}

TEST_F(ColourFillTest, EditedMeansATitleANoteOrASchedule) {
    ColourDates(3, 15, 19);
    dates.PutTitle(3, 15, "Title");
    dates.PutNote(3, 16, "A note");
    dates.PutActivity(3, 17, 1, "Activity", {9, 0});
    dates.PutNote(3, 18, "   ");
    Open();
    SetUnits("5");
    ChooseAbsoluteBack();
    Check(0);
    DatesWorld::Click(dialog->cmdDoIt);
    EXPECT_TRUE(Filled(3, 15));
    EXPECT_TRUE(Filled(3, 16));
    EXPECT_TRUE(Filled(3, 17));
    EXPECT_TRUE(Untouched(3, 18));  // a blank note and colours do not count
    EXPECT_TRUE(Untouched(3, 19));
}

TEST_F(ColourFillTest, UneditedFillsOnlyTheEmptyDates) {
    ColourDates(3, 15, 17);
    dates.PutTitle(3, 16, "Busy");
    Open();
    SetUnits("3");
    ChooseAbsoluteBack();
    Check(1);
    DatesWorld::Click(dialog->cmdDoIt);
    EXPECT_TRUE(Filled(3, 15));
    EXPECT_TRUE(Untouched(3, 16));
    EXPECT_TRUE(Filled(3, 17));
}

TEST_F(ColourFillTest, DailyFromThe30thOfDecemberStopsAtTheEndOfTheYear) {
    ColourDates(12, 29, 31);
    ColourDates(1, 1, 2);
    dates.Select(12, 30);
    Open();
    StartFromSelected();
    SetUnits("3");
    EXPECT_EQ(dialog->txtDateTo->text(), "31-12-2000 Sunday");
    ChooseAbsoluteBack();
    Check(1);
    DatesWorld::Click(dialog->cmdDoIt);
    EXPECT_TRUE(Untouched(12, 29));
    EXPECT_TRUE(Filled(12, 30));
    EXPECT_TRUE(Filled(12, 31));
    EXPECT_TRUE(Untouched(1, 1));
    EXPECT_TRUE(Untouched(1, 2));
}

TEST_F(ColourFillTest, WeeklyTwoUnitsVisitsThreeDatesOnTheStartsWeekday) {
    ColourDates(1, 1, 31);
    dates.Select(1, 3);
    Open();
    StartFromSelected();
    Weekly();
    EXPECT_EQ(dialog->Step, 7);
    SetUnits("2");
    EXPECT_EQ(dialog->txtDateTo->text(), "17-1-2000 Monday");
    ChooseAbsoluteBack();
    Check(1);
    DatesWorld::Click(dialog->cmdDoIt);
    for (qint16 day = 1; day <= 31; ++day) {
        const bool visited = day == 3 || day == 10 || day == 17;
        EXPECT_EQ(Filled(1, day), visited) << day;
        EXPECT_EQ(Untouched(1, day), !visited) << day;
    }
}

TEST_F(ColourFillTest, WeeklyRunsHeldAtTheLastOfDecemberEndThere) {
    ColourDates(12, 1, 31);
    dates.Select(12, 20);
    Open();
    StartFromSelected();
    Weekly();
    SetUnits("3");
    EXPECT_EQ(dialog->txtDateTo->text(), "31-12-2000 Sunday");
    SetUnits("366");
    EXPECT_EQ(dialog->txtDateTo->text(), "31-12-2000 Sunday");
    ChooseAbsoluteBack();
    Check(1);
    DatesWorld::Click(dialog->cmdDoIt);
    for (qint16 day = 1; day <= 31; ++day) {
        EXPECT_EQ(Filled(12, day), day == 20 || day == 27 || day == 31) << day;
    }
}

TEST_F(ColourFillTest, AFillOverTheShownMonthDrawsItOnceAtTheEnd) {
    Open();
    SetUnits("10");
    ChooseAbsoluteBack();
    Check(1);
    const int clearsBefore = dates.view.surface.clears;
    DatesWorld::Click(dialog->cmdDoIt);
    EXPECT_EQ(dates.view.surface.clears, clearsBefore + 1);
    EXPECT_TRUE(Filled(3, 24));
}

TEST_F(ColourFillTest, TheOpeningValuesRemoveTheDatesOwnColours) {
    ColourDates(3, 15, 16);
    Open();
    SetUnits("2");
    Check(0);
    Check(1);
    DatesWorld::Click(dialog->cmdDoIt);
    EXPECT_EQ(dates.Entry(3, 15).BackColour, ColourChoice{});
    EXPECT_EQ(dates.Entry(3, 16).TextColour, ColourChoice{});
}

TEST_F(ColourFillTest, UnitsAreClampedToOneYearAndNonNumbersIgnored) {
    Open();
    SetUnits("500");
    EXPECT_EQ(dialog->Units, 366);
    EXPECT_EQ(dialog->txtDateTo->text(), "31-12-2000 Sunday");
    SetUnits("0");
    EXPECT_EQ(dialog->Units, 1);
    EXPECT_EQ(dialog->txtDateTo->text(), "15-3-2000 Wednesday");
    SetUnits("2.5");
    EXPECT_EQ(dialog->Units, 2);
    SetUnits("-40");
    EXPECT_EQ(dialog->Units, 1);
    SetUnits("4");
    for (const char* text : {"abc", "", "1e400", "3x", "\t"}) {
        SetUnits(text);
        EXPECT_EQ(dialog->Units, 4) << text;
        EXPECT_EQ(dialog->txtDateTo->text(), "18-3-2000 Saturday") << text;
    }
    SetUnits("1e9");
    EXPECT_EQ(dialog->Units, 366);
    SetUnits("367");
    EXPECT_EQ(dialog->Units, 366);
}

TEST_F(ColourFillTest, ColourButtonsUseTheColourDialogAsTheDateEditorDoes) {
    dates.world.platform.ColourDialog.Choose(0x336699);
    Open();
    DatesWorld::Click(dialog->Colours->cmdFontCol);
    EXPECT_EQ(dialog->FontColour.Red, 0x99);
    EXPECT_EQ(dialog->FontColour.Green, 0x66);
    EXPECT_EQ(dialog->FontColour.Blue, 0x33);
    EXPECT_EQ(dialog->Colours->txtFCred->text(), "153");
    DatesWorld::Type(dialog->Colours->txtFCgreen, "300");
    EXPECT_EQ(dialog->FontColour.Green, 0);
}

TEST_F(ColourFillTest, CancelChangesNothing) {
    ColourDates(3, 15, 15);
    Open();
    ChooseAbsoluteBack();
    Check(0);
    Check(1);
    DatesWorld::Click(dialog->cmdCancel);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_FALSE(dialog->Filled());
    EXPECT_TRUE(Untouched(3, 15));
}

}  // namespace
}  // namespace kelvane
