#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>
#include <QUrl>

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

}  // namespace kelvane::cal
