#pragma once

#include <QWidget>

#include <functional>
#include <optional>

#include "calendar/Calender.h"
#include "calfile/CalendarFile.h"
#include "shell/ActivityWatch.h"
#include "shell/MainStatusBar.h"
#include "store/Store.h"

namespace kelvane {

class frmEdit;

// The main window's commands on the date selected in its month view: edit it
// in the date editor, delete what it holds, examine it beside today, and save
// a picture of the month. Menus, toolbar and keys all come here. Edit, erase
// and examine first show the month of the date they act on, so that the grid
// highlights that date while its question or editor is open.
class DateCommands {
  public:
    // Shows a month (1..12) the way the main window's Month menu does.
    using ShowMonthFn = std::function<void(qint16 month)>;

    DateCommands(Store& store, Calender& calender1, ActivityWatch& watch, MainStatusBar& statusBar,
                 QWidget& owner, ShowMonthFn showMonth);
    DateCommands(const DateCommands&) = delete;
    DateCommands& operator=(const DateCommands&) = delete;

    // Opens the date editor on the selected date (today when none is
    // selected) and keeps what it gives back when it closes with OK. An editor
    // whose loop ends without an answer (the session ends under it) counts as
    // closed with OK: what was typed into it is kept.
    void EditSelectedDate();
    // The date in the open editor as OK would keep it; none while no editor is
    // open or nothing in it was changed.
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
    void ShowSelectedMonthIfHidden();
    bool IsToday(const CalDate& date);
    bool IsExamined(const CalDate& date) const;
    void KeepEdit(const QString& key);

    Store& store_;
    Calender& calender1_;
    ActivityWatch& watch_;
    MainStatusBar& statusBar_;
    QWidget& owner_;
    ShowMonthFn showMonth_;
    // The date editor while it is open.
    frmEdit* editor_ = nullptr;
};

}  // namespace kelvane
