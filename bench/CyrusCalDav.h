#pragma once

#include <QDir>
#include <QString>
#include <QTemporaryDir>

// Debian's Cyrus IMAP server with its CalDAV module, started on 127.0.0.1 on
// a free port by cyrus-caldav.sh with everything in a folder of its own (in
// memory, /dev/shm, where there is one, so that the disk's speed does not
// count), and one user, alice, whose password is "secret". Stopped when the
// object goes.
class CyrusCalDav {
  public:
    CyrusCalDav();
    ~CyrusCalDav();
    CyrusCalDav(const CyrusCalDav&) = delete;
    CyrusCalDav& operator=(const CyrusCalDav&) = delete;

    // Empty when the server runs, else why it does not.
    QString Problem() const { return problem_; }
    // The URL of alice's default calendar.
    QString Calendar() const;

  private:
    QTemporaryDir folder_{QDir(QStringLiteral("/dev/shm")).exists()
                              ? QStringLiteral("/dev/shm/kelvane-cyrus-XXXXXX")
                              : QString()};
    int port_ = 0;
    QString problem_;
};
