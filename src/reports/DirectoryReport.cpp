#include "reports/DirectoryReport.h"

#include "base/Translate.h"
#include "reports/CellTexts.h"
#include "reports/OccupancyDays.h"
#include "reports/PrintedAt.h"
#include "reports/ReadTable.h"

namespace velmora {

using namespace Qt::StringLiterals;
using engine::Recordset;

namespace {

class DirectoryReport {
public:
    DirectoryReport(ReportContext& context, Steps& steps, ReportFrame& frame, const OccupancyRequest& request)
        : context_(context), steps_(steps), frame_(frame), request_(request),
          locale_(context.program.services().localeText), startupArgument_(request.startupArgument),
          namePrefix_(startupArgument_.trimmed().toStdString()),
          table_({"Name", "Location", "Phone", "Organization", "From - To"}) {}

    void Run();

private:
    void ChooseDays();
    // The table's row for the current occupancy; none when it is left out.
    std::optional<ReportTable::Row> RowOf(const Recordset& occupancies) const;

    ReportContext& context_;
    Steps& steps_;
    ReportFrame& frame_;
    const OccupancyRequest& request_;
    const LocaleText& locale_;
    const QString& startupArgument_;
    const std::string namePrefix_;

    ReportDays days_;
    QString printedAt_;
    ReportTable table_;
    std::unique_ptr<Recordset> rows_;
};

void DirectoryReport::Run() {
    // Without days there is nothing to print; the frame returns the window to idle.
    if (!steps_.Step({}, [this] { ChooseDays(); })) {
        return;
    }
    const bool opened = steps_.Step({}, [this] {
        rows_ = OpenOverDays(context_.database, u"RangePerson", days_.start, days_.end,
                             {"LastName", "FirstName", "Name", "Phone", "Extension", "Organization", "EventType",
                              "Start", "End", "Permanent"});
    });
    const auto rowOf = [this](const Recordset& rows) { return RowOf(rows); };
    if (!opened || ReadTable(context_, steps_, frame_, *rows_, rowOf, table_)) {
        rows_.reset();
        frame_.ShowSending();
        frame_.PreparePrinter();
        steps_.Step({}, [this] {
            context_.job.PrintReportTitle(Translate(u"Directory Report"_s) + startupArgument_, {}, printedAt_);
        });
        table_.Print(context_, steps_);
    }
    frame_.End();
}

void DirectoryReport::ChooseDays() {
    days_ = OccupancyDays(request_.days, DateOf(context_.program.services().clock.Now()), locale_);
    printedAt_ = PrintedAt(context_.program, u"Printed at:"_s, days_.phrase);
}

std::optional<ReportTable::Row> DirectoryReport::RowOf(const Recordset& occupancies) const {
    const bool permanent = occupancies["Permanent"].ToBool();
    const engine::Field location = occupancies["Name"];
    const std::string_view name = location.Utf8();
    if ((request_.nonPermanent && permanent) || occupancies["EventType"].Utf8() == "UNAVAILABLE" ||
        (!request_.includeUnreserved && name.empty()) || !name.starts_with(namePrefix_)) {
        return {};
    }
    return ReportTable::Row{PersonName(occupancies["LastName"], occupancies["FirstName"]), Utf8(location),
                            PhoneText(occupancies["Phone"], occupancies["Extension"]),
                            Utf8(occupancies["Organization"]),
                            PeriodText(locale_, occupancies["Start"], occupancies["End"], permanent)};
}

} // namespace

void PrintDirectoryReport(ReportContext& context, const OccupancyRequest& request) {
    Steps steps(context.program.services().errors, u"Service Administration"_s, u"Print Directory Report"_s, QString());
    ReportFrame frame(context, steps);
    if (frame.Start()) {
        DirectoryReport(context, steps, frame, request).Run();
    }
}

} // namespace velmora
