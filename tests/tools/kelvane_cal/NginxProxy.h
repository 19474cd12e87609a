#pragma once

#include <QProcess>
#include <QString>
#include <QTcpServer>
#include <QTemporaryDir>

// A real web server in front of a test server, for the answers the calendar
// server itself never gives: Debian's nginx on 127.0.0.1, on a free port.
//   /alice/...     passed on to the calendar server
//   /moved/NAME    308 to /alice/plan/NAME on the same server
//   /away/NAME     301 to the same path on "localhost", another origin
//   /full/...      507 Insufficient Storage
//   /no-room-to-put/NAME/...  507 for a PUT, else alice's calendar NAME
//   /refuses/NAME/...  403 with Cyrus's DAV:error "DTEND must occur after
//                  DTSTART" for a PUT of a resource whose name holds "-a2-"
//                  (a date's second activity), else alice's calendar NAME
//   /stalls/NAME/...  a PUT goes to a port that never answers, anything else
//                  to alice's calendar NAME
//   /files/        a folder of plain files, which allows no WebDAV (405)
//   /broken/...    passed on to a port where nothing listens (502)
namespace kelvane::cal::testing {

class NginxProxy {
  public:
    explicit NginxProxy(int calendarPort);
    ~NginxProxy();
    NginxProxy(const NginxProxy&) = delete;
    NginxProxy& operator=(const NginxProxy&) = delete;

    // Empty when the server runs, else why it does not.
    QString Problem() const { return problem_; }
    // http://127.0.0.1:PORT followed by `path`.
    QString Url(const QString& path) const;
    // The same on a port that takes connections and never says a word.
    QString SilentUrl(const QString& path) const;

  private:
    QByteArray Config() const;

    QTemporaryDir folder_;
    QTcpServer silent_;  // takes connections and never says a word
    QProcess process_;
    int calendarPort_;
    int port_ = 0;
    QString problem_;
};

}  // namespace kelvane::cal::testing
