#pragma once

#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>
#include <QTextStream>

#include "calfile/CalendarFile.h"
#include "calfile/LineWriter.h"
#include "kelvane_cal/Commands.h"
#include "support/QtPrinting.h"

// Runs kelvane-cal commands in-process with a fixed day, stamp and zone.
namespace kelvane::cal::testing {

struct CalRun {
    int Status = -1;
    QString Out;
    QString Err;
};

inline Environment FixedEnvironment() {
    Environment environment;
    environment.Today = QDate(2026, 11, 23);
    environment.Now = QDateTime(QDate(2026, 11, 23), QTime(9, 30), Qt::UTC);
    environment.SystemZone = QStringLiteral("Europe/London");
    return environment;
}

inline CalRun RunCal(const QStringList& arguments) {
    CalRun run;
    QTextStream out(&run.Out);
    QTextStream err(&run.Err);
    run.Status = RunCommand(arguments, FixedEnvironment(), out, err);
    out.flush();
    err.flush();
    return run;
}

inline QString CalData(const QString& name) {
    return QStringLiteral(KELVANE_CAL_DATA_DIR "/") + name;
}

inline QString StoreData(const QString& name) {
    return QStringLiteral(KELVANE_STORE_DATA_DIR "/") + name;
}

inline QByteArray ReadBytes(const QString& fileName) {
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline bool WriteBytes(const QString& fileName, const QByteArray& bytes) {
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

inline bool WriteCalendar(const QString& fileName, const CalendarFileContent& content) {
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    LineWriter out(file);
    WriteCalendarFile(out, content);
    return out.Ok();
}

inline CalendarFileContent ReadCalendarBytes(const QByteArray& bytes) {
    CalendarFileContent content;
    ReadCalendarFile(bytes, content);
    return content;
}

inline Appointment Activity(const QString& description, ClockTime start, ClockTime end) {
    Appointment entry;
    entry.Description = description;
    entry.StartTime = start;
    entry.EndTime = end;
    return entry;
}

// iCalendar text from lines, each ended with CR LF.
inline QByteArray ICalLines(const QStringList& lines) {
    return (lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n")).toUtf8();
}

// The lines of a VCALENDAR holding `inside`.
inline QStringList VCalendar(const QStringList& inside) {
    return QStringList{"BEGIN:VCALENDAR", "VERSION:2.0", "PRODID:-//Kelvane tests//EN"} + inside +
           QStringList{"END:VCALENDAR"};
}

// The lines of a VEVENT with `uid`, a stamp and `properties`.
inline QStringList VEvent(const QString& uid, const QStringList& properties) {
    return QStringList{"BEGIN:VEVENT", "UID:" + uid, "DTSTAMP:20260101T000000Z"} + properties +
           QStringList{"END:VEVENT"};
}

inline CalendarFileDate DateOf(qint16 month, qint16 day) {
    CalendarFileDate date;
    date.Month = month;
    date.Day = day;
    return date;
}

}  // namespace kelvane::cal::testing
