#pragma once

#include <QWidget>

#include <optional>

#include "calendar/Calender.h"
#include "shell/ActivityWatch.h"
#include "shell/MainStatusBar.h"
#include "store/CalendarFile.h"
#include "store/Store.h"

namespace kelvane {

// The main window's commands on the date selected in its month view: edit it
// in the date editor, delete what it holds, examine it beside today, and save
// a picture of the month.
class frmEdit;

class DateCommands {
  public:
    DateCommands(Store& store, Calender& calender1, ActivityWatch& watch, MainStatusBar& statusBar,
                 QWidget& owner);
    DateCommands(const DateCommands&) = delete;
    DateCommands& operator=(const DateCommands&) = delete;

    // Opens the date editor on the selected date (today when none is
    // selected) and keeps what it gives back when it closes with OK. An editor
    // whose loop ends without an answer (the session ends under it) counts as
    // closed with OK: what was typed into it is kept.
    void EditSelectedDate();
    // The date in the open editor as OK would keep it; none while no editor is open.
    std::optional<CalendarFileDate> OpenEdit() const;
    // Clears the selected date's title, colours, schedule and note, asking
    // first when it has any of them.
    void DeleteSelectedDate();
    // Lists and watches the selected date's activities beside today's; the
    // selected date being today ends an examination.
    void ExamineSelectedDate();
    // Ends an examination.
    void CancelExamine();
    // Saves the month as the last redraw drew it, as a bitmap file.
    void SaveCalendarImage();

  private:
    bool HasSelection() const;
    bool IsToday(const CalDate& date);
    bool IsExamined(const CalDate& date) const;
    void KeepEdit(const QString& key);

    Store& store_;
    Calender& calender1_;
    ActivityWatch& watch_;
    MainStatusBar& statusBar_;
    QWidget& owner_;
    // The date editor while it is open.
    frmEdit* editor_ = nullptr;
};

}  // namespace kelvane
