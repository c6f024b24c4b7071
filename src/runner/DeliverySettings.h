#pragma once

#include "base/services/UserSettings.h"

namespace velmora::runner {

// The user's settings with the leader style of one delivery, which is not stored.
class DeliverySettings : public UserSettings {
public:
    DeliverySettings(UserSettings& stored, std::optional<qint16> leaderStyle)
        : stored_(stored), leaderStyle_(leaderStyle) {}

    std::optional<QString> Read(const QString& application, const QString& section, const QString& key) const override {
        if (leaderStyle_ && key == u"Leader Style") {
            return QString::number(*leaderStyle_);
        }
        return stored_.Read(application, section, key);
    }
    void Write(const QString& application, const QString& section, const QString& key, const QString& value) override {
        stored_.Write(application, section, key, value);
    }

private:
    UserSettings& stored_;
    std::optional<qint16> leaderStyle_;
};

} // namespace velmora::runner
