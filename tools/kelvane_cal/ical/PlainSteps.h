#pragma once

#include <QtGlobal>

#include "kelvane_cal/ical/LibIcal.h"

namespace kelvane::cal {

// A repeat rule with nothing to it but a daily or weekly step and a count or
// an UNTIL, followed from its start: its occurrences are the start moved on
// by whole steps. They are what libical's iterator gives, without the
// calendar arithmetic it does for every step.
class PlainSteps {
  public:
    // Whether `rule` from `start` is such a rule, from a start without a zone
    // in the years libical follows.
    static bool Fits(const icalrecurrencetype& rule, const icaltimetype& start);

    PlainSteps(const icalrecurrencetype& rule, const icaltimetype& start);

    // The next occurrence, or a null time after the last, as
    // icalrecur_iterator_next gives them.
    icaltimetype Next();

  private:
    icaltimetype start_;
    icaltimetype until_;
    int count_;
    qint64 stepDays_;
    int taken_ = 0;
};

}  // namespace kelvane::cal
