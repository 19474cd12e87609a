#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QPair>
#include <QString>
#include <QUrl>

#include <vector>

#include "calfile/CalendarFile.h"

// One PUT of a first publish, as kelvane-cal sends it.
struct PlannedPut {
    QUrl Url;
    QByteArray Body;
    QList<QPair<QByteArray, QByteArray>> Headers;
};

// The PUTs with which `kelvane-cal publish FILE --year YEAR --url COLLECTION`
// fills an empty collection: the events come from its export and its plan,
// so that another client can send the very same requests.
std::vector<PlannedPut> FirstPublishPuts(const kelvane::CalendarFileContent& content,
                                         const QString& file, int year, const QDateTime& now,
                                         const QUrl& collection);
