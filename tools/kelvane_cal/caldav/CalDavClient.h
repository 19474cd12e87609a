#pragma once

#include <QByteArray>
#include <QList>
#include <QSslCertificate>
#include <QSslConfiguration>

#include <functional>
#include <map>
#include <vector>

#include "kelvane_cal/caldav/Credentials.h"
#include "kelvane_cal/caldav/CurlTransfers.h"
#include "kelvane_cal/caldav/DavMessages.h"

namespace kelvane::cal {

// Talks HTTP to a CalDAV server through libcurl: a few requests at a time
// over kept-alive connections, redirects followed only within the same
// origin, TLS errors never ignored. Waits for the answers itself, without an
// event loop.
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
    struct Progress;

    void Start(std::size_t index, const DavRequest& request);
    void StartMore(const std::vector<DavRequest>& requests, Progress& progress);
    bool FollowRedirect(const DavRequest& request, std::size_t index, DavReply& reply, int& hops);
    QUrl RedirectTarget(const DavRequest& request, DavReply& reply) const;

    QByteArray authorization_;
    int timeoutSeconds_;
    CurlTransfers transfers_;
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
