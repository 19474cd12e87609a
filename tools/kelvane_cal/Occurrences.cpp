#include "kelvane_cal/Occurrences.h"

#include <algorithm>
#include <set>

namespace kelvane::cal {

namespace {

constexpr qint64 kDay = 24 * 60 * 60;

// The start of the day a date or time falls on, in its own zone.
qint64 DayKey(const icaltimetype& time) {
    icaltimetype day = icaltime_null_date();
    day.year = time.year;
    day.month = time.month;
    day.day = time.day;
    return TimeKey(day);
}

class Collector {
  public:
    Collector(const icaltimetype& start, qint64 from, qint64 to)
        : start_(start), from_(from), to_(to) {}

    // False once `time` is past the end, or enough have been found.
    bool Take(const icaltimetype& time) {
        const icaltimetype framed = InFrameOf(time, start_);
        const qint64 key = TimeKey(framed);
        if (key > to_ || Full()) {
            return false;
        }
        if (key >= from_ && keys_.insert(key).second) {
            found_.push_back(framed);
        }
        return true;
    }
    bool Full() const { return found_.size() >= static_cast<std::size_t>(kMostOccurrences); }
    std::vector<icaltimetype>& Found() { return found_; }

  private:
    icaltimetype start_;
    qint64 from_;
    qint64 to_;
    std::set<qint64> keys_;
    std::vector<icaltimetype> found_;
};

bool RepeatsDailyOrLess(icalrecurrencetype_frequency frequency) {
    return frequency == ICAL_DAILY_RECURRENCE || frequency == ICAL_WEEKLY_RECURRENCE ||
           frequency == ICAL_MONTHLY_RECURRENCE || frequency == ICAL_YEARLY_RECURRENCE;
}

// An iterator over `rule` from `start`, brought close to `from` when the rule
// allows it. A rule repeating more often than daily keeps its step from
// DTSTART only when followed from there, and one with a count must be counted
// from there.
RecurIteratorPtr IteratorNear(const icalrecurrencetype& rule, const icaltimetype& start,
                              qint64 from) {
    RecurIteratorPtr iterator(icalrecur_iterator_new(rule, start));
    if (iterator == nullptr || rule.count != 0 || !RepeatsDailyOrLess(rule.freq) ||
        TimeKey(start) >= from - 2 * kDay) {
        return iterator;
    }
    icaltimetype near = TimeAtKey(from - 2 * kDay, start);
    near.hour = start.hour;
    near.minute = start.minute;
    near.second = start.second;
    if (icalrecur_iterator_set_start(iterator.get(), near) == 0) {
        iterator.reset(icalrecur_iterator_new(rule, start));
    }
    return iterator;
}

void ExpandRule(icalproperty* property, const icaltimetype& start, qint64 from, qint64 to,
                Collector& collector, QStringList& warnings) {
    icalrecurrencetype rule = icalproperty_get_rrule(property);
    // libical steps such a rule second by second even where its BY parts
    // never match, which can take minutes; no day planner needs one.
    if (rule.freq == ICAL_SECONDLY_RECURRENCE || rule.freq == ICAL_MINUTELY_RECURRENCE) {
        warnings << QStringLiteral("a rule that repeats every minute or second is not followed");
        return;
    }
    // Ending the rule with the window ends a rule that never matches, too.
    const icaltimetype windowEnd = TimeAtKey(to, start);
    if (rule.count == 0 &&
        (icaltime_is_null_time(rule.until) || icaltime_compare(rule.until, windowEnd) > 0)) {
        rule.until = windowEnd;
    }
    RecurIteratorPtr iterator = IteratorNear(rule, start, from);
    if (iterator == nullptr) {
        warnings << QStringLiteral("a repeat rule libical cannot follow is left out");
        return;
    }
    int steps = 0;
    for (icaltimetype next = icalrecur_iterator_next(iterator.get()); !icaltime_is_null_time(next);
         next = icalrecur_iterator_next(iterator.get())) {
        if (++steps > kMostRuleSteps) {
            warnings << QStringLiteral("a repeat rule was followed for %1 steps only")
                            .arg(kMostRuleSteps);
            return;
        }
        if (!collector.Take(next)) {
            break;
        }
    }
    if (collector.Full()) {
        warnings << QStringLiteral(
                        "a repeat rule gives more than %1 occurrences; the rest are "
                        "left out")
                        .arg(kMostOccurrences);
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

icaltimetype InFrameOf(icaltimetype time, const icaltimetype& start) {
    if (start.is_date || start.zone == nullptr) {
        time.zone = nullptr;
    } else if (!time.is_date && time.zone == nullptr) {
        time = icaltime_set_timezone(&time, start.zone);
    }
    return time;
}

icaltimetype TimeAtKey(qint64 key, const icaltimetype& start) {
    const bool floating = start.is_date || start.zone == nullptr;
    icaltimetype time = icaltime_from_timet_with_zone(static_cast<time_t>(key), start.is_date,
                                                      floating ? nullptr : start.zone);
    // libical works the fields out in the zone but leaves the time without it.
    time.zone = floating ? nullptr : start.zone;
    return time;
}

std::vector<icaltimetype> OccurrencesBetween(icalcomponent* event, const icaltimetype& start,
                                             const ZoneBook& zones,
                                             const std::vector<icaltimetype>& moved, qint64 from,
                                             qint64 to, QStringList& warnings) {
    Collector collector(start, from, to);
    bool unknownZone = false;
    collector.Take(start);
    for (icalproperty* rule = icalcomponent_get_first_property(event, ICAL_RRULE_PROPERTY);
         rule != nullptr; rule = icalcomponent_get_next_property(event, ICAL_RRULE_PROPERTY)) {
        ExpandRule(rule, start, from, to, collector, warnings);
    }
    for (icalproperty* date = icalcomponent_get_first_property(event, ICAL_RDATE_PROPERTY);
         date != nullptr; date = icalcomponent_get_next_property(event, ICAL_RDATE_PROPERTY)) {
        const icaldatetimeperiodtype value = icalproperty_get_rdate(date);
        const icaltimetype time =
            icaltime_is_null_time(value.time) ? value.period.start : value.time;
        collector.Take(zones.TimeOf(date, time, unknownZone));
    }

    // EXDATEs name times, or whole days when they are dates and the event is timed.
    std::set<qint64> excludedTimes;
    std::set<qint64> excludedDays;
    for (icalproperty* date = icalcomponent_get_first_property(event, ICAL_EXDATE_PROPERTY);
         date != nullptr; date = icalcomponent_get_next_property(event, ICAL_EXDATE_PROPERTY)) {
        const icaltimetype time =
            InFrameOf(zones.TimeOf(date, icalproperty_get_exdate(date), unknownZone), start);
        if (time.is_date && !start.is_date) {
            excludedDays.insert(DayKey(time));
        } else {
            excludedTimes.insert(TimeKey(time));
        }
    }
    for (const icaltimetype& time : moved) {
        excludedTimes.insert(TimeKey(InFrameOf(time, start)));
    }
    std::vector<icaltimetype>& found = collector.Found();
    found.erase(std::remove_if(found.begin(), found.end(),
                               [&](const icaltimetype& occurrence) {
                                   return excludedTimes.count(TimeKey(occurrence)) > 0 ||
                                          excludedDays.count(DayKey(occurrence)) > 0;
                               }),
                found.end());
    if (unknownZone) {
        warnings << QStringLiteral("a time zone nobody knows was taken as local time");
    }
    return found;
}

}  // namespace kelvane::cal
