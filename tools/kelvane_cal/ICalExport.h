#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include "store/CalendarFile.h"

namespace kelvane::cal {

struct ExportRequest {
    QString FileName;  // the calendar file
    int Year = 0;      // the year the dates are put in
    QDateTime Stamp;   // when the export is made (DTSTAMP)
    QString UidSeed;   // goes into the events' UIDs; empty for the file's name
};

struct ExportResult {
    QByteArray Text;  // the iCalendar file
    QStringList Warnings;
    int AllDayEvents = 0;
    int TimedEvents = 0;
};

// The calendar as iCalendar: an all-day event for each date with a title or a
// note (the title is its summary, the note its description), and a timed
// event in floating local time for each activity; an activity that ends
// before it starts ends on the next day. UIDs are made of the seed, the date
// and the activity's slot, so exporting the same file again gives the same
// UIDs.
ExportResult ExportToICalendar(const CalendarFileContent& content, const ExportRequest& request);

// The UID of a date's all-day event (slot 0) or of the activity in a slot.
QString EventUid(const QString& seed, int year, int month, int day, int slot);

}  // namespace kelvane::cal
