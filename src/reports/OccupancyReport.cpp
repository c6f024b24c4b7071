#include "reports/OccupancyReport.h"

#include "base/Translate.h"
#include "data/AssetRules.h"
#include "data/Helpers.h"
#include "reports/ReportFrame.h"

namespace velmora {

using namespace Qt::StringLiterals;
using engine::Recordset;

namespace {

using Row = OccupancyRow;

// The texts that each list takes from its query, and the occupants from the person's record.
constexpr TextField<Row> occupantTexts[] = {
    {"Name", &Row::location},
    {"LastName", &Row::lastName},
    {"FirstName", &Row::firstName},
    {"Organization", &Row::organization},
};

constexpr TextField<Row> occupantPersonTexts[] = {
    {"Phone", &Row::phone},
    {"Extension", &Row::extension},
};

constexpr TextField<Row> directoryTexts[] = {
    {"Name", &Row::location},       {"LastName", &Row::lastName},
    {"FirstName", &Row::firstName}, {"Organization", &Row::organization},
    {"Phone", &Row::phone},         {"Extension", &Row::extension},
};

// "555-0101 ex. 101", with " ex. " also where a part is empty.
QByteArray PhoneCell(const Row& row, const LocaleText&) {
    return row.occupied && row.hasPhone ? (row.phone.toString() + u" ex. "_s + row.extension.toString()).toUtf8()
                                        : QByteArray();
}

constexpr OccupancyColumn occupantColumns[] = {
    {"Location", LocationCell},         {"Person", PersonCell},    {"Phone", PhoneCell},
    {"Organization", OrganizationCell}, {"From - To", PeriodCell},
};

constexpr OccupancyColumn directoryColumns[] = {
    {"Name", PersonCell},      {"Location", LocationCell}, {"Phone", PhoneCell}, {"Organization", OrganizationCell},
    {"From - To", PeriodCell},
};

Row ReadRow(const Recordset& record, std::span<const TextField<Row>> fields, TextPool& texts) {
    Row row;
    ReadTexts<Row>(record, fields, row, texts);
    row.ReadPeriod(record);
    row.permanent = record["Permanent"].ToBool();
    return row;
}

// What leaves a record out of either list.
bool LeavesOut(const OccupancyRequest& request, const QString& namePrefix, const Row& row,
               const engine::Field& eventType) {
    return QUtf8StringView(eventType.Utf8()) == unavailableEvent || (request.nonPermanent && row.permanent) ||
           !BeginsWith(row.location, namePrefix);
}

// Prints one of the two lists. The printer is prepared when all is read.
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
    const OccupancyRows rows = (byLocation ? GatherOccupants : GatherDirectory)(request, days, frame.Gather());
    frame.ShowSending(rows);
    frame.PreparePrinter();
    const QString printedAt = frame.PrintedAt(u"Printed at:"_s, days);
    if (byLocation) {
        context.job.PrintReportTitle(Translate(u"Occupant Report"_s), request.startupArgument, printedAt);
    } else {
        context.job.PrintReportTitle(Translate(u"Directory Report"_s) + request.startupArgument, {}, printedAt);
    }
    PrintTable(context, byLocation ? occupantColumns : directoryColumns, rows.rows);
    frame.End(rows, u"Cancelled after %1 of %2 rows"_s);
}

} // namespace

OccupancyRows GatherOccupants(const OccupancyRequest& request, const ReportDays& days, const Gathering& gathering) {
    const auto read = [&](const Recordset& record, TextPool& texts) {
        Row row = ReadRow(record, occupantTexts, texts);
        row.occupied = !record["Start"].IsNull();
        const bool isLocation = record["Location"].ToBool() && !IsUnusedName(row.location);
        const bool listed = isLocation && (row.occupied || request.includeUnreserved) &&
                            !LeavesOut(request, request.startupArgument, row, record["EventType"]);
        return listed ? std::optional(row) : std::nullopt;
    };
    const auto readPhones = [&](std::span<std::optional<Row>> rows, TextPool& texts, const Attempt&) {
        for (std::optional<Row>& row : rows) {
            if (row && row->occupied) {
                const auto person = gathering.database.OpenRecordset(
                    u"Select Phone, Extension from Person where "_s +
                    PersonCondition(row->lastName.toString(), row->firstName.toString()));
                row->hasPhone = !person->EndOfFile();
                if (row->hasPhone) {
                    ReadTexts<Row>(*person, occupantPersonTexts, *row, texts);
                }
            }
        }
    };
    return RowGatherer<Row>(gathering, read, readPhones).GatherOverDays(u"QReport2", days);
}

OccupancyRows GatherDirectory(const OccupancyRequest& request, const ReportDays& days, const Gathering& gathering) {
    const auto read = [&](const Recordset& record, TextPool& texts) {
        const Row row = ReadRow(record, directoryTexts, texts);
        // Blanks around the beginning of the names do not count here.
        const bool listed = (request.includeUnreserved || !row.location.isEmpty()) &&
                            !LeavesOut(request, request.startupArgument.trimmed(), row, record["EventType"]);
        return listed ? std::optional(row) : std::nullopt;
    };
    return RowGatherer<Row>(gathering, read).GatherOverDays(u"RangePerson", days);
}

void PrintOccupantReport(ReportContext& context, const OccupancyRequest& request) {
    PrintList(context, request, true);
}

void PrintDirectoryReport(ReportContext& context, const OccupancyRequest& request) {
    PrintList(context, request, false);
}

} // namespace velmora
