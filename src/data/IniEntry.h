#pragma once

#include <QString>

namespace velmora {

// One entry of an initialisation file.
//
// A bare file name such as "Velmora.INI" lives in the directory that the environment variable VELMORA_SYSTEM_DIR names,
// else in /etc/velmora. Values are at most 255 characters long; a longer one is cut.
class INIEntry {
public:
    QString Section;
    QString Key;
    QString Value;
    // Empty means the program's own file: the executable's name followed by ".ini".
    QString FileName;
    // What reading gives when the key is absent.
    QString Default;

    // These two set FileName to "win.ini", the system's own file.
    QString ReadWinIni();
    // Non-zero on success.
    int WriteWinIni();

    QString ReadPrivate();
    int WritePrivate();
    // Writes `value` under `key` of Section.
    void SetPrivate(const QString& key, const QString& value);

private:
    QString Read() const;
    int Write() const;
    void UseOwnFileByDefault();
};

// The native path of an initialisation file.
QString ProfilePath(const QString& fileName);

} // namespace velmora
