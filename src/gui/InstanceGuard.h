#pragma once

namespace kelvane {

// Tells whether another copy of the program is already running for this user.
class InstanceGuard {
  public:
    virtual ~InstanceGuard() = default;

    // True when another copy holds the program. Otherwise this copy now holds
    // it until it ends (the guard is destroyed), and later calls return false.
    virtual bool AnotherCopyRunning() = 0;
};

}  // namespace kelvane
