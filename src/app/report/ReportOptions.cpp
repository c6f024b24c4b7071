#include "app/report/ReportOptions.h"

#include "app/report/DayOptions.h"
#include "app/report/OptionValues.h"

namespace velmora::report {

using namespace Qt::StringLiterals;

namespace {

// The words behind a report's name.
class ReportWords {
public:
    ReportWords(const QString& report, Words& words, const OptionTable& global, const Command& command)
        : report_(report), words_(words), global_(global), command_(command) {}

    const QString& Report() const { return report_; }
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
    auto& request = command.request.emplace<DailyRequest>();
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
    table.AddFlag(u"--brief"_s, request.brief);
    table.AddFlag(u"--exclude-completed-moves"_s, request.excludeCompletedMoves);
    table.AddFlag(u"--exclude-completed-phones"_s, request.excludeCompletedPhones);
    table.AddFlag(u"--exclude-conference-rooms"_s, request.excludeConferenceRooms);
    table.AddFlag(u"--include-notes"_s, request.includeNotes);
    table.AddFlag(u"--include-phone"_s, request.includePhone);
    table.AddFlag(u"--one-page"_s, request.onePage);
    if (!words.TakeAll(table)) {
        return;
    }
    if (!variant) {
        throw BadUsage{u"--list starts, --list ends or --list combined is missing"_s};
    }
    request.variant = *variant;
    request.days = day.Resolve();
    request.startupArgument = command.startupArgument;
}

// The options of the occupant and the directory report.
void ParseOccupancies(ReportWords& words, Command& command) {
    auto& request = command.request.emplace<OccupancyRequest>();
    request.list = words.Report() == u"directory" ? OccupancyList::Directory : OccupancyList::Occupants;
    DayOptions day;
    OptionTable table;
    day.AddTo(table);
    table.AddFlag(u"--non-permanent"_s, request.nonPermanent);
    table.AddFlag(u"--include-unreserved"_s, request.includeUnreserved);
    if (words.TakeAll(table)) {
        request.days = day.Resolve();
        request.startupArgument = command.startupArgument;
    }
}

void ParseException(ReportWords& words, Command& command) {
    auto& request = command.request.emplace<ExceptionRequest>();
    std::optional<ExceptionType> type;
    OptionTable table;
    table.AddValue(u"--type"_s, [&](const QString& v) {
        type = OneOf<ExceptionType>(u"--type"_s, v,
                                    {{u"space"_s, ExceptionType::SpaceType},
                                     {u"area1"_s, ExceptionType::FirstArea},
                                     {u"area2"_s, ExceptionType::SecondArea},
                                     {u"area3"_s, ExceptionType::ThirdArea},
                                     {u"not-checked-in"_s, ExceptionType::NotCheckedIn}});
    });
    table.AddValue(u"--date"_s, [&](const QString& v) { request.date = ReportDate(u"--date"_s, v); });
    table.AddFlag(u"--exclude-conference-rooms"_s, request.excludeConferenceRooms);
    if (!words.TakeAll(table)) {
        return;
    }
    if (!type) {
        throw BadUsage{u"--type space, area1, area2, area3 or not-checked-in is missing"_s};
    }
    if (!request.date) {
        throw BadUsage{u"--date YYYY-MM-DD is missing"_s};
    }
    request.type = *type;
    request.startupArgument = command.startupArgument;
}

void ParseUsage(ReportWords& words, Command& command) {
    auto& request = command.request.emplace<UsageRequest>();
    std::optional<UsageBreakdown> breakdown;
    OptionTable table;
    table.AddValue(u"--by"_s, [&](const QString& v) {
        breakdown = OneOf<UsageBreakdown>(u"--by"_s, v,
                                          {{u"location"_s, UsageBreakdown::Locations},
                                           {u"area1"_s, UsageBreakdown::FirstArea},
                                           {u"area2"_s, UsageBreakdown::SecondArea},
                                           {u"area3"_s, UsageBreakdown::ThirdArea}});
    });
    table.AddValue(u"--date"_s, [&](const QString& v) { request.date = ReportDate(u"--date"_s, v); });
    table.AddFlag(u"--detail"_s, request.detail);
    if (!words.TakeAll(table)) {
        return;
    }
    if (!breakdown) {
        throw BadUsage{u"--by location, area1, area2 or area3 is missing"_s};
    }
    if (!request.date) {
        throw BadUsage{u"--date YYYY-MM-DD is missing"_s};
    }
    request.breakdown = *breakdown;
}

struct Report {
    const char16_t* name;
    void (*parse)(ReportWords& words, Command& command);
};

constexpr Report reports[] = {
    {u"daily", &ParseDaily},         {u"occupant", &ParseOccupancies}, {u"directory", &ParseOccupancies},
    {u"exception", &ParseException}, {u"usage", &ParseUsage},
};

} // namespace

void ParseReport(Words& words, const OptionTable& global, Command& command) {
    const QString name = words.Take();
    for (const Report& report : reports) {
        if (name == report.name) {
            ReportWords rest(name, words, global, command);
            report.parse(rest, command);
            return;
        }
    }
    throw BadUsage{name.startsWith(u'-') ? u"\"%1\" is no option before the report's name"_s.arg(name)
                                         : u"There is no report \"%1\""_s.arg(name)};
}

} // namespace velmora::report
