#pragma once

#include "base/DateTime.h"
#include "demo/Scale.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace velmora::db {

// A command line that asks for nothing this program does; `reason` names what is wrong.
struct BadUsage {
    QString reason;
};

enum class CommandKind { Help, Create, Check, Repair, Query };

// A parameter's value as it was typed.
struct ParameterText {
    QString name;
    QString value;
};

struct CommandLine {
    CommandKind kind = CommandKind::Help;
    QString folder;
    // Create.
    std::optional<demo::Tier> tier;
    std::optional<Date> today;
    std::optional<std::uint64_t> seed;
    // Query: an SQL text or a stored query's name.
    QString query;
    std::vector<ParameterText> parameters;
};

// Reads the words behind the program's name. Options may stand anywhere behind the command, as "--name value" or
// "--name=value"; behind "--" everything is an operand. Throws BadUsage.
CommandLine ParseCommandLine(const QStringList& words);

// How the program is called.
QString Usage();

} // namespace velmora::db
