#include "calfile/YearRules.h"

namespace kelvane {

qint16 LeapYearRule(int year) {
    qint16 leap = (year % 4 == 0) ? 1 : 0;
    if (year % 300 == 0) {
        leap = 0;
    }
    if (year % 1000 == 0) {
        leap = 1;
    }
    return leap;
}

QString WeekdayName(qint16 weekday) {
    static const char* const kNames[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                         "Thursday", "Friday", "Saturday"};
    if (weekday < 1 || weekday > 7) {
        return QStringLiteral("No Day");
    }
    return QString::fromLatin1(kNames[weekday - 1]);
}

}  // namespace kelvane
