// The date editor's "Schedule" page: the list of the date's activities and
// the boxes that add, replace and delete them.
#include "editor/ParseTime.h"
#include "editor/frmEdit.h"

namespace kelvane {

namespace {

// Marks a start time as listed; no real time sorts after it.
constexpr qint16 kListedHour = 25;

// The number typed into a box, rounded; infinite for numbers beyond any slot.
double TypedNumber(const QLineEdit* box) {
    return RoundHalfEven(Val(box->text()));
}

// "9:30 am - 10:00 am, Dentist": the times and the description.
QString ActivityLine(const Appointment& activity) {
    QString line = FormatClockTime(activity.StartTime, 0);
    if (activity.EndTime.Hour >= 0) {
        line += QStringLiteral(" - ") + FormatClockTime(activity.EndTime, 0);
    }
    return line + QStringLiteral(", ") + activity.Description.Trimmed();
}

QString ScheduleLine(int slot, const Appointment& activity) {
    return Str(slot) + QLatin1Char('>') + ActivityLine(activity);
}

}  // namespace

// The activities in use, earliest start first; equal starts keep slot order.
// Each line begins with the activity's slot number.
void frmEdit::FillSchedule() {
    lstSchedule->clear();
    const int count = store_.appointments.CountAppointments();
    OneBased<ClockTime, MaxAppointmentsPerDate> starts;
    OneBased<bool, MaxAppointmentsPerDate> listed;
    for (int slot = 1; slot <= count; ++slot) {
        starts[slot] = schedule_[slot].StartTime;
    }
    for (int line = 0; line < count; ++line) {
        int earliest = 0;
        for (int slot = 1; slot <= count; ++slot) {
            if (!listed[slot] &&
                (earliest == 0 || CompareClockTime(starts[slot], starts[earliest]) < 0)) {
                earliest = slot;
            }
        }
        listed[earliest] = true;
        starts[earliest].Hour = kListedHour;
        lstSchedule->addItem(ScheduleLine(earliest, schedule_[earliest]));
    }
}

void frmEdit::lstSchedule_Click() {
    const QList<QListWidgetItem*> selected = lstSchedule->selectedItems();
    if (selected.isEmpty()) {
        return;
    }
    const QListWidgetItem* item = selected.constFirst();
    const double slot = Val(item->text());
    if (!AppointmentSlots::Contains(static_cast<long long>(slot))) {
        return;
    }
    const Appointment& activity = schedule_[static_cast<int>(slot)];
    txtAppointNum->setText(QString::number(static_cast<int>(slot)));
    txtAppDescription->setText(activity.Description.Trimmed());
    txtStartTime->setText(FormatClockTime(activity.StartTime, 1));
    txtEndTime->setText(activity.EndTime.Hour < 0 ? QString()
                                                  : FormatClockTime(activity.EndTime, 1));
}

// Each time is stored as soon as it is read, before the later checks: a
// refused entry can leave a new time in a slot that has no description yet.
void frmEdit::cmdAddAppointment_Click() {
    double slot = TypedNumber(txtAppointNum);
    if (slot < 1) {
        slot = store_.appointments.CountAppointments() + 1;
    }
    if (!(slot < MaxAppointmentsPerDate)) {
        Refuse(QStringLiteral("Can't add any more entries to this date"));
        return;
    }
    Appointment& activity = schedule_[static_cast<int>(slot)];
    const bool replacing = !activity.Description.IsBlank();
    if (!ParseTime(txtStartTime->text(), activity.StartTime)) {
        Refuse(QStringLiteral("Start Time is invalid"));
        return;
    }
    if (Trim(txtEndTime->text()).isEmpty()) {
        activity.EndTime = ClockTime{-1, -1};
    } else if (!ParseTime(txtEndTime->text(), activity.EndTime)) {
        Refuse(QStringLiteral("End Time is invalid"));
        return;
    }
    if (Trim(txtAppDescription->text()).isEmpty()) {
        Refuse(QStringLiteral("You must have a 'description'"));
        return;
    }
    activity.Description = txtAppDescription->text();
    FillSchedule();
    cmdClear_Click();
    if (static_cast<int>(slot) <= store_.appointments.CountAppointments()) {
        TellAdded((replacing ? QStringLiteral("Changed ") : QStringLiteral("Added ")) +
                  ActivityLine(activity));
    }
}

// Add leaves the keyboard on itself and the new line shows in a list the
// keyboard is not on, so a screen reader is told the line.
void frmEdit::TellAdded(const QString& line) {
    annSchedule->Announce(line);
}

// The slots after the deleted one move down; the last keeps its contents.
// A slot number above 40 is refused without a word.
void frmEdit::cmdDelete_Click() {
    const double slot = TypedNumber(txtAppointNum);
    if (slot > MaxAppointmentsPerDate) {
        return;
    }
    if (slot >= 1) {
        const int deleted = static_cast<int>(slot);
        schedule_[deleted] = Appointment{};
        for (int later = deleted + 1; later <= MaxAppointmentsPerDate; ++later) {
            schedule_[later - 1] = schedule_[later];
        }
        FillSchedule();
    }
    cmdClear_Click();
}

void frmEdit::cmdClear_Click() {
    txtAppointNum->setText(QStringLiteral("00"));
    txtAppDescription->clear();
    txtStartTime->clear();
    txtEndTime->clear();
}

void frmEdit::Refuse(const QString& message) {
    store_.module1.Services().Messages.Show(message);
}

}  // namespace kelvane
