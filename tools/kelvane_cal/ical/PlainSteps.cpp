#include "kelvane_cal/ical/PlainSteps.h"

#include "kelvane_cal/ical/Occurrences.h"
#include "kelvane_cal/ical/RuleFrames.h"

namespace kelvane::cal {

namespace {

bool IsEmptyList(const short* values) {
    return values[0] == ICAL_RECURRENCE_ARRAY_MAX;
}

bool HasNoByLists(const icalrecurrencetype& rule) {
    return IsEmptyList(rule.by_second) && IsEmptyList(rule.by_minute) &&
           IsEmptyList(rule.by_hour) && IsEmptyList(rule.by_day) &&
           IsEmptyList(rule.by_month_day) && IsEmptyList(rule.by_year_day) &&
           IsEmptyList(rule.by_week_no) && IsEmptyList(rule.by_month) &&
           IsEmptyList(rule.by_set_pos);
}

// A start libical takes as it is: a wall-clock time or a date, a real date
// in the years it follows, and a real clock time.
bool IsPlainStart(const icaltimetype& start) {
    return !icaltime_is_null_time(start) && start.zone == nullptr && start.year >= kFirstRuleYear &&
           start.year <= kLastRuleYear && start.month >= 1 && start.month <= 12 && start.day >= 1 &&
           start.day <= icaltime_days_in_month(start.month, start.year) && start.hour >= 0 &&
           start.hour <= 23 && start.minute >= 0 && start.minute <= 59 && start.second >= 0 &&
           start.second <= 59;
}

}  // namespace

bool PlainSteps::Fits(const icalrecurrencetype& rule, const icaltimetype& start) {
    return (rule.freq == ICAL_DAILY_RECURRENCE || rule.freq == ICAL_WEEKLY_RECURRENCE) &&
           rule.interval >= 1 && rule.count >= 0 && rule.rscale == nullptr && HasNoByLists(rule) &&
           IsPlainStart(start);
}

PlainSteps::PlainSteps(const icalrecurrencetype& rule, const icaltimetype& start)
    : start_(start),
      until_(rule.until),
      count_(rule.count),
      stepDays_(qint64{rule.interval} * (rule.freq == ICAL_WEEKLY_RECURRENCE ? 7 : 1)) {}

icaltimetype PlainSteps::Next() {
    if (count_ != 0 && taken_ >= count_) {
        return icaltime_null_time();
    }
    const icaltimetype next = MovedByDays(start_, stepDays_ * taken_);
    if (next.year > kLastRuleYear ||
        (!icaltime_is_null_time(until_) && icaltime_compare(next, until_) > 0)) {
        return icaltime_null_time();
    }
    ++taken_;
    return next;
}

}  // namespace kelvane::cal
