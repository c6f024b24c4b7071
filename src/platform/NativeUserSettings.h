#pragma once

#include "base/services/UserSettings.h"

namespace velmora {

// The toolkit's native per-user settings.
class NativeUserSettings : public UserSettings {
public:
    std::optional<QString> Read(const QString& application, const QString& section, const QString& key) const override;
    // Throws Error when the store cannot be written.
    void Write(const QString& application, const QString& section, const QString& key, const QString& value) override;
};

} // namespace velmora
