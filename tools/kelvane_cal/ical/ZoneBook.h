#pragma once

#include "kelvane_cal/ical/LibIcal.h"

namespace kelvane::cal {

// The time zones an iCalendar file's times name: the file's own VTIMEZONE
// components first, then the zones libical knows by their names.
class ZoneBook {
  public:
    ZoneBook() : zones_(icalcomponent_new_vcalendar()) {}

    // Keeps a VTIMEZONE component. An Add makes Find's earlier answers
    // invalid: libical sorts its zones when asked for one, which moves the
    // zones that earlier answers point at.
    void Add(ComponentPtr timezone);
    // The zone a TZID names, or null when nobody knows it.
    icaltimezone* Find(const char* tzid) const;

    // The value of a DATE or DATE-TIME property (DTSTART, EXDATE, ...) with
    // its TZID turned into a zone; times without one stay floating, and times
    // in UTC keep libical's UTC zone. `unknownZone` is set for a TZID nobody
    // knows, and the time is then taken as floating.
    icaltimetype TimeOf(icalproperty* property, icaltimetype value, bool& unknownZone) const;

  private:
    ComponentPtr zones_;
};

// The zone a name such as "Europe/London" or "UTC" stands for, or null.
icaltimezone* ZoneNamed(const QString& name);

}  // namespace kelvane::cal
