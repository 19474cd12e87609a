#pragma once

#include <QtGlobal>

namespace kelvane {

// What the document store asks the main window's month view: the year's leap
// flag, the selected date and weekdays. The month view control implements it.
class MonthViewQueries {
  public:
    virtual ~MonthViewQueries() = default;

    // 1 when the year laid out is a leap year, else 0.
    virtual qint16 gLeapYear() const = 0;
    // The selected date; zeros when none is selected.
    virtual void GetDate(qint16& year, qint16& month, qint16& day) const = 0;
    // The weekday (1 = Sunday .. 7 = Saturday) of a month and day, -1 for a month outside 1..12.
    virtual qint16 WhichDay(qint16 month, qint16 day) const = 0;
};

}  // namespace kelvane
