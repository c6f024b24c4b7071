#include "data/IniEntry.h"

#include "base/Program.h"
#include "data/NativePath.h"
#include "platform/ProfileFile.h"

#include <QFileInfo>

namespace velmora {

namespace {
constexpr qsizetype longestValue = 255;
}

QString ProfilePath(const QString& fileName) {
    const QString native = NativePath(fileName);
    if (native.contains(u'/')) {
        return native;
    }
    QString directory = qEnvironmentVariable("VELMORA_SYSTEM_DIR");
    if (directory.isEmpty()) {
        directory = QStringLiteral("/etc/velmora");
    }
    return directory + u'/' + native;
}

QString INIEntry::Read() const {
    return ProfileFile(ProfilePath(FileName)).Read(Section, Key).value_or(Default).left(longestValue);
}

int INIEntry::Write() const {
    return ProfileFile(ProfilePath(FileName)).Write(Section, Key, Value.left(longestValue)) ? 1 : 0;
}

void INIEntry::UseOwnFileByDefault() {
    if (FileName.isEmpty()) {
        FileName = QFileInfo(CurrentProgram().services().executablePath).fileName() + QStringLiteral(".ini");
    }
}

QString INIEntry::ReadWinIni() {
    FileName = QStringLiteral("win.ini");
    return Read();
}

int INIEntry::WriteWinIni() {
    FileName = QStringLiteral("win.ini");
    return Write();
}

QString INIEntry::ReadPrivate() {
    UseOwnFileByDefault();
    return Read();
}

int INIEntry::WritePrivate() {
    UseOwnFileByDefault();
    return Write();
}

void INIEntry::SetPrivate(const QString& key, const QString& value) {
    Key = key;
    Value = value;
    WritePrivate();
}

} // namespace velmora
