#include "app/report/CommandLine.h"

#include "app/CommandLineParser.h"
#include "base/Error.h"
#include "reports/RequestFields.h"
#include "reports/RequestJson.h"

#include <QJsonArray>

#include <map>

namespace velmora::report {

using namespace Qt::StringLiterals;

namespace {

// Declares an option for each field. What is given on the command line becomes the JSON that the request is read from.
class FieldOptions : public FieldVisitor {
public:
    // Both outlive the parsing.
    FieldOptions(CLI::App& app, QJsonObject& given) : app_(app), given_(given) {}

    void Flag(const char* name, bool&, const char* help) override {
        if (help == nullptr) {
            return;
        }
        const auto set = [name, &given = given_] { given.insert(QLatin1StringView(name), true); };
        app_.add_flag_callback(Option(name), set, help)->disable_flag_override();
    }
    void Count(const char* name, int&, const char* help) override {
        AddValue(name, help, "N", [](const QString& text) {
            bool isNumber = false;
            const int number = text.toInt(&isNumber);
            return isNumber ? QJsonValue(number) : QJsonValue(text);
        });
    }
    void Day(const char* name, std::optional<Date>&, const char* help) override { AddText(name, help, "YYYY-MM-DD"); }
    void Text(const char* name, QString&, const char* help) override {
        // The start-up argument is the program's, whatever the report.
        if (help != nullptr && name != std::string_view("startup-argument")) {
            AddText(name, help, "TEXT");
        }
    }
    void Recipients(const char* name, std::vector<MailRecipient>&, const char* help) override {
        const auto append = [name, &given = given_](const std::vector<std::string>& values) {
            QJsonArray list;
            for (const std::string& each : values) {
                if (QString::fromStdString(each).trimmed().isEmpty()) {
                    throw BadUsage{u"--%1 needs an address that is not empty"_s.arg(QLatin1StringView(name))};
                }
                list.append(QString::fromStdString(each));
            }
            given.insert(QLatin1StringView(name), list);
        };
        app_.add_option_function<std::vector<std::string>>(Option(name), append, help)
            ->type_name("ADDRESS")
            ->allow_extra_args(false)
            ->take_all();
    }
    bool BelongTo(const char*, const char*, bool, const QStringList&) override { return true; }

private:
    void ChooseIndex(const char* name, const QStringList& names, int&, bool, const char* help) override {
        QStringList offered = names;
        offered.removeAll(u"preview"_s); // only the desk has a window for it
        AddValue(name, help, offered.join(u'|').toStdString(), [name, offered](const QString& text) {
            if (!offered.contains(text)) {
                throw BadUsage{u"--%1 is %2, not \"%3\""_s.arg(QLatin1StringView(name), offered.join(u" or "_s), text)};
            }
            return QJsonValue(text);
        });
    }
    void AddText(const char* name, const char* help, const std::string& type) {
        AddValue(name, help, type, [](const QString& text) { return QJsonValue(text); });
    }
    template <typename Convert>
    void AddValue(const char* name, const char* help, const std::string& type, Convert convert) {
        const auto set = [name, convert, &given = given_](const std::string& value) {
            given.insert(QLatin1StringView(name), convert(QString::fromStdString(value)));
        };
        app_.add_option_function<std::string>(Option(name), set, help)->type_name(type)->take_last();
    }
    static std::string Option(const char* name) { return std::string("--") + name; }

    CLI::App& app_;
    QJsonObject& given_;
};

// The options of the program and of each report, and what was given of them.
class Parser {
public:
    Parser();
    Command Parse(const QStringList& words);
    QString Help() const { return QString::fromStdString(app_.help("", CLI::AppFormatMode::All)); }

private:
    void ReadWords(const QStringList& words);
    void AddText(const char* name, const char* type, const char* help, std::optional<std::string>& value) {
        app_.add_option(name, value, help)->type_name(type)->take_last();
    }

    CLI::App app_{"Prints a report as text or HTML, on standard output or into a file; as a PDF file of the printer's "
                  "pages; on the printer; or by mail. Options may stand before and behind the report's name.\n"
                  "Exit: 0 delivered, 1 failed, 2 bad usage, 3 a hold is placed or there is no database.",
                  "velmora-report"};
    std::optional<std::string> data_;
    std::optional<std::string> startupArgument_;
    std::optional<std::string> now_;
    std::optional<std::string> locale_;
    bool showFormula_ = false;
    QJsonObject delivery_{{u"to"_s, u"text"_s}};
    // By report.
    std::map<std::string, QJsonObject> requests_;
};

Parser::Parser() {
    app_.require_subcommand(0, 1);
    app_.set_help_flag("--help", "print this and do nothing else");
    AddText("--data", "DIR", "the data directory, in place of the configured one", data_);
    AddText("--startup-argument", "TEXT", "only assets whose name begins with it", startupArgument_);
    AddText("--now", "\"YYYY-MM-DD HH:MM:SS\"", "in place of the computer's clock", now_);
    AddText("--locale", "NAME", "how dates are written, such as en_US; in place of the system's", locale_);
    FieldOptions deliveryOptions(app_, delivery_);
    Delivery delivery;
    VisitFields(delivery, deliveryOptions);
    for (const ReportKind& kind : ReportKinds()) {
        CLI::App& report = *app_.add_subcommand(kind.name, kind.help)->fallthrough();
        report.set_help_flag("--help", "print this and do nothing else");
        QJsonObject& given = requests_[kind.name];
        given.insert(u"kind"_s, QLatin1StringView(kind.name));
        FieldOptions options(report, given);
        ReportRequest request = kind.request;
        VisitFields(request, options);
        if (std::holds_alternative<LayoutRequest>(request)) {
            report.add_flag("--show-formula", showFormula_, "print the selection formula and run nothing")
                ->disable_flag_override();
        }
    }
}

// Options that are sound each by itself may not go together.
void CheckOutput(const Command& command) {
    const DeliveryTarget target = command.delivery.target;
    const bool toMail = target == DeliveryTarget::Mail;
    const bool hasOutput = !command.delivery.file.isEmpty();
    const bool hasRecipients = !command.delivery.recipients.empty();
    const std::pair<bool, QString> rules[] = {
        {target == DeliveryTarget::PdfFile && !hasOutput,
         u"--to pdf needs --output FILE, or --output - for standard output"_s},
        {target == DeliveryTarget::Printer && hasOutput,
         u"--output names a file, but --to printer makes none: use --to pdf for a file"_s},
        {toMail && hasOutput, u"--output names a file, but --to mail makes none"_s},
        {toMail && !hasRecipients, u"--to mail needs --mail-to ADDRESS"_s},
        {!toMail && hasRecipients, u"--mail-to names a recipient, but nothing is sent without --to mail"_s},
    };
    for (const auto& [broken, reason] : rules) {
        if (broken) {
            throw BadUsage{reason};
        }
    }
}

void Parser::ReadWords(const QStringList& words) {
    try {
        ParseWords(app_, words);
    } catch (const CLI::ExtrasError&) {
        const std::vector<std::string> unknown = app_.remaining();
        if (!app_.get_subcommands().empty() || unknown.front().front() == '-') {
            throw;
        }
        QStringList reports;
        for (const ReportKind& kind : ReportKinds()) {
            reports += QLatin1StringView(kind.name);
        }
        throw BadUsage{u"There is no report \"%1\"; the reports are %2"_s.arg(QString::fromStdString(unknown.front()),
                                                                              reports.join(u", "_s))};
    }
}

Command Parser::Parse(const QStringList& words) {
    ReadWords(words);
    if (app_.get_subcommands().empty()) {
        throw BadUsage{u"The report is missing"_s};
    }
    Command command;
    if (data_ && data_->empty()) {
        throw BadUsage{u"--data needs a value that is not empty"_s};
    }
    command.dataDirectory = QString::fromStdString(data_.value_or(std::string()));
    command.startupArgument = QString::fromStdString(startupArgument_.value_or(std::string()));
    if (now_) {
        const QString text = QString::fromStdString(*now_);
        command.now = ParseStorageText(text);
        if (!command.now) {
            throw BadUsage{u"--now takes a date and time as \"YYYY-MM-DD HH:MM:SS\", not \"%1\""_s.arg(text)};
        }
    }
    if (locale_) {
        const QString name = QString::fromStdString(*locale_);
        command.locale = LocaleText::ByName(name);
        if (!command.locale) {
            throw BadUsage{u"There is no locale \"%1\"; names look like en_US or de_DE"_s.arg(name)};
        }
    }
    command.showFormula = showFormula_;
    QJsonObject request = requests_[app_.get_subcommands().front()->get_name()];
    command.request = RequestFromJson(request, u"--"_s);
    std::visit(
        [&](auto& each) {
            if constexpr (requires { each.startupArgument; }) {
                each.startupArgument = command.startupArgument;
            }
        },
        command.request);
    command.delivery = DeliveryFromJson(delivery_, u"--"_s);
    if (!command.showFormula) {
        CheckOutput(command);
    }
    if (command.delivery.file.isEmpty()) {
        command.delivery.file = u"-"_s;
    }
    return command;
}

} // namespace

Command ParseCommandLine(const QStringList& words) {
    try {
        return Parser().Parse(words);
    } catch (const CLI::CallForHelp&) {
        Command command;
        command.help = true;
        return command;
    } catch (const CLI::ParseError& error) {
        throw BadUsage{QString::fromUtf8(error.what())};
    } catch (const Error& error) {
        throw BadUsage{error.Description()};
    }
}

QString Usage() {
    return Parser().Help();
}

} // namespace velmora::report
