#pragma once

#include <QString>

#include "support/MainWindowWorld.h"

namespace kelvane::testing {

inline const QString kNineOClock =
    QStringLiteral("Activities Starting/Ending\rstarting Stand-up\rending Early shift");

// Saturday 7 March 2026 at 8:59, titled "Busy day", with one activity starting
// and one ending at 9:00.
struct NineOClockWorld {
    NineOClockWorld() : w(2026, 3, 7, 8, 59) {
        w.main.Calender1().Months[2].Dates[7].Title = QStringLiteral("Busy day");
        w.AddActivity(3, 7, QStringLiteral("Early shift"), 7, 0, 9, 0);
        w.AddActivity(3, 7, QStringLiteral("Stand-up"), 9, 0, 9, 30);
        w.watch.BuildTodaysSchedule();
    }

    qint16 CountOn(qint16 month, qint16 day) {
        w.store.appointments.LoadAppointments(MakeDateKey(month, day));
        return w.store.appointments.CountAppointments();
    }

    QString TitleOf(qint16 month, qint16 day) {
        return w.main.Calender1().Months[month - 1].Dates[day].Title.Trimmed();
    }

    QString NoteOf(qint16 month, qint16 day) {
        w.store.diary.LoadNote(MakeDateKey(month, day));
        return w.store.diary.NoteBuffer.Trimmed();
    }

    MainWindowWorld w;
};

}  // namespace kelvane::testing
