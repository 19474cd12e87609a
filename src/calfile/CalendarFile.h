#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

#include "calfile/Appointment.h"
#include "calfile/LineReader.h"
#include "calfile/LineWriter.h"
#include "calfile/Records.h"

// The calendar file: a line-oriented text file holding the month view's
// settings, the colour list and every day slot that has content. These
// routines only turn the file's lines into values and back; putting the
// values into an open document is the document loader's work.
namespace kelvane {

// The first line of every calendar file, compared exactly.
inline const QString CalendarFileHeader = QStringLiteral("Marrowby Kelvane 2000 File");

// The settings lines 2 to 7 and the colour list.
struct CalendarFileSettings {
    qint16 Year = 0;      // written as today's year; read back as a leap indicator
    qint16 FirstDay = 0;  // weekday of 1 January
    bool ToolsShown = true;
    bool CalenderShown = true;
    QString FontName;
    qint16 FontSize = 0;
    ColourListTable ColourList;

    friend bool operator==(const CalendarFileSettings&, const CalendarFileSettings&) = default;
};

// One day slot with content. The schedule holds at most 40 entries.
struct CalendarFileDate {
    qint16 Month = 0;
    qint16 Day = 0;
    DateEntry Entry;  // Text2 is never part of the file
    std::vector<Appointment> Schedule;
    QString Note;

    friend bool operator==(const CalendarFileDate&, const CalendarFileDate&) = default;
};

// A whole calendar file: the settings, then the dates with content in calendar order.
struct CalendarFileContent {
    CalendarFileSettings Settings;
    std::vector<CalendarFileDate> Dates;

    friend bool operator==(const CalendarFileContent&, const CalendarFileContent&) = default;
};

enum class CalendarFileStatus { Ok, Unrecognized, Damaged };

// What reading a calendar file found; for a damaged file the 1-based number of
// the first bad line and what is wrong with it.
struct CalendarFileReport {
    CalendarFileStatus Status = CalendarFileStatus::Ok;
    int DamagedLine = 0;
    QString Reason;
};

// Reads a whole calendar file. `content` is filled only as far as the file
// goes; use it only when the status is Ok. Texts are cut to their fields'
// lengths and schedules to 40 entries (the entries past them are read over).
CalendarFileReport ReadCalendarFile(const QByteArray& bytes, CalendarFileContent& content);

// Lines 1 to 7 and the colour list's 42 lines.
void WriteCalendarSettings(LineWriter& out, const CalendarFileSettings& settings);
// One day slot: the single line "0" for a date without content, else the
// trimmed title, both colours, the schedule and the note section.
void WriteDaySlot(LineWriter& out, const CalendarFileDate* date);
// A whole file from its content, whose dates are in calendar order; slots that
// `content` leaves out are written as having no content.
void WriteCalendarFile(LineWriter& out, const CalendarFileContent& content);

}  // namespace kelvane
