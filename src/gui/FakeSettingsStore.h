#pragma once

#include <QMap>

#include "gui/SettingsStore.h"

namespace kelvane {

// Settings kept in memory, where tests can put them beforehand and read them after.
class FakeSettingsStore final : public SettingsStore {
  public:
    QString GetSetting(const QString& appName, const QString& section, const QString& key,
                       const QString& defaultValue) const override {
        return Values.value(Key(appName, section, key), defaultValue);
    }
    void SaveSetting(const QString& appName, const QString& section, const QString& key,
                     const QString& value) override {
        Values.insert(Key(appName, section, key), value);
        ++Saves;
    }

    // The key of `Values` for one setting: "app/section/key".
    static QString Key(const QString& appName, const QString& section, const QString& key) {
        return appName + QLatin1Char('/') + section + QLatin1Char('/') + key;
    }

    // Every setting there is, keyed as Key() makes them.
    QMap<QString, QString> Values;
    // How many times SaveSetting was called.
    int Saves = 0;
};

}  // namespace kelvane
