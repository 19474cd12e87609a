#include "gui/QtSettingsStore.h"

#include <QSettings>

namespace kelvane {
namespace {

constexpr char kOrganisation[] = "Kelvane";

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
    settings.beginGroup(section);
    settings.setValue(key, value);
    settings.endGroup();
    settings.sync();
}

}  // namespace kelvane
