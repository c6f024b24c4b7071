#include "app/report/CommandLine.h"

#include "app/report/LayoutOptions.h"
#include "app/report/OptionTable.h"
#include "app/report/OptionValues.h"
#include "app/report/ReportOptions.h"
#include "base/Error.h"
#include "platform/mail/MailAddress.h"

namespace velmora::report {

using namespace Qt::StringLiterals;

namespace {

void SetDestination(Command& command, const QString& value) {
    command.delivery.target = OneOf<DeliveryTarget>(u"--to"_s, value,
                                                    {{u"text"_s, DeliveryTarget::TextFile},
                                                     {u"html"_s, DeliveryTarget::HtmlFile},
                                                     {u"mail"_s, DeliveryTarget::Mail},
                                                     {u"pdf"_s, DeliveryTarget::PdfFile},
                                                     {u"printer"_s, DeliveryTarget::Printer}});
}

// Options that are sound each by itself may not go together.
void CheckOutput(const Command& command, bool hasOutput) {
    if (command.ToPdf() && !hasOutput) {
        throw BadUsage{u"--to pdf needs --output FILE, or --output - for standard output"_s};
    }
    if (command.ToPrinter() && hasOutput) {
        throw BadUsage{u"--output names a file, but --to printer makes none: use --to pdf for a file"_s};
    }
    if (command.ToMail() && hasOutput) {
        throw BadUsage{u"--output names a file, but --to mail makes none"_s};
    }
    if (command.ToMail() && command.delivery.recipients.empty()) {
        throw BadUsage{u"--to mail needs --mail-to ADDRESS"_s};
    }
    if (!command.ToMail() && !command.delivery.recipients.empty()) {
        throw BadUsage{u"--mail-to names a recipient, but nothing is sent without --to mail"_s};
    }
}

void AddRecipients(Command& command, const QString& value) {
    try {
        for (const MailRecipient& each : mail::ParseRecipients(value)) {
            command.delivery.recipients.push_back(each);
        }
    } catch (const Error& error) {
        throw BadUsage{u"--mail-to: "_s + error.Description()};
    }
}

DateTime Moment(const QString& value) {
    const auto moment = ParseStorageText(value);
    if (!moment) {
        throw BadUsage{u"--now takes a date and time as \"YYYY-MM-DD HH:MM:SS\", not \"%1\""_s.arg(value)};
    }
    return *moment;
}

LocaleText Locale(const QString& value) {
    auto locale = LocaleText::ByName(value);
    if (!locale) {
        throw BadUsage{u"There is no locale \"%1\"; names look like en_US or de_DE"_s.arg(value)};
    }
    return *locale;
}

OptionTable GlobalOptions(Command& command, bool& hasOutput) {
    OptionTable table;
    table.AddFlag(u"--help"_s, command.help);
    table.AddValue(u"--data"_s, [&](const QString& v) { command.dataDirectory = NotEmpty(u"--data"_s, v); });
    table.AddValue(u"--to"_s, [&](const QString& v) { SetDestination(command, v); });
    table.AddValue(u"--output"_s, [&](const QString& v) {
        command.delivery.file = NotEmpty(u"--output"_s, v);
        hasOutput = true;
    });
    table.AddValue(u"--printer"_s, [&](const QString& v) { command.delivery.printer = NotEmpty(u"--printer"_s, v); });
    table.AddValue(u"--mail-to"_s, [&](const QString& v) { AddRecipients(command, NotEmpty(u"--mail-to"_s, v)); });
    table.AddValue(u"--orientation"_s, [&](const QString& v) {
        command.delivery.orientation = OneOf<Orientation>(
            u"--orientation"_s, v, {{u"portrait"_s, Orientation::Portrait}, {u"landscape"_s, Orientation::Landscape}});
    });
    table.AddValue(u"--leader"_s, [&](const QString& v) {
        command.delivery.leaderStyle =
            OneOf<qint16>(u"--leader"_s, v, {{u"none"_s, 0}, {u"boxes"_s, 1}, {u"lines"_s, 2}});
    });
    table.AddValue(u"--startup-argument"_s, [&](const QString& v) { command.startupArgument = v; });
    table.AddValue(u"--now"_s, [&](const QString& v) { command.now = Moment(v); });
    table.AddValue(u"--locale"_s, [&](const QString& v) { command.locale = Locale(v); });
    return table;
}

} // namespace

Command ParseCommandLine(const QStringList& words) {
    Command command;
    bool hasOutput = false;
    const OptionTable global = GlobalOptions(command, hasOutput);
    Words rest(words);
    while (!rest.AtEnd() && global.TakeOption(rest)) {
    }
    if (rest.AtEnd()) {
        if (!command.help) {
            throw BadUsage{u"The report is missing"_s};
        }
        return command;
    }
    if (rest.Peek() == u"layout") {
        rest.Take();
        ParseLayout(rest, global, command);
    } else {
        ParseReport(rest, global, command);
    }
    if (!command.help && !command.showFormula) {
        CheckOutput(command, hasOutput);
    }
    return command;
}

QString Usage() {
    return uR"(usage: velmora-report [OPTIONS] daily --list starts|ends|combined DAY [--brief]
           [--exclude-completed-moves] [--exclude-completed-phones] [--exclude-conference-rooms]
           [--include-notes] [--include-phone] [--one-page]
       velmora-report [OPTIONS] occupant DAY [--non-permanent] [--include-unreserved]
       velmora-report [OPTIONS] directory DAY [--non-permanent] [--include-unreserved]
       velmora-report [OPTIONS] exception --type space|area1|area2|area3|not-checked-in --date YYYY-MM-DD
           [--exclude-conference-rooms]
       velmora-report [OPTIONS] usage --by location|area1|area2|area3 --date YYYY-MM-DD [--detail]
)"_s + LayoutUsage() +
           uR"(DAY:     --day next|current, or --day other --date YYYY-MM-DD [--days N]
OPTIONS: --data DIR  --to text|html|mail|pdf|printer  --output FILE|-  --printer NAME  --mail-to ADDRESS...
         --orientation portrait|landscape  --leader none|boxes|lines  --startup-argument TEXT
         --now "YYYY-MM-DD HH:MM:SS"  --locale NAME

Prints a report as text or HTML, on standard output or into FILE; as a PDF file of the printer's pages into FILE; on the
printer, the default one unless another is named; or by mail to every ADDRESS.

daily      the reservations that start, that end, or both on the day
occupant   the locations and who is there, by location
directory  the persons and where they are, by name
exception  persons outside of their space type or area; reservations that are not checked in
usage      how many locations or persons are unreserved, permanently reserved or reserved for a time
layout     one of the report layouts in the data directory; --show-formula prints its selection formula instead

Exit: 0 delivered, 1 failed, 2 bad usage, 3 a hold is placed or there is no database.
)"_s;
}

} // namespace velmora::report
