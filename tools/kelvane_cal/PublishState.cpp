#include "kelvane_cal/PublishState.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

namespace kelvane::cal {

PublishState::PublishState(const QString& folder, const QString& url, const QString& seed)
    : folder_(folder), url_(url), seed_(seed) {
    const QByteArray key = QCryptographicHash::hash((url + QLatin1Char('\n') + seed).toUtf8(),
                                                    QCryptographicHash::Sha256)
                               .toHex()
                               .left(24);
    fileName_ =
        QDir(folder).filePath(QStringLiteral("caldav-%1.json").arg(QString::fromLatin1(key)));
}

bool PublishState::Load(QString& problem) {
    Events.clear();
    QFile file(fileName_);
    if (!file.exists()) {
        return true;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        problem = QStringLiteral("%1: cannot be read: %2").arg(fileName_, file.errorString());
        return false;
    }
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    const QJsonObject root = document.object();
    if (!document.isObject() || root.value(QStringLiteral("url")).toString() != url_ ||
        root.value(QStringLiteral("seed")).toString() != seed_) {
        problem = QStringLiteral(
                      "%1: is damaged or belongs to another collection; move it away "
                      "and publish again")
                      .arg(fileName_);
        return false;
    }
    const QJsonObject events = root.value(QStringLiteral("events")).toObject();
    for (auto event = events.begin(); event != events.end(); ++event) {
        const QJsonObject fields = event.value().toObject();
        Events[event.key()] = {fields.value(QStringLiteral("etag")).toString().toUtf8(),
                               fields.value(QStringLiteral("hash")).toString().toLatin1()};
    }
    return true;
}

bool PublishState::Save(QString& problem) const {
    QJsonObject events;
    for (const auto& [uid, event] : Events) {
        events.insert(uid, QJsonObject{{QStringLiteral("etag"), QString::fromUtf8(event.ETag)},
                                       {QStringLiteral("hash"), QString::fromLatin1(event.Hash)}});
    }
    const QJsonObject root{{QStringLiteral("url"), url_},
                           {QStringLiteral("seed"), seed_},
                           {QStringLiteral("events"), events}};
    if (!QDir().mkpath(folder_)) {
        problem = QStringLiteral("%1: the folder cannot be made").arg(folder_);
        return false;
    }
    QSaveFile file(fileName_);
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(QJsonDocument(root).toJson(QJsonDocument::Compact)) < 0 || !file.commit()) {
        problem = QStringLiteral("%1: cannot be written: %2").arg(fileName_, file.errorString());
        return false;
    }
    return true;
}

}  // namespace kelvane::cal
