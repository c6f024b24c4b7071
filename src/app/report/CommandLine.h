#pragma once

#include "base/LocaleText.h"
#include "base/services/Mail.h"
#include "desk/ReportContext.h"

#include <QString>
#include <QStringList>

#include <optional>

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
    // A path, or "-" for standard output.
    QString output = QStringLiteral("-");
    // Who gets the report by mail.
    std::vector<MailRecipient> mailTo;
    // The pages of the printer go into a file.
    bool toPdf = false;
    // In place of the user's own setting: 0 none, 1 boxes, 2 lines.
    std::optional<qint16> leaderStyle;
    QString startupArgument;
    // In place of the computer's clock.
    std::optional<DateTime> now;
    // In place of the system's.
    std::optional<LocaleText> locale;
    // In place of the printer's own.
    std::optional<Orientation> orientation;
    // A report layout is run, or its formula shown and nothing run.
    bool isLayout = false;
    bool showFormula = false;
    // The routine that prints the report.
    void (*print)(ReportContext& context) = nullptr;
    // The report's options, as the main window's controls would have them.
    DeskState state;

    bool ToMail() const { return state.PrinterControl1.Destination == 2; }
    bool ToPages() const { return state.PrinterControl1.Destination == 0; }
    bool ToPrinter() const { return ToPages() && !toPdf; }
};

// Reads the words behind the program's name. Throws BadUsage.
Command ParseCommandLine(const QStringList& words);

// How the program is called, for people.
QString Usage();

} // namespace velmora::report
