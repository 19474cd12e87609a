#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

#include "report/TextBoxFound.h"
#include "report/frmCommingUp.h"
#include "support/DatesWorld.h"

namespace kelvane {
namespace {

using testing::DatesWorld;

class CommingUpTest : public ::testing::Test {
  protected:
    frmCommingUp& Open() {
        dialog = std::make_unique<frmCommingUp>(dates.world.store, *dates.view.calender);
        dialog->show();
        return *dialog;
    }
    // The report's lines as stored, without their padding.
    QStringList Lines() const {
        QStringList lines;
        for (qint16 n = 1; n <= dialog->usrDocViewer1->GetLineCount(); ++n) {
            lines << RTrim(dialog->usrDocViewer1->GetLine(n));
        }
        return lines;
    }
    QString Shown() const { return TextBoxFound(*dialog->usrDocViewer1)->toPlainText(); }
    void ChooseKind(int index) { DatesWorld::Click(dialog->optTimeDuration[index]); }
    // Puts the whole text in at once, as pasting does: typed one key at a
    // time, "367" would pass through 3 and 36 on its way.
    void TypeUnits(const QString& text) {
        dialog->txtTimeUnits->selectAll();
        dialog->txtTimeUnits->insert(text);
    }
    void DisplaySchedules() { DatesWorld::Click(dialog->chkDisplay); }
    // Starts the report on the selected date, as a click on its line does.
    void StartFromSelected() {
        QTest::mouseClick(
            dialog->lstDateFrom->viewport(), Qt::LeftButton, {},
            dialog->lstDateFrom->visualItemRect(dialog->lstDateFrom->item(1)).center());
    }

    DatesWorld dates;
    std::unique_ptr<frmCommingUp> dialog;
};

const QString kHeading = QStringLiteral("* * * C O M M I N G   U P * * *");

TEST_F(CommingUpTest, ShowsItsCaptionAndNamedControls) {
    Open();
    EXPECT_EQ(dialog->windowTitle(), "Comming Up...");
    EXPECT_EQ(dialog->Label2->text(), "Date From");
    EXPECT_EQ(dialog->Label1->text(), "Time Units");
    EXPECT_EQ(dialog->txtTimeUnits->objectName(), "txtTimeUnits");
    EXPECT_EQ(dialog->txtTimeUnits->text(), "1");
    EXPECT_EQ(dialog->optTimeDuration[0]->text(), "Day(s)");
    EXPECT_EQ(dialog->optTimeDuration[1]->text(), "Week(s)");
    EXPECT_EQ(dialog->optTimeDuration[2]->text(), "Month(s)");
    for (QRadioButton* option : dialog->optTimeDuration) {
        EXPECT_EQ(option->objectName(), "optTimeDuration");
    }
    EXPECT_TRUE(dialog->optTimeDuration[0]->isChecked());
    EXPECT_EQ(dialog->chkDisplay->text(), "Display Schedule");
    EXPECT_FALSE(dialog->chkDisplay->isChecked());
    EXPECT_EQ(dialog->usrDocViewer1->objectName(), "usrDocViewer1");
    EXPECT_EQ(dialog->lstDateFrom->objectName(), "lstDateFrom");
}

// A screen reader spells the spaced-out heading letter by letter; the report
// is announced by its heading written plainly, and its text reads as shown.
TEST_F(CommingUpTest, AScreenReaderMeetsTheReportByItsHeadingWrittenPlainly) {
    Open();
    QAccessibleInterface* box =
        QAccessible::queryAccessibleInterface(dialog->usrDocViewer1->TextBox());
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(QAccessible::Name), "Comming up");
    EXPECT_EQ(QAccessible::queryAccessibleInterface(dialog->usrDocViewer1)->text(QAccessible::Name),
              "Comming up");
    ASSERT_NE(box->textInterface(), nullptr);
    EXPECT_EQ(box->textInterface()->text(0, kHeading.size()), kHeading);
    EXPECT_EQ(Shown().section(QLatin1Char('\n'), 0, 0), kHeading);
}

TEST_F(CommingUpTest, ListsTodayAloneWhenTheSelectedDateReadsTheSame) {
    Open();
    ASSERT_EQ(dialog->lstDateFrom->count(), 1);
    EXPECT_EQ(dialog->lstDateFrom->item(0)->text(), "Today: 15-3-2000");
}

TEST_F(CommingUpTest, ListsTheSelectedDateWithoutABlankAfterItsColon) {
    dates.Select(7, 17);
    Open();
    ASSERT_EQ(dialog->lstDateFrom->count(), 2);
    EXPECT_EQ(dialog->lstDateFrom->item(1)->text(), "Selected:17-7-2000");
}

TEST_F(CommingUpTest, OneDayLeavesTheToLineOut) {
    Open();
    EXPECT_EQ(Lines(), (QStringList{kHeading, "From 15-3-2000  (Wednesday)", ""}));
    EXPECT_EQ(Shown(), kHeading + "\nFrom 15-3-2000  (Wednesday)\n");
}

TEST_F(CommingUpTest, WeeksEndADayBeforeTheSameWeekday) {
    Open();
    ChooseKind(1);
    TypeUnits("2");
    EXPECT_EQ(dialog->Kind, frmCommingUp::Weeks);
    EXPECT_EQ(Lines().mid(0, 3),
              (QStringList{kHeading, "From 15-3-2000  (Wednesday)", "To 28-3-2000  (Tuesday)"}));
}

TEST_F(CommingUpTest, MonthsFromMidNovemberEndOnTheLastOfDecember) {
    dates.Select(11, 15);
    Open();
    StartFromSelected();
    ChooseKind(2);
    TypeUnits("2");
    EXPECT_EQ(Lines()[2], "To 31-12-2000  (Sunday)");
    TypeUnits("3");
    EXPECT_EQ(dialog->Units, 3);
    EXPECT_EQ(Lines()[2], "To 31-12-2000  (Sunday)");
}

TEST_F(CommingUpTest, ASpanReachingIntoJanuaryStopsAfterTheLastOfDecember) {
    dates.PutTitle(12, 31, "New Year's Eve");
    dates.PutTitle(1, 1, "New Year");
    dates.PutTitle(1, 2, "Back to work");
    dates.Select(12, 30);
    Open();
    StartFromSelected();
    TypeUnits("5");
    EXPECT_EQ(Lines(),
              (QStringList{kHeading, "From 30-12-2000  (Saturday)", "To 31-12-2000  (Sunday)", "",
                           "New Year's Eve", "31-12-2000 (Sunday)", ""}));
    // The walk only reads: the selection stays where it was.
    EXPECT_EQ(dates.Selected(), (CalDate{2000, 30, 12}));
}

TEST_F(CommingUpTest, ATitleWithoutScheduleSaysSoWhenSchedulesAreShown) {
    dates.PutTitle(3, 16, "Holiday");
    Open();
    TypeUnits("3");
    DisplaySchedules();
    EXPECT_EQ(Lines().mid(3),
              (QStringList{"", "Holiday", "16-3-2000 (Thursday)", "--No Schedule Defined", ""}));
}

TEST_F(CommingUpTest, AScheduleUnderAnEmptyTitleGivesAnEmptyLineBeforeTheDate) {
    dates.PutActivity(3, 15, 1, "Dentist", {9, 30}, {10, 0});
    Open();
    EXPECT_EQ(Lines().mid(2), (QStringList{"", "", "15-3-2000 (Wednesday)", ""}));
    DisplaySchedules();
    EXPECT_EQ(Lines().mid(2), (QStringList{"", "", "15-3-2000 (Wednesday)", "->Dentist",
                                           "-->From 9:30 am to 10:00 am", ""}));
}

TEST_F(CommingUpTest, TitlesAndSchedulesInEveryScriptAreShownAsTheyAre) {
    // Polish, Chinese, Greek and Russian with an emoji; Hebrew and Arabic,
    // written right to left, with combining accents.
    const QString title = QStringLiteral(
        "\u0141\u00f3d\u017a \u5317\u4eac \u03a9\u03bc\u03ad\u03b3\u03b1 "
        "\u041f\u0440\u0438\u0432\u0435\u0442 \U0001F389");
    const QString activity =
        QStringLiteral("\u05e9\u05dc\u05d5\u05dd \u0645\u0631\u062d\u0628\u0627 e\u0301a\u0308");
    dates.PutTitle(3, 15, title);
    dates.PutActivity(3, 15, 1, activity, {9, 30}, {10, 0});
    Open();
    DisplaySchedules();
    EXPECT_EQ(Lines().mid(2), (QStringList{"", title, "15-3-2000 (Wednesday)", "->" + activity,
                                           "-->From 9:30 am to 10:00 am", ""}));
    EXPECT_TRUE(Shown().contains(title + QStringLiteral("\n15-3-2000 (Wednesday)\n->") + activity));
}

TEST_F(CommingUpTest, DatesWithNothingAddNothingAndNotesDoNotCount) {
    dates.PutNote(3, 16, "Only a note");
    dates.PutColours(3, 17, ColourChoice{10, 20, 30, true, true}, ColourChoice{});
    Open();
    TypeUnits("7");
    DisplaySchedules();
    EXPECT_EQ(Lines(), (QStringList{kHeading, "From 15-3-2000  (Wednesday)",
                                    "To 21-3-2000  (Tuesday)", ""}));
}

TEST_F(CommingUpTest, ListsEachScheduleLatestFirstWithTheLaterEndWinningATie) {
    dates.PutTitle(3, 15, "Busy");
    dates.PutActivity(3, 15, 1, "A", {9, 0}, {10, 0});
    dates.PutActivity(3, 15, 2, "B", {14, 0});
    dates.PutActivity(3, 15, 3, "C", {9, 0}, {11, 0});
    dates.PutActivity(3, 15, 4, "  D  ", {12, 0}, {12, 0});
    Open();
    DisplaySchedules();
    EXPECT_EQ(Lines().mid(3),
              (QStringList{"Busy", "15-3-2000 (Wednesday)", "->B", "-->From 2:00 pm", "->D",
                           "-->From 12:00 pm to 12:00 pm", "->C", "-->From 9:00 am to 11:00 am",
                           "->A", "-->From 9:00 am to 10:00 am", ""}));
}

// The sort's scratch table is shared by the dates of one build and its search
// runs over all 40 slots, so later entries that an earlier date left behind
// come up again under a date with fewer entries.
TEST_F(CommingUpTest, EntriesAnEarlierDateLeftBehindComeUpUnderALaterOne) {
    dates.PutActivity(3, 15, 1, "Six", {18, 0});
    dates.PutActivity(3, 15, 2, "Five", {17, 0});
    dates.PutActivity(3, 15, 3, "Four", {16, 0});
    dates.PutActivity(3, 16, 1, "Nine", {9, 0});
    Open();
    TypeUnits("2");
    DisplaySchedules();
    const QStringList lines = Lines();
    const qsizetype second = lines.indexOf("16-3-2000 (Thursday)");
    ASSERT_GT(second, 0);
    EXPECT_EQ(lines.mid(second + 1, 2), (QStringList{"->Five", "-->From 5:00 pm"}));
}

TEST_F(CommingUpTest, BadUnitsLeaveTheReportAsItWas) {
    dates.PutTitle(3, 16, "Tomorrow");
    Open();
    TypeUnits("2");
    const QStringList before = Lines();
    for (const char* text :
         {"0", "367", "500", "abc", "-3", "", "1e400", "99999999999", "\t", "2x"}) {
        TypeUnits(text);
        EXPECT_EQ(dialog->Units, 2) << text;
        EXPECT_EQ(Lines(), before) << text;
    }
}

TEST_F(CommingUpTest, UnitsAreRoundedHalfToEven) {
    Open();
    TypeUnits("2.5");
    EXPECT_EQ(dialog->Units, 2);
    TypeUnits("3.5");
    EXPECT_EQ(dialog->Units, 4);
    TypeUnits("366");
    EXPECT_EQ(dialog->Units, 366);
    EXPECT_EQ(Lines()[2], "To 31-12-2000  (Sunday)");
}

TEST_F(CommingUpTest, StartsFromTodayOrTheSelectedDateAsTheListSays) {
    dates.PutTitle(7, 17, "Red moon");
    dates.Select(7, 17);
    Open();
    StartFromSelected();
    EXPECT_EQ(Lines().mid(1),
              (QStringList{"From 17-7-2000  (Monday)", "", "Red moon", "17-7-2000 (Monday)", ""}));
    QTest::mouseClick(dialog->lstDateFrom->viewport(), Qt::LeftButton, {},
                      dialog->lstDateFrom->visualItemRect(dialog->lstDateFrom->item(0)).center());
    EXPECT_EQ(Lines()[1], "From 15-3-2000  (Wednesday)");
}

TEST_F(CommingUpTest, TheViewerFollowsTheDialogAndTheOpeningSizeIsTheSmallest) {
    Open();
    const QSize opening = dialog->size();
    EXPECT_EQ(dialog->minimumSize(), opening);
    const QRect viewer = dialog->usrDocViewer1->geometry();
    dialog->resize(opening + QSize(200, 100));
    QCoreApplication::processEvents();
    EXPECT_EQ(dialog->usrDocViewer1->geometry(), viewer.adjusted(0, 0, 200, 100));
    dialog->resize(opening - QSize(50, 50));
    QCoreApplication::processEvents();
    EXPECT_EQ(dialog->size(), opening);
}

TEST_F(CommingUpTest, ClosingDeletesTheViewersTemporaryFile) {
    for (qint16 day = 1; day <= 31; ++day) {
        for (int slot = 1; slot <= 39; ++slot) {
            dates.PutActivity(3, day, slot, QStringLiteral("Entry %1").arg(slot), {8, 0});
        }
    }
    dates.Select(3, 1);
    Open();
    StartFromSelected();
    TypeUnits("31");
    DisplaySchedules();
    const QString path = dialog->usrDocViewer1->OverflowFilePath();
    ASSERT_FALSE(path.isEmpty());
    EXPECT_TRUE(QFile::exists(path));
    dialog.reset();
    EXPECT_FALSE(QFile::exists(path));
}

}  // namespace
}  // namespace kelvane
