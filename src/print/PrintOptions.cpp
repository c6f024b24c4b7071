#include "print/PrintOptions.h"

#include "base/Value.h"

#include <limits>

namespace velmora::print {

namespace {

struct SettingName {
    QString application = QStringLiteral("Velmora");
    QString section = QStringLiteral("Print Options");
    QString key = QStringLiteral("Leader Style");
};

} // namespace

qint16 LoadLeaderStyle(const UserSettings& settings) {
    const SettingName name;
    const Value stored(settings.Read(name.application, name.section, name.key).value_or(QStringLiteral("0")));
    const qint64 style = stored.ToInteger();
    const bool fits = style >= std::numeric_limits<qint16>::min() && style <= std::numeric_limits<qint16>::max();
    return fits ? static_cast<qint16>(style) : qint16{0};
}

void SaveLeaderStyle(UserSettings& settings, qint16 style) {
    const SettingName name;
    settings.Write(name.application, name.section, name.key, QString::number(style));
}

} // namespace velmora::print
