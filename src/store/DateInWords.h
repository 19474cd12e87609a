#pragma once

#include <QString>

#include "store/MonthViewQueries.h"

namespace kelvane {

// "January" for 1 .. "December" for 12, empty for any other number. The
// program's texts are English whatever the system's language.
QString EnglishMonthName(qint16 month);

// A date as screen readers hear it: "Wednesday 17 November", the weekday
// being the one the month view gives the date in the year it lays out.
QString DateInWords(const MonthViewQueries& monthView, qint16 month, qint16 day);

}  // namespace kelvane
