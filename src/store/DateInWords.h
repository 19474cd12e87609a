#pragma once

#include <QString>

#include "store/MonthViewQueries.h"

namespace kelvane {

// A date as screen readers hear it: "Wednesday 17 November", the weekday
// being the one the month view gives the date in the year it lays out.
QString DateInWords(const MonthViewQueries& monthView, qint16 month, qint16 day);

}  // namespace kelvane
