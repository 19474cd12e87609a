#include <QTest>

#include <gtest/gtest.h>

#include <memory>

#include "dialogs/frmOptions.h"
#include "support/DatesWorld.h"

namespace kelvane {
namespace {

using testing::DatesWorld;

class OptionsTest : public ::testing::Test {
  protected:
    OptionsTest() { dates.view.calender->SetFont(QStringLiteral("Arial"), 9); }

    frmOptions& Open() {
        dialog = std::make_unique<frmOptions>(dates.world.store, *dates.view.calender);
        dialog->show();
        return *dialog;
    }
    void ChooseLine(int row) {
        QListWidget* list = dialog->lstColourList;
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualItemRect(list->item(row)).center());
    }
    // The whole text at once, as pasting puts it in.
    static void Paste(QLineEdit* box, const QString& text) {
        box->selectAll();
        box->insert(text);
    }
    QString PreviewFont() const {
        QString name;
        qint16 size = 0;
        dialog->calender2().GetFont(name, size);
        return name + QStringLiteral("/") + QString::number(size);
    }
    QString MainFont() const {
        QString name;
        qint16 size = 0;
        dates.view.calender->GetFont(name, size);
        return name + QStringLiteral("/") + QString::number(size);
    }
    ColourListItem& Slot(int index) {
        return dates.world.calender.ColourList[static_cast<std::size_t>(index)];
    }
    QStringList ListLines() const {
        QStringList lines;
        for (int row = 0; row < dialog->lstColourList->count(); ++row) {
            lines << dialog->lstColourList->item(row)->text();
        }
        return lines;
    }

    DatesWorld dates;
    std::unique_ptr<frmOptions> dialog;
};

TEST_F(OptionsTest, ShowsItsCaptionControlsAndTheSchemesNamedSlots) {
    Open();
    EXPECT_EQ(dialog->windowTitle(), "Options");
    EXPECT_EQ(dialog->cmdColour->text(), "Colour");
    EXPECT_EQ(dialog->chkAbsolute->text(), "Absolute");
    EXPECT_EQ(dialog->chkEnabled->text(), "Enabled");
    EXPECT_EQ(dialog->cmdCancel->text(), "Cancel");
    EXPECT_EQ(dialog->lblFontName->text(), "Font Name");
    EXPECT_EQ(dialog->lblFontSize->text(), "Font Size");
    for (const char* name : {"cmbFontName", "txtFontSize", "lstColourList", "cmdColour", "txtRed",
                             "txtGreen", "txtBlue", "chkAbsolute", "chkEnabled", "calender2",
                             "cmdOK", "cmdCancel", "picOptions"}) {
        EXPECT_NE(dialog->findChild<QWidget*>(QString::fromLatin1(name)), nullptr) << name;
    }
    EXPECT_EQ(ListLines(), (QStringList{"0:Back Colour", "1:Current Date", "2:Selected Date"}));
    EXPECT_TRUE(dialog->Loaded);
    EXPECT_EQ(dialog->CurrentItem, 0);
    // The boxes stay empty until a line is chosen.
    EXPECT_EQ(dialog->txtRed->text(), "");
    EXPECT_FALSE(dialog->calender2().getCalenderOn(false));
}

TEST_F(OptionsTest, OpensOnTheMainGridsFontWithTheInstalledFontsListed) {
    Open();
    EXPECT_EQ(dialog->cmbFontName->currentText(), "Arial");
    EXPECT_EQ(dialog->txtFontSize->text(), "9");
    EXPECT_EQ(PreviewFont(), "Arial/9");
    ASSERT_EQ(dialog->cmbFontName->count(), 3);
    EXPECT_EQ(dialog->cmbFontName->itemText(1), "Courier New");
}

TEST_F(OptionsTest, ChoosingALineShowsItsSlot) {
    Open();
    ChooseLine(1);
    EXPECT_EQ(dialog->CurrentItem, 1);
    EXPECT_EQ(dialog->cmdColour->text(), "Current Date");
    EXPECT_EQ(dialog->txtRed->text(), "100");
    EXPECT_EQ(dialog->txtGreen->text(), "0");
    EXPECT_EQ(dialog->txtBlue->text(), "0");
    EXPECT_TRUE(dialog->chkEnabled->isChecked());
    EXPECT_FALSE(dialog->chkAbsolute->isChecked());
    ChooseLine(0);
    EXPECT_EQ(dialog->txtRed->text(), "-25");
}

TEST_F(OptionsTest, ChannelsOutsideTheirRangeBecomeZero) {
    Open();
    ChooseLine(2);
    DatesWorld::Type(dialog->txtRed, "300");
    EXPECT_EQ(Slot(2).Red, 0);
    DatesWorld::Type(dialog->txtRed, "-255");
    EXPECT_EQ(Slot(2).Red, -255);
    DatesWorld::Type(dialog->txtGreen, "12.5");
    EXPECT_EQ(Slot(2).Green, 12);
    DatesWorld::Type(dialog->txtBlue, "abc");
    EXPECT_EQ(Slot(2).Blue, 0);
    Paste(dialog->txtBlue, "1e400");
    EXPECT_EQ(Slot(2).Blue, 0);
}

TEST_F(OptionsTest, TypingBeforeALineIsChosenEditsTheFirstSlot) {
    Open();
    DatesWorld::Type(dialog->txtGreen, "77");
    EXPECT_EQ(Slot(0).Green, 77);
}

TEST_F(OptionsTest, FontSizesOutsideFiveToTwentyFourBecomeTenWhenTheFontIsApplied) {
    Open();
    Paste(dialog->txtFontSize, "12");
    EXPECT_EQ(PreviewFont(), "Arial/12");
    Paste(dialog->txtFontSize, "4");
    EXPECT_EQ(dialog->txtFontSize->text(), "4");
    EXPECT_EQ(PreviewFont(), "Arial/12");
    DatesWorld::Type(dialog->cmbFontName->lineEdit(), "Courier New");
    EXPECT_EQ(dialog->txtFontSize->text(), "10");
    EXPECT_EQ(PreviewFont(), "Courier New/10");
    Paste(dialog->txtFontSize, "30");
    EXPECT_EQ(PreviewFont(), "Courier New/10");
    dialog->cmbFontName->setCurrentIndex(2);
    EXPECT_EQ(dialog->txtFontSize->text(), "10");
    EXPECT_EQ(PreviewFont(), "Times New Roman/10");
    for (const char* text : {"abc", "", "1e400", "-5", "24.6"}) {
        Paste(dialog->txtFontSize, "20");
        Paste(dialog->txtFontSize, text);
        dialog->cmbFontName->setCurrentIndex(0);
        dialog->cmbFontName->setCurrentIndex(1);
        EXPECT_EQ(PreviewFont(), "Courier New/10") << text;
    }
}

TEST_F(OptionsTest, TypedSizesAreRoundedBeforeTheyAreTried) {
    Open();
    Paste(dialog->txtFontSize, "4.6");
    EXPECT_EQ(PreviewFont(), "Arial/5");
    Paste(dialog->txtFontSize, "24.6");
    EXPECT_EQ(dialog->txtFontSize->text(), "24.6");
    EXPECT_EQ(PreviewFont(), "Arial/5");
    DatesWorld::Type(dialog->txtFontSize, "24.6");
    EXPECT_EQ(dialog->txtFontSize->text(), "24.6");
    EXPECT_EQ(PreviewFont(), "Arial/24");
}

TEST_F(OptionsTest, AFontThatIsNotInstalledKeepsItsName) {
    Open();
    DatesWorld::Type(dialog->cmbFontName->lineEdit(), "No Such Font Anywhere");
    EXPECT_EQ(PreviewFont(), "No Such Font Anywhere/9");
    DatesWorld::Click(dialog->cmdOK);
    EXPECT_EQ(MainFont(), "No Such Font Anywhere/9");
}

TEST_F(OptionsTest, OkHandsTheFontToTheMainGridAndKeepsTheColours) {
    Open();
    ChooseLine(1);
    DatesWorld::Click(dialog->chkEnabled);
    EXPECT_FALSE(Slot(1).Enabled);
    Paste(dialog->txtFontSize, "14");
    EXPECT_EQ(MainFont(), "Arial/9");
    DatesWorld::Click(dialog->cmdOK);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(MainFont(), "Arial/14");
    EXPECT_FALSE(Slot(1).Enabled);
}

TEST_F(OptionsTest, CancelPutsTheColoursBackAndLeavesTheFont) {
    Open();
    ChooseLine(1);
    DatesWorld::Click(dialog->chkEnabled);
    DatesWorld::Click(dialog->chkAbsolute);
    DatesWorld::Type(dialog->txtRed, "5");
    Paste(dialog->txtFontSize, "14");
    DatesWorld::Click(dialog->cmdCancel);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_TRUE(Slot(1).Enabled);
    EXPECT_FALSE(Slot(1).Absolute);
    EXPECT_EQ(Slot(1).Red, 100);
    EXPECT_EQ(MainFont(), "Arial/9");
}

TEST_F(OptionsTest, EscapeAnswersAsCancel) {
    Open();
    ChooseLine(1);
    DatesWorld::Click(dialog->chkEnabled);
    QTest::keyClick(dialog.get(), Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_TRUE(Slot(1).Enabled);
}

TEST_F(OptionsTest, ClosingByTheFrameNeitherRestoresNorPassesTheFontOn) {
    Open();
    ChooseLine(1);
    DatesWorld::Click(dialog->chkEnabled);
    Paste(dialog->txtFontSize, "14");
    dialog->close();
    EXPECT_FALSE(Slot(1).Enabled);
    EXPECT_EQ(MainFont(), "Arial/9");
}

TEST_F(OptionsTest, ThePickedColourBecomesTheChannelsAndTheFlagsStay) {
    dates.world.platform.ColourDialog.Choose(0x336699);
    Open();
    ChooseLine(2);
    DatesWorld::Click(dialog->cmdColour);
    ASSERT_EQ(dates.world.platform.ColourDialog.Shown.size(), 1);
    EXPECT_EQ(dates.world.platform.ColourDialog.Shown[0], 100 * 256);  // 0, 100, 0
    EXPECT_EQ(Slot(2).Red, 0x99);
    EXPECT_EQ(Slot(2).Green, 0x66);
    EXPECT_EQ(Slot(2).Blue, 0x33);
    EXPECT_FALSE(Slot(2).Absolute);
    EXPECT_TRUE(Slot(2).Enabled);
    EXPECT_EQ(dialog->txtRed->text(), "153");
    // A cancelled dialog changes nothing.
    DatesWorld::Click(dialog->cmdColour);
    EXPECT_EQ(Slot(2).Red, 0x99);
}

TEST_F(OptionsTest, ColourEditsRedrawThePreviewAtOnce) {
    Open();
    const QImage before = dialog->calender2View->Surface().Image();
    ChooseLine(0);
    DatesWorld::Click(dialog->chkAbsolute);
    DatesWorld::Type(dialog->txtRed, "255");
    EXPECT_NE(dialog->calender2View->Surface().Image(), before);
}

TEST_F(OptionsTest, ListingStopsAtTheFirstEmptyOrFullLengthName) {
    Slot(3) = MakeColourListItem(QStringLiteral("  Weekend  "), 1, 2, 3, false, true);
    Slot(4) = MakeColourListItem(QStringLiteral("Twenty characters!!!"), 1, 2, 3, false, true);
    Slot(5) = MakeColourListItem(QStringLiteral("After"), 1, 2, 3, false, true);
    Open();
    EXPECT_EQ(ListLines(),
              (QStringList{"0:Back Colour", "1:Current Date", "2:Selected Date", "3:Weekend"}));
    // Names are kept trimmed; Cancel keeps every slot, listed or not.
    EXPECT_EQ(Slot(3).Name.Value(), QStringLiteral("Weekend").leftJustified(20));
    DatesWorld::Click(dialog->cmdCancel);
    EXPECT_EQ(Slot(5).Name.Trimmed(), "After");
}

}  // namespace
}  // namespace kelvane
