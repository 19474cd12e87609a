#include "shell/DateCommands.h"

#include <utility>

#include "editor/frmEdit.h"
#include "shell/WatchHold.h"
#include "store/DateInWords.h"
#include "store/DocumentCommands.h"
#include "store/WorkingCopiesKept.h"

namespace kelvane {

namespace {

const QString kImageFilter = QStringLiteral("Bitmap (*.bmp)|*.bmp");

}  // namespace

DateCommands::DateCommands(Store& store, Calender& calender1, ActivityWatch& watch,
                           MainStatusBar& statusBar, QWidget& owner, ShowMonthFn showMonth)
    : store_(store),
      calender1_(calender1),
      watch_(watch),
      statusBar_(statusBar),
      owner_(owner),
      showMonth_(std::move(showMonth)) {}

void DateCommands::EditSelectedDate() {
    const SilentWatchHold quiet(watch_);
    calender1_.UpdateSelectedDate(true);
    ShowSelectedMonthIfHidden();
    const CalDate date = store_.calender.CurrentEntryDate;
    if (date.Day <= 0 || date.Month <= 0) {
        return;
    }
    const QString key = MakeDateKey(date.Month, date.Day);
    store_.appointments.LoadAppointments(key);
    store_.diary.LoadNote(key);
    {
        frmEdit editor(store_, calender1_, &owner_);
        editor_ = &editor;
        editor.exec();
        editor_ = nullptr;
        if (!editor.Answered() && editor.Changed()) {
            editor.cmdOK_Click();
        }
    }
    if (!store_.module1.EditAccepted) {
        statusBar_.ShowMessage(QStringLiteral("Edit Cancelled"));
        return;
    }
    KeepEdit(key);
}

std::optional<CalendarFileDate> DateCommands::OpenEdit() const {
    if (editor_ == nullptr || !editor_->Changed()) {
        return std::nullopt;
    }
    return editor_->AsAccepted();
}

// Stores the edited working copy back and shows it wherever it is listed.
void DateCommands::KeepEdit(const QString& key) {
    const CalDate date = store_.calender.CurrentEntryDate;
    calender1_.UpdateSelectedDate(false);
    store_.appointments.SaveAppointments(key);
    store_.diary.SaveNote(key);
    if (IsToday(date) || IsExamined(date)) {
        watch_.BuildTodaysSchedule();
    }
    statusBar_.ShowMessage(QStringLiteral("Edit Done"));
}

// A date without content is cleared without a question and the document is
// not marked changed.
void DateCommands::DeleteSelectedDate() {
    if (!HasSelection()) {
        return;
    }
    // The date stays loaded in the working copies while the question waits.
    const WatchHold hold(watch_);
    ShowSelectedMonthIfHidden();
    calender1_.UpdateSelectedDate(true);
    const CalDate date = store_.calender.CurrentEntryDate;
    const QString key = MakeDateKey(date.Month, date.Day);
    store_.appointments.LoadAppointments(key);
    store_.diary.LoadNote(key);
    if (store_.DateHasContent()) {
        // The question does not say which date; the description tells a screen reader.
        if (store_.module1.Services().Messages.Show(
                QStringLiteral("Delete Date?"), MessageButtons::YesNo, MessageIcon::None, QString(),
                DateInWords(calender1_, date.Month, date.Day)) != MessageAnswer::Yes) {
            return;
        }
        store_.module1.CalendarDirty = true;
    }
    DateEntry& entry = store_.calender.CurrentEntry;
    entry.TextColour = ColourChoice{};
    entry.BackColour = ColourChoice{};
    entry.Title = QString();
    store_.appointments.DeleteAppointments(key);
    store_.diary.ClearNote(key);
    calender1_.UpdateSelectedDate(false);
    calender1_.Display();
    if (IsToday(date) || IsExamined(date)) {
        watch_.BuildTodaysSchedule();
    }
}

// Only reads the date: what the working copies held before is there again
// afterwards, and the selection stays where it was.
void DateCommands::ExamineSelectedDate() {
    if (!HasSelection()) {
        return;
    }
    const WorkingCopiesKept kept(store_);
    ShowSelectedMonthIfHidden();
    calender1_.UpdateSelectedDate(true);
    const CalDate date = calender1_.SelectedDate;
    if (IsToday(date)) {
        watch_.ExamineActive = false;
    } else {
        watch_.ExamineDate = date;
        watch_.ExamineActive = true;
    }
    watch_.BuildTodaysSchedule();
}

void DateCommands::CancelExamine() {
    watch_.ExamineActive = false;
    watch_.BuildTodaysSchedule();
}

void DateCommands::SaveCalendarImage() {
    const SilentWatchHold quiet(watch_);
    const Platform& services = store_.module1.Services();
    const QString fileName = services.FileDialog.Show(
        {FileDialogKind::Save, QStringLiteral("Save Calender"), QString(), kImageFilter});
    if (fileName.isEmpty() || !ConfirmReplace(services.Messages, fileName)) {
        return;
    }
    QString error;
    if (!calender1_.CalenderSavePicture(fileName, error)) {
        services.Messages.Show(QStringLiteral("Could not save the picture of the month to\r") +
                                   fileName + QLatin1Char('\r') + error,
                               MessageButtons::Ok, MessageIcon::Critical);
    }
}

bool DateCommands::HasSelection() const {
    return calender1_.SelectedDate.Day > 0 && calender1_.SelectedDate.Month > 0;
}

// A date the grid does not show is shown, highlighted, before a command acts on
// it; the selection itself stays where it is.
void DateCommands::ShowSelectedMonthIfHidden() {
    const qint16 month = calender1_.SelectedDate.Month;
    if (HasSelection() && month <= 12 && month != calender1_.GetDisplayMonth() && showMonth_) {
        showMonth_(month);
    }
}

bool DateCommands::IsToday(const CalDate& date) {
    CalDate today;
    store_.module1.GetToday(today);
    return date.Day == today.Day && date.Month == today.Month;
}

bool DateCommands::IsExamined(const CalDate& date) const {
    return date.Day == watch_.ExamineDate.Day && date.Month == watch_.ExamineDate.Month;
}

}  // namespace kelvane
