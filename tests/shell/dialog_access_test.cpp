// Every dialog can be finished from the keyboard and every control in it has a
// name a screen reader can read.
#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QTabBar>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>
#include <typeinfo>

#include "colourfill/frmColourFill.h"
#include "dialogs/frmAbout.h"
#include "dialogs/frmOptions.h"
#include "dialogs/frmSplash.h"
#include "dialogs/frmTip.h"
#include "editor/frmEdit.h"
#include "gui/FakeRandomSource.h"
#include "report/frmCommingUp.h"
#include "support/DatesWorld.h"
#include "support/EditorWorld.h"

namespace kelvane {
namespace {

using testing::DatesWorld;
using testing::EditorWorld;

QString AccessibleName(QWidget* widget) {
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(widget);
    return face != nullptr ? face->text(QAccessible::Name) : QString();
}

// Parts that Qt builds inside its own composite controls: the viewport and
// scroll bars of a list or text box, the scroll buttons of a tab strip, the
// box and pop-up list of a combo box and the box of a spin box. A screen
// reader reaches them through the composite control, which is checked itself.
bool InsideQtComposite(const QWidget* widget, const QWidget* dialog) {
    for (const QWidget* up = widget->parentWidget(); up != nullptr && up != dialog;
         up = up->parentWidget()) {
        if (qobject_cast<const QAbstractScrollArea*>(up) || qobject_cast<const QTabBar*>(up) ||
            qobject_cast<const QComboBox*>(up) || qobject_cast<const QAbstractSpinBox*>(up)) {
            return true;
        }
    }
    return false;
}

// A plain QWidget or QFrame that the keyboard cannot reach only holds and
// frames other controls; it has no text to read. Classes of our own derived
// from them are controls and are checked.
bool IsPureContainer(const QWidget* widget) {
    const std::type_info& type = typeid(*widget);
    return widget->focusPolicy() == Qt::NoFocus &&
           (type == typeid(QWidget) || type == typeid(QFrame));
}

// A notification is named after the news it tells, and has none before.
bool IsNotification(QWidget* widget) {
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(widget);
    return face != nullptr && face->role() == QAccessible::Notification;
}

// The object names (or class names) of the dialog's controls without a name.
QStringList Unnamed(QWidget* dialog) {
    QStringList unnamed;
    for (QWidget* widget : dialog->findChildren<QWidget*>()) {
        if (InsideQtComposite(widget, dialog) || IsPureContainer(widget) ||
            IsNotification(widget)) {
            continue;
        }
        if (AccessibleName(widget).trimmed().isEmpty()) {
            const QString name = widget->objectName();
            unnamed << (name.isEmpty() ? QString::fromLatin1(widget->metaObject()->className())
                                       : name);
        }
    }
    return unnamed;
}

// Gives the window the keyboard, as a person's click on it does.
void Activate(QWidget* dialog) {
    dialog->show();
    dialog->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog));
}

// The object names of the widgets Tab visits, starting at `first`.
QStringList TabWalk(QWidget* first, int presses, Qt::Key key = Qt::Key_Tab) {
    first->setFocus(Qt::TabFocusReason);
    QStringList visited{QApplication::focusWidget()->objectName()};
    for (int press = 0; press < presses; ++press) {
        QTest::keyClick(QApplication::focusWidget(), key);
        visited << QApplication::focusWidget()->objectName();
    }
    return visited;
}

QStringList Walk(const QStringList& expected, QWidget* first) {
    return TabWalk(first, static_cast<int>(expected.size()) - 1);
}

const QStringList kColourControls{"cmdFontCol",    "chkFCValid", "chkFCAbsolute", "txtFCred",
                                  "txtFCgreen",    "txtFCBlue",  "cmdBackCol",    "chkBCValid",
                                  "chkBCAbsolute", "txtBCRed",   "txtBCGreen",    "txtBCblue"};

// --- Names -----------------------------------------------------------------

TEST(DialogAccess, EveryControlOfTheDateEditorHasAName) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    EXPECT_EQ(Unnamed(&dialog), QStringList()) << Unnamed(&dialog).join(", ").toStdString();
    EXPECT_EQ(AccessibleName(dialog.txtTitle), "Title");
    EXPECT_EQ(AccessibleName(dialog.txtEndTime), "End Time (optional)");
    EXPECT_EQ(AccessibleName(dialog.Colours->txtBCblue), "Back colour blue");
    EXPECT_EQ(AccessibleName(dialog.txtNotes), "Notes");
    EXPECT_EQ(AccessibleName(dialog.lblNoteCount), "Note length: 0 of 800 characters");
}

TEST(DialogAccess, EveryControlOfTheColourFillHasAName) {
    DatesWorld dates;
    frmColourFill dialog(dates.world.store, *dates.view.calender);
    dialog.show();
    EXPECT_EQ(Unnamed(&dialog), QStringList()) << Unnamed(&dialog).join(", ").toStdString();
    EXPECT_EQ(AccessibleName(dialog.txtUnit), "Units");
    EXPECT_EQ(AccessibleName(dialog.Colours->txtFCred), "Font colour red");
}

TEST(DialogAccess, EveryControlOfTheCommingUpReportHasAName) {
    DatesWorld dates;
    frmCommingUp dialog(dates.world.store, *dates.view.calender);
    dialog.show();
    EXPECT_EQ(Unnamed(&dialog), QStringList()) << Unnamed(&dialog).join(", ").toStdString();
    EXPECT_EQ(AccessibleName(dialog.txtTimeUnits), "Time Units");
    EXPECT_EQ(AccessibleName(dialog.usrDocViewer1->TextBox()), "Comming up");
}

TEST(DialogAccess, EveryControlOfTheOptionsHasAName) {
    DatesWorld dates;
    frmOptions dialog(dates.world.store, *dates.view.calender);
    dialog.show();
    EXPECT_EQ(Unnamed(&dialog), QStringList()) << Unnamed(&dialog).join(", ").toStdString();
    EXPECT_EQ(AccessibleName(dialog.txtFontSize), "Font Size");
    EXPECT_EQ(AccessibleName(dialog.txtGreen), "Green");
}

TEST(DialogAccess, EveryControlOfTheTipsHasAName) {
    FakeRandomSource random;
    frmTip dialog(random);
    dialog.show();
    EXPECT_EQ(Unnamed(&dialog), QStringList()) << Unnamed(&dialog).join(", ").toStdString();
}

TEST(DialogAccess, EveryControlOfTheAboutBoxHasAName) {
    frmAbout dialog;
    dialog.show();
    EXPECT_EQ(Unnamed(&dialog), QStringList()) << Unnamed(&dialog).join(", ").toStdString();
}

TEST(DialogAccess, EveryControlOfTheSplashHasAName) {
    frmSplash dialog;
    dialog.show();
    EXPECT_EQ(Unnamed(&dialog), QStringList()) << Unnamed(&dialog).join(", ").toStdString();
}

// --- Labels ----------------------------------------------------------------

TEST(DialogAccess, TheDateEditorsLabelsBelongToTheirBoxes) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    EXPECT_EQ(dialog.Label1->buddy(), dialog.txtTitle);
    EXPECT_EQ(dialog.Label5->buddy(), dialog.lstSchedule);
    EXPECT_EQ(dialog.Label6->buddy(), dialog.txtAppointNum);
    EXPECT_EQ(dialog.Label3->buddy(), dialog.txtStartTime);
    EXPECT_EQ(dialog.Label4->buddy(), dialog.txtEndTime);
    EXPECT_EQ(dialog.Label2->buddy(), dialog.txtAppDescription);
}

TEST(DialogAccess, TheOtherDialogsLabelsBelongToTheirBoxes) {
    DatesWorld dates;
    frmColourFill fill(dates.world.store, *dates.view.calender);
    EXPECT_EQ(fill.Label2->buddy(), fill.lstDateFrom);
    EXPECT_EQ(fill.Label1->buddy(), fill.txtUnit);
    EXPECT_EQ(fill.Label4->buddy(), fill.chkFill[0]);
    frmCommingUp report(dates.world.store, *dates.view.calender);
    EXPECT_EQ(report.Label2->buddy(), report.lstDateFrom);
    EXPECT_EQ(report.Label1->buddy(), report.txtTimeUnits);
    frmOptions options(dates.world.store, *dates.view.calender);
    EXPECT_EQ(options.lblFontName->buddy(), options.cmbFontName);
    EXPECT_EQ(options.lblFontSize->buddy(), options.txtFontSize);
}

// --- Tab order -------------------------------------------------------------

TEST(DialogAccess, TabWalksTheOutlookPageToOkAndCancel) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    Activate(&dialog);
    const QStringList expected = QStringList{"tabEdit", "txtTitle"} + kColourControls +
                                 QStringList{"cmdOK", "cmdCancel", "tabEdit"};
    EXPECT_EQ(Walk(expected, dialog.tabEdit), expected);
}

TEST(DialogAccess, TabWalksTheSchedulePageToOkAndCancel) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    Activate(&dialog);
    dialog.tabEdit->setCurrentIndex(1);
    const QStringList expected{"tabEdit",           "lstSchedule",
                               "txtAppointNum",     "txtStartTime",
                               "txtEndTime",        "txtAppDescription",
                               "cmdAddAppointment", "cmdDelete",
                               "cmdClear",          "cmdOK",
                               "cmdCancel",         "tabEdit"};
    EXPECT_EQ(Walk(expected, dialog.tabEdit), expected);
}

// Tab types a tab into the note, as it always has; Shift+Tab leaves it for the
// tab strip, and from there on round to Cancel and OK.
TEST(DialogAccess, TheNotesPageIsLeftWithShiftTab) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    Activate(&dialog);
    dialog.tabEdit->setCurrentIndex(2);
    EXPECT_EQ(TabWalk(dialog.tabEdit, 1), QStringList({"tabEdit", "txtNotes"}));
    EXPECT_EQ(TabWalk(dialog.txtNotes, 3, Qt::Key_Backtab),
              QStringList({"txtNotes", "tabEdit", "cmdCancel", "cmdOK"}));
}

TEST(DialogAccess, ControlTabAndControlPageKeysTurnTheDateEditorsPages) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    Activate(&dialog);
    dialog.txtTitle->setFocus();
    QTest::keyClick(dialog.txtTitle, Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(dialog.tabEdit->currentIndex(), 1);
    EXPECT_TRUE(dialog.Picture1[1]->isVisible());
    EXPECT_FALSE(dialog.Picture1[0]->isVisible());
    EXPECT_EQ(QApplication::focusWidget(), dialog.lstSchedule);
    QTest::keyClick(dialog.lstSchedule, Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(dialog.tabEdit->currentIndex(), 2);
    EXPECT_EQ(QApplication::focusWidget(), dialog.txtNotes);
    QTest::keyClick(dialog.txtNotes, Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(dialog.tabEdit->currentIndex(), 0);
    EXPECT_EQ(QApplication::focusWidget(), dialog.txtTitle);
    QTest::keyClick(dialog.txtTitle, Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(dialog.tabEdit->currentIndex(), 2);
    QTest::keyClick(dialog.txtNotes, Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(dialog.tabEdit->currentIndex(), 1);
    EXPECT_TRUE(dialog.Picture1[1]->isVisible());
}

TEST(DialogAccess, PageKeysOnTheTabStripKeepTheKeyboardThere) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    Activate(&dialog);
    dialog.tabEdit->setFocus();
    QTest::keyClick(dialog.tabEdit, Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(dialog.tabEdit->currentIndex(), 1);
    EXPECT_EQ(QApplication::focusWidget(), dialog.tabEdit);
}

TEST(DialogAccess, TabWalksTheColourFillToDoItAndCancel) {
    DatesWorld dates;
    frmColourFill dialog(dates.world.store, *dates.view.calender);
    Activate(&dialog);
    const QStringList expected =
        QStringList{"lstDateFrom", "txtDateTo", "txtUnit", "optUnit", "chkFill", "chkFill"} +
        kColourControls + QStringList{"cmdDoIt", "cmdCancel", "lstDateFrom"};
    EXPECT_EQ(Walk(expected, dialog.lstDateFrom), expected);
}

TEST(DialogAccess, TabWalksTheOptionsToOkAndCancel) {
    DatesWorld dates;
    frmOptions dialog(dates.world.store, *dates.view.calender);
    Activate(&dialog);
    const QStringList expected{"cmbFontName", "txtFontSize", "lstColourList", "cmdColour",
                               "txtRed",      "txtGreen",    "txtBlue",       "chkAbsolute",
                               "chkEnabled",  "cmdOK",       "cmdCancel",     "cmbFontName"};
    EXPECT_EQ(Walk(expected, dialog.cmbFontName), expected);
}

TEST(DialogAccess, TabWalksTheCommingUpSettingsThenTheReport) {
    DatesWorld dates;
    frmCommingUp dialog(dates.world.store, *dates.view.calender);
    Activate(&dialog);
    const QStringList expected{"lstDateFrom", "txtTimeUnits", "optTimeDuration",
                               "chkDisplay",  "txtDocument",  "lstDateFrom"};
    EXPECT_EQ(Walk(expected, dialog.lstDateFrom), expected);
}

TEST(DialogAccess, TabWalksTheTipsButtons) {
    FakeRandomSource random;
    frmTip dialog(random);
    Activate(&dialog);
    const QStringList expected{"cmdNextTip", "cmdOK", "cmdNextTip"};
    EXPECT_EQ(Walk(expected, dialog.cmdNextTip), expected);
}

// --- Escape and Enter ------------------------------------------------------

TEST(DialogAccess, EscapeInTheDateEditorIsItsCancel) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    Activate(&dialog);
    EditorWorld::Type(dialog.txtTitle, QStringLiteral("Dropped"));
    // Set as only OK sets it, to see that Escape takes it back as Cancel does.
    w.world.module1.EditAccepted = true;
    QTest::keyClick(dialog.txtTitle, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_FALSE(w.world.module1.EditAccepted);
    EXPECT_FALSE(w.world.module1.CalendarDirty);
    EXPECT_TRUE(w.world.calender.CurrentEntry.Title.IsBlank());
}

TEST(DialogAccess, EscapeInTheNoteCancelsTheDateEditorToo) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    Activate(&dialog);
    dialog.tabEdit->setCurrentIndex(2);
    dialog.txtNotes->setFocus();
    QTest::keyClicks(dialog.txtNotes, QStringLiteral("Dropped"));
    QTest::keyClick(dialog.txtNotes, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_TRUE(w.world.diary.NoteBuffer.IsBlank());
}

TEST(DialogAccess, TheDateEditorHasNoDefaultButtonAndEnterInABoxPressesNothing) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    Activate(&dialog);
    for (const QPushButton* button : dialog.findChildren<QPushButton*>()) {
        EXPECT_FALSE(button->isDefault()) << button->objectName().toStdString();
        EXPECT_FALSE(button->autoDefault()) << button->objectName().toStdString();
    }
    dialog.txtTitle->setFocus();
    QTest::keyClick(dialog.txtTitle, Qt::Key_Return);
    QTest::keyClick(dialog.txtTitle, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_FALSE(w.world.module1.EditAccepted);
}

TEST(DialogAccess, EscapeInTheColourFillIsItsCancel) {
    DatesWorld dates;
    frmColourFill dialog(dates.world.store, *dates.view.calender);
    Activate(&dialog);
    DatesWorld::Click(dialog.chkFill[1]);
    dialog.txtUnit->setFocus();
    QTest::keyClick(dialog.txtUnit, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_FALSE(dialog.Filled());
}

TEST(DialogAccess, EscapeInAnOptionsBoxIsItsCancel) {
    DatesWorld dates;
    frmOptions dialog(dates.world.store, *dates.view.calender);
    Activate(&dialog);
    const ColourListTable before = dates.world.calender.ColourList;
    dialog.txtRed->setFocus();
    DatesWorld::Type(dialog.txtRed, "77");
    EXPECT_NE(dates.world.calender.ColourList[0].Red, before[0].Red);
    QTest::keyClick(dialog.txtRed, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_EQ(dates.world.calender.ColourList[0].Red, before[0].Red);
}

// The dialogs without Cancel close on Escape as by their window's frame.
TEST(DialogAccess, EscapeClosesTheDialogsWithoutCancel) {
    DatesWorld dates;
    frmCommingUp report(dates.world.store, *dates.view.calender);
    Activate(&report);
    QTest::keyClick(report.lstDateFrom, Qt::Key_Escape);
    EXPECT_FALSE(report.isVisible());
    FakeRandomSource random;
    frmTip tips(random);
    Activate(&tips);
    QTest::keyClick(tips.cmdOK, Qt::Key_Escape);
    EXPECT_FALSE(tips.isVisible());
    frmAbout about;
    Activate(&about);
    QTest::keyClick(about.cmdOK, Qt::Key_Escape);
    EXPECT_FALSE(about.isVisible());
}

}  // namespace
}  // namespace kelvane
