// What a screen reader hears of the date editor: the date in words, and what
// Add did. The editor opens on Monday 17 July 2000. Qt announces a new
// description of a widget itself; a headless platform has no bridge to hear
// it, so the descriptions are read here as the bridge reads them.
#include <QAccessible>
#include <QApplication>

#include <gtest/gtest.h>

#include "support/EditorWorld.h"

namespace kelvane::testing {
namespace {

QString Description(QObject* object) {
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(object);
    return face != nullptr ? face->text(QAccessible::Description) : QString();
}

// Gives the dialog the keyboard, as a person's click on it does.
void Activate(QWidget* dialog) {
    dialog->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog));
}

TEST(EditorSpeech, TheDialogAndItsDateAreDescribedInWords) {
    EditorWorld w;
    frmEdit& dialog = w.Open(7, 17);
    EXPECT_EQ(Description(&dialog), QStringLiteral("Monday 17 July"));
    EXPECT_EQ(Description(dialog.lblDate), QStringLiteral("Monday 17 July"));
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Tivrel Edit"));
    EXPECT_EQ(dialog.lblDate->text(), QStringLiteral("17 / 7"));
}

// A calendar file lays out a year that need not be today's: here 2021, not a
// leap year, with 1 January a Friday.
TEST(EditorSpeech, TheWeekdayIsTheOneOfTheYearTheGridLaysOut) {
    EditorWorld w;
    qint16 friday = 6;
    w.view.calender->InitializeVariables(-1, friday, false);
    frmEdit& dialog = w.Open(11, 17);
    EXPECT_EQ(Description(&dialog), QStringLiteral("Wednesday 17 November"));
}

TEST(EditorSpeech, AddTellsTheNewLineThroughTheButtonItLeavesTheKeyboardOn) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    Activate(&dialog);
    w.Add(QString(), QStringLiteral("9:30"), QStringLiteral("10:00"), QStringLiteral("Dentist"));
    EXPECT_EQ(Description(dialog.cmdAddAppointment),
              QStringLiteral("Added 1>9:30 am - 10:00 am, Dentist"));
    EXPECT_EQ(QApplication::focusWidget(), dialog.cmdAddAppointment);
    EXPECT_EQ(dialog.cmdAddAppointment->text(), QStringLiteral("Add"));
}

TEST(EditorSpeech, AddOverAnActivityTellsItChanged) {
    EditorWorld w;
    w.PutActivity(1, QStringLiteral("Walk"), {14, 0});
    frmEdit& dialog = w.Open();
    w.Add(QStringLiteral("1"), QStringLiteral("15:00"), QString(), QStringLiteral("Walk"));
    EXPECT_EQ(Description(dialog.cmdAddAppointment), QStringLiteral("Changed 1>3:00 pm, Walk"));
}

TEST(EditorSpeech, ARefusedAddTellsNothingButItsMessage) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    w.Add(QString(), QStringLiteral("9:30"), QString(), QString());
    EXPECT_EQ(w.ShownTexts(), QStringList{"You must have a 'description'"});
    EXPECT_TRUE(Description(dialog.cmdAddAppointment).isEmpty());
}

// Coming back to Add later reads the button, not news that is old by then.
TEST(EditorSpeech, WhatAddToldGoesWhenTheKeyboardLeavesIt) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    Activate(&dialog);
    w.Add(QString(), QStringLiteral("9:30"), QString(), QStringLiteral("Dentist"));
    ASSERT_EQ(QApplication::focusWidget(), dialog.cmdAddAppointment);
    ASSERT_FALSE(Description(dialog.cmdAddAppointment).isEmpty());
    dialog.txtStartTime->setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(Description(dialog.cmdAddAppointment).isEmpty());
}

}  // namespace
}  // namespace kelvane::testing
