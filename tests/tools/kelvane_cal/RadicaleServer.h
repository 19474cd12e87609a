#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <QUrl>

#include <thread>

// A real CalDAV server for the tests: Debian's Radicale on 127.0.0.1, on a
// free port, with its own storage folder and one user, alice, whose password
// is "secret". Stopped when the object goes. With TLS, it answers https only,
// with a certificate of its own made for 127.0.0.1 and localhost.
namespace kelvane::cal::testing {

enum class Tls { Off, On };

class RadicaleServer {
  public:
    explicit RadicaleServer(Tls tls = Tls::Off);
    ~RadicaleServer();
    RadicaleServer(const RadicaleServer&) = delete;
    RadicaleServer& operator=(const RadicaleServer&) = delete;

    // Empty when the server runs, else why it does not.
    QString Problem() const { return problem_; }
    bool Start();
    void Stop();
    // Kills the server, or the process `pid` when one is given, from another
    // thread as soon as the calendar `name` holds `count` events: a server or
    // a publish that stops in the middle of a run.
    void KillWhenHolding(const QString& name, int count, qint64 pid = 0);
    int Port() const { return port_; }
    // The PEM file of the server's own certificate, with TLS.
    QString CertificateFile() const { return folder_.filePath(QStringLiteral("cert.pem")); }

    // The URL of alice's calendar `name`, made when first asked for.
    QString Calendar(const QString& name);

    // Plain requests as another calendar program would send them; the HTTP
    // status, with the body and the ETag header of the answer.
    struct Answer {
        int Status = 0;
        QByteArray Body;
        QByteArray ETag;
    };
    Answer Request(const QByteArray& method, const QUrl& url, const QByteArray& body = {},
                   const QList<QPair<QByteArray, QByteArray>>& headers = {});
    // The names of the .ics resources in a calendar.
    QStringList Resources(const QString& calendarUrl);

  private:
    QByteArray Config() const;
    bool MakeCertificate();

    QTemporaryDir folder_;
    std::thread killer_;
    QProcess process_;
    int port_ = 0;
    bool tls_ = false;
    QString problem_;
};

}  // namespace kelvane::cal::testing
