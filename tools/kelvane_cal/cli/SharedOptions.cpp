#include "kelvane_cal/cli/SharedOptions.h"

#include "kelvane_cal/caldav/CalDavClient.h"
#include "kelvane_cal/caldav/CalDavUrl.h"
#include "kelvane_cal/cli/CommandRunners.h"
#include "kelvane_cal/ical/ICalExport.h"

namespace kelvane::cal {

bool ReadExportYear(const QString& text, int& year, QString& problem) {
    if (ParseWholeNumber(text, kFirstExportYear, kLastExportYear, year)) {
        return true;
    }
    problem = QStringLiteral("--year takes a year from %1").arg(ExportYears());
    return false;
}

bool ReadUidSeed(const Arguments& arguments, QString& seed, QString& problem) {
    const QString option = QStringLiteral("--uid-seed");
    seed = arguments.Value(option);
    if (arguments.HasValue(option) && seed.trimmed().isEmpty()) {
        problem = QStringLiteral("--uid-seed takes a text that is not blank");
        return false;
    }
    return true;
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

bool ReadCaFile(const Arguments& arguments, QList<QSslCertificate>& certificates,
                QString& problem) {
    const QString option = QStringLiteral("--ca-file");
    certificates.clear();
    return !arguments.HasValue(option) ||
           ReadCertificates(arguments.Value(option), certificates, problem);
}

bool ReadCollectionUrl(const Arguments& arguments, const QString& text, QUrl& url, QString& problem,
                       QTextStream& err) {
    QString warning;
    if (!CollectionUrl(text, arguments.Has(QStringLiteral("--allow-http")), url, problem,
                       warning)) {
        return false;
    }
    if (!warning.isEmpty()) {
        Warn(warning, err);
    }
    return true;
}

PasswordSources PasswordSourcesOf(const QString& passwordFile, const Environment& environment) {
    return {passwordFile, environment.NetrcFile, environment.PasswordVariable,
            environment.PasswordVariableSet};
}

}  // namespace kelvane::cal
