#pragma once

#include "tests/support/Folders.h"

#include <QRegularExpression>
#include <QStringList>
#include <gtest/gtest.h>

#include <functional>
#include <map>

namespace velmora {

// A case of a text file below tests/. There a line "== Name" begins a case, and each line behind it is a step:
//
//     word rest            does something
//     word rest -> text    checks that a value is the text
//     word rest ~> text    checks that a value contains the text
//
// "\n" and "\t" stand for a line end and a tab. Empty lines and those that begin with "#" count for nothing.
struct ScriptCase {
    std::string name;
    QStringList steps;
};

// The words that the steps of a script begin with.
struct ScriptWords {
    std::map<QString, std::function<void(const QString& rest)>> actions;
    std::map<QString, std::function<QString(const QString& rest)>> values;
};

inline std::vector<ScriptCase> ReadScript(const QString& name) {
    std::vector<ScriptCase> cases;
    for (QString line : TestText(name).split(u'\n', Qt::SkipEmptyParts)) {
        if (line.startsWith(u"== ")) {
            cases.push_back({line.mid(3).toStdString(), {}});
        } else if (!line.startsWith(u'#')) {
            cases.back().steps += line.replace(QLatin1String("\\n"), QLatin1String("\n"))
                                      .replace(QLatin1String("\\t"), QLatin1String("\t"));
        }
    }
    return cases;
}

inline void RunScript(const ScriptCase& script, const ScriptWords& words) {
    static const QRegularExpression form(QStringLiteral(R"(^(\S+)(?: (.*?)){0,1}?(?: ([-~]>)(?: (.*))?)?\z)"),
                                         QRegularExpression::DotMatchesEverythingOption);
    for (const QString& step : script.steps) {
        SCOPED_TRACE(step.toStdString());
        const auto parts = form.match(step);
        const QString word = parts.captured(1);
        if (parts.captured(3).isEmpty()) {
            ASSERT_TRUE(words.actions.contains(word)) << "nothing to do";
            words.actions.at(word)(parts.captured(2));
            continue;
        }
        ASSERT_TRUE(words.values.contains(word)) << "nothing to check";
        const QString value = words.values.at(word)(parts.captured(2));
        const bool right = parts.captured(3) == u"->" ? value == parts.captured(4) : value.contains(parts.captured(4));
        EXPECT_TRUE(right) << "it is: " << value.toStdString();
    }
}

inline void PrintTo(const ScriptCase& script, std::ostream* out) {
    *out << script.name;
}

inline std::string CaseName(const testing::TestParamInfo<ScriptCase>& info) {
    return info.param.name;
}

inline QString YesNo(bool value) {
    return value ? QStringLiteral("yes") : QStringLiteral("no");
}

// "Ok No": the answers that a person is going to give.
template <typename Answers>
void PlanAnswers(Answers& answers, const QString& words) {
    // By their numbers.
    static const QStringList names = QStringLiteral(" Ok Cancel Abort Retry Ignore Yes No").split(u' ');
    for (const QString& word : words.split(u' ')) {
        answers.push_back(static_cast<typename Answers::value_type>(names.indexOf(word)));
    }
}

} // namespace velmora
