#pragma once

#include <QFile>
#include <QString>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

namespace kelvane::testing {

// Makes file permissions count while it lives. Tests run as root in CI, and
// root may write anywhere, so a root process acts as the user nobody; the
// effective user goes back to root however the test ends.
class PermissionsApply {
  public:
    PermissionsApply() : switched_(geteuid() == 0 && seteuid(kNobody) == 0) {}
    ~PermissionsApply() {
        if (switched_ && seteuid(0) != 0) {
            std::abort();  // the other tests cannot go on as nobody
        }
    }
    PermissionsApply(const PermissionsApply&) = delete;
    PermissionsApply& operator=(const PermissionsApply&) = delete;

    bool Active() const { return geteuid() != 0; }

  private:
    static constexpr uid_t kNobody = 65534;
    bool switched_;
};

inline int Chmod(const QString& path, mode_t mode) {
    return chmod(QFile::encodeName(path).constData(), mode);
}

}  // namespace kelvane::testing
