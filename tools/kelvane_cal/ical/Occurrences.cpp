#include "kelvane_cal/ical/Occurrences.h"

#include <algorithm>
#include <set>

#include "kelvane_cal/ical/PlainSteps.h"
#include "kelvane_cal/ical/RuleFrames.h"

namespace kelvane::cal {

namespace {

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
            found_.push_back({framed, key});
        }
        return true;
    }
    bool Full() const { return found_.size() >= static_cast<std::size_t>(kMostOccurrences); }
    std::vector<Occurrence>& Found() { return found_; }

  private:
    icaltimetype start_;
    qint64 from_;
    qint64 to_;
    std::set<qint64> keys_;
    std::vector<Occurrence> found_;
};

icaltimetype AtTheClockOf(icaltimetype time, const icaltimetype& start) {
    time.hour = start.hour;
    time.minute = start.minute;
    time.second = start.second;
    return time;
}

// Hands the occurrences of `iterator` to `collector`, moved forward by the
// frame's days. The steps taken, or -1 when it was cut short.
template <typename NextOccurrence>
int Follow(NextOccurrence nextOccurrence, qint64 daysForward, Collector& collector,
           QStringList& warnings) {
    int steps = 0;
    for (icaltimetype next = nextOccurrence(); !icaltime_is_null_time(next);
         next = nextOccurrence()) {
        if (++steps > kMostRuleSteps) {
            warnings << QStringLiteral("a repeat rule was followed for %1 steps only")
                            .arg(kMostRuleSteps);
            return -1;
        }
        if (!collector.Take(MovedByDays(next, daysForward))) {
            return -1;
        }
    }
    return steps;
}

// libical moves a time out of the spring gap and carries the move on to the
// later occurrences, so a rule is followed in the wall-clock times of its
// start's zone, without the zone: Collector gives the occurrences the zone
// back, and TimeKey reads a time in the gap or one shown twice as RFC 5545
// wants. A rule that repeats hourly keeps the zone as before: in wall-clock
// time the skipped hour and the one after it would be one occurrence.
bool FollowsTheWallClock(const icalrecurrencetype& rule, const icaltimetype& start) {
    return !start.is_date && start.zone != nullptr && rule.freq != ICAL_HOURLY_RECURRENCE;
}

icaltimetype WithoutZone(icaltimetype time) {
    time.zone = nullptr;
    return time;
}

// `time` in the clock `followed` is in: without a zone when it has none.
icaltimetype InClockOf(icaltimetype time, const icaltimetype& followed) {
    time.zone = followed.zone;
    return time;
}

// A rule's UNTIL as a wall-clock time of the start's zone: one in UTC is an
// instant.
icaltimetype WallClockUntil(const icaltimetype& until, const icaltimetype& start) {
    if (icaltime_is_null_time(until) || until.is_date || until.zone == nullptr) {
        return until;
    }
    return WithoutZone(TimeInZoneAt(TimeKey(until), start.zone));
}

// Ending the rule with the window ends a rule that never matches, too.
void EndWithTheWindow(icalrecurrencetype& rule, const icaltimetype& windowEnd) {
    if (rule.count == 0 &&
        (icaltime_is_null_time(rule.until) || icaltime_compare(rule.until, windowEnd) > 0)) {
        rule.until = windowEnd;
    }
}

// The start a rule is followed from, in the clock FollowsTheWallClock
// chooses, with the rule's UNTIL in the same clock.
icaltimetype FollowedStart(icalrecurrencetype& rule, const icaltimetype& start) {
    if (!FollowsTheWallClock(rule, start)) {
        return start;
    }
    rule.until = WallClockUntil(rule.until, start);
    return WithoutZone(start);
}

void WarnWhenFull(const Collector& collector, QStringList& warnings) {
    if (collector.Full()) {
        warnings << QStringLiteral(
                        "a repeat rule gives more than %1 occurrences; the rest are "
                        "left out")
                        .arg(kMostOccurrences);
    }
}

constexpr int kCannotFollow = -2;

// The steps Follow took with libical's iterator, or kCannotFollow.
int FollowWithLibical(const icalrecurrencetype& rule, const RuleFrame& frame,
                      const icaltimetype& near, bool startIsNear, Collector& collector,
                      QStringList& warnings) {
    RecurIteratorPtr iterator =
        IteratorNear(rule, frame.Start, MovedByDays(near, -frame.DaysBack), startIsNear);
    if (iterator == nullptr) {
        warnings << QStringLiteral("a repeat rule libical cannot follow is left out");
        return kCannotFollow;
    }
    return Follow([&iterator] { return icalrecur_iterator_next(iterator.get()); }, frame.DaysBack,
                  collector, warnings);
}

// A plain rule followed from its start, as libical would follow it; libical
// follows any other, and one it would bring near the window first.
int FollowWithinLibicalsYears(const icalrecurrencetype& rule, const RuleFrame& frame,
                              const icaltimetype& near, bool startIsNear, Collector& collector,
                              QStringList& warnings) {
    if ((rule.count == 0 && !startIsNear) || !PlainSteps::Fits(rule, frame.Start)) {
        return FollowWithLibical(rule, frame, near, startIsNear, collector, warnings);
    }
    PlainSteps steps(rule, frame.Start);
    return Follow([&steps] { return steps.Next(); }, frame.DaysBack, collector, warnings);
}

// False when the rule has occurrences in the window past the last year
// libical follows that no frame brings into reach.
bool ExpandRule(icalproperty* property, const icaltimetype& start, qint64 from, qint64 to,
                Collector& collector, QStringList& warnings) {
    icalrecurrencetype rule = icalproperty_get_rrule(property);
    // libical steps such a rule second by second even where its BY parts
    // never match, which can take minutes; no day planner needs one.
    if (rule.freq == ICAL_SECONDLY_RECURRENCE || rule.freq == ICAL_MINUTELY_RECURRENCE) {
        warnings << QStringLiteral("a rule that repeats every minute or second is not followed");
        return true;
    }
    const icaltimetype followed = FollowedStart(rule, start);
    const icaltimetype windowEnd = InClockOf(TimeAtKey(to, start), followed);
    EndWithTheWindow(rule, windowEnd);
    const icaltimetype near =
        InClockOf(AtTheClockOf(TimeAtKey(from - 2 * kSecondsInADay, start), start), followed);
    // Outside the years libical follows well, the rule is followed in a
    // frame within them; failing that, as far as libical goes.
    RuleFrame frame{followed, 0};
    bool none = false;
    const bool pastLibical = windowEnd.year > kLastRuleYear;
    const bool framed = pastLibical || start.year < kFirstRuleYear;
    const bool moved = framed && FrameFor(rule, followed, near, windowEnd, frame, none);
    if (none) {
        return true;
    }
    rule.until = MovedByDays(rule.until, -frame.DaysBack);
    const bool startIsNear = frame.StartIsNear || TimeKey(start) >= from - 2 * kSecondsInADay;
    const int steps =
        framed ? FollowWithLibical(rule, frame, near, startIsNear, collector, warnings)
               : FollowWithinLibicalsYears(rule, frame, near, startIsNear, collector, warnings);
    if (steps == kCannotFollow) {
        return true;
    }
    WarnWhenFull(collector, warnings);
    // libical ends a rule at its last year as if it were done.
    return !pastLibical || moved || steps < 0 || (rule.count != 0 && steps >= rule.count);
}

// The occurrences an event leaves out: EXDATEs name times, or whole days
// when they are dates and the event is timed; the `moved` occurrences are
// times too.
struct Exclusions {
    std::set<qint64> Times;
    std::set<qint64> Days;
};

Exclusions ExclusionsOf(icalcomponent* event, const icaltimetype& start, const ZoneBook& zones,
                        const std::vector<icaltimetype>& moved, bool& unknownZone) {
    Exclusions excluded;
    for (icalproperty* date = icalcomponent_get_first_property(event, ICAL_EXDATE_PROPERTY);
         date != nullptr; date = icalcomponent_get_next_property(event, ICAL_EXDATE_PROPERTY)) {
        const icaltimetype time =
            InFrameOf(zones.TimeOf(date, icalproperty_get_exdate(date), unknownZone), start);
        if (time.is_date && !start.is_date) {
            excluded.Days.insert(DayKey(time));
        } else {
            excluded.Times.insert(TimeKey(time));
        }
    }
    for (const icaltimetype& time : moved) {
        excluded.Times.insert(TimeKey(InFrameOf(time, start)));
    }
    return excluded;
}

}  // namespace

std::vector<Occurrence> OccurrencesBetween(icalcomponent* event, const icaltimetype& start,
                                           const ZoneBook& zones,
                                           const std::vector<icaltimetype>& moved, qint64 from,
                                           qint64 to, QStringList& warnings, bool& cutShort) {
    Collector collector(start, from, to);
    bool unknownZone = false;
    cutShort = false;
    collector.Take(start);
    for (icalproperty* rule = icalcomponent_get_first_property(event, ICAL_RRULE_PROPERTY);
         rule != nullptr; rule = icalcomponent_get_next_property(event, ICAL_RRULE_PROPERTY)) {
        cutShort = !ExpandRule(rule, start, from, to, collector, warnings) || cutShort;
    }
    for (icalproperty* date = icalcomponent_get_first_property(event, ICAL_RDATE_PROPERTY);
         date != nullptr; date = icalcomponent_get_next_property(event, ICAL_RDATE_PROPERTY)) {
        const icaldatetimeperiodtype value = icalproperty_get_rdate(date);
        const icaltimetype time =
            icaltime_is_null_time(value.time) ? value.period.start : value.time;
        collector.Take(zones.TimeOf(date, time, unknownZone));
    }
    const Exclusions excluded = ExclusionsOf(event, start, zones, moved, unknownZone);
    std::vector<Occurrence>& found = collector.Found();
    if (!excluded.Times.empty() || !excluded.Days.empty()) {
        found.erase(std::remove_if(found.begin(), found.end(),
                                   [&](const Occurrence& occurrence) {
                                       return excluded.Times.count(occurrence.Key) > 0 ||
                                              excluded.Days.count(DayKey(occurrence.Start)) > 0;
                                   }),
                    found.end());
    }
    if (unknownZone) {
        warnings << QStringLiteral("a time zone nobody knows was taken as local time");
    }
    return found;
}

}  // namespace kelvane::cal
