#pragma once

#include <CLI/CLI.hpp>

#include <QStringList>

namespace velmora {

// Has `app` read the words behind a program's name; an option counts as it was given last. Throws CLI::ParseError.
inline void ParseWords(CLI::App& app, const QStringList& words) {
    // The library takes them from the end, and takes "--name=" for an option whose value is the next word.
    std::vector<std::string> reversed;
    for (const QString& word : words) {
        const bool emptyValue =
            word.startsWith(QLatin1StringView("--")) && word.endsWith(u'=') && word.count(u'=') == 1;
        reversed.push_back((emptyValue ? word.chopped(1) : word).toStdString());
        if (emptyValue) {
            reversed.emplace_back();
        }
    }
    std::reverse(reversed.begin(), reversed.end());
    try {
        app.parse(std::move(reversed));
    } catch (const CLI::ArgumentMismatch& error) {
        for (const QString& word : words) {
            const std::string name = word.section(u'=', 0, 0).toStdString();
            // The library's words are for its caller, and it names the flag without its dashes.
            if (name.starts_with("--") &&
                std::string_view(error.what()) == CLI::ArgumentMismatch::FlagOverride(name.substr(2)).what()) {
                throw CLI::ArgumentMismatch(name + " takes no value");
            }
        }
        throw;
    }
}

} // namespace velmora
