#include <gtest/gtest.h>

#include "gui/Twips.h"
#include "support/EditorWorld.h"

namespace kelvane::testing {
namespace {

QColor SampleBack(const frmEdit& dialog) {
    return dialog.Colours->lblSample->palette().color(QPalette::Window);
}
QColor SampleText(const frmEdit& dialog) {
    return dialog.Colours->lblSample->palette().color(QPalette::WindowText);
}
QColor DialogBack(const frmEdit& dialog) {
    return dialog.palette().color(QPalette::Window);
}

TEST(EditorLoad, ShowsTheDateTitleColoursAndNoteOfTheWorkingCopy) {
    EditorWorld w;
    DateEntry& entry = w.world.calender.CurrentEntry;
    w.view.calender->SetDate(2000, 7, 17);
    entry.Title = QStringLiteral("  Birthday  ");
    entry.TextColour = ColourChoice{-20, 30, 255, true, false};
    entry.BackColour = ColourChoice{1, 2, 3, false, true};
    w.view.calender->UpdateSelectedDate(false);
    w.world.diary.NoteBuffer = QStringLiteral("  line one\r\nline two  ");
    w.world.diary.SaveNote(MakeDateKey(7, 17));
    frmEdit& dialog = w.Open(7, 17);
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Tivrel Edit"));
    EXPECT_EQ(dialog.lblDate->text(), QStringLiteral("17 / 7"));
    EXPECT_EQ(dialog.txtTitle->text(), QStringLiteral("Birthday"));
    EXPECT_EQ(dialog.Colours->lblSample->text(), QStringLiteral("Birthday"));
    EXPECT_EQ(dialog.txtNotes->toPlainText(), QStringLiteral("line one\nline two"));
    EXPECT_FALSE(dialog.Colours->chkFCValid->isChecked());
    EXPECT_TRUE(dialog.Colours->chkBCValid->isChecked());
    EXPECT_TRUE(dialog.Colours->chkFCAbsolute->isChecked());
    EXPECT_FALSE(dialog.Colours->chkBCAbsolute->isChecked());
    EXPECT_EQ(dialog.Colours->txtFCred->text(), QStringLiteral("-20"));
    EXPECT_EQ(dialog.Colours->txtFCgreen->text(), QStringLiteral("30"));
    EXPECT_EQ(dialog.Colours->txtFCBlue->text(), QStringLiteral("255"));
    EXPECT_EQ(dialog.Colours->txtBCRed->text(), QStringLiteral("1"));
    EXPECT_EQ(dialog.Colours->txtBCGreen->text(), QStringLiteral("2"));
    EXPECT_EQ(dialog.Colours->txtBCblue->text(), QStringLiteral("3"));
    EXPECT_FALSE(w.world.module1.EditAccepted);
}

TEST(EditorLoad, EveryControlCarriesItsNameAndCaption) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    const QList<QPair<const char*, const char*>> captions = {{"Label1", "Title"},
                                                             {"lblSample", "Marrowby 2000"},
                                                             {"cmdFontCol", "Font Colour"},
                                                             {"cmdBackCol", "Back Colour"},
                                                             {"chkFCValid", "Enabled"},
                                                             {"chkBCValid", "Enabled"},
                                                             {"chkFCAbsolute", "Absoloute"},
                                                             {"chkBCAbsolute", "Absoloute"},
                                                             {"Label5", "Current Schedule:"},
                                                             {"Label6", "Sched. No."},
                                                             {"Label3", "Start Time"},
                                                             {"Label4", "End Time (optional)"},
                                                             {"Label2", "Description"},
                                                             {"cmdAddAppointment", "Add"},
                                                             {"cmdDelete", "Delete"},
                                                             {"cmdClear", "Clear"},
                                                             {"cmdOK", "OK"},
                                                             {"cmdCancel", "Cancel"}};
    for (const auto& [name, caption] : captions) {
        auto* widget = dialog.findChild<QWidget*>(QString::fromLatin1(name));
        ASSERT_NE(widget, nullptr) << name;
        EXPECT_EQ(widget->property("text").toString(), QString::fromLatin1(caption)) << name;
    }
    for (const char* name :
         {"txtTitle", "txtFCred", "txtFCgreen", "txtFCBlue", "txtBCRed", "txtBCGreen", "txtBCblue",
          "lstSchedule", "txtAppointNum", "txtStartTime", "txtEndTime", "txtAppDescription",
          "txtNotes", "lblDate", "tabEdit"}) {
        EXPECT_NE(dialog.findChild<QWidget*>(QString::fromLatin1(name)), nullptr) << name;
    }
    EXPECT_EQ(dialog.tabEdit->count(), 3);
    EXPECT_EQ(dialog.tabEdit->tabText(0), QStringLiteral("Outlook"));
    EXPECT_EQ(dialog.tabEdit->tabText(1), QStringLiteral("Schedule"));
    EXPECT_EQ(dialog.tabEdit->tabText(2), QStringLiteral("Notes"));
    EXPECT_EQ(dialog.findChildren<QWidget*>(QStringLiteral("Picture1")).size(), 3);
}

TEST(EditorLoad, OpensOnOutlookAndEachTabShowsOnlyItsPageAtTheSamePlace) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    const double dpi = DotsPerInch(&dialog);
    EXPECT_EQ(dialog.tabEdit->currentIndex(), 0);
    EXPECT_TRUE(dialog.Picture1[0]->isVisible());
    EXPECT_FALSE(dialog.Picture1[1]->isVisible());
    EXPECT_FALSE(dialog.Picture1[2]->isVisible());
    EXPECT_EQ(dialog.Picture1[0]->x(), TwipsToPixels(240, dpi));
    EXPECT_GE(dialog.Picture1[0]->y(), TwipsToPixels(360, dpi));
    for (int tab : {2, 1, 0, 1}) {
        dialog.tabEdit->setCurrentIndex(tab);
        for (int page = 0; page < 3; ++page) {
            EXPECT_EQ(dialog.Picture1[page]->isVisible(), page == tab);
        }
        EXPECT_EQ(dialog.Picture1[tab]->pos(), dialog.Picture1[0]->pos());
    }
}

TEST(EditorLoad, AnEmptyScheduleResetsTheFieldsAndAListedOneLeavesThemEmpty) {
    EditorWorld empty;
    EXPECT_EQ(empty.Open().txtAppointNum->text(), QStringLiteral("00"));
    EditorWorld listed;
    listed.PutActivity(1, QStringLiteral("Walk"), {9, 0});
    frmEdit& dialog = listed.Open();
    EXPECT_EQ(dialog.txtAppointNum->text(), QString());
    EXPECT_EQ(listed.ListLines(), QStringList{" 1>9:00 am, Walk"});
}

TEST(EditorLoad, TheSampleTakesTheGridsFont) {
    EditorWorld w;
    w.view.calender->SetFont(QStringLiteral("DejaVu Serif"), 14);
    frmEdit& dialog = w.Open();
    EXPECT_EQ(dialog.Colours->lblSample->font().family(), QStringLiteral("DejaVu Serif"));
    EXPECT_EQ(dialog.Colours->lblSample->font().pointSize(), 14);
}

TEST(EditorOutlook, TheSampleShowsTheTrimmedTitleOrMarrowbyWhenEmpty) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    EditorWorld::Type(dialog.txtTitle, QStringLiteral("  Party "));
    EXPECT_EQ(dialog.Colours->lblSample->text(), QStringLiteral("Party"));
    EditorWorld::Type(dialog.txtTitle, QStringLiteral("   "));
    EXPECT_EQ(dialog.Colours->lblSample->text(), QStringLiteral("Marrowby 2000"));
}

TEST(EditorOutlook, AColourBoxKeepsMinusTwoFiftyFiveToTwoFiftyFiveAndStoresZeroOtherwise) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    const ColourChoice& font = w.world.calender.CurrentEntry.TextColour;
    const QList<QPair<QString, qint16>> typed = {
        {"300", 0},   {"-20", -20}, {"255", 255},        {"-255", -255}, {"256", 0},   {"-256", 0},
        {"12.5", 12}, {"13.5", 14}, {"1e400", 0},        {"-0", 0},      {"NaN", 0},   {"abc", 0},
        {"\t7", 7},   {"", 0},      {"\u0661\u0662", 0}, {"1e2", 100},   {"-1e400", 0}};
    for (const auto& [text, stored] : typed) {
        EditorWorld::Type(dialog.Colours->txtFCred, text);
        EXPECT_EQ(font.Red, stored) << text;
        EXPECT_EQ(dialog.Colours->txtFCred->text(), text);
    }
    EditorWorld::Type(dialog.Colours->txtFCred, QString(10000, QLatin1Char('9')));
    EXPECT_EQ(font.Red, 0);
}

TEST(EditorOutlook, EachBoxAndCheckBoxEditsItsOwnField) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    ColourChoiceControls& c = *dialog.Colours;
    EditorWorld::Type(c.txtFCred, QStringLiteral("1"));
    EditorWorld::Type(c.txtFCgreen, QStringLiteral("2"));
    EditorWorld::Type(c.txtFCBlue, QStringLiteral("3"));
    EditorWorld::Type(c.txtBCRed, QStringLiteral("4"));
    EditorWorld::Type(c.txtBCGreen, QStringLiteral("5"));
    EditorWorld::Type(c.txtBCblue, QStringLiteral("6"));
    EditorWorld::Click(c.chkFCValid);
    EditorWorld::Click(c.chkBCAbsolute);
    const DateEntry& entry = w.world.calender.CurrentEntry;
    EXPECT_EQ(entry.TextColour, (ColourChoice{1, 2, 3, false, true}));
    EXPECT_EQ(entry.BackColour, (ColourChoice{4, 5, 6, true, false}));
    EditorWorld::Click(c.chkFCValid);
    EditorWorld::Click(c.chkFCAbsolute);
    EditorWorld::Click(c.chkBCValid);
    EXPECT_EQ(entry.TextColour, (ColourChoice{1, 2, 3, true, false}));
    EXPECT_EQ(entry.BackColour, (ColourChoice{4, 5, 6, true, true}));
}

TEST(EditorOutlook, TheSampleResolvesTheBackOnTheDialogAndTheFontOnTheTextColour) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    ColourChoiceControls& c = *dialog.Colours;
    const QColor base = DialogBack(dialog);
    const QColor text = dialog.palette().color(QPalette::WindowText);
    EXPECT_EQ(SampleBack(dialog), base);
    EXPECT_EQ(SampleText(dialog), text);
    EditorWorld::Type(c.txtBCRed, QStringLiteral("-20"));
    EXPECT_EQ(SampleBack(dialog), base);  // not Enabled yet
    EditorWorld::Click(c.chkBCValid);
    EXPECT_EQ(SampleBack(dialog), QColor(base.red() - 20, base.green(), base.blue()));
    EditorWorld::Type(c.txtBCRed, QStringLiteral("200"));
    EXPECT_EQ(SampleBack(dialog), QColor(255, base.green(), base.blue()));
    EditorWorld::Click(c.chkBCAbsolute);
    EXPECT_EQ(SampleBack(dialog), QColor(200, 0, 0));
    EditorWorld::Type(c.txtBCRed, QStringLiteral("-20"));
    EXPECT_EQ(w.world.calender.CurrentEntry.BackColour.Red, -20);
    EXPECT_EQ(SampleBack(dialog), QColor(0, 0, 0));  // a negative absolute channel counts as 0
    EditorWorld::Type(c.txtFCBlue, QStringLiteral("90"));
    EditorWorld::Click(c.chkFCValid);
    EXPECT_EQ(SampleText(dialog),
              QColor(text.red(), text.green(), std::min(text.blue() + 90, 255)));
    EditorWorld::Click(c.chkFCAbsolute);
    EXPECT_EQ(SampleText(dialog), QColor(0, 0, 90));
}

TEST(EditorOutlook, TheColourButtonsSplitTheChosenColourIntoTheirBoxes) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    ColourChoiceControls& c = *dialog.Colours;
    FakeColourDialogs& colours = w.world.platform.ColourDialog;
    colours.Choose(0x123456);  // red 0x56, green 0x34, blue 0x12
    EditorWorld::Click(c.cmdFontCol);
    const DateEntry& entry = w.world.calender.CurrentEntry;
    EXPECT_EQ(entry.TextColour, (ColourChoice{0x56, 0x34, 0x12, false, false}));
    EXPECT_EQ(c.txtFCred->text(), QStringLiteral("86"));
    EXPECT_EQ(c.txtFCgreen->text(), QStringLiteral("52"));
    EXPECT_EQ(c.txtFCBlue->text(), QStringLiteral("18"));
    colours.Choose(0xFF0000);
    EditorWorld::Click(c.cmdBackCol);
    EXPECT_EQ(entry.BackColour, (ColourChoice{0, 0, 255, false, false}));
    EXPECT_EQ(colours.Shown, (QList<qint32>{0, 0x123456}));
}

TEST(EditorOutlook, ACancelledColourDialogStillGivesTheLastColour) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    ColourChoiceControls& c = *dialog.Colours;
    FakeColourDialogs& colours = w.world.platform.ColourDialog;
    EditorWorld::Type(c.txtBCRed, QStringLiteral("9"));
    colours.Cancel();
    EditorWorld::Click(c.cmdBackCol);
    const DateEntry& entry = w.world.calender.CurrentEntry;
    EXPECT_EQ(entry.BackColour, (ColourChoice{0, 0, 0, false, false}));
    colours.Choose(0x0A0B0C);
    EditorWorld::Click(c.cmdFontCol);
    colours.Cancel();
    EditorWorld::Click(c.cmdBackCol);
    EXPECT_EQ(entry.BackColour, (ColourChoice{0x0C, 0x0B, 0x0A, false, false}));
    EXPECT_EQ(c.txtBCRed->text(), QStringLiteral("12"));
}

TEST(EditorOk, TakesTheTrimmedTitleTheNoteAsTypedAndMarksTheDocumentChanged) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    EditorWorld::Type(dialog.txtTitle, QStringLiteral("  Party  "));
    dialog.tabEdit->setCurrentIndex(2);
    dialog.txtNotes->setPlainText(QStringLiteral("  first\nsecond  "));
    EditorWorld::Click(dialog.cmdOK);
    EXPECT_TRUE(w.world.module1.EditAccepted);
    EXPECT_TRUE(w.world.module1.CalendarDirty);
    EXPECT_EQ(w.world.calender.CurrentEntry.Title.Trimmed(), QStringLiteral("Party"));
    EXPECT_EQ(w.world.diary.NoteBuffer.Value(),
              QStringLiteral("  first\r\nsecond  ").leftJustified(800));
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_FALSE(dialog.isVisible());
}

// The boxes take no more than the fields hold, so OK stores the first 255 and
// 800 characters, as it did when it cut them itself.
TEST(EditorOk, KeepsTheFirstEightHundredOfANoteAndTwoHundredFiftyFiveOfATitle) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    const QString title = QString(300, QLatin1Char('t'));
    EditorWorld::Type(dialog.txtTitle, title);
    QString note;
    for (int index = 0; index < 1000; ++index) {
        note += QChar(u'a' + index % 26);
    }
    dialog.txtNotes->setPlainText(note);
    EditorWorld::Click(dialog.cmdOK);
    EXPECT_EQ(w.world.calender.CurrentEntry.Title.Value(), title.left(255));
    EXPECT_EQ(w.world.diary.NoteBuffer.Value(), note.left(800));
}

TEST(EditorCancel, LeavesTheTitleAndNoteButNotTheColourAndScheduleEdits) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    EditorWorld::Type(dialog.txtTitle, QStringLiteral("Dropped"));
    dialog.txtNotes->setPlainText(QStringLiteral("Dropped too"));
    EditorWorld::Click(dialog.Colours->chkBCValid);
    w.Add(QString(), QStringLiteral("9:00"), QString(), QStringLiteral("Stays"));
    EditorWorld::Click(dialog.cmdCancel);
    EXPECT_FALSE(w.world.module1.EditAccepted);
    EXPECT_FALSE(w.world.module1.CalendarDirty);
    EXPECT_TRUE(w.world.calender.CurrentEntry.Title.IsBlank());
    EXPECT_TRUE(w.world.diary.NoteBuffer.IsBlank());
    EXPECT_TRUE(w.world.calender.CurrentEntry.BackColour.Enabled);
    EXPECT_EQ(w.Slot(1).Description.Trimmed(), QStringLiteral("Stays"));
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
}

TEST(EditorCancel, EscapeAndClosingTheWindowAreCancelsAndEnterInABoxIsNoOk) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    QTest::keyClick(dialog.txtTitle, Qt::Key_Return);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_FALSE(w.world.module1.EditAccepted);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_FALSE(w.world.module1.EditAccepted);
    dialog.show();
    dialog.close();
    EXPECT_FALSE(w.world.module1.EditAccepted);
    EXPECT_FALSE(w.world.module1.CalendarDirty);
}

}  // namespace
}  // namespace kelvane::testing
