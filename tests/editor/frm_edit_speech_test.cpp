// What a screen reader hears of the date editor: the date in words, and what
// Add did. The editor opens on Monday 17 July 2000. A headless platform has no
// bridge to a screen reader, so what Qt would tell one is read here through
// the widgets' accessible interfaces.
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

// Orca reads a notification out as it shows; the keyboard stays on Add.
TEST(EditorSpeech, AddTellsTheNewLineInANotificationThatShowsWithIt) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    ASSERT_TRUE(EditorWorld::Activate(&dialog));
    ASSERT_FALSE(dialog.annSchedule->isVisible());
    w.Add(QString(), QStringLiteral("9:30"), QStringLiteral("10:00"), QStringLiteral("Dentist"));
    QAccessibleInterface* news = QAccessible::queryAccessibleInterface(dialog.annSchedule);
    ASSERT_NE(news, nullptr);
    EXPECT_EQ(news->role(), QAccessible::Notification);
    EXPECT_EQ(news->text(QAccessible::Name), QStringLiteral("Added 9:30 am - 10:00 am, Dentist"));
    EXPECT_TRUE(dialog.annSchedule->isVisible());
    EXPECT_EQ(QApplication::focusWidget(), dialog.cmdAddAppointment);
}

// Nothing shows for the eye: the notification has no size and takes no keys.
TEST(EditorSpeech, TheNotificationCannotBeSeenNorReachedByTab) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    w.Add(QString(), QStringLiteral("9:30"), QString(), QStringLiteral("Dentist"));
    EXPECT_EQ(dialog.annSchedule->size(), QSize(0, 0));
    EXPECT_EQ(dialog.annSchedule->focusPolicy(), Qt::NoFocus);
}

TEST(EditorSpeech, AddOverAnActivityTellsItChanged) {
    EditorWorld w;
    w.PutActivity(1, QStringLiteral("Walk"), {14, 0});
    frmEdit& dialog = w.Open();
    w.Add(QStringLiteral("1"), QStringLiteral("15:00"), QString(), QStringLiteral("Walk"));
    EXPECT_EQ(dialog.annSchedule->accessibleName(), QStringLiteral("Changed 3:00 pm, Walk"));
}

TEST(EditorSpeech, ARefusedAddTellsNothingButItsMessage) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    w.Add(QString(), QStringLiteral("9:30"), QString(), QString());
    EXPECT_EQ(w.ShownTexts(), QStringList{"You must have a 'description'"});
    EXPECT_FALSE(dialog.annSchedule->isVisible());
    EXPECT_TRUE(dialog.annSchedule->accessibleName().isEmpty());
}

}  // namespace
}  // namespace kelvane::testing
