#include "kelvane_cal/ical/ZoneBook.h"

namespace kelvane::cal {

void ZoneBook::Add(ComponentPtr timezone) {
    icalcomponent_add_component(zones_.get(), timezone.release());
}

icaltimezone* ZoneBook::Find(const char* tzid) const {
    if (tzid == nullptr || *tzid == '\0') {
        return nullptr;
    }
    if (icaltimezone* own = icalcomponent_get_timezone(zones_.get(), tzid)) {
        return own;
    }
    if (icaltimezone* known = icaltimezone_get_builtin_timezone(tzid)) {
        return known;
    }
    return icaltimezone_get_builtin_timezone_from_tzid(tzid);
}

icaltimetype ZoneBook::TimeOf(icalproperty* property, icaltimetype value, bool& unknownZone) const {
    if (value.is_date || icaltime_is_utc(value)) {
        return value;
    }
    icalparameter* tzid = icalproperty_get_first_parameter(property, ICAL_TZID_PARAMETER);
    if (tzid == nullptr) {
        return value;
    }
    icaltimezone* zone = Find(icalparameter_get_tzid(tzid));
    if (zone == nullptr) {
        unknownZone = true;
        return value;
    }
    return icaltime_set_timezone(&value, zone);
}

icaltimezone* ZoneNamed(const QString& name) {
    if (name == QStringLiteral("UTC") || name == QStringLiteral("Etc/UTC")) {
        return icaltimezone_get_utc_timezone();
    }
    return icaltimezone_get_builtin_timezone(name.toUtf8().constData());
}

}  // namespace kelvane::cal
