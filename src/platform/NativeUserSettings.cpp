#include "platform/NativeUserSettings.h"

#include "base/Error.h"

#include <QSettings>

namespace velmora {

std::optional<QString> NativeUserSettings::Read(const QString& application, const QString& section,
                                                const QString& key) const {
    const QSettings store(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Velmora"), application);
    const QVariant value = store.value(section + u'/' + key);
    return value.isValid() ? std::optional(value.toString()) : std::nullopt;
}

void NativeUserSettings::Write(const QString& application, const QString& section, const QString& key,
                               const QString& value) {
    QSettings store(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Velmora"), application);
    store.setValue(section + u'/' + key, value);
    store.sync();
    if (store.status() != QSettings::NoError) {
        throw ProgramError(ErrorNumber::FileAccess,
                           QStringLiteral("The setting \"%1\" could not be stored in %2").arg(key, store.fileName()));
    }
}

} // namespace velmora
