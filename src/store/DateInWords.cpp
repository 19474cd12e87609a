#include "store/DateInWords.h"

#include "calfile/YearRules.h"

namespace kelvane {

QString DateInWords(const MonthViewQueries& monthView, qint16 month, qint16 day) {
    return WeekdayName(monthView.WhichDay(month, day)) + QLatin1Char(' ') + QString::number(day) +
           QLatin1Char(' ') + MonthName(month);
}

}  // namespace kelvane
