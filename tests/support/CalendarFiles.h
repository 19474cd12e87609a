#pragma once

#include <QString>

#include "calfile/CalendarFile.h"
#include "store/CalenderMOD.h"
#include "store/OutputFile.h"

namespace kelvane::testing {

// The settings of a calendar file as a new document has them, for a leap year
// whose 1 January is `firstDay`, and no dates.
inline CalendarFileContent EmptyCalendar(qint16 firstDay) {
    CalendarFileContent content;
    content.Settings.Year = 1;
    content.Settings.FirstDay = firstDay;
    content.Settings.FontName = QStringLiteral("Arial");
    content.Settings.FontSize = 9;
    BuildColourList(content.Settings.ColourList);
    return content;
}

inline CalendarFileDate TitledDate(qint16 month, qint16 day, const QString& title) {
    CalendarFileDate date;
    date.Month = month;
    date.Day = day;
    date.Entry.Title = title;
    return date;
}

// Writes a calendar file as the program writes one; true when it was written whole.
inline bool WriteCalendarFileNamed(const QString& path, const CalendarFileContent& content) {
    FileNumbers numbers;
    OutputFile file(numbers);
    if (file.OpenForOutput(path) <= 0) {
        return false;
    }
    LineWriter out(file.Device());
    WriteCalendarFile(out, content);
    return out.Ok() && file.Close();
}

}  // namespace kelvane::testing
