#pragma once

#include "gui/SettingsStore.h"

namespace kelvane {

// The settings in QSettings' per-user store, under the organisation "Kelvane":
// one store per application name, one group per section, every value a text.
class QtSettingsStore final : public SettingsStore {
  public:
    QString GetSetting(const QString& appName, const QString& section, const QString& key,
                       const QString& defaultValue) const override;
    void SaveSetting(const QString& appName, const QString& section, const QString& key,
                     const QString& value) override;
};

}  // namespace kelvane
