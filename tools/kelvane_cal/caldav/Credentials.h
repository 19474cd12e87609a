#pragma once

#include <QString>
#include <QUrl>

namespace kelvane::cal {

// Where a password may come from; never from the command line.
struct PasswordSources {
    QString PasswordFile;      // --password-file, empty when not given
    QString NetrcFile;         // usually ~/.netrc
    QString EnvironmentValue;  // KELVANE_CALDAV_PASSWORD
    bool EnvironmentSet = false;
};

struct Credentials {
    QString User;  // empty: no authentication
    QString Password;
};

// The user and password for `url`: the user from --user (or the netrc entry
// of the server), the password from the password file, the netrc entry or
// the environment, in this order. False with the problem when the password
// file or the netrc file cannot be used (others than their owner may read
// them), or when a user has no password from any of them.
bool FindCredentials(const QUrl& url, const QString& user, const PasswordSources& sources,
                     Credentials& credentials, QString& problem);

}  // namespace kelvane::cal
