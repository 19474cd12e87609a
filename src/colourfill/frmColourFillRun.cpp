// How the colour fill works out its run and colours it.
#include "colourfill/frmColourFill.h"
#include "store/WorkingCopiesKept.h"

namespace kelvane {

CalDate frmColourFill::EndDate() const {
    CalDate end = StartDate;
    if (Kind == Daily) {
        AddDaysInYear(end, StartDate, Units - 1, store_.module1.YearMonthLengths);
    } else if (Kind == Weekly) {
        end = WeeklyEnd();
    }
    return end;
}

// The start plus `Units` weeks. Only where 31 December holds the end back can
// the weekday differ; the search for the start's weekday then moves on by one
// day fewer each step, and as no step can move 31 December, the run ends there.
CalDate frmColourFill::WeeklyEnd() const {
    const MonthLengths& lengths = store_.module1.YearMonthLengths;
    const Module1& module1 = store_.module1;
    int days = 7 * Units;
    CalDate end;
    AddDaysInYear(end, StartDate, days, lengths);
    const QString weekday = module1.DayNameOf(StartDate.Month, StartDate.Day);
    while (module1.DayNameOf(end.Month, end.Day) != weekday) {
        --days;
        CalDate next;
        AddDaysInYear(next, end, days, lengths);
        if (next == end) {
            break;
        }
        end = next;
    }
    return end;
}

// A title, a note or a schedule: colours alone do not count.
bool frmColourFill::DateIsEdited() const {
    return !store_.calender.CurrentEntry.Title.IsBlank() ||
           !Trim(store_.diary.NoteBuffer.Value()).isEmpty() ||
           store_.appointments.CountAppointments() >= 1;
}

void frmColourFill::FillRun() {
    const bool fillEdited = chkFill[0]->isChecked();
    const bool fillUnedited = chkFill[1]->isChecked();
    const CalDate end = EndDate();
    // Each date is stored back on its own; the month is drawn once, at the end.
    // The person's selection comes back then, with its entry as the fill left
    // it; the fill changes no schedule or note, so those working copies come
    // back as they were.
    const SelectionKept selection(monthView_);
    const WorkingCopiesKept copies(store_);
    CalDate date = StartDate;
    bool more = true;
    while (more) {
        monthView_.SetDate(2000, date.Month, date.Day);
        const QString key = MakeDateKey(date.Month, date.Day);
        store_.appointments.LoadAppointments(key);
        store_.diary.LoadNote(key);
        const bool edited = DateIsEdited();
        if ((edited && fillEdited) || (!edited && fillUnedited)) {
            store_.calender.CurrentEntry.BackColour = BackColour;
            store_.calender.CurrentEntry.TextColour = FontColour;
        }
        monthView_.UpdateSelectedDate(false);
        more = DateBefore(date, end);
        CalDate next;
        AddDaysInYear(next, date, Step, store_.module1.YearMonthLengths);
        if (next == date) {
            break;  // 31 December: the year ends here
        }
        date = next;
    }
}

}  // namespace kelvane
