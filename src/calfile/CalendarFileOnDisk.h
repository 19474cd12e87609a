#pragma once

#include <QString>

#include "calfile/CalendarFile.h"

namespace kelvane {

// Reads the named calendar file whole and checks it, as Open does before it
// changes the document. A file that cannot be read, is larger than any
// calendar, or does not start with the header line is Unrecognized, with the
// reason; a damaged file names its first bad line.
CalendarFileReport ReadCalendarFileNamed(const QString& fileName, CalendarFileContent& content);

}  // namespace kelvane
