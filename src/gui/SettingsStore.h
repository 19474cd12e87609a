#pragma once

#include <QString>

namespace kelvane {

// The per-user settings store: texts under an application, a section and a key.
class SettingsStore {
  public:
    virtual ~SettingsStore() = default;

    // The text saved under the key, or `defaultValue` when there is none.
    virtual QString GetSetting(const QString& appName, const QString& section, const QString& key,
                               const QString& defaultValue) const = 0;
    virtual void SaveSetting(const QString& appName, const QString& section, const QString& key,
                             const QString& value) = 0;
};

}  // namespace kelvane
