#include "kelvane_cal/CalDavUrl.h"

#include <QHostAddress>

#include "kelvane_cal/Arguments.h"
#include "kelvane_cal/CommandRunners.h"

namespace kelvane::cal {

namespace {

bool IsLoopback(const QString& host) {
    if (host.compare(QStringLiteral("localhost"), Qt::CaseInsensitive) == 0) {
        return true;
    }
    const QHostAddress address(host);
    return !address.isNull() && address.isLoopback();
}

}  // namespace

bool IsWebAddress(const QString& text) {
    return text.startsWith(QStringLiteral("http://"), Qt::CaseInsensitive) ||
           text.startsWith(QStringLiteral("https://"), Qt::CaseInsensitive);
}

bool CollectionUrl(const QString& text, bool allowHttp, QUrl& url, QString& problem,
                   QTextStream& err) {
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
        Warn(QStringLiteral("%1: plain http sends the password and the calendar unencrypted")
                 .arg(text),
             err);
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

bool ReadTimeout(const Arguments& arguments, int& seconds, QString& problem) {
    seconds = kDefaultTimeoutSeconds;
    const QString option = QStringLiteral("--timeout");
    if (arguments.HasValue(option) &&
        !ParseWholeNumber(arguments.Value(option), 1, 3600, seconds)) {
        problem = QStringLiteral("--timeout takes a number of seconds from 1 to 3600");
        return false;
    }
    return true;
}

QString UidOfHref(const QString& href) {
    const QString name = QUrl::fromPercentEncoding(href.section(QLatin1Char('/'), -1).toUtf8());
    if (!name.endsWith(QStringLiteral(".ics"))) {
        return {};
    }
    return name.chopped(4);
}

}  // namespace kelvane::cal
