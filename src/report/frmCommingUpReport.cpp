// How the coming-up report is worked out and written.
#include <algorithm>
#include <utility>

#include "calfile/Conversions.h"
#include "report/frmCommingUp.h"
#include "store/StoreReadAhead.h"
#include "store/WorkingCopiesKept.h"

namespace kelvane {

namespace {

// The later of two entries: by start time, then by end time.
bool Later(const Appointment& a, const Appointment& b) {
    const int byStart = CompareClockTime(a.StartTime, b.StartTime);
    return byStart > 0 || (byStart == 0 && CompareClockTime(a.EndTime, b.EndTime) > 0);
}

// "->" and the entry's description.
QString EntryLine(const Appointment& entry) {
    const QStringView description = TrimmedView(entry.Description.Value());
    QString line;
    line.reserve(2 + description.size());
    line += u"->";
    line += description;
    return line;
}

// "-->From 9:15 am to 10:00 am", without " to" for an entry with no end.
QString TimesLine(const Appointment& entry) {
    QString line;
    line.reserve(32);
    line += u"-->From ";
    line += FormatClockTime(entry.StartTime, 0);
    if (entry.EndTime.Hour >= 0) {
        line += u" to ";
        line += FormatClockTime(entry.EndTime, 0);
    }
    return line;
}

}  // namespace

CalDate frmCommingUp::EndDate() const {
    const MonthLengths& lengths = store_.module1.YearMonthLengths;
    CalDate end = StartDate;
    switch (Kind) {
        case Days:
            AddDaysInYear(end, StartDate, Units - 1, lengths);
            break;
        case Weeks:
            AddDaysInYear(end, StartDate, 7 * Units - 1, lengths);
            break;
        case Months: {
            const int month = std::min(StartDate.Month + Units - 1, 12);
            if (MonthLengths::Contains(month)) {
                end.Month = static_cast<qint16>(month);
                end.Day = lengths[month];
            }
            break;
        }
        default:
            break;
    }
    return end;
}

QString frmCommingUp::DateLine(const CalDate& date, const QString& gap) const {
    return FormatCalDate(date) + gap + QLatin1Char('(') +
           store_.module1.DayNameOf(date.Month, date.Day) + QLatin1Char(')');
}

void frmCommingUp::BuildReport() {
    usrDocViewer1->ClearLines();
    const CalDate end = EndDate();
    usrDocViewer1->AddLine(QStringLiteral("* * * C O M M I N G   U P * * *"));
    usrDocViewer1->AddLine(QStringLiteral("From ") + DateLine(StartDate, QStringLiteral("  ")));
    if (end.Day != StartDate.Day || end.Month != StartDate.Month) {
        usrDocViewer1->AddLine(QStringLiteral("To ") + DateLine(end, QStringLiteral("  ")));
    }
    usrDocViewer1->AddLine(QString());

    // Shared by every date of this build and never cleared, so entries a date
    // leaves behind stay in the slots above the next date's count.
    AppointmentSlots scratch;
    // The walk selects every date in turn, for reading only: the selection and
    // the working copies are as they were once it ends, and the grid is not
    // redrawn.
    const WorkingCopiesKept copies(store_);
    const SelectionKept selection(monthView_);
    const StoreReadAhead readAhead(store_);
    CalDate date = StartDate;
    for (;;) {
        AddDate(date, scratch);
        if (!DateBefore(date, end) || IsLastDayOfYear(date)) {
            break;
        }
        CalDate next;
        AddDaysInYear(next, date, 1, store_.module1.YearMonthLengths);
        if (next == date) {
            break;  // a start outside the year does not step
        }
        date = next;
    }
    usrDocViewer1->RefreshDisplay();
}

void frmCommingUp::AddDate(const CalDate& date, AppointmentSlots& scratch) {
    monthView_.SetDate(2000, date.Month, date.Day);
    store_.appointments.LoadAppointments(MakeDateKey(date.Month, date.Day));
    const QString title = store_.calender.CurrentEntry.Title.Trimmed();
    const qint16 count = store_.appointments.CountAppointments();
    if (title.isEmpty() && count < 1) {
        return;
    }
    usrDocViewer1->AddLine(title);
    usrDocViewer1->AddLine(DateLine(date, QStringLiteral(" ")));
    if (chkDisplay->isChecked()) {
        if (count == 0) {
            usrDocViewer1->AddLine(QStringLiteral("--No Schedule Defined"));
        } else {
            ListEntries(count, scratch);
        }
    }
    usrDocViewer1->AddLine(QString());
}

// Latest first. The search for the latest runs over all 40 scratch slots, not
// just the date's own entries.
void frmCommingUp::ListEntries(qint16 count, AppointmentSlots& scratch) {
    const AppointmentSlots& list = store_.appointments.AppointmentList;
    for (int slot = 1; slot <= count; ++slot) {
        scratch[slot] = list[slot];
    }
    for (int slot = 1; slot <= count; ++slot) {
        int latest = slot;
        for (int other = slot + 1; other <= MaxAppointmentsPerDate; ++other) {
            if (Later(scratch[other], scratch[latest])) {
                latest = other;
            }
        }
        std::swap(scratch[slot], scratch[latest]);
        const Appointment& entry = scratch[slot];
        usrDocViewer1->AddLine(EntryLine(entry));
        usrDocViewer1->AddLine(TimesLine(entry));
    }
}

}  // namespace kelvane
