#pragma once

#include <QByteArray>
#include <QList>
#include <QNetworkAccessManager>
#include <QPair>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QUrl>

#include <map>
#include <vector>

#include "kelvane_cal/caldav/Credentials.h"

namespace kelvane::cal {

struct DavRequest {
    QByteArray Method;
    QUrl Url;
    QByteArray Body;
    QList<QPair<QByteArray, QByteArray>> Headers;
};

struct DavReply {
    QUrl Url;
    int Status = 0;  // the HTTP status; 0 when none came
    QByteArray Body;
    QByteArray ETag;       // the ETag header, with its quotes
    QByteArray Location;   // where a redirect points
    QString NetworkError;  // why no status came, or why the answer was refused
    bool TimedOut = false;
    bool TlsRefused = false;       // the server's certificate, or its TLS, was not accepted
    bool Anonymous = false;        // sent without a user name and password
    bool RedirectRefused = false;  // to another server, or one that would change the method
    bool NotSent = false;          // left unsent once the run was told to stop
};

// Talks HTTP to a CalDAV server through Qt's network access: a few requests
// at a time over kept-alive connections, redirects followed only within the
// same origin, TLS errors never ignored. Needs a running Qt application
// object; waits in a local event loop.
class CalDavClient {
  public:
    // `trusted`: certificates that may sign the server's, besides the system's.
    CalDavClient(const Credentials& credentials, int timeoutSeconds,
                 const QList<QSslCertificate>& trusted = {});

    DavReply Send(const DavRequest& request);
    // Sends every request, at most `parallel` at a time, and gives the
    // replies in the order of the requests. `done` hears of each reply as it
    // comes, so that progress can be kept; once it answers false, no further
    // request is started and those left are NotSent.
    std::vector<DavReply> SendAll(const std::vector<DavRequest>& requests, int parallel,
                                  const std::function<bool(std::size_t, const DavReply&)>& done);
    // How many requests of a method were sent so far.
    int Sent(const QByteArray& method) const;
    int TimeoutSeconds() const { return timeoutSeconds_; }

  private:
    QNetworkReply* Start(const DavRequest& request);
    DavReply Finish(QNetworkReply* reply) const;
    QUrl RedirectTarget(const DavRequest& request, DavReply& reply) const;

    QNetworkAccessManager manager_;
    QByteArray authorization_;
    QSslConfiguration tls_;
    bool ownTls_ = false;  // tls_ trusts more than the system's certificates
    int timeoutSeconds_;
    std::map<QByteArray, int> sent_;
};

// Qt's TLS configuration that trusts the system's certificates and `trusted`.
QSslConfiguration TrustingConfiguration(const QList<QSslCertificate>& trusted);

// The certificates of a PEM file, for --ca-file; false with the problem when
// it cannot be read or holds none.
bool ReadCertificates(const QString& fileName, QList<QSslCertificate>& certificates,
                      QString& problem);

// One clear message for a reply that failed, naming the URL and what to do;
// empty for a reply with a 2xx status.
QString DescribeFailure(const DavReply& reply, int timeoutSeconds);

}  // namespace kelvane::cal
