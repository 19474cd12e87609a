#pragma once

#include <QDateTime>

#include <functional>

#include "gui/SystemClock.h"

namespace kelvane {

// A clock that shows whatever the test sets and moves only when told to.
class FakeSystemClock final : public SystemClock {
  public:
    FakeSystemClock() : Now(QDate(2000, 1, 1), QTime(9, 0)) {}

    QString DateText() const override;
    QString TimeText() const override;
    double SecondsSinceMidnight() const override;

    void Set(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
    void AdvanceMinutes(int minutes) { Now = Now.addSecs(60LL * minutes); }

    QDateTime Now;
    // Runs after each reading of the time: a clock that moves between the
    // reading of the time and of the date.
    std::function<void()> AfterTimeRead;
};

}  // namespace kelvane
