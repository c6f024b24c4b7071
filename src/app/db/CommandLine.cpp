#include "app/db/CommandLine.h"

namespace velmora::db {

namespace {

CommandKind KindOf(const QString& word) {
    struct Name {
        QLatin1String name;
        CommandKind kind;
    };
    constexpr Name names[] = {{QLatin1String("create"), CommandKind::Create},
                              {QLatin1String("check"), CommandKind::Check},
                              {QLatin1String("repair"), CommandKind::Repair},
                              {QLatin1String("query"), CommandKind::Query}};
    for (const Name& each : names) {
        if (word == each.name) {
            return each.kind;
        }
    }
    throw BadUsage{QStringLiteral("There is no command \"%1\".").arg(word)};
}

demo::Tier ReadTier(const QString& text) {
    const std::optional<demo::Tier> tier = demo::TierByName(text);
    if (!tier) {
        throw BadUsage{QStringLiteral("--demo takes typical, large or stress; \"%1\" is none.").arg(text)};
    }
    return *tier;
}

Date ReadDay(const QString& text) {
    const std::optional<DateTime> moment = ParseStorageText(text);
    constexpr qsizetype dayLength = 10;
    if (!moment || text.size() != dayLength) {
        throw BadUsage{QStringLiteral("--today takes a day as YYYY-MM-DD; \"%1\" is none.").arg(text)};
    }
    return DateOf(*moment);
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

// Takes one word after the other.
class Parser {
public:
    explicit Parser(const QStringList& words) : words_(words) {}

    CommandLine Parse() {
        if (words_.isEmpty()) {
            throw BadUsage{QStringLiteral("A command is missing.")};
        }
        const QString first = words_[next_++];
        if (first == QLatin1String("--help") || first == QLatin1String("-h") || first == QLatin1String("help")) {
            return {};
        }
        line_.kind = KindOf(first);
        bool optionsEnded = false;
        while (next_ < words_.size()) {
            const QString word = words_[next_++];
            if (optionsEnded || !word.startsWith(QLatin1String("-")) || word == QLatin1String("-")) {
                operands_.append(word);
            } else if (word == QLatin1String("--")) {
                optionsEnded = true;
            } else if (word == QLatin1String("--help") || word == QLatin1String("-h")) {
                return {};
            } else {
                TakeOption(word);
            }
        }
        TakeOperands();
        return line_;
    }

private:
    void TakeOption(const QString& word) {
        const qsizetype equals = word.indexOf(u'=');
        const QString name = word.left(equals);
        const bool ofCreate =
            name == QLatin1String("--demo") || name == QLatin1String("--today") || name == QLatin1String("--seed");
        const bool ofQuery = name == QLatin1String("--param");
        if (!(ofCreate && line_.kind == CommandKind::Create) && !(ofQuery && line_.kind == CommandKind::Query)) {
            throw BadUsage{QStringLiteral("This command has no option \"%1\".").arg(name)};
        }
        if (equals < 0 && next_ == words_.size()) {
            throw BadUsage{QStringLiteral("The value of %1 is missing.").arg(name)};
        }
        const QString value = equals < 0 ? words_[next_++] : word.mid(equals + 1);
        if (value.isEmpty()) {
            throw BadUsage{QStringLiteral("The value of %1 is empty.").arg(name)};
        }
        if (ofQuery) {
            line_.parameters.push_back(ReadParameter(value));
        } else if (name == QLatin1String("--demo")) {
            line_.tier = ReadTier(value);
        } else if (name == QLatin1String("--today")) {
            line_.today = ReadDay(value);
        } else {
            line_.seed = ReadSeed(value);
        }
    }

    void TakeOperands() {
        const bool isQuery = line_.kind == CommandKind::Query;
        const qsizetype needed = isQuery ? 2 : 1;
        if (operands_.isEmpty() || operands_.front().isEmpty()) {
            throw BadUsage{QStringLiteral("The folder of the database is missing.")};
        }
        if (operands_.size() < needed || operands_.back().trimmed().isEmpty()) {
            throw BadUsage{QStringLiteral("The SQL text or the name of a stored query is missing.")};
        }
        if (operands_.size() > needed) {
            throw BadUsage{QStringLiteral("\"%1\" is one operand too many.").arg(operands_[needed])};
        }
        line_.folder = operands_.front();
        if (isQuery) {
            line_.query = operands_.back();
        }
    }

    const QStringList& words_;
    qsizetype next_ = 0;
    QStringList operands_;
    CommandLine line_;
};

} // namespace

CommandLine ParseCommandLine(const QStringList& words) {
    return Parser(words).Parse();
}

QString Usage() {
    return QStringLiteral("Usage: velmora-db create DIR [--demo typical|large|stress] [--today YYYY-MM-DD] [--seed N]\n"
                          "       velmora-db check  DIR\n"
                          "       velmora-db repair DIR\n"
                          "       velmora-db query  DIR SQL|NAME [--param NAME=VALUE]...\n"
                          "\n"
                          "Looks after the database \"Velmora.MDB\" in the folder DIR.\n"
                          "\n"
                          "  create   makes the folder and the database with its stored queries; with --demo also\n"
                          "           a demo site's data around the day --today (the same for the same day and\n"
                          "           --seed) and sample HTML wrapper files. An existing database is refused.\n"
                          "  check    reads the whole database and tells what is wrong with it.\n"
                          "  repair   replaces a damaged database by one with all rows that can still be read, and\n"
                          "           keeps the damaged file beside it.\n"
                          "  query    runs an SQL text of the program's dialect, or a stored query by its name.\n"
                          "           Rows come as lines of fields separated by TAB under a line of field names;\n"
                          "           a statement that changes rows prints how many.\n"
                          "\n"
                          "Exit codes: 0 done, or sound; 1 refused or failed; 2 bad usage; 3 damaged; 4 in use by\n"
                          "another program; 5 could not be repaired; 6 no database.\n");
}

} // namespace velmora::db
