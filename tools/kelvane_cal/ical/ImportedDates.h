#pragma once

#include <QString>
#include <QStringList>

#include <array>
#include <vector>

#include "calfile/CalendarFile.h"

namespace kelvane::cal {

// What an import puts on the dates of one year: titles, activities and notes,
// each kept within what a calendar file holds as they arrive, so that any
// number of events takes the same memory.
class ImportedDates {
  public:
    // The activities kept per date; the earliest by start time win.
    static constexpr int kActivitiesPerDate = 39;

    void AddTitle(int month, int day, const QString& title);
    void AddActivity(int month, int day, const QString& description, const ClockTime& start,
                     const ClockTime& end);
    void AddNote(int month, int day, const QString& text);

    // Whether the import put anything on any date.
    bool Empty() const;
    int DatesTouched() const;

    // A new calendar file of the year: the dates as imported, the default
    // font and colour scheme, and the year's own layout (1 January on its
    // weekday, 29 February only in a leap year).
    CalendarFileContent NewCalendar(int year, QStringList& warnings) const;
    // Adds the imported dates to an existing calendar: titles, activities and
    // note texts that a date does not hold yet are added after what it holds;
    // dates the import does not touch stay as they are.
    void MergeInto(CalendarFileContent& calendar, QStringList& warnings) const;

  private:
    struct Day {
        bool Touched = false;
        QStringList Titles;
        std::vector<Appointment> Activities;  // by start time, earliest first
        int ActivitiesLeftOut = 0;
        QStringList NoteTexts;
        qsizetype NoteLength = 0;
        bool NoteFull = false;
    };

    Day* DayAt(int month, int day);
    void MergeDay(const Day& imported, CalendarFileDate& date, QStringList& warnings) const;

    std::array<Day, DaySlotCount> days_;
    int descriptionsCut_ = 0;
};

}  // namespace kelvane::cal
