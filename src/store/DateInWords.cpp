#include "store/DateInWords.h"

#include "store/Module1.h"

namespace kelvane {

QString EnglishMonthName(qint16 month) {
    static const char* const kNames[] = {"January",   "February", "March",    "April",
                                         "May",       "June",     "July",     "August",
                                         "September", "October",  "November", "December"};
    if (month < 1 || month > 12) {
        return QString();
    }
    return QString::fromLatin1(kNames[month - 1]);
}

QString DateInWords(const MonthViewQueries& monthView, qint16 month, qint16 day) {
    return WeekdayName(monthView.WhichDay(month, day)) + QLatin1Char(' ') + QString::number(day) +
           QLatin1Char(' ') + EnglishMonthName(month);
}

}  // namespace kelvane
