#include "platform/NativeUserSettings.h"

#include "base/Error.h"

#include <QFile>
#include <QSettings>

namespace velmora {

namespace {

// Passwords are kept in these files.
void HideFromOthers(const QString& path) {
    constexpr auto forOwner =
        QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadUser | QFile::WriteUser | QFile::ExeUser;
    if (QFile::exists(path)) {
        QFile::setPermissions(path, QFile::permissions(path) & forOwner);
    }
}

} // namespace

std::optional<QString> NativeUserSettings::Read(const QString& application, const QString& section,
                                                const QString& key) const {
    const QSettings store(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Velmora"), application);
    const QVariant value = store.value(section + u'/' + key);
    return value.isValid() ? std::optional(value.toString()) : std::nullopt;
}

void NativeUserSettings::Write(const QString& application, const QString& section, const QString& key,
                               const QString& value) {
    QSettings store(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Velmora"), application);
    // A file that is there already keeps its permissions when it is written.
    HideFromOthers(store.fileName());
    store.setValue(section + u'/' + key, value);
    store.sync();
    HideFromOthers(store.fileName());
    if (store.status() != QSettings::NoError) {
        throw ProgramError(ErrorNumber::FileAccess,
                           QStringLiteral("The setting \"%1\" could not be stored in %2").arg(key, store.fileName()));
    }
}

} // namespace velmora
