#pragma once

#include <QString>

#include <memory>

#include "gui/InstanceGuard.h"

namespace kelvane {

// One copy of the program per user, held as a lock on a file. The system
// drops the lock when its process ends, however it ends, so a copy that
// crashed never stops the next one; and when no lock can be taken at all the
// program starts rather than refuse to.
class QtInstanceGuard final : public InstanceGuard {
  public:
    // "kelvane-<user>.lock" in the user's runtime directory, or in the
    // temporary directory when there is none.
    static QString DefaultLockPath();

    explicit QtInstanceGuard(const QString& lockPath = DefaultLockPath());
    ~QtInstanceGuard() override;
    QtInstanceGuard(const QtInstanceGuard&) = delete;
    QtInstanceGuard& operator=(const QtInstanceGuard&) = delete;

    bool AnotherCopyRunning() override;

  private:
    struct Lock;

    QString lockPath_;
    std::unique_ptr<Lock> lock_;
};

}  // namespace kelvane
