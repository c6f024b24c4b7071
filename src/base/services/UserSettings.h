#pragma once

#include <QString>

#include <optional>

namespace velmora {

// The per-user store of settings, kept by the operating system's means.
class UserSettings {
public:
    virtual ~UserSettings() = default;
    // None when the user has no such setting.
    virtual std::optional<QString> Read(const QString& application, const QString& section,
                                        const QString& key) const = 0;
    virtual void Write(const QString& application, const QString& section, const QString& key,
                       const QString& value) = 0;
};

} // namespace velmora
