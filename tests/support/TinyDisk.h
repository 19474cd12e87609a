#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/mount.h>
#include <sys/statvfs.h>

#include <cerrno>
#include <cstring>
#include <string>

// Skips the test on a machine that lets it mount no file system of its own.
#define KELVANE_SKIP_UNLESS_MOUNTED(disk) \
    if ((disk).Mounted()) {               \
    } else                                \
        GTEST_SKIP() << "no small disk can be mounted here: " << (disk).Error()

namespace kelvane::testing {

// A small file system of its own (tmpfs), mounted on a fresh folder for as
// long as it lives: a disk that a test can fill up. Mounting needs a mount
// namespace of the test's own: the test programs that use it are run through
// tests/support/own-mounts.sh.
class TinyDisk {
  public:
    explicit TinyDisk(qint64 bytes = 64 * 1024) {
        const QByteArray options = "size=" + QByteArray::number(bytes) + ",mode=0777";
        mounted_ = ::mount("tmpfs", QFile::encodeName(folder_.path()).constData(), "tmpfs", 0,
                           options.constData()) == 0;
        if (!mounted_) {
            error_ = std::strerror(errno);
        }
    }
    ~TinyDisk() {
        if (mounted_) {
            ::umount2(QFile::encodeName(folder_.path()).constData(), MNT_DETACH);
        }
    }
    TinyDisk(const TinyDisk&) = delete;
    TinyDisk& operator=(const TinyDisk&) = delete;

    bool Mounted() const { return mounted_; }
    // Why it could not be mounted.
    std::string Error() const { return error_; }
    QString Path() const { return folder_.path(); }
    QString FilePath(const QString& name) const { return QDir(Path()).filePath(name); }

    qint64 FreeBytes() const {
        struct statvfs info {};
        if (::statvfs(QFile::encodeName(Path()).constData(), &info) != 0) {
            return -1;
        }
        return static_cast<qint64>(info.f_bavail) * static_cast<qint64>(info.f_frsize);
    }

    // Fills the disk with a file of its own until at most `leave` bytes are
    // free (rounded to whole pages); true when it got there.
    bool Fill(qint64 leave = 0) {
        QFile filler(FilePath(QStringLiteral("filler-%1").arg(fillers_++)));
        if (!filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
            return false;
        }
        const QByteArray block(4096, 'f');
        while (FreeBytes() > leave) {
            if (filler.write(block) != block.size()) {
                break;
            }
        }
        return FreeBytes() <= leave;
    }

    // Frees what Fill took.
    void Empty() {
        for (int i = 0; i < fillers_; ++i) {
            QFile::remove(FilePath(QStringLiteral("filler-%1").arg(i)));
        }
    }

  private:
    QTemporaryDir folder_;
    bool mounted_ = false;
    std::string error_;
    int fillers_ = 0;
};

}  // namespace kelvane::testing
