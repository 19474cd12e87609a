#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <memory>

#include "kelvane_cal/ical/LibIcal.h"

namespace kelvane::cal {

struct PropertyFree {
    void operator()(icalproperty* property) const { icalproperty_free(property); }
};
using PropertyPtr = std::unique_ptr<icalproperty, PropertyFree>;

// "20260105T100000", with a Z when `utc`: a real date and time in the years
// 1902 to 2582, as libical reads it; false for any other text.
bool ReadDateTime(QByteArrayView text, bool utc, icaltimetype& time);

// A DTSTART or DTEND line in a form most files write, made into the property
// libical's parser makes of it, without the parser, which reads a date and
// time through sscanf: a real date and time, floating or in UTC
// ("DTSTART:20260105T100000", "DTEND:20260105T100000Z"), one with a plain
// TZID ("DTSTART;TZID=Europe/Berlin:20260105T100000"), or a real date
// ("DTSTART;VALUE=DATE:20260105"). Null for any other line.
PropertyPtr PlainTimeProperty(const QByteArray& line);

// Whether a line that is no plain time line may still be a DTSTART or DTEND:
// its name begins as one, in any case.
bool MayBeTimeLine(const QByteArray& line, icalproperty_kind kind);

}  // namespace kelvane::cal
