#include "kelvane_cal/ical/CalendarFacts.h"

#include "calfile/Conversions.h"
#include "calfile/YearRules.h"

namespace kelvane::cal {

std::vector<NumberedActivity> ActivitiesOf(const CalendarFileDate& date) {
    std::vector<NumberedActivity> activities;
    for (std::size_t i = 0; i < date.Schedule.size(); ++i) {
        if (!date.Schedule[i].Description.Trimmed().isEmpty()) {
            activities.push_back({static_cast<int>(i) + 1, date.Schedule[i]});
        }
    }
    return activities;
}

QString NoteOf(const CalendarFileDate& date) {
    return Trim(date.Note);
}

QString DayAndMonth(int month, int day) {
    return QStringLiteral("%1 %2").arg(day).arg(MonthName(month));
}

QString Time24(const ClockTime& time) {
    return QStringLiteral("%1:%2")
        .arg(time.Hour, 2, 10, QLatin1Char('0'))
        .arg(time.Minute, 2, 10, QLatin1Char('0'));
}

bool IsTimeOfDay(const ClockTime& time) {
    return time.Hour >= 0 && time.Hour <= 23 && time.Minute >= 0 && time.Minute <= 59;
}

QString Counted(qsizetype count, const QString& singular, const QString& plural) {
    return QStringLiteral("%1 %2").arg(count).arg(count == 1 ? singular : plural);
}

}  // namespace kelvane::cal
