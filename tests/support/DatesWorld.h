#pragma once

#include <QAbstractButton>
#include <QCheckBox>
#include <QLineEdit>
#include <QStringList>
#include <QTest>

#include "support/CalenderWorld.h"
#include "support/EditorWorld.h"

namespace kelvane::testing {

// A document with open stores and a month view that answers the store's
// questions (leap year, weekdays, selected date), for the dialogs that walk
// over dates. Today is 15 March 2000, a Wednesday, unless a test says otherwise.
struct DatesWorld {
    explicit DatesWorld(int year = 2000, int month = 3, int day = 15) : view(year, month, day) {
        world.OpenStores();
        world.module1.AttachMonthView(view.calender.get());
        Select(static_cast<qint16>(month), static_cast<qint16>(day));
    }
    ~DatesWorld() {
        world.module1.AttachMonthView(nullptr);
        world.appointments.CloseAppointmentStore();
        world.diary.CloseDiaryStore();
    }
    DatesWorld(const DatesWorld&) = delete;
    DatesWorld& operator=(const DatesWorld&) = delete;

    // Makes a date the month view's selected date, as a click does.
    void Select(qint16 month, qint16 day) { view.calender->SetDate(2000, month, day); }

    void PutTitle(qint16 month, qint16 day, const QString& title) {
        view.calender->SetDate(2000, month, day);
        world.calender.CurrentEntry.Title = title;
        view.calender->UpdateSelectedDate(false);
    }
    void PutColours(qint16 month, qint16 day, const ColourChoice& font, const ColourChoice& back) {
        view.calender->SetDate(2000, month, day);
        world.calender.CurrentEntry.TextColour = font;
        world.calender.CurrentEntry.BackColour = back;
        view.calender->UpdateSelectedDate(false);
    }
    void PutActivity(qint16 month, qint16 day, int slot, const QString& description,
                     ClockTime start, ClockTime end = {-1, -1}) {
        world.PutActivity(month, day, slot, description, start, end);
    }
    void PutNote(qint16 month, qint16 day, const QString& note) {
        const QString key = MakeDateKey(month, day);
        world.diary.NoteBuffer = note;
        world.diary.SaveNote(key);
    }
    // A date's entry as the month view keeps it.
    const DateEntry& Entry(qint16 month, qint16 day) const {
        return view.calender->Months[static_cast<std::size_t>(month - 1)].Dates[day];
    }
    CalDate Selected() const {
        CalDate date;
        view.calender->GetDate(date.Year, date.Month, date.Day);
        return date;
    }

    static void Type(QLineEdit* box, const QString& text) { EditorWorld::Type(box, text); }
    static void Click(QAbstractButton* button) { EditorWorld::Click(button); }

    CalenderWorld view;
    TestWorld& world = view.world;
};

}  // namespace kelvane::testing
