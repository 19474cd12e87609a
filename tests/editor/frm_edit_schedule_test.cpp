#include <QApplication>
#include <QClipboard>

#include <gtest/gtest.h>

#include "support/EditorWorld.h"

namespace kelvane::testing {
namespace {

const QString kFull = QStringLiteral("Can't add any more entries to this date");
const QString kBadStart = QStringLiteral("Start Time is invalid");
const QString kBadEnd = QStringLiteral("End Time is invalid");
const QString kNoDescription = QStringLiteral("You must have a 'description'");

TEST(EditorSchedule, ListsSlotsByStartTimeWithTheSlotNumberAndTwelveHourTimes) {
    EditorWorld w;
    w.Open();
    w.Add(QStringLiteral("00"), QStringLiteral("14:00"), QString(), QStringLiteral("Walk"));
    w.Add(QString(), QStringLiteral("9:30"), QStringLiteral("10:00"), QStringLiteral("Dentist"));
    w.Add(QStringLiteral("00"), QStringLiteral("0:05"), QStringLiteral("12:00"),
          QStringLiteral("  Night  "));
    EXPECT_EQ(w.ListLines(), (QStringList{" 3>12:05 am - 12:00 pm, Night",
                                          " 2>9:30 am - 10:00 am, Dentist", " 1>2:00 pm, Walk"}));
    EXPECT_EQ(w.Slot(3).Description.Value(), QStringLiteral("  Night").leftJustified(50));
    EXPECT_TRUE(w.ShownTexts().isEmpty());
}

TEST(EditorSchedule, EqualStartTimesAreListedInSlotOrder) {
    EditorWorld w;
    w.PutActivity(1, QStringLiteral("C"), {9, 0});
    w.PutActivity(2, QStringLiteral("A"), {9, 0});
    w.PutActivity(3, QStringLiteral("B"), {8, 59});
    w.Open();
    EXPECT_EQ(w.ListLines(), (QStringList{" 3>8:59 am, B", " 1>9:00 am, C", " 2>9:00 am, A"}));
}

TEST(EditorSchedule, AnEntryWithoutEndTimeIsListedWithoutADash) {
    EditorWorld w;
    w.Open();
    w.Add(QString(), QStringLiteral("9:30"), QStringLiteral("   "), QStringLiteral("Call"));
    EXPECT_EQ(w.ListLines(), QStringList{" 1>9:30 am, Call"});
    EXPECT_EQ(w.Slot(1).EndTime, (ClockTime{-1, -1}));
}

TEST(EditorSchedule, AFullDateRefusesSlotFortyAndAnAppendAfterThirtyNine) {
    EditorWorld w;
    w.Open();
    w.Add(QStringLiteral("40"), QStringLiteral("9:00"), QString(), QStringLiteral("Forty"));
    EXPECT_EQ(w.ShownTexts(), QStringList{kFull});
    EXPECT_EQ(w.world.platform.Messages.Shown[0].Title, QStringLiteral("Kelvane"));
    EXPECT_EQ(w.world.platform.Messages.Shown[0].Icon, MessageIcon::None);
    EXPECT_EQ(w.dialog->txtAppDescription->text(), QStringLiteral("Forty"));
    for (int entry = 1; entry <= 39; ++entry) {
        w.Add(QStringLiteral("00"), QStringLiteral("8:00"), QString(), QStringLiteral("E"));
    }
    EXPECT_EQ(w.ListLines().size(), 39);
    EXPECT_EQ(w.world.appointments.CountAppointments(), 39);
    w.Add(QString(), QStringLiteral("8:00"), QString(), QStringLiteral("Fortieth"));
    EXPECT_EQ(w.ShownTexts(), (QStringList{kFull, kFull}));
    EXPECT_TRUE(w.Slot(40).Description.IsBlank());
}

TEST(EditorSchedule, ASlotBeyondTheNextFreeOneIsWrittenButNotListedUntilTheGapCloses) {
    EditorWorld w;
    w.Open();
    w.Add(QStringLiteral("3"), QStringLiteral("9:00"), QString(), QStringLiteral("Third"));
    EXPECT_EQ(w.Slot(3).Description.Trimmed(), QStringLiteral("Third"));
    EXPECT_TRUE(w.ListLines().isEmpty());
    w.Add(QString(), QStringLiteral("10:00"), QString(), QStringLiteral("First"));
    EXPECT_EQ(w.ListLines(), QStringList{" 1>10:00 am, First"});
    w.Add(QStringLiteral("2"), QStringLiteral("11:00"), QString(), QStringLiteral("Second"));
    EXPECT_EQ(w.ListLines(),
              (QStringList{" 3>9:00 am, Third", " 1>10:00 am, First", " 2>11:00 am, Second"}));
}

TEST(EditorSchedule, MessagesComeInOrderAndEachTimeIsWrittenOnceItIsRead) {
    EditorWorld w;
    w.Open();
    w.Add(QStringLiteral("5"), QStringLiteral("9.30"), QStringLiteral("25:00"), QString());
    EXPECT_EQ(w.ShownTexts(), QStringList{kBadEnd});
    EXPECT_EQ(w.Slot(5).StartTime, (ClockTime{9, 30}));
    w.Add(QStringLiteral("5"), QStringLiteral("9:30 am"), QStringLiteral("25:00"), QString());
    EXPECT_EQ(w.ShownTexts(), (QStringList{kBadEnd, kBadStart}));
    w.Add(QStringLiteral("5"), QStringLiteral("10:15"), QStringLiteral("11/45"),
          QStringLiteral(" "));
    EXPECT_EQ(w.ShownTexts(), (QStringList{kBadEnd, kBadStart, kNoDescription}));
    EXPECT_EQ(w.Slot(5).StartTime, (ClockTime{10, 15}));
    EXPECT_EQ(w.Slot(5).EndTime, (ClockTime{11, 45}));
    EXPECT_TRUE(w.Slot(5).Description.IsBlank());
    // The fields stay as typed after a message.
    EXPECT_EQ(w.dialog->txtStartTime->text(), QStringLiteral("10:15"));
    EXPECT_EQ(w.dialog->txtAppointNum->text(), QStringLiteral("5"));
}

TEST(EditorSchedule, AnAddThatSucceedsResetsTheFields) {
    EditorWorld w;
    w.Open();
    w.Add(QStringLiteral("00"), QStringLiteral("9:00"), QStringLiteral("9:45"),
          QStringLiteral("Walk"));
    EXPECT_EQ(w.dialog->txtAppointNum->text(), QStringLiteral("00"));
    EXPECT_EQ(w.dialog->txtStartTime->text(), QString());
    EXPECT_EQ(w.dialog->txtEndTime->text(), QString());
    EXPECT_EQ(w.dialog->txtAppDescription->text(), QString());
}

TEST(EditorSchedule, SelectingALineFillsTheFieldsWithTwentyFourHourTimesToAddAgainUnchanged) {
    EditorWorld w;
    w.PutActivity(1, QStringLiteral("Dentist"), {9, 30}, {10, 0});
    w.PutActivity(2, QStringLiteral("Tea"), {7, 5});
    w.Open();
    w.dialog->tabEdit->setCurrentIndex(1);
    w.dialog->lstSchedule->setCurrentRow(1);
    EXPECT_EQ(w.dialog->txtAppointNum->text(), QStringLiteral("1"));
    EXPECT_EQ(w.dialog->txtAppDescription->text(), QStringLiteral("Dentist"));
    EXPECT_EQ(w.dialog->txtStartTime->text(), QStringLiteral("9:30"));
    EXPECT_EQ(w.dialog->txtEndTime->text(), QStringLiteral("10:00"));
    const Appointment before = w.Slot(1);
    EditorWorld::Click(w.dialog->cmdAddAppointment);
    EXPECT_EQ(w.Slot(1), before);
    QTest::mouseClick(
        w.dialog->lstSchedule->viewport(), Qt::LeftButton, {},
        w.dialog->lstSchedule->visualItemRect(w.dialog->lstSchedule->item(0)).center());
    EXPECT_EQ(w.dialog->txtAppointNum->text(), QStringLiteral("2"));
    EXPECT_EQ(w.dialog->txtStartTime->text(), QStringLiteral("7:05"));
    EXPECT_EQ(w.dialog->txtEndTime->text(), QString());
}

TEST(EditorSchedule, TabbingIntoTheListLeavesTheFieldsAsTyped) {
    EditorWorld w;
    w.PutActivity(1, QStringLiteral("Dentist"), {9, 30});
    w.PutActivity(2, QStringLiteral("Tea"), {7, 0});
    w.Open();
    w.dialog->tabEdit->setCurrentIndex(1);
    EditorWorld::Type(w.dialog->txtAppDescription, QStringLiteral("Typed"));
    QFocusEvent focusIn(QEvent::FocusIn, Qt::TabFocusReason);
    QApplication::sendEvent(w.dialog->lstSchedule, &focusIn);
    EXPECT_EQ(w.dialog->txtAppDescription->text(), QStringLiteral("Typed"));
    QTest::keyClick(w.dialog->lstSchedule, Qt::Key_Down);
    EXPECT_EQ(w.dialog->txtAppDescription->text(), QStringLiteral("Dentist"));
}

TEST(EditorSchedule, DeleteMovesTheLaterSlotsDownAndSlotFortyKeepsItsContents) {
    EditorWorld w;
    for (int slot = 1; slot <= 40; ++slot) {
        w.PutActivity(slot, QStringLiteral("A%1").arg(slot), {static_cast<qint16>(slot % 24), 0});
    }
    w.Open();
    w.dialog->tabEdit->setCurrentIndex(1);
    EditorWorld::Type(w.dialog->txtAppointNum, QStringLiteral("2"));
    EditorWorld::Click(w.dialog->cmdDelete);
    EXPECT_EQ(w.Slot(1).Description.Trimmed(), QStringLiteral("A1"));
    EXPECT_EQ(w.Slot(2).Description.Trimmed(), QStringLiteral("A3"));
    EXPECT_EQ(w.Slot(39).Description.Trimmed(), QStringLiteral("A40"));
    EXPECT_EQ(w.Slot(40).Description.Trimmed(), QStringLiteral("A40"));
    EXPECT_EQ(w.ListLines().size(), 40);
    EXPECT_EQ(w.dialog->txtAppointNum->text(), QStringLiteral("00"));
}

TEST(EditorSchedule, DeletingSlotFortyEmptiesItWithMidnightTimes) {
    EditorWorld w;
    w.PutActivity(40, QStringLiteral("Last"), {9, 0}, {10, 0});
    w.Open();
    EditorWorld::Type(w.dialog->txtAppointNum, QStringLiteral("40"));
    EditorWorld::Click(w.dialog->cmdDelete);
    EXPECT_EQ(w.Slot(40), Appointment{});
}

TEST(EditorSchedule, DeleteWithZeroNegativeOrTextOnlyResetsTheFieldsAndAboveFortyDoesNothing) {
    EditorWorld w;
    w.PutActivity(1, QStringLiteral("Keep"), {9, 0});
    w.Open();
    w.dialog->tabEdit->setCurrentIndex(1);
    for (const QString& typed : {QStringLiteral("0"), QStringLiteral("-3"), QStringLiteral("abc"),
                                 QStringLiteral("0.4"), QStringLiteral("-1e400")}) {
        EditorWorld::Type(w.dialog->txtStartTime, QStringLiteral("9:00"));
        EditorWorld::Type(w.dialog->txtAppointNum, typed);
        EditorWorld::Click(w.dialog->cmdDelete);
        EXPECT_EQ(w.dialog->txtAppointNum->text(), QStringLiteral("00")) << typed;
        EXPECT_EQ(w.dialog->txtStartTime->text(), QString()) << typed;
    }
    for (const QString& typed : {QStringLiteral("41"), QStringLiteral("1e400")}) {
        EditorWorld::Type(w.dialog->txtAppointNum, typed);
        EditorWorld::Click(w.dialog->cmdDelete);
        EXPECT_EQ(w.dialog->txtAppointNum->text(), typed);
    }
    EXPECT_EQ(w.Slot(1).Description.Trimmed(), QStringLiteral("Keep"));
    EXPECT_TRUE(w.ShownTexts().isEmpty());
}

TEST(EditorSchedule, ClearPutsDoubleZeroInTheSlotBoxAndEmptiesTheRest) {
    EditorWorld w;
    w.Open();
    EditorWorld::Type(w.dialog->txtAppointNum, QStringLiteral("7"));
    EditorWorld::Type(w.dialog->txtStartTime, QStringLiteral("9:00"));
    EditorWorld::Type(w.dialog->txtEndTime, QStringLiteral("9:10"));
    EditorWorld::Type(w.dialog->txtAppDescription, QStringLiteral("x"));
    EditorWorld::Click(w.dialog->cmdClear);
    EXPECT_EQ(w.dialog->txtAppointNum->text(), QStringLiteral("00"));
    EXPECT_EQ(w.dialog->txtStartTime->text(), QString());
    EXPECT_EQ(w.dialog->txtEndTime->text(), QString());
    EXPECT_EQ(w.dialog->txtAppDescription->text(), QString());
}

struct SlotText {
    const char16_t* typed;
    bool refused;  // "Can't add any more entries to this date"
};

class EditorSlotBox : public ::testing::TestWithParam<SlotText> {};

TEST_P(EditorSlotBox, AppendsOrRefusesWithoutCrashing) {
    EditorWorld w;
    w.Open();
    w.Add(QString::fromUtf16(GetParam().typed), QStringLiteral("9:00"), QString(),
          QStringLiteral("Entry"));
    if (GetParam().refused) {
        EXPECT_EQ(w.ShownTexts(), QStringList{kFull});
    } else {
        EXPECT_EQ(w.ListLines(), QStringList{" 1>9:00 am, Entry"});
    }
}

INSTANTIATE_TEST_SUITE_P(AnyText, EditorSlotBox,
                         ::testing::Values(SlotText{u"", false}, SlotText{u"00", false},
                                           SlotText{u"-0", false}, SlotText{u"NaN", false},
                                           SlotText{u"\u0661\u0662", false}, SlotText{u"\t", false},
                                           SlotText{u"-5", false}, SlotText{u"0.5", false},
                                           SlotText{u"1e400", true}, SlotText{u"39.5", true},
                                           SlotText{u"99999999999999999999", true}));

TEST(EditorSchedule, TenThousandCharactersPastedIntoEveryBoxAreHandled) {
    EditorWorld w;
    w.Open();
    w.dialog->tabEdit->setCurrentIndex(1);
    QApplication::clipboard()->setText(QString(10000, QLatin1Char('7')));
    for (QLineEdit* box : {w.dialog->txtAppointNum, w.dialog->txtStartTime, w.dialog->txtEndTime,
                           w.dialog->txtAppDescription}) {
        box->selectAll();
        box->paste();
    }
    EditorWorld::Click(w.dialog->cmdAddAppointment);
    EXPECT_EQ(w.ShownTexts(), QStringList{kFull});
    EditorWorld::Type(w.dialog->txtAppointNum, QStringLiteral("00"));
    EditorWorld::Type(w.dialog->txtStartTime, QStringLiteral("9:00"));
    EditorWorld::Type(w.dialog->txtEndTime, QString());
    EditorWorld::Click(w.dialog->cmdAddAppointment);
    EXPECT_EQ(w.Slot(1).Description.Value(), QString(50, QLatin1Char('7')));
    EXPECT_EQ(w.ListLines(), QStringList{" 1>9:00 am, " + QString(50, QLatin1Char('7'))});
}

}  // namespace
}  // namespace kelvane::testing

namespace kelvane::testing {
namespace {

class EditorTimeBoxes : public ::testing::TestWithParam<const char16_t*> {};

TEST_P(EditorTimeBoxes, RefuseTextThatIsNoTimeWithTheirOwnMessage) {
    const QString typed = QString::fromUtf16(GetParam());
    EditorWorld w;
    w.Open();
    w.Add(QString(), typed, QString(), QStringLiteral("Entry"));
    w.Add(QString(), QStringLiteral("9:00"),
          typed.trimmed().isEmpty() ? QStringLiteral("x") : typed, QStringLiteral("Entry"));
    EXPECT_EQ(w.ShownTexts(), (QStringList{kBadStart, kBadEnd}));
    EXPECT_TRUE(w.ListLines().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(AnyText, EditorTimeBoxes,
                         ::testing::Values(u"", u"   ", u"1e400", u"-0", u"NaN",
                                           u"\u0661\u0662:\u0663\u0660", u"\t", u"9\t30", u"24:00",
                                           u"12:60", u"9:30 pm"));

TEST(EditorTimeBoxes, TenThousandCharactersAreRefused) {
    EditorWorld w;
    w.Open();
    w.Add(QString(), QString(10000, QLatin1Char('1')), QString(), QStringLiteral("Entry"));
    EXPECT_EQ(w.ShownTexts(), QStringList{kBadStart});
}

}  // namespace
}  // namespace kelvane::testing
