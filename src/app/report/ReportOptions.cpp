#include "app/report/ReportOptions.h"

#include "app/report/DayOptions.h"
#include "app/report/OptionValues.h"
#include "desk/DailyReport.h"
#include "reports/DirectoryReport.h"
#include "reports/ExceptionReport.h"
#include "reports/OccupantReport.h"
#include "reports/UsageReport.h"

namespace velmora::report {

using namespace Qt::StringLiterals;

namespace {

// The words behind a report's name.
class ReportWords {
public:
    ReportWords(const QString& report, Words& words, const OptionTable& global, const Command& command)
        : report_(report), words_(words), global_(global), command_(command) {}

    // Takes them all. False when help is asked for, whatever else there is.
    bool TakeAll(const OptionTable& own) {
        while (!words_.AtEnd()) {
            if (!own.TakeOption(words_) && !global_.TakeOption(words_)) {
                throw BadUsage{u"\"%1\" is no option of the %2 report"_s.arg(words_.Peek(), report_)};
            }
        }
        return !command_.help;
    }

private:
    const QString& report_;
    Words& words_;
    const OptionTable& global_;
    const Command& command_;
};

void ParseDaily(ReportWords& words, Command& command) {
    DeskState& state = command.state;
    std::optional<DailyVariant> variant;
    DayOptions day;
    OptionTable table;
    table.AddValue(u"--list"_s, [&](const QString& v) {
        variant = OneOf<DailyVariant>(u"--list"_s, v,
                                      {{u"starts"_s, DailyVariant::Starts},
                                       {u"ends"_s, DailyVariant::Ends},
                                       {u"combined"_s, DailyVariant::Combined}});
    });
    day.AddTo(table);
    table.AddFlag(u"--brief"_s, state.chkBrief);
    table.AddFlag(u"--exclude-completed-moves"_s, state.chkCompletedMoves);
    table.AddFlag(u"--exclude-completed-phones"_s, state.chkCompletedPhones);
    table.AddFlag(u"--exclude-conference-rooms"_s, state.chkConferenceDaily);
    table.AddFlag(u"--include-notes"_s, state.chkIncludeNotes);
    table.AddFlag(u"--include-phone"_s, state.chkIncludePhone);
    table.AddFlag(u"--one-page"_s, state.chkOnePage);
    if (!words.TakeAll(table)) {
        return;
    }
    if (!variant) {
        throw BadUsage{u"--list starts, --list ends or --list combined is missing"_s};
    }
    state.ReportDayMode = DailyMode{*variant, day.Resolve(state)}.Code();
}

// The options of the occupant and the directory report.
void ParseOccupancies(ReportWords& words, Command& command) {
    DeskState& state = command.state;
    DayOptions day;
    OptionTable table;
    day.AddTo(table);
    table.AddFlag(u"--non-permanent"_s, state.chkNonPermanent);
    table.AddFlag(u"--include-unreserved"_s, state.chkIncludeEmpty);
    if (words.TakeAll(table)) {
        state.optDay = static_cast<qint16>(day.Resolve(state));
    }
}

void ParseException(ReportWords& words, Command& command) {
    DeskState& state = command.state;
    std::optional<qint16> type;
    OptionTable table;
    table.AddValue(u"--type"_s, [&](const QString& v) {
        type = OneOf<qint16>(
            u"--type"_s, v,
            {{u"space"_s, 0}, {u"area1"_s, 1}, {u"area2"_s, 2}, {u"area3"_s, 3}, {u"not-checked-in"_s, 4}});
    });
    table.AddValue(u"--date"_s, [&](const QString& v) { state.dtcException = ReportDate(u"--date"_s, v); });
    table.AddFlag(u"--exclude-conference-rooms"_s, state.chkConferenceDaily);
    if (!words.TakeAll(table)) {
        return;
    }
    if (!type) {
        throw BadUsage{u"--type space, area1, area2, area3 or not-checked-in is missing"_s};
    }
    if (!state.dtcException) {
        throw BadUsage{u"--date YYYY-MM-DD is missing"_s};
    }
    state.optException = *type;
}

void ParseUsage(ReportWords& words, Command& command) {
    DeskState& state = command.state;
    std::optional<qint16> breakdown;
    OptionTable table;
    table.AddValue(u"--by"_s, [&](const QString& v) {
        breakdown =
            OneOf<qint16>(u"--by"_s, v, {{u"location"_s, 0}, {u"area1"_s, 1}, {u"area2"_s, 2}, {u"area3"_s, 3}});
    });
    table.AddValue(u"--date"_s, [&](const QString& v) { state.dtcUsage = ReportDate(u"--date"_s, v); });
    table.AddFlag(u"--detail"_s, state.chkUsageDetail);
    if (!words.TakeAll(table)) {
        return;
    }
    if (!breakdown) {
        throw BadUsage{u"--by location, area1, area2 or area3 is missing"_s};
    }
    if (!state.dtcUsage) {
        throw BadUsage{u"--date YYYY-MM-DD is missing"_s};
    }
    state.OptUsage = *breakdown;
}

struct Report {
    const char16_t* name;
    void (*parse)(ReportWords& words, Command& command);
    void (*print)(ReportContext& context);
};

constexpr Report reports[] = {
    {u"daily", &ParseDaily, &PrintDailyReport},
    {u"occupant", &ParseOccupancies, &PrintOccupantReport},
    {u"directory", &ParseOccupancies, &PrintDirectoryReport},
    {u"exception", &ParseException, &PrintExceptionReport},
    {u"usage", &ParseUsage, &PrintUsageReport},
};

} // namespace

void ParseReport(Words& words, const OptionTable& global, Command& command) {
    const QString name = words.Take();
    for (const Report& report : reports) {
        if (name == report.name) {
            ReportWords rest(name, words, global, command);
            report.parse(rest, command);
            command.print = report.print;
            return;
        }
    }
    throw BadUsage{name.startsWith(u'-') ? u"\"%1\" is no option before the report's name"_s.arg(name)
                                         : u"There is no report \"%1\""_s.arg(name)};
}

} // namespace velmora::report
