#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include "kelvane_cal/ical/LibIcal.h"

// The lines of an iCalendar text as the reader sees them before libical
// parses them: their names, their values, and why one stops the reading.
namespace kelvane::cal {

// The first error libical marked in a component or its parts, or nothing.
QString FirstParseError(icalcomponent* component);

// What stops the reading of a text that is no iCalendar at all.
QString NotCalendarStart();

// The component name of a "BEGIN:NAME" or "END:NAME" line, in capitals, or
// nothing for any other line.
QByteArray NameAfter(const QByteArray& line, const char* keyword);

// The error libical marks in `line` read as a property of a `kind` component,
// or nothing.
QString LineError(const QByteArray& kind, const QByteArray& line);

// The name of the property a line holds, in capitals; nothing for a line that
// is no property at all.
QByteArray PropertyName(const QByteArray& line);

// The properties that say when an event happens. An error in one of them, or
// a line that is no property, makes the file unreadable; libical leaves out
// any other property it cannot read, and so does the import, with a warning.
bool DecidesTimes(const QByteArray& line);

// Where the value of a line begins: just after the first colon outside the
// quotes of a parameter value (ALTREP="cid:x" holds one); -1 without a colon.
qsizetype ValueStart(const QByteArray& line);

// "DESCRIPTION:" and the like: a property whose value is empty. A value that
// only ends in a colon ("SUMMARY:To do:") is not empty.
bool HasNoValue(const QByteArray& line);

// Whether `text` holds nothing but the blanks QByteArray::trimmed takes away.
bool IsBlank(QByteArrayView text);

// "RDATE: " and the like: a value of blanks alone.
bool HasBlankValue(const QByteArray& line);

// A line of an event that the import never reads and that libical always
// takes without an error, so that it need not be parsed: a DTSTAMP, CREATED
// or LAST-MODIFIED without parameters whose value is a real date and time in
// UTC written out in full (see ReadDateTime), or a LOCATION without parameters whose value
// holds more than blanks and no control characters.
bool IsUnreadAndSound(const QByteArray& line);

// Why a line stops the reading, in Kelvane's words rather than libical's,
// whose "Removing entire property" is not what happens then.
QString StopReason(const QByteArray& kind, const QByteArray& line);

}  // namespace kelvane::cal
