#pragma once

#include "site/Site.h"

#include <QString>

namespace velmora {

// Settings resolved on first use and kept for the program's life.
struct ProgramSettings {
    // Minute of the day at which the program shuts itself down; above 1440 never; 0 means not yet read.
    qint16 LogoffMinute = 0;
    // Empty means not yet resolved.
    QString DatabaseDirectory;
    QString DataDirectory;
};

// The current program's settings.
ProgramSettings& Settings();

// The value of the key in "Velmora.INI", which counts even when it is empty; else the user's own setting of that
// application, section and key; else `defaultValue`.
QString GetConfigValue(const QString& application, const QString& section, const QString& key,
                       const QString& defaultValue);

// The directory of the shared database and the hold file, as configured; the current directory of the first call
// without configuration.
QString DataDirectory();
// The database's path: the directory with "\Velmora.MDB" joined on, whatever it ends in.
QString DatabasePath();
// The site in that directory.
Site ConfiguredSite();
// The directory of the help file; read anew at each call.
QString HelpDirectory();

// Reads the configured logoff minute into the settings while it is 0. Throws Error when it is not a 16-bit number.
void ReadLogoffMinute();

} // namespace velmora
