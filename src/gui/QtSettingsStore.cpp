#include "gui/QtSettingsStore.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryFile>

namespace kelvane {
namespace {

constexpr char kOrganisation[] = "Kelvane";
// Room to spare on top of what a save adds.
constexpr qint64 kSlack = 4096;

// QSettings writes its file anew through a temporary one but counts that done
// even when the disk took only part of it, which leaves the old settings cut
// short. So a file of the size the new one may take, `growth` bytes more than
// the old, is written beside it first; when the disk has no room for that, the
// old settings are left as they are.
bool RoomForSettings(const QString& fileName, qint64 growth) {
    const QFileInfo file(fileName);
    if (!QDir().mkpath(file.absolutePath())) {
        return false;
    }
    QTemporaryFile probe(file.absolutePath() + QStringLiteral("/.settings-room-XXXXXX"));
    if (!probe.open()) {
        return false;
    }
    const QByteArray room(file.size() + growth + kSlack, '\n');
    return probe.write(room) == room.size() && probe.flush();
}

}  // namespace

QString QtSettingsStore::GetSetting(const QString& appName, const QString& section,
                                    const QString& key, const QString& defaultValue) const {
    QSettings settings(QString::fromLatin1(kOrganisation), appName);
    settings.beginGroup(section);
    return settings.value(key, defaultValue).toString();
}

// The settings are saved only when the program ends, so each save goes to the
// disk at once rather than waiting for QSettings to do it later.
void QtSettingsStore::SaveSetting(const QString& appName, const QString& section,
                                  const QString& key, const QString& value) {
    QSettings settings(QString::fromLatin1(kOrganisation), appName);
    // Written out, a character may take several bytes, escapes included.
    const qint64 growth = 8 * (section.size() + key.size() + value.size());
    if (!RoomForSettings(settings.fileName(), growth)) {
        return;
    }
    settings.beginGroup(section);
    settings.setValue(key, value);
    settings.endGroup();
    settings.sync();
}

}  // namespace kelvane
