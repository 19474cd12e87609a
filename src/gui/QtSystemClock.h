#pragma once

#include "gui/SystemClock.h"

namespace kelvane {

// The computer's local date and time.
class QtSystemClock final : public SystemClock {
  public:
    QString DateText() const override;
    QString TimeText() const override;
    double SecondsSinceMidnight() const override;
};

}  // namespace kelvane
