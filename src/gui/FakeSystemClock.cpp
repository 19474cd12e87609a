#include "gui/FakeSystemClock.h"

namespace kelvane {

QString FakeSystemClock::DateText() const {
    return Now.date().toString(QStringLiteral("MM-dd-yyyy"));
}

QString FakeSystemClock::TimeText() const {
    const QString text = Now.time().toString(QStringLiteral("hh:mm:ss"));
    if (AfterTimeRead) {
        AfterTimeRead();
    }
    return text;
}

double FakeSystemClock::SecondsSinceMidnight() const {
    return Now.time().msecsSinceStartOfDay() / 1000.0;
}

void FakeSystemClock::Set(int year, int month, int day, int hour, int minute, int second) {
    Now = QDateTime(QDate(year, month, day), QTime(hour, minute, second));
}

}  // namespace kelvane
