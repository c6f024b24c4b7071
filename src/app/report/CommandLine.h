#pragma once

#include "base/LocaleText.h"
#include "reports/Requests.h"

#include <QStringList>

namespace velmora::report {

// A command line that velmora-report does not understand, with the reason for the person who typed it.
struct BadUsage {
    QString reason;
};

// What a command line asks for.
struct Command {
    // Print the usage and do nothing else.
    bool help = false;
    // Empty: as configured.
    QString dataDirectory;
    QString startupArgument;
    // In place of the computer's clock.
    std::optional<DateTime> now;
    // In place of the system's.
    std::optional<LocaleText> locale;
    // A layout's formula is shown and nothing run.
    bool showFormula = false;
    ReportRequest request;
    Delivery delivery;
};

// Reads the words behind the program's name. Throws BadUsage.
Command ParseCommandLine(const QStringList& words);

// How the program is called, for people.
QString Usage();

} // namespace velmora::report
