#include "reports/OccupantReport.h"

#include "base/Translate.h"
#include "data/Helpers.h"
#include "reports/CellTexts.h"
#include "reports/OccupancyDays.h"
#include "reports/PrintedAt.h"
#include "reports/ReadTable.h"

namespace velmora {

using namespace Qt::StringLiterals;
using engine::Recordset;

namespace {

class OccupantReport {
public:
    OccupantReport(ReportContext& context, Steps& steps, ReportFrame& frame, const OccupancyRequest& request)
        : context_(context), steps_(steps), frame_(frame), request_(request),
          locale_(context.program.services().localeText), startupArgument_(request.startupArgument),
          namePrefix_(startupArgument_.toStdString()),
          table_({"Location", "Person", "Phone", "Organization", "From - To"}) {}

    void Run();

private:
    void ChooseDays();
    void Print();
    bool LeavesOut(const Recordset& occupancies) const;
    // The table's row for the current occupancy; none when it is left out.
    std::optional<ReportTable::Row> RowOf(const Recordset& occupancies) const;
    // The occupant's telephone; empty without a record of the person.
    QByteArray Phone(const Recordset& occupancies) const;

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

void OccupantReport::Run() {
    // Without days there is nothing to print; the frame returns the window to idle.
    if (!steps_.Step({}, [this] { ChooseDays(); })) {
        return;
    }
    const bool opened = steps_.Step({}, [this] {
        rows_ = OpenOverDays(
            context_.database, u"QReport2", days_.start, days_.end,
            {"Name", "Location", "Start", "End", "Permanent", "EventType", "LastName", "FirstName", "Organization"});
    });
    frame_.SetOrientation();
    const auto rowOf = [this](const Recordset& rows) { return RowOf(rows); };
    if (!opened || ReadTable(context_, steps_, frame_, *rows_, rowOf, table_)) {
        rows_.reset();
        Print();
    }
    frame_.End();
}

void OccupantReport::ChooseDays() {
    days_ = OccupancyDays(request_.days, DateOf(context_.program.services().clock.Now()), locale_);
    printedAt_ = PrintedAt(context_.program, u"Printed at:"_s, days_.phrase);
}

void OccupantReport::Print() {
    frame_.ShowSending();
    frame_.PreparePrinter();
    steps_.Step(
        {}, [this] { context_.job.PrintReportTitle(Translate(u"Occupant Report"_s), startupArgument_, printedAt_); });
    context_.job.ResetTabStops();
    table_.Print(context_, steps_);
}

bool OccupantReport::LeavesOut(const Recordset& occupancies) const {
    const std::string_view name = occupancies["Name"].Utf8();
    return name.starts_with("Unused") || !occupancies["Location"].ToBool() || !name.starts_with(namePrefix_) ||
           (!request_.includeUnreserved && occupancies["Start"].IsNull()) ||
           (request_.nonPermanent && occupancies["Permanent"].ToBool()) ||
           occupancies["EventType"].Utf8() == "UNAVAILABLE";
}

std::optional<ReportTable::Row> OccupantReport::RowOf(const Recordset& occupancies) const {
    if (LeavesOut(occupancies)) {
        return {};
    }
    ReportTable::Row row{Utf8(occupancies["Name"])};
    if (!occupancies["Start"].IsNull()) {
        row[1] = PersonName(occupancies["LastName"], occupancies["FirstName"]);
        row[2] = Phone(occupancies);
        row[3] = Utf8(occupancies["Organization"]);
        row[4] = PeriodText(locale_, occupancies["Start"], occupancies["End"], occupancies["Permanent"].ToBool());
    }
    return row;
}

QByteArray OccupantReport::Phone(const Recordset& occupancies) const {
    const auto person = context_.database.OpenRecordset(
        u"Select * from Person where LastName = "_s + SqlText(occupancies["LastName"].ToText()) +
        u" And FirstName = "_s + SqlText(occupancies["FirstName"].ToText()));
    return person->EndOfFile() ? QByteArray() : PhoneText((*person)["Phone"], (*person)["Extension"]);
}

} // namespace

void PrintOccupantReport(ReportContext& context, const OccupancyRequest& request) {
    Steps steps(context.program.services().errors, u"Service Administration"_s, u"Print Occupant Report"_s, QString());
    ReportFrame frame(context, steps);
    if (frame.Start()) {
        OccupantReport(context, steps, frame, request).Run();
    }
}

} // namespace velmora
