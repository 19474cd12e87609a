#pragma once

#include <QByteArray>
#include <QDate>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include "calfile/CalendarFile.h"

namespace kelvane::cal {

// The years an export can put the dates in: those iCalendar's four digits write.
inline constexpr int kFirstExportYear = 1;
inline constexpr int kLastExportYear = 9999;
// "1 to 9999", as the help texts say it.
QString ExportYears();

struct ExportRequest {
    QString FileName;  // the calendar file
    int Year = 0;      // the year the dates are put in
    QDateTime Stamp;   // when the export is made (DTSTAMP)
    QString UidSeed;   // goes into the events' UIDs; empty for the file's name
    // Every activity gets an end, those without one a marked one (see
    // MarkedEnds.h): some servers refuse a timed event with DTSTART alone.
    bool EndEveryActivity = false;
};

struct ExportResult {
    QByteArray Text;  // the iCalendar file
    QStringList Warnings;
    int AllDayEvents = 0;
    int TimedEvents = 0;
};

// The calendar as iCalendar: an all-day event for each date with a title or a
// note (the title is its summary, empty without one, the note its
// description), and a timed event in floating local time for each activity;
// an activity that ends before it starts ends on the next day. UIDs are made of the seed, the date
// and the activity's slot, so exporting the same file again gives the same
// UIDs.
ExportResult ExportToICalendar(const CalendarFileContent& content, const ExportRequest& request);

// The UID of a date's all-day event (slot 0) or of the activity in a slot:
// "YYYYMMDD-day-HASH@kelvane" or "YYYYMMDD-aSLOT-HASH@kelvane", HASH made of the seed.
QString EventUid(const QString& seed, int year, int month, int day, int slot);
// The same from what the UIDs of the seed end with, as EventUidEnding gives it.
QString EventUidWithEnding(const QString& ending, int year, int month, int day, int slot);
// The seed of a file's UIDs: `uidSeed`, or the file's name without its folder
// when that is empty.
QString UidSeedOf(const QString& fileName, const QString& uidSeed);
// What every UID of `seed` ends with: "-HASH@kelvane".
QString EventUidEnding(const QString& seed);
// What every UID of `year` starts with: its four digits.
QString EventUidYear(int year);
// The date a UID starts with; invalid for a UID that starts with none.
QDate DateOfEventUid(const QString& uid);

}  // namespace kelvane::cal
