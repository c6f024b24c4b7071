#include "reports/UsageReport.h"

#include "base/Error.h"
#include "base/Translate.h"
#include "reports/CellTexts.h"
#include "reports/OccupancyDays.h"
#include "reports/PrintedAt.h"
#include "reports/ReportFrame.h"

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

struct Breakdown {
    const char16_t* query;
    const char* title;
    // The fields of the three levels.
    std::array<const char*, 3> keys;
    // The detail lists locations; else persons.
    bool locations;
};

// In the order of UsageBreakdown.
constexpr Breakdown breakdowns[] = {
    {u"A1", "Location Usage Report", {"AreaName", "EventType", "Organization"}, true},
    {u"P1", "Person Usage Report", {"Area", "Organization", "EventType"}, false},
    {u"P2", "Person Usage Report", {"Area2", "Organization", "EventType"}, false},
    {u"P3", "Person Usage Report", {"Area3", "Organization", "EventType"}, false},
};

// What a row says of its location or person, in the order of the rows of a group.
struct UsageClass {
    qint64 perm;
    const char* detailCaption;
    const char* totalCaption;
};

constexpr std::array<UsageClass, 3> classes{{
    {-2, "Unreserved", "Unreserved"},
    {-1, "Permanently Reserved", "Permanent"},
    {0, "Non-Permanently Reserved", "Non-Permanent"},
}};

class UsageReport {
public:
    UsageReport(ReportContext& context, Steps& steps, ReportFrame& frame, const UsageRequest& request)
        : context_(context), steps_(steps), frame_(frame), request_(request),
          breakdown_(breakdowns[static_cast<size_t>(request.breakdown)]) {}

    void Run();

private:
    using Keys = std::array<QByteArray, 3>;

    void ChooseDay();
    void PrintRows();
    void OpenGroup(const Keys& keys);
    // A row of no class is neither counted nor listed.
    void Count();
    void List(size_t usageClass);
    void PrintPendingNames();
    void CloseGroup();
    void PrintTotal(const char* caption, int count);
    Keys ReadKeys() const;
    QByteArray ReadName() const;
    std::optional<size_t> ReadClass() const;

    template <typename Function>
    bool Step(Function&& statement) {
        return steps_.Step(QString(), std::forward<Function>(statement));
    }

    ReportContext& context_;
    Steps& steps_;
    ReportFrame& frame_;
    const UsageRequest& request_;
    const Breakdown& breakdown_;

    QString printedAt_;
    std::unique_ptr<engine::Recordset> rows_;
    // Of the group being printed. No record has these, so the first row opens every level.
    Keys keys_{"ZZZZZZZZZZ!", "ZZZZZZZZZZ!", "ZZZZZZZZZZ!"};
    std::array<int, classes.size()> counts_{};
    // Names that wait to be printed, four to a line.
    std::array<QByteArray, 4> names_;
};

void UsageReport::Run() {
    // Without a day there is nothing to print.
    if (!Step([this] { ChooseDay(); })) {
        return;
    }
    frame_.SetOrientation();
    frame_.PreparePrinter();
    frame_.ShowRunning();
    context_.run.CancelRequested = false;
    if (Step([this] {
            const auto& keys = breakdown_.keys;
            rows_ =
                OpenOverDays(context_.database, breakdown_.query, *request_.date, *request_.date + std::chrono::days(1),
                             {keys[0], keys[1], keys[2], "Perm", breakdown_.locations ? "Name" : "FirstName",
                              breakdown_.locations ? "Name" : "LastName"});
        })) {
        PrintRows();
    }
    rows_.reset();
    frame_.End();
}

void UsageReport::ChooseDay() {
    if (!request_.date) {
        throw ProgramError(ErrorNumber::TypeMismatch, u"The box for the report date holds no date"_s);
    }
    const QString day = context_.program.services().localeText.ShortDate(*request_.date);
    printedAt_ = PrintedAt(context_.program, u"Printed at"_s, u" for "_s + day);
}

void UsageReport::PrintRows() {
    Keys next;
    bool known = false;
    while (!rows_->EndOfFile()) {
        if (!frame_.BeforeRow(*rows_)) {
            return;
        }
        if (known || Step([&] { next = ReadKeys(); })) {
            OpenGroup(next);
            Count();
        }
        if (!Step([this] { rows_->MoveNext(); })) {
            return;
        }
        known = !rows_->EndOfFile() && Step([&] { next = ReadKeys(); });
        if (!known || next != keys_) {
            CloseGroup();
        }
    }
    frame_.ShowSending();
}

UsageReport::Keys UsageReport::ReadKeys() const {
    const engine::Recordset& rows = *rows_;
    return {Utf8(rows[breakdown_.keys[0]]), Utf8(rows[breakdown_.keys[1]]), Utf8(rows[breakdown_.keys[2]])};
}

QByteArray UsageReport::ReadName() const {
    const engine::Recordset& rows = *rows_;
    return breakdown_.locations ? Utf8(rows["Name"]) : Utf8(rows["FirstName"]) + ' ' + Utf8(rows["LastName"]);
}

std::optional<size_t> UsageReport::ReadClass() const {
    const engine::Field perm = (*rows_)["Perm"];
    for (size_t i = 0; i < classes.size(); ++i) {
        if (!perm.IsNull() && perm.ToInteger() == classes[i].perm) {
            return i;
        }
    }
    return {};
}

void UsageReport::OpenGroup(const Keys& keys) {
    // Each level has its own: a new area whose first space type is the last one's repeats no heading.
    if (keys[0] != keys_[0]) {
        keys_[0] = keys[0];
        Step([&] {
            context_.job.PrintReportTitle(Translate(QString::fromLatin1(breakdown_.title)), QUtf8StringView(keys[0]),
                                          printedAt_);
        });
    }
    if (keys[1] != keys_[1]) {
        keys_[1] = keys[1];
        Step([&] { context_.job.PrintSectionHeading(QUtf8StringView(keys[1])); });
    }
    keys_[2] = keys[2];
}

void UsageReport::Count() {
    std::optional<size_t> usageClass;
    Step([&] { usageClass = ReadClass(); });
    if (!usageClass) {
        return;
    }
    if (request_.detail) {
        List(*usageClass);
    }
    ++counts_[*usageClass];
}

void UsageReport::List(size_t usageClass) {
    QByteArray name;
    if (!Step([&] { name = ReadName(); })) {
        return;
    }
    if (counts_[usageClass] == 0) {
        PrintPendingNames();
        Step([&] {
            context_.job.PrintWideLabelValue(QUtf8StringView(keys_[2]),
                                             Translate(QString::fromLatin1(classes[usageClass].detailCaption)));
        });
    }
    const size_t last = names_.size() - 1;
    size_t place = 0;
    while (place < last && !names_[place].isEmpty()) {
        ++place;
    }
    names_[place] = name;
    if (place == last) {
        PrintPendingNames();
    }
}

void UsageReport::PrintPendingNames() {
    if (names_[0].isEmpty()) {
        return;
    }
    Step([this] {
        context_.job.PrintTableRow({QUtf8StringView(names_[0]), QUtf8StringView(names_[1]), QUtf8StringView(names_[2]),
                                    QUtf8StringView(names_[3])},
                                   print::RowStyle::Indented);
    });
    names_ = {};
}

void UsageReport::CloseGroup() {
    PrintPendingNames();
    int total = 0;
    for (size_t i = 0; i < classes.size(); ++i) {
        PrintTotal(classes[i].totalCaption, counts_[i]);
        total += counts_[i];
    }
    PrintTotal("Total", total);
    Step([this] { context_.job.PrintRule(5, 5, 5); });
    counts_ = {};
}

void UsageReport::PrintTotal(const char* caption, int count) {
    Step([&] {
        const QString label = QString::fromUtf8(keys_[2]) + u' ' + Translate(QString::fromLatin1(caption));
        context_.job.PrintWideLabelValue(label, QString::number(count));
    });
}

} // namespace

void PrintUsageReport(ReportContext& context, const UsageRequest& request) {
    Steps steps(context.program.services().errors, u"Service Administration"_s, u"Print Usage Report"_s, QString());
    ReportFrame frame(context, steps);
    if (frame.Admit()) {
        UsageReport(context, steps, frame, request).Run();
    }
}

} // namespace velmora
