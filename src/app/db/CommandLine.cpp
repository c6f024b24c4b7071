#include "app/db/CommandLine.h"

#include "app/CommandLineParser.h"

namespace velmora::db {

namespace {

Date ReadDay(const QString& text) {
    const std::optional<DateTime> moment = ParseStorageText(text);
    constexpr qsizetype dayLength = 10;
    if (!moment || text.size() != dayLength) {
        throw BadUsage{QStringLiteral("--today takes a day as YYYY-MM-DD; \"%1\" is none.").arg(text)};
    }
    const Date day = DateOf(*moment);
    if (day < *MakeDate(1990, 1, 1) || day > *MakeDate(2999, 12, 31)) {
        throw BadUsage{QStringLiteral("--today takes a day from 1990-01-01 to 2999-12-31, not %1.").arg(text)};
    }
    return day;
}

std::uint64_t ReadSeed(const QString& text) {
    bool isNumber = false;
    const std::uint64_t seed = text.toULongLong(&isNumber);
    if (!isNumber || !text.front().isDigit()) {
        throw BadUsage{QStringLiteral("--seed takes a whole number from 0; \"%1\" is none.").arg(text)};
    }
    return seed;
}

ParameterText ReadParameter(const QString& text) {
    const qsizetype equals = text.indexOf(u'=');
    if (equals <= 0) {
        throw BadUsage{QStringLiteral("--param takes NAME=VALUE; \"%1\" is not of that form.").arg(text)};
    }
    return {text.left(equals), text.mid(equals + 1)};
}

demo::Tier ReadTier(const QString& text) {
    const std::optional<demo::Tier> tier = demo::TierByName(text);
    if (!tier) {
        throw BadUsage{QStringLiteral("--demo takes typical, large or stress; \"%1\" is none.").arg(text)};
    }
    return *tier;
}

// The commands with their operands and options, and what was given of them.
class Parser {
public:
    Parser() {
        app_.require_subcommand(0, 1);
        app_.add_subcommand("help", "prints this")->group("")->callback([] { throw CLI::CallForHelp(); });
        CLI::App& create = AddCommand(CommandKind::Create, "create",
                                      "makes the folder and the database with its stored queries; an existing "
                                      "database is refused");
        AddValue(create, "--demo", "typical|large|stress", "also a demo site's data and sample HTML wrapper files",
                 [this](const QString& text) { line_.tier = ReadTier(text); });
        AddValue(create, "--today", "YYYY-MM-DD", "the day that the data lie around",
                 [this](const QString& text) { line_.today = ReadDay(text); });
        AddValue(create, "--seed", "N", "the data are the same for the same day and seed",
                 [this](const QString& text) { line_.seed = ReadSeed(text); });
        AddCommand(CommandKind::Check, "check", "reads the whole database and reports what is wrong with it");
        AddCommand(CommandKind::Repair, "repair",
                   "replaces a damaged database by one with all rows that can still be read, and keeps the damaged "
                   "file beside it");
        CLI::App& query =
            AddCommand(CommandKind::Query, "query",
                       "runs an SQL text of the program's dialect, or a stored query by its name. Rows come as lines "
                       "of fields separated by TAB under a line of field names; a statement that changes rows prints "
                       "how many");
        query.add_option_function<std::string>(
            "SQL|NAME", [this](const std::string& text) { line_.query = Text(text); }, "the text or the query's name");
        query
            .add_option_function<std::vector<std::string>>(
                "--param",
                [this](const std::vector<std::string>& texts) {
                    for (const std::string& text : texts) {
                        line_.parameters.push_back(ReadParameter(Text(text)));
                    }
                },
                "a parameter's value; may be given again")
            ->type_name("NAME=VALUE")
            ->allow_extra_args(false)
            ->take_all();
    }

    CommandLine Parse(const QStringList& words) {
        ReadWords(words);
        if (app_.get_subcommands().empty()) {
            throw BadUsage{QStringLiteral("A command is missing.")};
        }
        if (line_.folder.isEmpty()) {
            throw BadUsage{QStringLiteral("The folder of the database is missing.")};
        }
        if (line_.kind == CommandKind::Query && line_.query.trimmed().isEmpty()) {
            throw BadUsage{QStringLiteral("The SQL text or the name of a stored query is missing.")};
        }
        return line_;
    }
    QString Help() const { return Text(app_.help("", CLI::AppFormatMode::All)); }

private:
    void ReadWords(const QStringList& words) {
        try {
            ParseWords(app_, words);
        } catch (const CLI::ExtrasError&) {
            const std::vector<std::string> unknown = app_.remaining();
            if (!app_.get_subcommands().empty() || unknown.front().front() == '-') {
                throw;
            }
            QStringList commands;
            for (const CLI::App* command : app_.get_subcommands([](const CLI::App*) { return true; })) {
                commands += Text(command->get_name());
            }
            throw BadUsage{QStringLiteral("There is no command \"%1\"; the commands are %2.")
                               .arg(Text(unknown.front()), commands.join(QStringLiteral(", ")))};
        }
    }
    static QString Text(const std::string& text) { return QString::fromStdString(text); }
    CLI::App& AddCommand(CommandKind kind, const char* name, const char* help) {
        CLI::App& command = *app_.add_subcommand(name, help);
        command.preparse_callback([this, kind](size_t) { line_.kind = kind; });
        command.add_option_function<std::string>(
            "DIR", [this](const std::string& text) { line_.folder = Text(text); }, "the folder of the database");
        return command;
    }
    template <typename Take>
    static void AddValue(CLI::App& command, const char* name, const char* type, const char* help, Take take) {
        const auto read = [name, take](const std::string& value) {
            if (value.empty()) {
                throw BadUsage{QStringLiteral("The value of %1 is empty.").arg(QLatin1StringView(name))};
            }
            take(Text(value));
        };
        command.add_option_function<std::string>(name, read, help)->type_name(type)->take_last();
    }

    CLI::App app_{"Looks after the database \"Velmora.MDB\" in a folder.\n"
                  "Exit: 0 done, or sound; 1 refused or failed; 2 bad usage; 3 damaged; 4 in use by another program; "
                  "5 could not be repaired; 6 no database.",
                  "velmora-db"};
    CommandLine line_;
};

} // namespace

CommandLine ParseCommandLine(const QStringList& words) {
    try {
        return Parser().Parse(words);
    } catch (const CLI::CallForHelp&) {
        return {};
    } catch (const CLI::ParseError& error) {
        throw BadUsage{QString::fromUtf8(error.what())};
    }
}

QString Usage() {
    return Parser().Help();
}

} // namespace velmora::db
