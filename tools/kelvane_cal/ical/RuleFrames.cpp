#include "kelvane_cal/ical/RuleFrames.h"

#include <QDate>

#include "kelvane_cal/ical/TimeKeys.h"

namespace kelvane::cal {

namespace {

bool RepeatsDailyOrLess(icalrecurrencetype_frequency frequency) {
    return frequency == ICAL_DAILY_RECURRENCE || frequency == ICAL_WEEKLY_RECURRENCE ||
           frequency == ICAL_MONTHLY_RECURRENCE || frequency == ICAL_YEARLY_RECURRENCE;
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

}  // namespace

// By the Gregorian calendar: libical's own adjustment takes 1700 for a leap year.
icaltimetype MovedByDays(icaltimetype time, qint64 days) {
    if (days != 0 && !icaltime_is_null_time(time)) {
        const QDate moved = QDate(time.year, time.month, time.day).addDays(days);
        if (moved.isValid()) {
            moved.getDate(&time.year, &time.month, &time.day);
        } else {
            time.year = time.month = time.day = 0;  // as QDate tells an invalid date
        }
    }
    return time;
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

}  // namespace kelvane::cal
