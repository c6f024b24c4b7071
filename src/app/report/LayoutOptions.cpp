#include "app/report/LayoutOptions.h"

#include "app/report/OptionValues.h"
#include "layouts/LayoutChoice.h"

namespace velmora::report {

using namespace Qt::StringLiterals;

namespace {

// The index of the layout's option button.
qint16 LayoutIndex(const QString& value) {
    std::vector<std::pair<QString, qint16>> names;
    for (const layouts::LayoutChoice& choice : layouts::LayoutChoices()) {
        names.emplace_back(choice.name.toString(), choice.index);
    }
    return OneOf(u"--report"_s, value, names);
}

void CheckLayout(const LayoutRequest& request) {
    if (request.layout == 0) {
        throw BadUsage{u"--report NAME is missing"_s};
    }
    if (!request.start || !request.end) {
        throw BadUsage{u"--start YYYY-MM-DD and --end YYYY-MM-DD are needed"_s};
    }
    if (*request.end <= *request.start) {
        throw BadUsage{u"--end is the day after the last one: it comes after --start"_s};
    }
}

} // namespace

void ParseLayout(Words& words, const OptionTable& global, Command& command) {
    auto& request = command.request.emplace<LayoutRequest>();
    OptionTable table;
    table.AddValue(u"--report"_s, [&](const QString& v) { request.layout = LayoutIndex(v); });
    table.AddValue(u"--start"_s, [&](const QString& v) { request.start = DayValue(u"--start"_s, v); });
    table.AddValue(u"--end"_s, [&](const QString& v) { request.end = DayValue(u"--end"_s, v); });
    table.AddFlag(u"--exclude-conference-rooms"_s, request.excludeConferenceRooms);
    table.AddFlag(u"--completion-filter"_s, request.completionFilter);
    table.AddFlag(u"--show-formula"_s, command.showFormula);
    while (!words.AtEnd()) {
        if (!table.TakeOption(words) && !global.TakeOption(words)) {
            throw BadUsage{u"\"%1\" is no option of a layout"_s.arg(words.Peek())};
        }
    }
    if (!command.help) {
        CheckLayout(request);
    }
}

QString LayoutUsage() {
    return uR"(       velmora-report [OPTIONS] layout --report work-requests|setup|takedown|phone-connect|
           phone-disconnect|occupant|reminder|directory --start YYYY-MM-DD --end YYYY-MM-DD
           [--exclude-conference-rooms] [--completion-filter] [--show-formula]
)"_s;
}

} // namespace velmora::report
