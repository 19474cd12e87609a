#include "gui/QtInstanceGuard.h"

#include <QDir>
#include <QStandardPaths>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#else
#include <QLockFile>
#endif

namespace kelvane {

namespace {

// Who runs the program, as part of a file name.
QString UserTag() {
#ifdef Q_OS_UNIX
    return QString::number(::getuid());
#else
    return qEnvironmentVariable("USERNAME", QStringLiteral("user"));
#endif
}

}  // namespace

#ifdef Q_OS_UNIX
// An flock on the open file: taken in microseconds and released by the kernel
// with the process.
struct QtInstanceGuard::Lock {
    explicit Lock(int descriptor) : fd(descriptor) {}
    ~Lock() { ::close(fd); }
    int fd;
};

bool QtInstanceGuard::AnotherCopyRunning() {
    if (lock_) {
        return false;
    }
    const QByteArray path = QFile::encodeName(lockPath_);
    const int fd = ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (fd < 0) {
        return false;
    }
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        const bool held = errno == EWOULDBLOCK;
        ::close(fd);
        return held;
    }
    lock_ = std::make_unique<Lock>(fd);
    return false;
}
#else
// Elsewhere a QLockFile, which takes over the lock of a process that died.
struct QtInstanceGuard::Lock {
    explicit Lock(const QString& path) : file(path) { file.setStaleLockTime(0); }
    QLockFile file;
};

bool QtInstanceGuard::AnotherCopyRunning() {
    if (lock_) {
        return false;
    }
    auto lock = std::make_unique<Lock>(lockPath_);
    if (lock->file.tryLock(0)) {
        lock_ = std::move(lock);
        return false;
    }
    return lock->file.error() == QLockFile::LockFailedError;
}
#endif

QString QtInstanceGuard::DefaultLockPath() {
    QString directory = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (directory.isEmpty()) {
        directory = QDir::tempPath();
    }
    return QDir(directory).filePath(QStringLiteral("kelvane-%1.lock").arg(UserTag()));
}

QtInstanceGuard::QtInstanceGuard(const QString& lockPath) : lockPath_(lockPath) {}

QtInstanceGuard::~QtInstanceGuard() = default;

}  // namespace kelvane
