#pragma once

#include "gui/InstanceGuard.h"

namespace kelvane {

// Says whatever the test set, and counts how often it was asked.
class FakeInstanceGuard final : public InstanceGuard {
  public:
    bool AnotherCopyRunning() override {
        ++Checks;
        return OtherCopy;
    }

    bool OtherCopy = false;
    int Checks = 0;
};

}  // namespace kelvane
