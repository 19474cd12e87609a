#pragma once

#include <QList>
#include <QSslCertificate>
#include <QString>
#include <QTextStream>
#include <QUrl>

#include "kelvane_cal/caldav/Credentials.h"
#include "kelvane_cal/cli/Arguments.h"
#include "kelvane_cal/cli/Environment.h"

// The options several commands read alike: the year of export and publish,
// and those of a CalDAV collection for import and publish.
namespace kelvane::cal {

// Reads the year of --year for export and publish; false with the usage problem.
bool ReadExportYear(const QString& text, int& year, QString& problem);

// The text of --uid-seed, empty when it is not given; false with the usage
// problem when it is blank.
bool ReadUidSeed(const Arguments& arguments, QString& seed, QString& problem);

// The seconds of --timeout, or the default when it is not given; false with
// the problem when it is no whole number from 1 to 3600.
bool ReadTimeout(const Arguments& arguments, int& seconds, QString& problem);

// The certificates of --ca-file, or none when it is not given; false with the
// problem when the file cannot be read or holds no certificate.
bool ReadCaFile(const Arguments& arguments, QList<QSslCertificate>& certificates, QString& problem);

// The collection URL `text` names, as CollectionUrl reads it with
// --allow-http; its warning goes to `err`.
bool ReadCollectionUrl(const Arguments& arguments, const QString& text, QUrl& url, QString& problem,
                       QTextStream& err);

// The sources a command has: its --password-file, and the environment's.
PasswordSources PasswordSourcesOf(const QString& passwordFile, const Environment& environment);

}  // namespace kelvane::cal
