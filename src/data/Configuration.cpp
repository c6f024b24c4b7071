#include "data/Configuration.h"

#include "base/Program.h"
#include "base/Value.h"
#include "data/IniEntry.h"
#include "data/NativePath.h"

#include <QDir>
#include <QFileInfo>

namespace velmora {

namespace {

const QString applicationName = QStringLiteral("Velmora");

const QString& DatabaseDirectory() {
    QString& directory = Settings().DatabaseDirectory;
    if (directory.isEmpty()) {
        directory = DataDirectory();
    }
    return directory;
}

} // namespace

ProgramSettings& Settings() {
    return CurrentProgram().Part<ProgramSettings>();
}

QString GetConfigValue(const QString& application, const QString& section, const QString& key,
                       const QString& defaultValue) {
    // A value that nobody would configure distinguishes an absent key from an empty one.
    const QString absent = QStringLiteral("ZZZZZZZZ");
    INIEntry entry;
    entry.Default = absent;
    entry.FileName = QStringLiteral("Velmora.INI");
    entry.Section = section;
    entry.Key = key;
    const QString value = entry.ReadPrivate();
    if (value != absent) {
        return value;
    }
    return CurrentProgram().services().userSettings.Read(application, section, key).value_or(defaultValue);
}

QString DataDirectory() {
    QString& directory = Settings().DataDirectory;
    if (directory.isEmpty()) {
        directory =
            GetConfigValue(applicationName, QStringLiteral("Files"), QStringLiteral("Database"), QDir::currentPath());
    }
    return directory;
}

QString DatabasePath() {
    return DatabaseDirectory() + QStringLiteral("\\Velmora.MDB");
}

Site ConfiguredSite() {
    return Site(NativePath(DatabaseDirectory()) + u'/');
}

QString HelpDirectory() {
    return GetConfigValue(applicationName, QStringLiteral("Files"), QStringLiteral("Help"),
                          QFileInfo(CurrentProgram().services().executablePath).path());
}

void ReadLogoffMinute() {
    qint16& minute = Settings().LogoffMinute;
    if (minute != 0) {
        return;
    }
    const QString text =
        GetConfigValue(applicationName, QStringLiteral("Actions"), QStringLiteral("Logoff"), QStringLiteral("16000"));
    bool isNumber = false;
    const double value = text.trimmed().toDouble(&isNumber);
    constexpr double largest = 32767;
    if (!isNumber || !(value >= -largest - 1 && value <= largest)) {
        throw ProgramError(ErrorNumber::TypeMismatch,
                           QStringLiteral("\"%1\" is no minute of the day: set the key \"Logoff\" in section "
                                          "\"Actions\" of Velmora.INI to a number from 0 to 1440, or above for no "
                                          "shutdown")
                               .arg(text));
    }
    minute = static_cast<qint16>(Value(value).ToInteger());
}

} // namespace velmora
