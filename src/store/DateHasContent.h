#pragma once

#include <QString>

#include "calfile/Records.h"

namespace kelvane {

// Whether a date has anything worth keeping: a title, a colour that is enabled,
// absolute or not all zero, a note or at least one scheduled activity. Text2
// does not count. The note and the count are the date's working copies.
bool DateHasContent(const DateEntry& entry, const QString& note, int appointmentCount);

}  // namespace kelvane
