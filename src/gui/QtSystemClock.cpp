#include "gui/QtSystemClock.h"

#include <QDate>
#include <QTime>

namespace kelvane {

QString QtSystemClock::DateText() const {
    return QDate::currentDate().toString(QStringLiteral("MM-dd-yyyy"));
}

QString QtSystemClock::TimeText() const {
    return QTime::currentTime().toString(QStringLiteral("hh:mm:ss"));
}

double QtSystemClock::SecondsSinceMidnight() const {
    return QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
}

}  // namespace kelvane
