#include "RadicaleServer.h"

#include "LocalServer.h"

#include <QAuthenticator>
#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QStandardPaths>
#include <QThread>

#include "kelvane_cal/DavXml.h"

#include <csignal>

namespace kelvane::cal::testing {

RadicaleServer::RadicaleServer(Tls tls) : tls_(tls == Tls::On) {
    const QString radicale = QStandardPaths::findExecutable(QStringLiteral("radicale"));
    if (radicale.isEmpty()) {
        problem_ =
            QStringLiteral("radicale is not installed (scripts/install-deps.sh installs it)");
        return;
    }
    if (tls_ && !MakeCertificate()) {
        return;
    }
    port_ = FreePort();
    WriteText(folder_.filePath(QStringLiteral("users")), "alice:secret\n");
    WriteText(folder_.filePath(QStringLiteral("config")), Config());
    process_.setProgram(radicale);
    process_.setArguments({QStringLiteral("--config"), folder_.filePath(QStringLiteral("config"))});
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // Another test's server may take the port between its choice and its
    // use; this one then ends at once, and another port is tried.
    for (int attempt = 0; attempt < 5 && !Start(); ++attempt) {
        port_ = FreePort();
        WriteText(folder_.filePath(QStringLiteral("config")), Config());
    }
}

// A certificate signed by its own key, as a home server makes for itself.
bool RadicaleServer::MakeCertificate() {
    QProcess openssl;
    openssl.setProcessChannelMode(QProcess::MergedChannels);
    openssl.start(
        QStringLiteral("openssl"),
        {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
         QStringLiteral("ec"), QStringLiteral("-pkeyopt"),
         QStringLiteral("ec_paramgen_curve:prime256v1"), QStringLiteral("-nodes"),
         QStringLiteral("-subj"), QStringLiteral("/CN=localhost"), QStringLiteral("-addext"),
         QStringLiteral("subjectAltName=IP:127.0.0.1,DNS:localhost"), QStringLiteral("-days"),
         QStringLiteral("2"), QStringLiteral("-keyout"),
         folder_.filePath(QStringLiteral("key.pem")), QStringLiteral("-out"), CertificateFile()});
    if (!openssl.waitForFinished(60000) || openssl.exitStatus() != QProcess::NormalExit ||
        openssl.exitCode() != 0) {
        problem_ = QStringLiteral("openssl made no certificate: ") +
                   QString::fromLocal8Bit(openssl.readAll()) + openssl.errorString();
        return false;
    }
    return true;
}

QByteArray RadicaleServer::Config() const {
    const QString tls =
        tls_ ? QStringLiteral("ssl = True\ncertificate = %1\nkey = %2\n")
                   .arg(CertificateFile(), folder_.filePath(QStringLiteral("key.pem")))
             : QString();
    return QStringLiteral(
               "[server]\nhosts = 127.0.0.1:%1\n%4"
               "[auth]\ntype = htpasswd\nhtpasswd_filename = %2\n"
               "htpasswd_encryption = plain\ndelay = 0\n"
               "[storage]\nfilesystem_folder = %3\n"
               "[logging]\nlevel = warning\n")
        .arg(port_)
        .arg(folder_.filePath(QStringLiteral("users")), folder_.filePath(QStringLiteral("storage")),
             tls)
        .toUtf8();
}

RadicaleServer::~RadicaleServer() {
    if (killer_.joinable()) {
        killer_.join();
    }
    Stop();
}

void RadicaleServer::KillWhenHolding(const QString& name, int count, qint64 pid) {
    const QString folder =
        folder_.filePath(QStringLiteral("storage/collection-root/alice/") + name);
    if (pid == 0) {
        pid = process_.processId();
    }
    killer_ = std::thread([folder, count, pid] {
        const QDeadlineTimer deadline(60000);
        while (!deadline.hasExpired()) {
            if (QDir(folder).entryList({QStringLiteral("*.ics")}, QDir::Files).size() >= count) {
                ::kill(static_cast<pid_t>(pid), SIGKILL);
                return;
            }
            QThread::msleep(10);
        }
    });
}

bool RadicaleServer::Start() {
    return StartListening(process_, port_, QStringLiteral("radicale"), problem_);
}

void RadicaleServer::Stop() {
    if (killer_.joinable()) {
        killer_.join();
    }
    StopProcess(process_);
}

RadicaleServer::Answer RadicaleServer::Request(
    const QByteArray& method, const QUrl& url, const QByteArray& body,
    const QList<QPair<QByteArray, QByteArray>>& headers) {
    QNetworkAccessManager manager;
    QNetworkRequest request(url);
    request.setTransferTimeout(20000);
    if (tls_) {
        QSslConfiguration trusting = QSslConfiguration::defaultConfiguration();
        trusting.setCaCertificates(QSslCertificate::fromPath(CertificateFile()));
        request.setSslConfiguration(trusting);
    }
    request.setRawHeader("Authorization", "Basic " + QByteArray("alice:secret").toBase64());
    for (const auto& [name, value] : headers) {
        request.setRawHeader(name, value);
    }
    QNetworkReply* reply = manager.sendCustomRequest(request, method, body);
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    loop.exec();
    Answer answer{reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(),
                  reply->readAll(), reply->rawHeader("ETag")};
    reply->deleteLater();
    return answer;
}

QString RadicaleServer::Calendar(const QString& name) {
    const QString url = QStringLiteral("%1://127.0.0.1:%2/alice/%3/")
                            .arg(tls_ ? QStringLiteral("https") : QStringLiteral("http"))
                            .arg(port_)
                            .arg(name);
    Request("MKCALENDAR", QUrl(url));
    return url;
}

QStringList RadicaleServer::Resources(const QString& calendarUrl) {
    const Answer answer = Request("PROPFIND", QUrl(calendarUrl), ETagsRequestBody(),
                                  {{"Depth", "1"}, {"Content-Type", "application/xml"}});
    std::vector<DavResource> resources;
    QString problem;
    ParseMultistatus(answer.Body, resources, problem);
    QStringList names;
    for (const DavResource& resource : resources) {
        const QString name = resource.Href.section(QLatin1Char('/'), -1);
        if (name.endsWith(QStringLiteral(".ics"))) {
            names.append(QUrl::fromPercentEncoding(name.toUtf8()));
        }
    }
    names.sort();
    return names;
}

}  // namespace kelvane::cal::testing
