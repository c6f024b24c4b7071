#include "reports/OccupancyReport.h"

#include "base/Translate.h"
#include "reports/OccupancyRows.h"
#include "reports/ReportFrame.h"
#include "reports/ReportTable.h"

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

using Row = OccupancyRow;

void AppendLocation(QByteArray& cell, const Row& row, const LocaleText&) {
    Append(cell, row.location);
}

void AppendPerson(QByteArray& cell, const Row& row, const LocaleText&) {
    if (row.occupied) {
        AppendPersonName(cell, row);
    }
}

// "555-0101 ex. 101", with " ex. " also where a part is empty.
void AppendPhone(QByteArray& cell, const Row& row, const LocaleText&) {
    if (row.occupied && row.hasPhone) {
        Append(cell, row.phone);
        cell += " ex. ";
        Append(cell, row.extension);
    }
}

void AppendOrganization(QByteArray& cell, const Row& row, const LocaleText&) {
    Append(cell, row.occupied ? row.organization : QUtf8StringView());
}

void AppendFromTo(QByteArray& cell, const Row& row, const LocaleText& locale) {
    AppendPeriod(cell, row, locale);
}

constexpr Column<Row> occupantColumns[] = {
    {"Location", AppendLocation},         {"Person", AppendPerson},    {"Phone", AppendPhone},
    {"Organization", AppendOrganization}, {"From - To", AppendFromTo},
};

constexpr Column<Row> directoryColumns[] = {
    {"Name", AppendPerson},      {"Location", AppendLocation},
    {"Phone", AppendPhone},      {"Organization", AppendOrganization},
    {"From - To", AppendFromTo},
};

// Prints one of the two lists. The printer is prepared when all is read: a list that is cancelled prints nothing.
void PrintList(ReportContext& context, const OccupancyRequest& request, bool byLocation) {
    ReportFrame frame(context, byLocation ? u"Print Occupant Report"_s : u"Print Directory Report"_s);
    const Services& services = context.program.services();
    ReportDays days;
    // Without days there is nothing to print; the frame returns the window to idle.
    if (!frame.Start() ||
        !frame.Step([&] { days = OccupancyDays(request.days, services.clock.Today(), services.localeText); })) {
        return;
    }
    if (byLocation) {
        frame.SetOrientation();
    }
    const OccupancyRows rows =
        byLocation ? GatherOccupants(request, days, frame.Gather()) : GatherDirectory(request, days, frame.Gather());
    if (!rows.cancelled) {
        frame.ShowSending(rows);
        frame.PreparePrinter();
        const QString printedAt = frame.PrintedAt(u"Printed at:"_s, days);
        if (byLocation) {
            context.job.PrintReportTitle(Translate(u"Occupant Report"_s), request.startupArgument, printedAt);
        } else {
            context.job.PrintReportTitle(Translate(u"Directory Report"_s) + request.startupArgument, {}, printedAt);
        }
        PrintTable<Row>(context, byLocation ? occupantColumns : directoryColumns, rows.rows);
    }
    frame.End();
}

} // namespace

void PrintOccupantReport(ReportContext& context, const OccupancyRequest& request) {
    PrintList(context, request, true);
}

void PrintDirectoryReport(ReportContext& context, const OccupancyRequest& request) {
    PrintList(context, request, false);
}

} // namespace velmora
