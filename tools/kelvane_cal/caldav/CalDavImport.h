#pragma once

#include <QByteArray>
#include <QList>
#include <QSslCertificate>
#include <QString>
#include <QUrl>

#include <vector>

#include "kelvane_cal/caldav/Credentials.h"

namespace kelvane::cal {

// The events of a CalDAV collection that fall in `year` (give or take a day,
// for times without a zone), read with a calendar-query REPORT: the calendar
// data of each resource that has some, in the server's order, waiting at most `timeoutSeconds` for
// the server to say something, and trusting the certificates `trusted` besides the system's. False
// with a message naming the URL when the server cannot be read.
bool FetchYear(const QUrl& collection, int year, const Credentials& credentials, int timeoutSeconds,
               const QList<QSslCertificate>& trusted, std::vector<QByteArray>& calendars,
               QString& problem);

}  // namespace kelvane::cal
