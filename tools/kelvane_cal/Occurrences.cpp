#include "kelvane_cal/Occurrences.h"

#include <algorithm>
#include <set>

namespace kelvane::cal {

namespace {

constexpr qint64 kDay = 24 * 60 * 60;

icaltimetype WithZoneOf(icaltimetype time, const icaltimetype& start) {
    if (!time.is_date && start.zone != nullptr && !icaltime_is_utc(time)) {
        time = icaltime_set_timezone(&time, start.zone);
    }
    return time;
}

// The start of the day a date or time falls on, in its own zone.
qint64 DayKey(const icaltimetype& time) {
    icaltimetype day = icaltime_null_date();
    day.year = time.year;
    day.month = time.month;
    day.day = time.day;
    return TimeKey(day);
}

// EXDATEs name times, or whole days when they are dates and the event is timed.
bool Excluded(const icaltimetype& occurrence, const std::set<qint64>& times,
              const std::set<qint64>& days) {
    return times.count(TimeKey(occurrence)) > 0 || days.count(DayKey(occurrence)) > 0;
}

class Collector {
  public:
    Collector(qint64 from, qint64 to) : from_(from), to_(to) {}

    // False once `time` is past the end.
    bool Take(const icaltimetype& time) {
        const qint64 key = TimeKey(time);
        if (key > to_) {
            return false;
        }
        if (key >= from_ && keys_.insert(key).second) {
            found_.push_back(time);
        }
        return true;
    }
    std::vector<icaltimetype>& Found() { return found_; }

  private:
    qint64 from_;
    qint64 to_;
    std::set<qint64> keys_;
    std::vector<icaltimetype> found_;
};

void ExpandRule(icalproperty* rule, const icaltimetype& start, qint64 from, Collector& collector,
                QStringList& warnings) {
    const icalrecurrencetype recurrence = icalproperty_get_rrule(rule);
    RecurIteratorPtr iterator(icalrecur_iterator_new(recurrence, start));
    if (iterator == nullptr) {
        warnings << QStringLiteral("a repeat rule libical cannot follow is left out");
        return;
    }
    // A rule without a count may start near the window rather than at DTSTART.
    if (recurrence.count == 0 && TimeKey(start) < from - 2 * kDay) {
        icaltimetype near = icaltime_from_timet_with_zone(static_cast<time_t>(from - 2 * kDay),
                                                          start.is_date, nullptr);
        near.hour = start.hour;
        near.minute = start.minute;
        near.second = start.second;
        icalrecur_iterator_set_start(iterator.get(), WithZoneOf(near, start));
    }
    int steps = 0;
    for (icaltimetype next = icalrecur_iterator_next(iterator.get()); !icaltime_is_null_time(next);
         next = icalrecur_iterator_next(iterator.get())) {
        if (++steps > kMostOccurrences) {
            warnings << QStringLiteral("a repeat rule was followed for %1 occurrences only")
                            .arg(kMostOccurrences);
            return;
        }
        if (!collector.Take(WithZoneOf(next, start))) {
            return;
        }
    }
}

}  // namespace

qint64 TimeKey(const icaltimetype& time) {
    if (time.is_date || time.zone == nullptr) {
        icaltimetype floating = time;
        floating.zone = nullptr;
        return static_cast<qint64>(icaltime_as_timet(floating));
    }
    return static_cast<qint64>(icaltime_as_timet_with_zone(time, time.zone));
}

std::vector<icaltimetype> OccurrencesBetween(icalcomponent* event, const icaltimetype& start,
                                             const ZoneBook& zones, const QSet<qint64>& moved,
                                             qint64 from, qint64 to, QStringList& warnings) {
    Collector collector(from, to);
    bool unknownZone = false;
    collector.Take(start);
    for (icalproperty* rule = icalcomponent_get_first_property(event, ICAL_RRULE_PROPERTY);
         rule != nullptr; rule = icalcomponent_get_next_property(event, ICAL_RRULE_PROPERTY)) {
        ExpandRule(rule, start, from, collector, warnings);
    }
    for (icalproperty* date = icalcomponent_get_first_property(event, ICAL_RDATE_PROPERTY);
         date != nullptr; date = icalcomponent_get_next_property(event, ICAL_RDATE_PROPERTY)) {
        const icaldatetimeperiodtype value = icalproperty_get_rdate(date);
        const icaltimetype time =
            icaltime_is_null_time(value.time) ? value.period.start : value.time;
        collector.Take(WithZoneOf(zones.TimeOf(date, time, unknownZone), start));
    }

    std::set<qint64> excludedTimes;
    std::set<qint64> excludedDays;
    for (icalproperty* date = icalcomponent_get_first_property(event, ICAL_EXDATE_PROPERTY);
         date != nullptr; date = icalcomponent_get_next_property(event, ICAL_EXDATE_PROPERTY)) {
        const icaltimetype time =
            WithZoneOf(zones.TimeOf(date, icalproperty_get_exdate(date), unknownZone), start);
        if (time.is_date && !start.is_date) {
            excludedDays.insert(DayKey(time));
        } else {
            excludedTimes.insert(TimeKey(time));
        }
    }
    std::vector<icaltimetype>& found = collector.Found();
    found.erase(std::remove_if(found.begin(), found.end(),
                               [&](const icaltimetype& occurrence) {
                                   return moved.contains(TimeKey(occurrence)) ||
                                          Excluded(occurrence, excludedTimes, excludedDays);
                               }),
                found.end());
    if (unknownZone) {
        warnings << QStringLiteral("a time zone nobody knows was taken as local time");
    }
    return found;
}

}  // namespace kelvane::cal
