#pragma once

#include <QDateTime>
#include <QString>
#include <QUrl>

#include <vector>

#include "calfile/CalendarFile.h"
#include "kelvane_cal/caldav/DavMessages.h"

// The PUTs with which `kelvane-cal publish FILE --year YEAR --url COLLECTION`
// fills an empty collection: the events come from its export and its plan,
// so that another client can send the very same requests.
std::vector<kelvane::cal::DavRequest> FirstPublishPuts(const kelvane::CalendarFileContent& content,
                                                       const QString& file, int year,
                                                       const QDateTime& now,
                                                       const QUrl& collection);
