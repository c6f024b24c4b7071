#include "reports/UsageReport.h"

#include "base/Translate.h"
#include "reports/ReportFrame.h"

namespace velmora {

using namespace Qt::StringLiterals;
using engine::Recordset;

namespace {

struct Breakdown {
    const char16_t* query;
    // The fields of the three levels.
    std::array<const char*, 3> group;
    // A location has no first name.
    const char* name;
    const char* firstName;
};

// By UsageBreakdown.
constexpr std::array<Breakdown, 4> breakdowns{{
    {u"A1", {"AreaName", "EventType", "Organization"}, "Name", nullptr},
    {u"P1", {"Area", "Organization", "EventType"}, "LastName", "FirstName"},
    {u"P2", {"Area2", "Organization", "EventType"}, "LastName", "FirstName"},
    {u"P3", {"Area3", "Organization", "EventType"}, "LastName", "FirstName"},
}};

std::optional<UsageClass> ClassOf(const engine::Field& perm) {
    constexpr qint64 first = -2;
    const qint64 usage = perm.ToInteger() - first;
    return perm.IsNull() || usage < 0 || usage > 2 ? std::nullopt : std::optional(static_cast<UsageClass>(usage));
}

UsageRow ReadRow(const Breakdown& breakdown, const Recordset& record, TextPool& texts) {
    UsageRow row;
    for (size_t level = 0; level < row.group.size(); ++level) {
        row.group[level] = texts.Keep(record[breakdown.group[level]]);
    }
    row.usage = ClassOf(record["Perm"]);
    row.name = texts.Keep(record[breakdown.name]);
    if (breakdown.firstName != nullptr) {
        row.firstName = texts.Keep(record[breakdown.firstName]);
    }
    return row;
}

struct ClassCaptions {
    const char* detail;
    const char* total;
};

// By UsageClass.
constexpr std::array<ClassCaptions, 3> classes{{
    {"Unreserved", "Unreserved"},
    {"Permanently Reserved", "Permanent"},
    {"Non-Permanently Reserved", "Non-Permanent"},
}};

QString Translated(const char* english) {
    return Translate(QString::fromLatin1(english));
}

// Prints the groups of a usage report into the report that is open.
class UsagePrinter {
public:
    UsagePrinter(ReportContext& context, const UsageRequest& request, QString printedAt)
        : job_(context.job), detail_(request.detail), locations_(request.breakdown == UsageBreakdown::Locations),
          title_(Translated(locations_ ? "Location Usage Report" : "Person Usage Report")),
          printedAt_(std::move(printedAt)) {
        for (size_t i = 0; i < totals_.size(); ++i) {
            totals_.at(i) = ' ' + Translated(i < classes.size() ? classes.at(i).total : "Total").toUtf8();
        }
    }

    void Print(const UsageRows& rows) {
        const UsageRow* last = nullptr;
        for (const UsageRow& row : rows.rows) {
            if (last != nullptr && row.group != last->group) {
                CloseGroup(*last);
            }
            OpenGroup(row, last);
            if (row.usage) {
                const auto usage = static_cast<size_t>(*row.usage);
                if (detail_) {
                    List(row, usage);
                }
                ++counts_.at(usage);
            }
            last = &row;
        }
        PrintPendingNames();
        // The last group of a cancelled report may have had more rows: it has no totals.
        if (last != nullptr && !rows.cancelled) {
            CloseGroup(*last);
        }
    }

private:
    // `last` is the row before; null for the first.
    void OpenGroup(const UsageRow& row, const UsageRow* last) {
        // Each level has its own: a new area whose first space type is the last one's repeats no heading.
        if (last == nullptr || row.group[0] != last->group[0]) {
            job_.PrintReportTitle(title_, row.group[0], printedAt_);
        }
        if (last == nullptr || row.group[1] != last->group[1]) {
            job_.PrintSectionHeading(row.group[1]);
        }
    }

    void List(const UsageRow& row, size_t usage) {
        if (counts_.at(usage) == 0) {
            PrintPendingNames();
            job_.PrintWideLabelValue(row.group[2], Translated(classes.at(usage).detail));
        }
        QByteArray name;
        if (!locations_) {
            print::AppendUtf8(name, row.firstName);
            name += ' ';
        }
        print::AppendUtf8(name, row.name);
        // An empty name takes no place but the last.
        if (!name.isEmpty() || names_.size() == 3) {
            names_.push_back(name);
        }
        if (names_.size() == 4) {
            PrintPendingNames();
        }
    }

    void PrintPendingNames() {
        if (!names_.empty()) {
            names_.resize(4);
            job_.PrintTableRow({names_[0], names_[1], names_[2], names_[3]}, print::RowStyle::Indented);
            names_.clear();
        }
    }

    void CloseGroup(const UsageRow& row) {
        PrintPendingNames();
        int total = 0;
        for (size_t i = 0; i < classes.size(); ++i) {
            PrintTotal(row, totals_.at(i), counts_.at(i));
            total += counts_.at(i);
        }
        PrintTotal(row, totals_.back(), total);
        job_.PrintRule(5, 5, 5);
        counts_ = {};
    }

    // `caption` begins with the blank behind the group's name.
    void PrintTotal(const UsageRow& row, const QByteArray& caption, int count) {
        QByteArray label;
        print::AppendUtf8(label, row.group[2]);
        job_.PrintWideLabelValue(label + caption, QByteArray::number(count));
    }

    print::PrintJob& job_;
    const bool detail_;
    const bool locations_;
    const QString title_;
    const QString printedAt_;
    // Captions of the totals in UTF-8, by UsageClass; the last is of all together.
    std::array<QByteArray, classes.size() + 1> totals_;

    // Of the group being printed.
    std::array<int, classes.size()> counts_{};
    // Names that wait to be printed, four to a line.
    std::vector<QByteArray> names_;
};

} // namespace

UsageRows GatherUsage(const UsageRequest& request, const ReportDays& days, const Gathering& gathering) {
    const Breakdown& breakdown = breakdowns.at(static_cast<size_t>(request.breakdown));
    const auto read = [&](const Recordset& record, TextPool& texts) -> std::optional<UsageRow> {
        return ReadRow(breakdown, record, texts);
    };
    return RowGatherer<UsageRow>(gathering, read).GatherOverDays(breakdown.query, days);
}

void PrintUsageReport(ReportContext& context, const UsageRequest& request) {
    ReportFrame frame(context, u"Print Usage Report"_s);
    const LocaleText& locale = context.program.services().localeText;
    ReportDays days;
    // Without a day there is nothing to print.
    if (!frame.Admit() || !frame.Step([&] { days = OneReportDay(request.date, locale); })) {
        return;
    }
    frame.SetOrientation();
    frame.PreparePrinter();
    frame.ShowRunning();
    context.run.CancelRequested = false;
    const QString printedAt = frame.PrintedAt(u"Printed at"_s, days);
    const UsageRows rows = GatherUsage(request, days, frame.Gather());
    frame.ShowSending(rows);
    UsagePrinter(context, request, printedAt).Print(rows);
    frame.End(rows, u"Cancelled after %1 of %2 rows"_s);
}

} // namespace velmora
