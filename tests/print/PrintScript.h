#pragma once

#include "print/PrintJob.h"
#include "tests/support/Folders.h"

#include <map>

namespace velmora::print {

// A case of a text file: "@ name", a script of layout operations, and behind "=> target" what that target makes of it.
struct ScriptCase {
    std::string name;
    QByteArrayList script;
    std::map<QByteArray, QByteArrayList> expected;
};

inline std::vector<ScriptCase> ReadScripts(const QString& name) {
    std::vector<ScriptCase> cases;
    QByteArrayList* lines = nullptr;
    for (const QByteArray& line : TestBytes(name).split('\n')) {
        if (line.startsWith("@ ")) {
            cases.push_back({line.sliced(2).toStdString(), {}, {}});
            lines = &cases.back().script;
        } else if (line.startsWith("=> ")) {
            lines = &cases.back().expected[line.sliced(3)];
        } else if (lines != nullptr && !line.isEmpty()) {
            lines->append(line);
        }
    }
    return cases;
}

// Runs one operation: its name and what it takes, between bars, where %0A is a line end.
inline void RunOperation(PrintJob& job, const QByteArray& operation) {
    QByteArrayList fields = operation.split('|');
    const QByteArray name = fields.takeFirst();
    std::vector<Text> texts;
    for (QByteArray& field : fields) {
        field = QByteArray::fromPercentEncoding(field);
        texts.emplace_back(QUtf8StringView(field));
    }
    const auto text = [&](size_t i) { return i < texts.size() ? texts[i] : Text(); };
    const auto number = [&](int i) { return fields.value(i).toShort(); };
    const auto style = [&](int i) { return i < fields.size() ? std::optional(number(i)) : std::nullopt; };
    const std::map<QByteArray, std::function<void()>> operations = {
        {"title", [&] { job.PrintReportTitle(text(0), text(1), text(2)); }},
        {"heading", [&] { job.PrintSectionHeading(text(0), number(1)); }},
        {"paragraph", [&] { job.PrintParagraph(text(0)); }},
        {"pair", [&] { job.PrintLabelValue(text(0), text(1), style(2)); }},
        {"wide", [&] { job.PrintWideLabelValue(text(0), text(1), style(2)); }},
        {"two", [&] { job.PrintTwoLabelValues(text(0), text(1), text(2), text(3), style(4)); }},
        {"row", [&] { job.PrintTableRow(texts, RowStyle::Wrapped); }},
        {"indented", [&] { job.PrintTableRow(texts, RowStyle::Indented); }},
        {"rule", [&] { job.PrintRule(number(0), number(1), number(2)); }},
        {"space", [&] { job.AddVerticalSpace(number(0)); }},
        {"room", [&] { job.EnsureRoom(number(0)); }},
        {"page", [&] { job.NewPage(); }},
        {"tabs", [&] { job.SetTabStops(number(0) / 100.0, number(1) / 100.0, number(2) / 100.0, number(3) / 100.0); }},
    };
    operations.at(name)();
}

} // namespace velmora::print
