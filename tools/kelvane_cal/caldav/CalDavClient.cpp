#include "kelvane_cal/caldav/CalDavClient.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

#include "kelvane_cal/caldav/DavXml.h"

namespace kelvane::cal {

QSslConfiguration TrustingConfiguration(const QList<QSslCertificate>& trusted) {
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setCaCertificates(QSslConfiguration::systemCaCertificates() + trusted);
    return configuration;
}

bool ReadCertificates(const QString& fileName, QList<QSslCertificate>& certificates,
                      QString& problem) {
    if (QFileInfo(fileName).isDir()) {
        problem = QStringLiteral("%1: is a folder, not a certificate file").arg(fileName);
        return false;
    }
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        problem = QStringLiteral("%1: cannot be read: %2").arg(fileName, file.errorString());
        return false;
    }
    certificates = QSslCertificate::fromData(file.readAll(), QSsl::Pem);
    if (certificates.isEmpty()) {
        problem = QStringLiteral(
                      "%1: holds no certificate; give one in PEM form, which begins with "
                      "-----BEGIN CERTIFICATE-----")
                      .arg(fileName);
        return false;
    }
    return true;
}

namespace {

// The certificates a client trusts, in PEM; empty for the system's alone.
QByteArray TrustedPem(const QList<QSslCertificate>& trusted) {
    QByteArray pem;
    if (!trusted.isEmpty()) {
        for (const QSslCertificate& certificate : TrustingConfiguration(trusted).caCertificates()) {
            pem += certificate.toPem();
        }
    }
    return pem;
}

QByteArray BasicAuthorization(const Credentials& credentials) {
    if (credentials.User.isEmpty()) {
        return {};
    }
    return "Basic " +
           (credentials.User + QLatin1Char(':') + credentials.Password).toUtf8().toBase64();
}

}  // namespace

// The credentials go with every request, so that the server never has to ask.
CalDavClient::CalDavClient(const Credentials& credentials, int timeoutSeconds,
                           const QList<QSslCertificate>& trusted)
    : authorization_(BasicAuthorization(credentials)),
      timeoutSeconds_(timeoutSeconds),
      transfers_(timeoutSeconds, TrustedPem(trusted)) {}

void CalDavClient::Start(std::size_t index, const DavRequest& request) {
    ++sent_[request.Method];
    transfers_.Start(index, request, authorization_);
}

DavReply CalDavClient::Send(const DavRequest& request) {
    return SendAll({request}, 1, {}).front();
}

namespace {

constexpr int kMostRedirects = 5;

bool SameOrigin(const QUrl& a, const QUrl& b) {
    return a.scheme() == b.scheme() && a.host() == b.host() &&
           a.port(a.scheme() == QLatin1String("https") ? 443 : 80) ==
               b.port(b.scheme() == QLatin1String("https") ? 443 : 80);
}

}  // namespace

// Where a reply sends its request on, when it is a redirect that may be
// followed: to the same server, and keeping the method (307, 308, or any
// redirect of a GET). Empty otherwise; a redirect not followed is explained.
QUrl CalDavClient::RedirectTarget(const DavRequest& request, DavReply& reply) const {
    if (reply.Status < 300 || reply.Status >= 400 || reply.Location.isEmpty()) {
        return {};
    }
    const QUrl target = reply.Url.resolved(QUrl(QString::fromUtf8(reply.Location)));
    const bool keepsMethod = reply.Status == 307 || reply.Status == 308 || request.Method == "GET";
    if (SameOrigin(target, reply.Url) && keepsMethod) {
        return target;
    }
    reply.NetworkError = QStringLiteral(
                             "the server sends this request on to %1, which is not "
                             "followed; use that address if it is right")
                             .arg(target.toString(QUrl::RemoveUserInfo));
    reply.Status = 0;
    reply.RedirectRefused = true;
    return {};
}

namespace {

// A reply for each request, each NotSent until its answer comes.
std::vector<DavReply> UnsentReplies(const std::vector<DavRequest>& requests) {
    std::vector<DavReply> replies(requests.size());
    for (std::size_t index = 0; index < requests.size(); ++index) {
        replies[index].Url = requests[index].Url;
        replies[index].NotSent = true;
    }
    return replies;
}

}  // namespace

// How far a SendAll has come.
struct CalDavClient::Progress {
    std::size_t parallel = 1;  // requests under way at most
    std::size_t next = 0;      // the first request not yet started
    std::size_t running = 0;   // started and not yet answered
    bool stopped = false;      // told to start no more
};

void CalDavClient::StartMore(const std::vector<DavRequest>& requests, Progress& progress) {
    while (!progress.stopped && progress.next < requests.size() &&
           progress.running < progress.parallel) {
        Start(progress.next, requests[progress.next]);
        ++progress.next;
        ++progress.running;
    }
}

// Sends the request on when its reply is a redirect to follow; false when
// the reply is the answer.
bool CalDavClient::FollowRedirect(const DavRequest& request, std::size_t index, DavReply& reply,
                                  int& hops) {
    const QUrl target = RedirectTarget(request, reply);
    if (target.isEmpty() || hops >= kMostRedirects) {
        return false;
    }
    ++hops;
    DavRequest moved = request;
    moved.Url = target;
    Start(index, moved);
    return true;
}

std::vector<DavReply> CalDavClient::SendAll(
    const std::vector<DavRequest>& requests, int parallel,
    const std::function<bool(std::size_t, const DavReply&)>& done) {
    std::vector<DavReply> replies = UnsentReplies(requests);
    std::vector<int> hops(requests.size(), 0);
    Progress progress;
    progress.parallel = static_cast<std::size_t>(std::max(parallel, 1));
    transfers_.LimitConnections(static_cast<int>(progress.parallel));
    StartMore(requests, progress);
    while (progress.running > 0) {
        for (auto& [index, reply] : transfers_.Finished()) {
            reply.Anonymous = authorization_.isEmpty();
            if (FollowRedirect(requests[index], index, reply, hops[index])) {
                continue;
            }
            --progress.running;
            replies[index] = std::move(reply);
            if (done && !done(index, replies[index])) {
                progress.stopped = true;
            }
            StartMore(requests, progress);
        }
    }
    return replies;
}

int CalDavClient::Sent(const QByteArray& method) const {
    const auto count = sent_.find(method);
    return count == sent_.end() ? 0 : count->second;
}

namespace {

// What to do about an answer with a failing HTTP status.
QString StatusAdvice(int status) {
    switch (status) {
        case 401:
            return QStringLiteral(
                "the server refused the user name or password (401); check --user and the "
                "password");
        case 403:
            return QStringLiteral(
                "the server forbids this (403); check that the user may write to this calendar");
        case 404:
            return QStringLiteral("not found (404); check the URL of the calendar collection");
        case 405:
            return QStringLiteral(
                "the server does not allow this here (405); check that the URL names a calendar "
                "collection");
        case 412:
            return QStringLiteral("changed on the server (412)");
        case 507:
            return QStringLiteral("the server has no room left (507); free some space on it");
        default:
            break;
    }
    if (status >= 500) {
        return QStringLiteral("the server failed (%1); try again later, or ask its administrator")
            .arg(status);
    }
    return QStringLiteral("the server answered %1; check the URL").arg(status);
}

// A request that got no HTTP answer: not sent, timed out, redirected
// elsewhere, refused by TLS or by the network; nothing for one that got one.
QString TransportFailure(const DavReply& reply, const QString& url, int timeoutSeconds) {
    if (reply.NotSent) {
        return QStringLiteral("%1: not sent, as the server had stopped answering").arg(url);
    }
    if (reply.TimedOut) {
        return QStringLiteral(
                   "%1: no answer within %2; check that the server is running "
                   "and can be reached, or give it longer with --timeout")
            .arg(url, timeoutSeconds == 1 ? QStringLiteral("1 second")
                                          : QStringLiteral("%1 seconds").arg(timeoutSeconds));
    }
    if (reply.RedirectRefused) {
        return QStringLiteral("%1: %2").arg(url, reply.NetworkError);
    }
    if (reply.TlsRefused) {
        return QStringLiteral(
                   "%1: %2; if the server has a certificate of its own, give that certificate "
                   "with --ca-file")
            .arg(url, reply.NetworkError);
    }
    if (reply.Status == 0) {
        return QStringLiteral("%1: %2; check the URL and that the server is running")
            .arg(url, reply.NetworkError);
    }
    return {};
}

}  // namespace

QString DescribeFailure(const DavReply& reply, int timeoutSeconds) {
    const QString url = reply.Url.toString(QUrl::RemoveUserInfo);
    if (reply.Status >= 200 && reply.Status < 300) {
        return {};
    }
    if (const QString failure = TransportFailure(reply, url, timeoutSeconds); !failure.isEmpty()) {
        return failure;
    }
    const QString reason = DavErrorText(reply.Body);
    // A refusal that names a rule other than the user's rights is about the
    // request itself, such as an event the server will not store.
    if (reply.Status == 403 && NamesABrokenCondition(reply.Body)) {
        return QStringLiteral("%1: the server refuses this (403): %2").arg(url, reason);
    }
    if (reply.Status == 401 && reply.Anonymous) {
        return QStringLiteral(
                   "%1: the server asks for a user name and password (401), and none was found; "
                   "give the user with --user, and the password with --password-file FILE, in "
                   "~/.netrc or in the environment variable KELVANE_CALDAV_PASSWORD")
            .arg(url);
    }
    QString message = url + QStringLiteral(": ") + StatusAdvice(reply.Status);
    if (!reason.isEmpty() && reply.Status != 412) {
        message += QStringLiteral("; the server says: ") + reason;
    }
    return message;
}

}  // namespace kelvane::cal
