#include "kelvane_cal/caldav/Credentials.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace kelvane::cal {

namespace {

constexpr QFileDevice::Permissions kOthersMayRead =
    QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ReadOther |
    QFileDevice::WriteOther;

// A file with a password is used only when no one but its owner may read it.
bool OwnerAlone(const QString& fileName, QString& problem) {
    if (QFileInfo(fileName).permissions() & kOthersMayRead) {
        problem = QStringLiteral("%1: others than its owner may read it; run chmod 600 on it")
                      .arg(fileName);
        return false;
    }
    return true;
}

bool ReadPasswordFile(const QString& fileName, QString& password, QString& problem) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        problem = QStringLiteral("%1: cannot be read: %2").arg(fileName, file.errorString());
        return false;
    }
    if (!OwnerAlone(fileName, problem)) {
        return false;
    }
    password =
        QString::fromUtf8(file.readLine()).remove(QLatin1Char('\n')).remove(QLatin1Char('\r'));
    return true;
}

struct NetrcEntry {
    QString Login;
    QString Password;
    bool Found = false;
    bool HasPassword = false;
};

// The entry of `host` in a netrc file, or its default entry.
NetrcEntry ReadNetrc(const QString& fileName, const QString& host) {
    QFile file(fileName);
    if (fileName.isEmpty() || !file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QStringList words =
        QString::fromUtf8(file.readAll())
            .split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
    NetrcEntry chosen;
    NetrcEntry fallback;
    NetrcEntry* current = nullptr;
    for (qsizetype i = 0; i < words.size(); ++i) {
        const QString& word = words[i];
        const QString next = i + 1 < words.size() ? words[i + 1] : QString();
        if (word == QLatin1String("machine")) {
            current = next == host && !chosen.Found ? &chosen : nullptr;
            if (current != nullptr) {
                current->Found = true;
            }
            ++i;
        } else if (word == QLatin1String("default")) {
            current = fallback.Found ? nullptr : &fallback;
            if (current != nullptr) {
                current->Found = true;
            }
        } else if (word == QLatin1String("login") && current != nullptr) {
            current->Login = next;
            ++i;
        } else if (word == QLatin1String("password") && current != nullptr) {
            current->Password = next;
            current->HasPassword = true;
            ++i;
        }
    }
    return chosen.Found ? chosen : fallback;
}

QString NoPassword(const QUrl& url, const QString& user, const PasswordSources& sources) {
    return QStringLiteral(
               "no password was found for %1 at %2; give it with --password-file FILE, in %3 "
               "(machine %2 login %1 password ...), or in the environment variable "
               "KELVANE_CALDAV_PASSWORD")
        .arg(user, url.host(), sources.NetrcFile);
}

}  // namespace

bool FindCredentials(const QUrl& url, const QString& user, const PasswordSources& sources,
                     Credentials& credentials, QString& problem) {
    const NetrcEntry netrc = ReadNetrc(sources.NetrcFile, url.host());
    const bool netrcLogin = user.isEmpty() && netrc.Found;
    const bool netrcPassword = sources.PasswordFile.isEmpty() && netrc.HasPassword &&
                               (user.isEmpty() || user == netrc.Login);
    if ((netrcLogin || netrcPassword) && !OwnerAlone(sources.NetrcFile, problem)) {
        return false;
    }
    credentials.User = user.isEmpty() ? netrc.Login : user;
    if (!sources.PasswordFile.isEmpty()) {
        return ReadPasswordFile(sources.PasswordFile, credentials.Password, problem);
    }
    if (netrcPassword) {
        credentials.Password = netrc.Password;
    } else if (sources.EnvironmentSet) {
        credentials.Password = sources.EnvironmentValue;
    } else if (!credentials.User.isEmpty()) {
        // An empty password would only be refused by the server (401).
        problem = NoPassword(url, credentials.User, sources);
        return false;
    }
    return true;
}

}  // namespace kelvane::cal
