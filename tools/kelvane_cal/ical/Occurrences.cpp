#include "kelvane_cal/ical/Occurrences.h"

#include <QDate>

#include <algorithm>
#include <set>

namespace kelvane::cal {

namespace {

// QDate(1970, 1, 1).toJulianDay()
constexpr qint64 kJulianDayOf1970 = 2440588;

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

// libical counts every fourth year up to 1752 as a leap year, 1700 too, so
// the days it steps across 1700 come out one off; a rule is followed from
// this year on only, and up to kLastRuleYear.
constexpr int kFirstRuleYear = 1753;
// The Gregorian calendar repeats itself, weekdays and leap days, every 400 years.
constexpr qint64 kDaysIn400Years = 146097;

constexpr qint64 kSecondsIn400Years = kDaysIn400Years * kSecondsInADay;

// How many times 400 years a time must be moved back to fall before 2438.
// libical works a zone's offsets out anew for every time past the years it
// follows rules to, which takes long; from 2038 on the zones' rules no longer
// change, and 400 years later the calendar is the same again.
qint64 CyclesPastTheLastRules(qint64 key) {
    static const qint64 kFirstCycledKey =
        (QDate(2438, 1, 1).toJulianDay() - QDate(1970, 1, 1).toJulianDay()) * kSecondsInADay;
    return key < kFirstCycledKey ? 0 : (key - kFirstCycledKey) / kSecondsIn400Years + 1;
}

bool HasParts(const short* parts) {
    return parts[0] != ICAL_RECURRENCE_ARRAY_MAX;
}

// Whether the rule's occurrences depend on the days of the month or year,
// not only on those of the week.
bool FollowsTheCalendar(const icalrecurrencetype& rule) {
    return rule.freq == ICAL_MONTHLY_RECURRENCE || rule.freq == ICAL_YEARLY_RECURRENCE ||
           HasParts(rule.by_month) || HasParts(rule.by_month_day) || HasParts(rule.by_year_day) ||
           HasParts(rule.by_week_no) || HasParts(rule.by_set_pos);
}

// Whether moving a rule by `days` keeps it at the same step of its interval.
bool KeepsTheStep(const icalrecurrencetype& rule, qint64 days) {
    const qint64 interval = std::max<qint64>(rule.interval, 1);
    switch (rule.freq) {
        case ICAL_YEARLY_RECURRENCE:
            return days / kDaysIn400Years * 400 % interval == 0;
        case ICAL_MONTHLY_RECURRENCE:
            return days / kDaysIn400Years * 4800 % interval == 0;
        case ICAL_WEEKLY_RECURRENCE:
            return days % (7 * interval) == 0;
        case ICAL_DAILY_RECURRENCE:
            return days % interval == 0;
        case ICAL_HOURLY_RECURRENCE:
            return days * 24 % interval == 0;
        default:
            return false;
    }
}

// The fewest days by which a rule's occurrences can all be moved and stay
// the occurrences of the rule moved alike; 0 when there are too many.
qint64 RuleCycleDays(const icalrecurrencetype& rule) {
    if (rule.rscale != nullptr) {
        return 0;  // another calendar than the Gregorian
    }
    const qint64 base = FollowsTheCalendar(rule) ? kDaysIn400Years : HasParts(rule.by_day) ? 7 : 1;
    for (qint64 days = base; days <= 16 * kDaysIn400Years; days += base) {
        if (KeepsTheStep(rule, days)) {
            return days;
        }
    }
    return 0;
}

qint64 DayNumber(const icaltimetype& time) {
    return QDate(time.year, time.month, time.day).toJulianDay();
}

// By the Gregorian calendar: libical's own adjustment takes 1700 for a leap year.
icaltimetype MovedByDays(icaltimetype time, qint64 days) {
    if (days != 0 && !icaltime_is_null_time(time)) {
        const QDate moved = QDate(time.year, time.month, time.day).addDays(days);
        time.year = moved.year();
        time.month = moved.month();
        time.day = moved.day();
    }
    return time;
}

// Where a rule is followed from: its start moved back by `DaysBack` days,
// the days by which the occurrences are then moved forward again.
struct RuleFrame {
    icaltimetype Start;
    qint64 DaysBack = 0;
    // Whether the start was brought up to the window already.
    bool StartIsNear = false;
};

icaltimetype LastDayLibicalFollows() {
    icaltimetype lastDay = icaltime_null_date();
    lastDay.year = kLastRuleYear;
    lastDay.month = 12;
    lastDay.day = 31;
    return lastDay;
}

// How many times the rule occurs in one cycle of `cycle` days from `start`,
// with its start moved by whole cycles into the years libical follows;
// -1 when it cannot be counted.
int OccurrencesInACycle(icalrecurrencetype rule, icaltimetype start, qint64 cycle) {
    const qint64 firstDay = QDate(kFirstRuleYear, 1, 1).toJulianDay();
    if (DayNumber(start) < firstDay) {
        start = MovedByDays(start, (firstDay - DayNumber(start) + cycle - 1) / cycle * cycle);
    }
    const qint64 lastDay = DayNumber(LastDayLibicalFollows());
    if (DayNumber(start) + cycle > lastDay) {
        start =
            MovedByDays(start, -(DayNumber(start) + cycle - lastDay + cycle - 1) / cycle * cycle);
    }
    if (start.year < kFirstRuleYear) {
        return -1;
    }
    rule.count = 0;
    rule.until = MovedByDays(start, cycle);
    if (rule.until.is_date) {
        icaltime_adjust(&rule.until, -1, 0, 0, 0);
    } else {
        icaltime_adjust(&rule.until, 0, 0, 0, -1);
    }
    RecurIteratorPtr iterator(icalrecur_iterator_new(rule, start));
    if (iterator == nullptr) {
        return -1;
    }
    int found = 0;
    while (!icaltime_is_null_time(icalrecur_iterator_next(iterator.get()))) {
        if (++found > kMostRuleSteps) {
            return -1;
        }
    }
    return found;
}

// The frame in which libical can follow a rule with a count over the window
// ending at `windowEnd`, starting no later than `near`: the rule is moved
// back by whole cycles, and its start forward by whole cycles, up to the
// window; the count then counts what is left of it. False, leaving the rule
// where it is, when there is no such frame; `none` when the count ends
// before `near`.
bool CycleFrameFor(icalrecurrencetype& rule, const icaltimetype& start, const icaltimetype& near,
                   const icaltimetype& windowEnd, RuleFrame& frame, bool& none) {
    frame = {start, 0};
    none = false;
    const qint64 cycle = RuleCycleDays(rule);
    if (cycle == 0) {
        return false;
    }
    const qint64 pastLastDay = DayNumber(windowEnd) - DayNumber(LastDayLibicalFollows());
    const qint64 cyclesBack = std::max<qint64>((pastLastDay + cycle - 1) / cycle, 0);
    const qint64 cyclesForward = std::max<qint64>(DayNumber(near) - DayNumber(start), 0) / cycle;
    const icaltimetype movedStart = MovedByDays(start, (cyclesForward - cyclesBack) * cycle);
    if (movedStart.year < kFirstRuleYear) {
        return false;
    }
    if (rule.count != 0 && cyclesForward > 0) {
        const int perCycle = OccurrencesInACycle(rule, start, cycle);
        if (perCycle < 0) {
            return false;
        }
        if (perCycle == 0 || cyclesForward * perCycle >= rule.count) {
            none = true;
            return true;
        }
        rule.count -= static_cast<int>(cyclesForward * perCycle);
    }
    frame = {movedStart, cyclesBack * cycle};
    return true;
}

// One interval of a rule that repeats daily or less often: whole months, or
// whole days.
struct RuleStep {
    qint64 Months = 0;
    qint64 Days = 0;
};

RuleStep StepOf(const icalrecurrencetype& rule) {
    const qint64 interval = std::max<qint64>(rule.interval, 1);
    switch (rule.freq) {
        case ICAL_YEARLY_RECURRENCE:
            return {12 * interval, 0};
        case ICAL_MONTHLY_RECURRENCE:
            return {interval, 0};
        case ICAL_WEEKLY_RECURRENCE:
            return {0, 7 * interval};
        default:
            return {0, interval};
    }
}

// `start` moved forward by `steps` intervals, at the same time of day; false
// when that month has no such day (a 31st, or 29 February).
bool MovedBySteps(const icaltimetype& start, const RuleStep& step, qint64 steps,
                  icaltimetype& moved) {
    if (step.Days != 0) {
        moved = MovedByDays(start, steps * step.Days);
        return true;
    }
    const QDate month =
        QDate(start.year, start.month, 1).addMonths(static_cast<int>(steps * step.Months));
    if (start.day > month.daysInMonth()) {
        return false;
    }
    moved = start;
    moved.year = month.year();
    moved.month = month.month();
    return true;
}

// The most whole intervals after which `start` and one more interval are
// still before `near`: the start's own period, which lacks the occurrences
// before it, and the start itself, which libical gives even where the rule
// does not match, then fall before the window.
qint64 StepsBefore(const icaltimetype& start, const RuleStep& step, const icaltimetype& near) {
    if (step.Days != 0) {
        return (DayNumber(near) - DayNumber(start)) / step.Days - 1;
    }
    const qint64 months =
        (qint64{near.year} * 12 + near.month) - (qint64{start.year} * 12 + start.month) - 1;
    return months / step.Months - 1;
}

// The fewest days by which a whole rule, start and window alike, can be moved
// and stay the same rule: its step is kept as the start moves with it.
qint64 CalendarCycleDays(const icalrecurrencetype& rule) {
    if (FollowsTheCalendar(rule)) {
        return kDaysIn400Years;
    }
    return rule.freq == ICAL_WEEKLY_RECURRENCE || HasParts(rule.by_day) ? 7 : 1;
}

// The frame in which libical can follow a rule without a count over the
// window ending at `windowEnd`: its start moved forward by whole intervals of
// the rule to just before `near`, on a day that exists, then start and window
// moved back alike by whole cycles of the calendar into the years libical
// follows. False when there is no such frame.
bool StepFrameFor(const icalrecurrencetype& rule, const icaltimetype& start,
                  const icaltimetype& near, const icaltimetype& windowEnd, RuleFrame& frame) {
    if (rule.count != 0 || !RepeatsDailyOrLess(rule.freq) || rule.rscale != nullptr) {
        return false;
    }
    const RuleStep step = StepOf(rule);
    icaltimetype movedStart = start;
    for (qint64 steps = StepsBefore(start, step, near); steps > 0; --steps) {
        if (MovedBySteps(start, step, steps, movedStart)) {
            break;
        }
    }
    const qint64 cycle = CalendarCycleDays(rule);
    const qint64 pastLastDay = DayNumber(windowEnd) - DayNumber(LastDayLibicalFollows());
    const qint64 daysBack = std::max<qint64>((pastLastDay + cycle - 1) / cycle, 0) * cycle;
    movedStart = MovedByDays(movedStart, -daysBack);
    if (movedStart.year < kFirstRuleYear) {
        return false;
    }
    frame = {movedStart, daysBack, true};
    return true;
}

// The frame in which libical follows a rule over the window ending at
// `windowEnd`, past the year it stops at; see StepFrameFor and CycleFrameFor.
bool FrameFor(icalrecurrencetype& rule, const icaltimetype& start, const icaltimetype& near,
              const icaltimetype& windowEnd, RuleFrame& frame, bool& none) {
    none = false;
    return StepFrameFor(rule, start, near, windowEnd, frame) ||
           CycleFrameFor(rule, start, near, windowEnd, frame, none);
}

// An iterator over `rule` from `start`, brought to `near` when the rule
// allows it. A rule repeating more often than daily keeps its step from
// DTSTART only when followed from there, and one with a count must be counted
// from there.
RecurIteratorPtr IteratorNear(const icalrecurrencetype& rule, const icaltimetype& start,
                              const icaltimetype& near, bool startIsNear) {
    RecurIteratorPtr iterator(icalrecur_iterator_new(rule, start));
    if (iterator == nullptr || rule.count != 0 || !RepeatsDailyOrLess(rule.freq) || startIsNear) {
        return iterator;
    }
    if (icalrecur_iterator_set_start(iterator.get(), near) == 0) {
        iterator.reset(icalrecur_iterator_new(rule, start));
    }
    return iterator;
}

icaltimetype AtTheClockOf(icaltimetype time, const icaltimetype& start) {
    time.hour = start.hour;
    time.minute = start.minute;
    time.second = start.second;
    return time;
}

// Hands the occurrences of `iterator` to `collector`, moved forward by the
// frame's days. The steps taken, or -1 when it was cut short.
int Follow(icalrecur_iterator* iterator, qint64 daysForward, Collector& collector,
           QStringList& warnings) {
    int steps = 0;
    for (icaltimetype next = icalrecur_iterator_next(iterator); !icaltime_is_null_time(next);
         next = icalrecur_iterator_next(iterator)) {
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
    const bool wallClock = FollowsTheWallClock(rule, start);
    const icaltimetype followed = wallClock ? WithoutZone(start) : start;
    if (wallClock) {
        rule.until = WallClockUntil(rule.until, start);
    }
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
    RecurIteratorPtr iterator =
        IteratorNear(rule, frame.Start, MovedByDays(near, -frame.DaysBack),
                     frame.StartIsNear || TimeKey(start) >= from - 2 * kSecondsInADay);
    if (iterator == nullptr) {
        warnings << QStringLiteral("a repeat rule libical cannot follow is left out");
        return true;
    }
    const int steps = Follow(iterator.get(), frame.DaysBack, collector, warnings);
    if (collector.Full()) {
        warnings << QStringLiteral(
                        "a repeat rule gives more than %1 occurrences; the rest are "
                        "left out")
                        .arg(kMostOccurrences);
    }
    // libical ends a rule at its last year as if it were done.
    return !pastLibical || moved || steps < 0 || (rule.count != 0 && steps >= rule.count);
}

// The fields of `time` as seconds since 1970 as if in UTC. Counted from the
// day number, as libical's own conversion stops at 1902; fields past their
// range (a 32nd day, a 24th hour) run on into the next.
qint64 WallClockSeconds(const icaltimetype& time) {
    if (icaltime_is_null_time(time)) {
        return 0;
    }
    const qint64 months = qint64{time.year} * 12 + time.month - 1;
    const qint64 year = months >= 0 ? months / 12 : (months - 11) / 12;
    const QDate firstOfMonth(static_cast<int>(year), static_cast<int>(months - year * 12 + 1), 1);
    const qint64 days = firstOfMonth.toJulianDay() - kJulianDayOf1970 + time.day - 1;
    const qint64 seconds =
        time.is_date ? 0 : qint64{time.hour} * 3600 + qint64{time.minute} * 60 + time.second;
    return days * kSecondsInADay + seconds;
}

}  // namespace

qint64 TimeKey(const icaltimetype& time) {
    const qint64 wallClock = WallClockSeconds(time);
    if (time.is_date || time.zone == nullptr) {
        return wallClock;
    }
    return InstantOfWallClock(wallClock, time.zone);
}

int UtcOffsetAt(const icaltimezone* zone, qint64 key) {
    const qint64 cycles = CyclesPastTheLastRules(key);
    icaltimetype utc = icaltime_from_timet_with_zone(
        static_cast<time_t>(key - cycles * kSecondsIn400Years), 0, icaltimezone_get_utc_timezone());
    int isDaylight = 0;
    // libical takes the zone as changeable only to extend its list of changes.
    return icaltimezone_get_utc_offset_of_utc_time(const_cast<icaltimezone*>(zone), &utc,
                                                   &isDaylight);
}

qint64 InstantOfWallClock(qint64 wallClock, const icaltimezone* zone) {
    // libical reads both a skipped and a repeated time with the offset after
    // the change; RFC 5545 (3.3.5) wants the offset before the gap, and the
    // first of the two instants.
    const int before = UtcOffsetAt(zone, wallClock - kSecondsInADay);
    const int after = UtcOffsetAt(zone, wallClock + kSecondsInADay);
    const qint64 underBefore = wallClock - before;
    const qint64 underAfter = wallClock - after;
    const bool beforeHolds = UtcOffsetAt(zone, underBefore) == before;
    const bool afterHolds = UtcOffsetAt(zone, underAfter) == after;
    if (beforeHolds && afterHolds) {
        return std::min(underBefore, underAfter);
    }
    return afterHolds ? underAfter : underBefore;
}

icaltimetype InFrameOf(icaltimetype time, const icaltimetype& start) {
    if (start.is_date || start.zone == nullptr) {
        time.zone = nullptr;
    } else if (!time.is_date && time.zone == nullptr) {
        time = icaltime_set_timezone(&time, start.zone);
    }
    return time;
}

icaltimetype TimeInZoneAt(qint64 key, const icaltimezone* zone, bool isDate) {
    const qint64 cycles = zone == nullptr ? 0 : CyclesPastTheLastRules(key);
    icaltimetype time = icaltime_from_timet_with_zone(
        static_cast<time_t>(key - cycles * kSecondsIn400Years), isDate, zone);
    time.year += static_cast<int>(cycles * 400);
    // libical works the fields out in the zone but leaves the time without it.
    time.zone = zone;
    return time;
}

icaltimetype TimeAtKey(qint64 key, const icaltimetype& start) {
    const bool floating = start.is_date || start.zone == nullptr;
    return TimeInZoneAt(key, floating ? nullptr : start.zone, start.is_date);
}

std::vector<icaltimetype> OccurrencesBetween(icalcomponent* event, const icaltimetype& start,
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
