#pragma once

#include <QByteArray>

#include "kelvane_cal/LibIcal.h"

// Activities without an end, and those that end as they start, as publish
// sends them: some servers (Cyrus) refuse a timed event with DTSTART alone or
// with DURATION:PT0S, so such an event goes one minute long, marked with a
// property of Kelvane's own that an import reads back as what it was.
namespace kelvane::cal {

inline constexpr const char* kNoEndProperty = "X-KELVANE-NO-END";
inline constexpr const char* kZeroLengthProperty = "X-KELVANE-ZERO-LENGTH";
// The length of a marked event, in seconds.
inline constexpr int kMarkedLength = 60;

enum class MarkedEnd { None, NoEnd, ZeroLength };

// `calendar` (a VCALENDAR that export wrote) with each timed event that has
// no end, or a zero length, made one minute long and marked; the same bytes
// when no event needs it.
QByteArray WithMarkedEnds(const QByteArray& calendar);

// What the mark of an event says; None when it has no mark.
MarkedEnd MarkedEndOf(icalcomponent* event);

}  // namespace kelvane::cal
