#include "support/DocumentWorld.h"

namespace kelvane::testing {

void DocumentWorld::EditDate(qint16 month, qint16 day, const QString& title, int entries,
                             const QString& note) {
    calender.SetDate(2000, month, day);
    store.calender.CurrentEntry.Title = title;
    const QString key = MakeDateKey(month, day);
    store.appointments.LoadAppointments(key);
    for (int i = 1; i <= entries && AppointmentSlots::Contains(i); ++i) {
        Appointment& entry = store.appointments.AppointmentList[i];
        entry.Description = QStringLiteral("Activity %1").arg(i);
        entry.StartTime = ClockTime{static_cast<qint16>(i % 24), 0};
        entry.EndTime = ClockTime{static_cast<qint16>(i % 24), 30};
    }
    store.diary.NoteBuffer = note;
    store.diary.SaveNote(key);
    store.appointments.SaveAppointments(key);
    calender.UpdateSelectedDate(false);
}

}  // namespace kelvane::testing
