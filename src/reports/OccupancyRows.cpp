#include "reports/OccupancyRows.h"

#include "data/AssetRules.h"
#include "data/Helpers.h"

namespace velmora {

using namespace Qt::StringLiterals;
using engine::Database;
using engine::Recordset;

namespace {

OccupancyRow ReadRow(const Recordset& record, TextPool& texts) {
    OccupancyRow row;
    ReadTexts<OccupancyRow>(record, occupancyTexts, row, texts);
    row.ReadPeriod(record);
    row.permanent = record["Permanent"].ToBool();
    return row;
}

// What leaves a record out of either list.
bool LeavesOut(const OccupancyRequest& request, const QString& namePrefix, const OccupancyRow& row,
               const engine::Field& eventType) {
    return eventType.Utf8() == "UNAVAILABLE" || (request.nonPermanent && row.permanent) ||
           !BeginsWith(row.location, namePrefix);
}

void ReadPhone(Database& database, OccupancyRow& row, TextPool& texts) {
    const auto person = database.OpenRecordset(u"Select * from Person where "_s +
                                               PersonCondition(row.lastName.toString(), row.firstName.toString()));
    row.hasPhone = !person->EndOfFile();
    if (row.hasPhone) {
        ReadTexts<OccupancyRow>(*person, phoneTexts, row, texts);
    }
}

std::optional<OccupancyRow> ReadOccupant(const OccupancyRequest& request, const Recordset& record, TextPool& texts) {
    OccupancyRow row = ReadRow(record, texts);
    row.occupied = !record["Start"].IsNull();
    const bool isLocation = record["Location"].ToBool() && !IsUnusedName(row.location);
    const bool listed = isLocation && (row.occupied || request.includeUnreserved) &&
                        !LeavesOut(request, request.startupArgument, row, record["EventType"]);
    return listed ? std::optional(row) : std::nullopt;
}

std::optional<OccupancyRow> ReadPerson(const OccupancyRequest& request, const Recordset& record, TextPool& texts) {
    OccupancyRow row = ReadRow(record, texts);
    ReadTexts<OccupancyRow>(record, phoneTexts, row, texts);
    // Blanks around the beginning of the names do not count here.
    const bool listed = (request.includeUnreserved || !row.location.isEmpty()) &&
                        !LeavesOut(request, request.startupArgument.trimmed(), row, record["EventType"]);
    return listed ? std::optional(row) : std::nullopt;
}

} // namespace

OccupancyRows GatherOccupants(const OccupancyRequest& request, const ReportDays& days, const Gathering& gathering) {
    const auto read = [&](const Recordset& record, TextPool& texts, const Attempt&) {
        std::optional<OccupancyRow> row = ReadOccupant(request, record, texts);
        if (row && row->occupied) {
            ReadPhone(gathering.database, *row, texts);
        }
        return row;
    };
    return RowGatherer<OccupancyRow>(gathering, read).Gather([&] {
        TextPool texts;
        return OpenOverDays(gathering.database, u"QReport2", days,
                            [&](const Recordset& record) { ReadOccupant(request, record, texts); });
    });
}

OccupancyRows GatherDirectory(const OccupancyRequest& request, const ReportDays& days, const Gathering& gathering) {
    const auto read = [&](const Recordset& record, TextPool& texts, const Attempt&) {
        return ReadPerson(request, record, texts);
    };
    return RowGatherer<OccupancyRow>(gathering, read).Gather([&] {
        TextPool texts;
        return OpenOverDays(gathering.database, u"RangePerson", days,
                            [&](const Recordset& record) { ReadPerson(request, record, texts); });
    });
}

} // namespace velmora
