#pragma once

#include <gtest/gtest.h>

#include "support/MainWindowWorld.h"

namespace kelvane::testing {

// The shared working copies as a command may find them.
struct WorkingCopies {
    explicit WorkingCopies(const Store& store)
        : Entry(store.calender.CurrentEntry),
          EntryDate(store.calender.CurrentEntryDate),
          Schedule(store.appointments.AppointmentList),
          Note(store.diary.NoteBuffer) {}
    friend bool operator==(const WorkingCopies&, const WorkingCopies&) = default;

    DateEntry Entry;
    CalDate EntryDate;
    AppointmentSlots Schedule;
    FixedText<NoteLength> Note;
};

// Tuesday 10 November 2026 at 8:00, today with a call at 9:00; the person has
// clicked 17 November, which holds a dentist's appointment and a note.
struct NovemberWorld {
    NovemberWorld() : w(2026, 11, 10, 8, 0) {
        w.main.Calender1().Months[10].Dates[17].Title = QStringLiteral("Dentist");
        w.AddActivity(11, 17, QStringLiteral("Dentist"), 9, 0, 10, 0);
        w.AddActivity(11, 10, QStringLiteral("Call"), 9, 0);
        w.store.diary.NoteBuffer = QStringLiteral("Bring the card");
        w.store.diary.SaveNote(MakeDateKey(11, 17));
        w.watch.BuildTodaysSchedule();
        w.ClickDay(17);
    }

    QString TitleOf(qint16 month, qint16 day) const {
        return w.main.Calender1()
            .Months[static_cast<std::size_t>(month - 1)]
            .Dates[day]
            .Title.Trimmed();
    }

    // The checked entry of the Month menu; 0 when none is.
    qint16 CheckedMonth() const {
        qint16 checked = 0;
        for (int month = 1; month <= 12; ++month) {
            if (w.main.Menu().Months[month]->isChecked()) {
                EXPECT_EQ(checked, 0) << "two months are checked";
                checked = static_cast<qint16>(month);
            }
        }
        return checked;
    }

    // The toolbar's Erase answered Yes; gives the day highlighted while
    // "Delete Date?" was asked.
    qint16 Erase() {
        qint16 highlightedWhileAsked = -1;
        w.platform.Messages.WhileShown = [&](const MessageBoxRequest&) {
            highlightedWhileAsked = HighlightedDayOf(w.main);
        };
        w.platform.Messages.Answer(MessageAnswer::Yes);
        w.main.Toolbar().Buttons[6]->trigger();
        w.platform.Messages.WhileShown = nullptr;
        EXPECT_EQ(w.ShownTexts().value(0), QStringLiteral("Delete Date?"));
        return highlightedWhileAsked;
    }

    // Erase empties 17 November, the highlighted date, and no other.
    void ExpectEraseEmptiesTheSeventeenth() {
        EXPECT_EQ(Erase(), 17);
        EXPECT_EQ(TitleOf(11, 17), QString());
        w.store.appointments.LoadAppointments(MakeDateKey(11, 17));
        EXPECT_EQ(w.store.appointments.CountAppointments(), 0);
        w.store.diary.LoadNote(MakeDateKey(11, 17));
        EXPECT_EQ(w.store.diary.NoteBuffer.Trimmed(), QString());
        EXPECT_TRUE(w.ScheduleLines().contains(QStringLiteral("Call")));
        EXPECT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 17, 11}));
        EXPECT_EQ(w.HighlightedDay(), 17);
    }

    MainWindowWorld w;
};

}  // namespace kelvane::testing
