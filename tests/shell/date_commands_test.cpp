#include <QFile>
#include <QImage>

#include <gtest/gtest.h>

#include "support/MainWindowWorld.h"

namespace kelvane::testing {
namespace {

const QString kDeleteDate = QStringLiteral("Delete Date?");

void PutNote(MainWindowWorld& w, qint16 month, qint16 day, const QString& note) {
    w.store.diary.NoteBuffer = note;
    w.store.diary.SaveNote(MakeDateKey(month, day));
}

QString NoteOf(MainWindowWorld& w, qint16 month, qint16 day) {
    w.store.diary.LoadNote(MakeDateKey(month, day));
    return w.store.diary.NoteBuffer.Trimmed();
}

QString StatusMessage(MainWindowWorld& w) {
    return w.main.sbStatusBar().Message();
}

TEST(DeleteDate, ADateWithOnlyANoteAsksNoKeepsTheNoteAndYesClearsIt) {
    MainWindowWorld w;
    PutNote(w, 3, 12, QStringLiteral("Remember"));
    w.ClickDay(12);
    w.platform.Messages.Answer(MessageAnswer::No);
    w.main.Toolbar().Buttons[6]->trigger();
    ASSERT_EQ(w.platform.Messages.Shown.size(), 1);
    EXPECT_EQ(w.platform.Messages.Shown[0],
              (MessageBoxRequest{kDeleteDate, QStringLiteral("Kelvane"), MessageButtons::YesNo,
                                 MessageIcon::None, QStringLiteral("Thursday 12 March")}));
    EXPECT_EQ(NoteOf(w, 3, 12), QStringLiteral("Remember"));
    EXPECT_FALSE(w.store.module1.CalendarDirty);
    w.ClickDay(12);
    w.platform.Messages.Answer(MessageAnswer::Yes);
    w.main.Toolbar().Buttons[6]->trigger();
    EXPECT_EQ(w.ShownTexts(), (QStringList{kDeleteDate, kDeleteDate}));
    EXPECT_EQ(NoteOf(w, 3, 12), QString());
    EXPECT_TRUE(w.store.module1.CalendarDirty);
}

TEST(DeleteDate, YesClearsEverythingMarksTheDocumentChangedAndRedrawsTheMonth) {
    MainWindowWorld w;
    w.main.Calender1().SetDate(2026, 3, 12);
    DateEntry& entry = w.store.calender.CurrentEntry;
    entry.Title = QStringLiteral("Gone");
    entry.BackColour = ColourChoice{0, 0, 0, true, true};
    entry.TextColour = ColourChoice{1, 1, 1, false, true};
    w.main.Calender1().UpdateSelectedDate(false);
    PutNote(w, 3, 12, QStringLiteral("Remember"));
    w.AddActivity(3, 12, QStringLiteral("Walk"), 9, 0);
    w.ClickDay(12);
    const QImage before = w.main.CalenderView().grab().toImage();
    w.platform.Messages.Answer(MessageAnswer::Yes);
    w.main.Toolbar().Buttons[6]->trigger();
    EXPECT_EQ(w.ShownTexts(), QStringList{kDeleteDate});
    EXPECT_TRUE(w.store.module1.CalendarDirty);
    EXPECT_EQ(NoteOf(w, 3, 12), QString());
    w.store.appointments.LoadAppointments(MakeDateKey(3, 12));
    EXPECT_EQ(w.store.appointments.CountAppointments(), 0);
    const DateEntry& kept = w.main.Calender1().Months[2].Dates[12];
    EXPECT_EQ(kept, DateEntry{});
    EXPECT_NE(w.main.CalenderView().grab().toImage(), before);
}

TEST(DeleteDate, AnEmptyDateIsClearedWithoutAQuestionAndTheDocumentStaysUnchanged) {
    MainWindowWorld w;
    w.ClickDay(20);
    w.main.Toolbar().Buttons[6]->trigger();
    EXPECT_TRUE(w.platform.Messages.Shown.isEmpty());
    EXPECT_FALSE(w.store.module1.CalendarDirty);
    w.store.module1.CalendarDirty = true;
    w.main.Toolbar().Buttons[6]->trigger();
    EXPECT_TRUE(w.store.module1.CalendarDirty);
}

TEST(DeleteDate, WithNoDateSelectedNothingHappens) {
    MainWindowWorld w;
    PutNote(w, 3, 7, QStringLiteral("Today's note"));
    w.main.Calender1().SelectedDate = CalDate{};
    w.main.Toolbar().Buttons[6]->trigger();
    EXPECT_TRUE(w.platform.Messages.Shown.isEmpty());
    EXPECT_EQ(NoteOf(w, 3, 7), QStringLiteral("Today's note"));
}

TEST(DeleteDate, DeletingTodaysActivitiesTakesThemOffTheSchedule) {
    MainWindowWorld w;
    w.AddActivity(3, 7, QStringLiteral("Standup"), 9, 30);
    w.watch.BuildTodaysSchedule();
    ASSERT_TRUE(w.ScheduleLines().contains(QStringLiteral("Standup")));
    w.ClickDay(7);
    w.platform.Messages.Answer(MessageAnswer::Yes);
    w.main.Toolbar().Buttons[6]->trigger();
    EXPECT_FALSE(w.ScheduleLines().contains(QStringLiteral("Standup")));
    EXPECT_EQ(w.ScheduleLines().last(), QStringLiteral("No Schedule Defined"));
}

TEST(EditDate, OkOnTodayRebuildsTheScheduleAndSaysEditDone) {
    MainWindowWorld w;
    w.ClickDay(7);
    w.WhenEditorOpens([&](frmEdit& editor) {
        EXPECT_EQ(editor.lblDate->text(), QStringLiteral("7 / 3"));
        editor.tabEdit->setCurrentIndex(1);
        editor.txtStartTime->setText(QStringLiteral("9:30"));
        editor.txtEndTime->setText(QStringLiteral("10:00"));
        editor.txtAppDescription->setText(QStringLiteral("Dentist"));
        editor.cmdAddAppointment->click();
        editor.cmdOK->click();
    });
    w.main.Menu().mnuEditDate->trigger();
    EXPECT_EQ(StatusMessage(w), QStringLiteral("Edit Done"));
    EXPECT_TRUE(w.store.module1.CalendarDirty);
    EXPECT_TRUE(w.ScheduleLines().contains(QStringLiteral("Dentist")));
    EXPECT_TRUE(w.watch.AlertsEnabled);
}

TEST(EditDate, CancelSaysEditCancelledAndChangesNothing) {
    MainWindowWorld w;
    w.ClickDay(7);
    w.WhenEditorOpens([&](frmEdit& editor) {
        editor.txtTitle->setText(QStringLiteral("Not kept"));
        editor.Colours->chkBCValid->click();
        editor.tabEdit->setCurrentIndex(1);
        editor.txtStartTime->setText(QStringLiteral("9:30"));
        editor.txtAppDescription->setText(QStringLiteral("Not kept"));
        editor.cmdAddAppointment->click();
        editor.cmdCancel->click();
    });
    w.main.Toolbar().Buttons[5]->trigger();
    EXPECT_EQ(StatusMessage(w), QStringLiteral("Edit Cancelled"));
    EXPECT_FALSE(w.store.module1.CalendarDirty);
    EXPECT_EQ(w.main.Calender1().Months[2].Dates[7], DateEntry{});
    w.store.appointments.LoadAppointments(MakeDateKey(3, 7));
    EXPECT_EQ(w.store.appointments.CountAppointments(), 0);
    EXPECT_FALSE(w.ScheduleLines().contains(QStringLiteral("Not kept")));
    EXPECT_TRUE(w.watch.AlertsEnabled);
}

TEST(EditDate, WithNoDateSelectedTheEditorOpensOnToday) {
    MainWindowWorld w;
    w.main.Calender1().SelectedDate = CalDate{};
    QString shown;
    w.WhenEditorOpens([&](frmEdit& editor) {
        shown = editor.lblDate->text();
        editor.cmdCancel->click();
    });
    w.main.mnuEditDate_Click();
    EXPECT_EQ(shown, QStringLiteral("7 / 3"));
}

TEST(EditDate, EditingTheExaminedDateRebuildsTheSchedule) {
    MainWindowWorld w;
    w.ClickDay(20);
    w.main.Menu().mnuEditExamineDate_Selected->trigger();
    ASSERT_TRUE(w.watch.ExamineActive);
    w.WhenEditorOpens([&](frmEdit& editor) {
        editor.txtStartTime->setText(QStringLiteral("11:00"));
        editor.txtAppDescription->setText(QStringLiteral("Later"));
        editor.cmdAddAppointment->click();
        editor.cmdOK->click();
    });
    w.main.mnuEditDate_Click();
    EXPECT_TRUE(w.ScheduleLines().contains(QStringLiteral("Later")));
}

TEST(EditDate, AnActivityStartingWhileTheEditorIsOpenIsAnnouncedOnceItCloses) {
    MainWindowWorld w;
    w.AddActivity(3, 7, QStringLiteral("Standup"), 8, 1);
    w.watch.BuildTodaysSchedule();
    w.ClickDay(9);
    int boxesWhileOpen = -1;
    w.WhenEditorOpens([&](frmEdit& editor) {
        EXPECT_FALSE(w.watch.AlertsEnabled);
        w.TickAt(8, 1, 10);
        boxesWhileOpen = static_cast<int>(w.platform.Messages.Shown.size());
        editor.cmdOK->click();
    });
    w.main.mnuEditDate_Click();
    EXPECT_EQ(boxesWhileOpen, 0);
    EXPECT_TRUE(w.watch.AlertsEnabled);
    w.TickAt(8, 2, 30);
    EXPECT_EQ(w.ShownTexts(), QStringList{"Activities Starting/Ending\rstarting Standup"});
}

TEST(ExamineDate, TheSelectedDatesActivitiesAreListedAndExaminingTodayEndsIt) {
    MainWindowWorld w;
    w.AddActivity(3, 20, QStringLiteral("Trip"), 10, 0);
    w.ClickDay(20);
    w.main.Menu().mnuEditExamineDate_Selected->trigger();
    EXPECT_TRUE(w.watch.ExamineActive);
    EXPECT_EQ(w.watch.ExamineDate.Day, 20);
    EXPECT_EQ(w.watch.ExamineDate.Month, 3);
    EXPECT_TRUE(w.ScheduleLines().contains(QStringLiteral("Trip")));
    w.ClickDay(7);
    w.main.Menu().mnuEditExamineDate_Selected->trigger();
    EXPECT_FALSE(w.watch.ExamineActive);
    EXPECT_FALSE(w.ScheduleLines().contains(QStringLiteral("Trip")));
}

TEST(ExamineDate, WithNoDateSelectedNothingHappensAndCancelEndsAnExamination) {
    MainWindowWorld w;
    w.main.Calender1().SelectedDate = CalDate{};
    w.main.mnuEditExamineDate_Selected_Click();
    EXPECT_FALSE(w.watch.ExamineActive);
    w.ClickDay(21);
    w.main.mnuEditExamineDate_Selected_Click();
    EXPECT_TRUE(w.watch.ExamineActive);
    w.main.Menu().mnuToolsExamine_CancelExamine->trigger();
    EXPECT_FALSE(w.watch.ExamineActive);
}

TEST(SaveCalendarImage, AsksForABitmapNameAndWritesTheMonthAsABitmap) {
    MainWindowWorld w;
    w.main.show();
    const QString file = w.world.FilePath(QStringLiteral("march.bmp"));
    w.platform.FileDialog.Choose(file);
    w.main.Menu().mnuFileSaveCalImage->trigger();
    ASSERT_EQ(w.platform.FileDialog.Shown.size(), 1);
    EXPECT_EQ(w.platform.FileDialog.Shown[0],
              (FileDialogRequest{FileDialogKind::Save, QStringLiteral("Save Calender"), QString(),
                                 QStringLiteral("Bitmap (*.bmp)|*.bmp")}));
    QImage saved(file, "BMP");
    EXPECT_FALSE(saved.isNull());
    EXPECT_EQ(saved.size(), w.main.CalenderView().size());
    EXPECT_TRUE(w.platform.Messages.Shown.isEmpty());
    EXPECT_TRUE(w.watch.AlertsEnabled);
}

TEST(SaveCalendarImage, AnExistingFileAnsweredNoIsNotWritten) {
    MainWindowWorld w;
    w.main.show();
    const QString file = w.world.FilePath(QStringLiteral("old.bmp"));
    QFile old(file);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("keep me");
    old.close();
    w.platform.FileDialog.Choose(file);
    w.platform.Messages.Answer(MessageAnswer::No);
    w.main.mnuFileSaveCalImage_Click();
    ASSERT_EQ(w.platform.Messages.Shown.size(), 1);
    EXPECT_EQ(w.platform.Messages.Shown[0],
              (MessageBoxRequest{QStringLiteral("File exists - do you wish to replace"),
                                 QStringLiteral("Watch out ***"), MessageButtons::YesNo,
                                 MessageIcon::Exclamation}));
    EXPECT_EQ(w.world.ReadFile(QStringLiteral("old.bmp")), QByteArray("keep me"));
    EXPECT_TRUE(w.watch.AlertsEnabled);
    w.platform.FileDialog.Choose(file);
    w.platform.Messages.Answer(MessageAnswer::Yes);
    w.main.mnuFileSaveCalImage_Click();
    EXPECT_TRUE(w.world.ReadFile(QStringLiteral("old.bmp")).startsWith("BM"));
}

TEST(SaveCalendarImage, ACancelledDialogWritesNothingAndTurnsTheAlertsBackOn) {
    MainWindowWorld w;
    w.main.mnuFileSaveCalImage_Click();
    EXPECT_EQ(w.platform.FileDialog.Shown.size(), 1);
    EXPECT_TRUE(w.platform.Messages.Shown.isEmpty());
    EXPECT_TRUE(w.watch.AlertsEnabled);
}

TEST(SaveCalendarImage, AnUnwritablePlaceGivesACriticalMessageAndWritesNothing) {
    MainWindowWorld w;
    const QString file = QStringLiteral("/nonexistent-kelvane-dir/march.bmp");
    w.platform.FileDialog.Choose(file);
    w.main.mnuFileSaveCalImage_Click();
    ASSERT_EQ(w.platform.Messages.Shown.size(), 1);
    const MessageBoxRequest& box = w.platform.Messages.Shown[0];
    EXPECT_TRUE(box.Text.startsWith(QStringLiteral("Could not save the picture of the month to\r") +
                                    file + QLatin1Char('\r')))
        << box.Text;
    EXPECT_EQ(box.Icon, MessageIcon::Critical);
    EXPECT_EQ(box.Title, QStringLiteral("Kelvane"));
    EXPECT_FALSE(QFile::exists(file));
    EXPECT_TRUE(w.watch.AlertsEnabled);
}

}  // namespace
}  // namespace kelvane::testing
