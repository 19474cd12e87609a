#pragma once

#include <QString>
#include <QUrl>

namespace kelvane::cal {

// How long a CalDAV request may go without a byte coming back.
inline constexpr int kDefaultTimeoutSeconds = 60;

// Whether a text names a CalDAV collection rather than a file.
bool IsWebAddress(const QString& text);

// The collection URL of `text`, ending in "/": https, or http to a loopback
// address, or http anywhere with `allowHttp` (which gives a `warning` to
// show). False with the problem otherwise.
bool CollectionUrl(const QString& text, bool allowHttp, QUrl& url, QString& problem,
                   QString& warning);

// Where the requests to a collection go, the same for every spelling of its
// URL: the scheme, the address the host resolves to (the lowest IPv4
// address, else the lowest IPv6 one; the name itself when it resolves to
// none), the port even when it is the default, and the path with its
// percent-encoding made uniform and one "/" at its end.
// "http://localhost:8090/alice/plan" gives "http://127.0.0.1:8090/alice/plan/".
// One publish at a time goes there.
QString CollectionKey(const QUrl& collection);

// The collection as publish remembers it: as CollectionKey, but with the
// host's name in small letters, as sites that share an address (one server
// for many names) are apart; only the names of this computer are one.
QString CollectionName(const QUrl& collection);

// The URL of an event's resource in a collection: its UID, percent-encoded, and ".ics".
QUrl EventUrl(const QUrl& collection, const QString& uid);
// The UID a resource's path names, or empty when it names no .ics file.
QString UidOfHref(const QString& href);

}  // namespace kelvane::cal
