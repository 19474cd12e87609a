#include "kelvane_cal/ical/MarkedEnds.h"

namespace kelvane::cal {

void MarkEnd(icalcomponent* event, MarkedEnd mark) {
    for (const icalproperty_kind kind : {ICAL_DTEND_PROPERTY, ICAL_DURATION_PROPERTY}) {
        if (icalproperty* old = icalcomponent_get_first_property(event, kind)) {
            icalcomponent_remove_property(event, old);
            icalproperty_free(old);
        }
    }
    icalcomponent_add_property(event,
                               icalproperty_new_duration(icaldurationtype_from_int(kMarkedLength)));
    icalproperty* marked = icalproperty_new_x("TRUE");
    icalproperty_set_x_name(marked,
                            mark == MarkedEnd::NoEnd ? kNoEndProperty : kZeroLengthProperty);
    icalcomponent_add_property(event, marked);
}

MarkedEnd MarkedEndOf(icalcomponent* event) {
    for (icalproperty* property = icalcomponent_get_first_property(event, ICAL_X_PROPERTY);
         property != nullptr; property = icalcomponent_get_next_property(event, ICAL_X_PROPERTY)) {
        const char* name = icalproperty_get_x_name(property);
        const char* value = icalproperty_get_x(property);
        if (name == nullptr || value == nullptr || qstricmp(value, "TRUE") != 0) {
            continue;
        }
        if (qstricmp(name, kNoEndProperty) == 0) {
            return MarkedEnd::NoEnd;
        }
        if (qstricmp(name, kZeroLengthProperty) == 0) {
            return MarkedEnd::ZeroLength;
        }
    }
    return MarkedEnd::None;
}

}  // namespace kelvane::cal
