#pragma once

#include <QString>

#include "calfile/Records.h"

namespace kelvane {

// Reads a typed time of the 24-hour clock: an hour, exactly one of the
// separators "-:.,/", then a minute, each a number with blanks allowed around
// it ("9:30", " 09.30", "21-05", "7/5"). The text is taken as typed, not
// trimmed. On success the hour (0..23) and minute (0..59) go into `target`
// and the result is true; otherwise `target` is left as it was.
bool ParseTime(const QString& text, ClockTime& target);

}  // namespace kelvane
