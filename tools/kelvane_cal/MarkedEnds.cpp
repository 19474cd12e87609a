#include "kelvane_cal/MarkedEnds.h"

namespace kelvane::cal {

namespace {

// The mark an event needs, or nullptr: a timed event with no end at all, or
// one whose end is its start.
const char* MarkNeeded(icalcomponent* event) {
    icalproperty* start = icalcomponent_get_first_property(event, ICAL_DTSTART_PROPERTY);
    if (start == nullptr || icalproperty_get_dtstart(start).is_date) {
        return nullptr;
    }
    icalproperty* end = icalcomponent_get_first_property(event, ICAL_DTEND_PROPERTY);
    icalproperty* duration = icalcomponent_get_first_property(event, ICAL_DURATION_PROPERTY);
    if (end == nullptr && duration == nullptr) {
        return kNoEndProperty;
    }
    const bool endsAtStart =
        end != nullptr
            ? icaltime_compare(icalproperty_get_dtend(end), icalproperty_get_dtstart(start)) == 0
            : icaldurationtype_as_int(icalproperty_get_duration(duration)) == 0;
    return endsAtStart ? kZeroLengthProperty : nullptr;
}

void MarkEnd(icalcomponent* event, const char* mark) {
    for (const icalproperty_kind kind : {ICAL_DTEND_PROPERTY, ICAL_DURATION_PROPERTY}) {
        if (icalproperty* old = icalcomponent_get_first_property(event, kind)) {
            icalcomponent_remove_property(event, old);
            icalproperty_free(old);
        }
    }
    icalcomponent_add_property(event,
                               icalproperty_new_duration(icaldurationtype_from_int(kMarkedLength)));
    icalproperty* marked = icalproperty_new_x("TRUE");
    icalproperty_set_x_name(marked, mark);
    icalcomponent_add_property(event, marked);
}

}  // namespace

QByteArray WithMarkedEnds(const QByteArray& calendar) {
    const ComponentPtr root(icalparser_parse_string(calendar.constData()));
    if (root == nullptr) {
        return calendar;
    }
    bool changed = false;
    for (icalcomponent* event =
             icalcomponent_get_first_component(root.get(), ICAL_VEVENT_COMPONENT);
         event != nullptr;
         event = icalcomponent_get_next_component(root.get(), ICAL_VEVENT_COMPONENT)) {
        if (const char* mark = MarkNeeded(event)) {
            MarkEnd(event, mark);
            changed = true;
        }
    }
    if (!changed) {
        return calendar;
    }
    char* text = icalcomponent_as_ical_string_r(root.get());
    QByteArray bytes(text);
    icalmemory_free_buffer(text);
    return bytes;
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
