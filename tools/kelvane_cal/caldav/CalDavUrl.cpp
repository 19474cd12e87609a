#include "kelvane_cal/caldav/CalDavUrl.h"

#include <QHostAddress>
#include <QHostInfo>
#include <QStringList>

#include <algorithm>

namespace kelvane::cal {

namespace {

bool IsLoopback(const QString& host) {
    if (host.compare(QStringLiteral("localhost"), Qt::CaseInsensitive) == 0) {
        return true;
    }
    const QHostAddress address(host);
    return !address.isNull() && address.isLoopback();
}

// IPv4 addresses before IPv6 ones, each in numeric order; an IPv6 address
// that stands for an IPv4 one counts as that.
bool ComesFirst(const QHostAddress& a, const QHostAddress& b) {
    bool aIsV4 = false;
    bool bIsV4 = false;
    const quint32 a4 = a.toIPv4Address(&aIsV4);
    const quint32 b4 = b.toIPv4Address(&bIsV4);
    if (aIsV4 != bIsV4) {
        return aIsV4;
    }
    if (aIsV4) {
        return a4 < b4;
    }
    const Q_IPV6ADDR a6 = a.toIPv6Address();
    const Q_IPV6ADDR b6 = b.toIPv6Address();
    return std::lexicographical_compare(a6.c, a6.c + 16, b6.c, b6.c + 16);
}

// The one address that stands for a host, written as in a URL.
QString AddressOfHost(const QString& host) {
    const QHostAddress literal(host);
    const QList<QHostAddress> addresses =
        literal.isNull() ? QHostInfo::fromName(host).addresses() : QList<QHostAddress>{literal};
    if (addresses.isEmpty()) {
        return host.toLower();
    }
    const QHostAddress first = *std::min_element(addresses.begin(), addresses.end(), ComesFirst);
    bool isV4 = false;
    const quint32 v4 = first.toIPv4Address(&isV4);
    return isV4 ? QHostAddress(v4).toString()
                : QLatin1Char('[') + first.toString() + QLatin1Char(']');
}

// Each segment of the path decoded and encoded again, so that "%61" and "a"
// are one (an encoded "/" stays inside its segment), "." and ".." resolved.
QString UniformPath(const QUrl& url) {
    QStringList kept;
    for (const QString& segment : url.path(QUrl::FullyEncoded).split(QLatin1Char('/'))) {
        const QString decoded = QUrl::fromPercentEncoding(segment.toLatin1());
        if (decoded == QLatin1String("..")) {
            if (kept.size() > 1) {
                kept.removeLast();
            }
        } else if (decoded != QLatin1String(".")) {
            kept.append(QString::fromLatin1(QUrl::toPercentEncoding(decoded)));
        }
    }
    QString path = kept.join(QLatin1Char('/'));
    while (path.endsWith(QLatin1Char('/'))) {
        path.chop(1);
    }
    return path + QLatin1Char('/');
}

// The collection's URL in one spelling, with the host as `hostText` gives it.
QString UniformCollection(const QUrl& collection, const QString& hostText) {
    const QString scheme = collection.scheme().toLower();
    const int port = collection.port(scheme == QLatin1String("https") ? 443 : 80);
    return QStringLiteral("%1://%2:%3%4")
        .arg(scheme, hostText, QString::number(port), UniformPath(collection));
}

}  // namespace

QString CollectionKey(const QUrl& collection) {
    return UniformCollection(collection, AddressOfHost(collection.host(QUrl::FullyEncoded)));
}

QString CollectionName(const QUrl& collection) {
    const QString host = collection.host(QUrl::FullyEncoded);
    return UniformCollection(collection,
                             IsLoopback(collection.host()) ? AddressOfHost(host) : host.toLower());
}

bool IsWebAddress(const QString& text) {
    return text.startsWith(QStringLiteral("http://"), Qt::CaseInsensitive) ||
           text.startsWith(QStringLiteral("https://"), Qt::CaseInsensitive);
}

bool CollectionUrl(const QString& text, bool allowHttp, QUrl& url, QString& problem,
                   QString& warning) {
    url = QUrl(text, QUrl::StrictMode);
    const QString scheme = url.scheme().toLower();
    if (!url.isValid() || url.host().isEmpty() ||
        (scheme != QLatin1String("http") && scheme != QLatin1String("https"))) {
        problem = QStringLiteral("%1: is no http or https address").arg(text);
        return false;
    }
    if (!url.userInfo().isEmpty()) {
        problem = QStringLiteral(
                      "%1: leave the user and password out of the address; give the "
                      "user with --user")
                      .arg(url.toString(QUrl::RemoveUserInfo));
        return false;
    }
    if (scheme == QLatin1String("http") && !IsLoopback(url.host())) {
        if (!allowHttp) {
            problem = QStringLiteral(
                          "%1: plain http would send the password unencrypted; use "
                          "https, or --allow-http for a server on a home network")
                          .arg(text);
            return false;
        }
        warning = QStringLiteral("%1: plain http sends the password and the calendar unencrypted")
                      .arg(text);
    }
    if (!url.path().endsWith(QLatin1Char('/'))) {
        url.setPath(url.path() + QLatin1Char('/'));
    }
    return true;
}

QUrl EventUrl(const QUrl& collection, const QString& uid) {
    QUrl url = collection;
    url.setPath(collection.path() + QString::fromLatin1(QUrl::toPercentEncoding(uid)) +
                    QStringLiteral(".ics"),
                QUrl::TolerantMode);
    return url;
}

QString UidOfHref(const QString& href) {
    const QString name = QUrl::fromPercentEncoding(href.section(QLatin1Char('/'), -1).toUtf8());
    if (!name.endsWith(QStringLiteral(".ics"))) {
        return {};
    }
    return name.chopped(4);
}

}  // namespace kelvane::cal
