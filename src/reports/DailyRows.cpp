#include "reports/DailyRows.h"

#include "data/AssetRules.h"
#include "data/Helpers.h"

namespace velmora {

using namespace Qt::StringLiterals;
using engine::Database;
using engine::Recordset;

namespace {

// The stored queries whose records are listed, by DailyVariant.
constexpr std::array queries{u"QReport3", u"QReport4", u"QReport5"};

bool LeavesOut(const DailyRequest& request, const DailyLine& line, const engine::Field& isLocation) {
    const bool starts = request.variant == DailyVariant::Starts;
    // A combined list has both tasks of a reservation, so neither flag alone makes it done.
    const bool hasOneTask = request.variant != DailyVariant::Combined;
    const bool moved = hasOneTask && (starts ? line.movedIn : line.movedOut);
    const bool phoned = hasOneTask && (starts ? line.phoneConnected : line.phoneDisconnected);
    return (request.excludeConferenceRooms && IsConferenceRoom(line.asset)) || IsUnusedName(line.assetName) ||
           (!isLocation.IsNull() && !isLocation.ToBool()) || line.eventType == QUtf8StringView("UNUSED") ||
           !BeginsWith(line.assetName, request.startupArgument) || (request.excludeCompletedMoves && moved) ||
           (request.excludeCompletedPhones && phoned);
}

DailyPerson ReadPerson(Database& database, TextPool& texts, const QString& lastName, const QString& firstName) {
    const auto records =
        database.OpenRecordset(u"Select * from Person where "_s + PersonCondition(lastName, firstName));
    const Recordset& person = *records;
    if (person.EndOfFile()) {
        return {};
    }
    const auto text = [&](const char* field) { return texts.Keep(person[field]); };
    return {.found = true,
            .firstName = text("FirstName"),
            .lastName = text("LastName"),
            .secretaryFirst = text("SecretaryFirst"),
            .secretaryLast = text("SecretaryLast"),
            .storage = text("Storage"),
            .phone = text("Phone"),
            .extension = text("Extension"),
            .codes = {text("Code1"), text("Code2"), text("Code3")}};
}

DailyLocation ReadLocation(Database& database, TextPool& texts, qint64 asset) {
    const auto records = database.OpenRecordset(u"Select * from Asset where AssetID = "_s + QString::number(asset));
    const Recordset& location = *records;
    if (location.EndOfFile()) {
        return {};
    }
    const auto text = [&](const char* field) { return texts.Keep(location[field]); };
    return {.found = true,
            .name = text("Name"),
            .description = text("Description"),
            .jack = text("Jack"),
            .port = text("Port"),
            .stationType = text("StationType"),
            .switchInterface = text("SwitchInterface")};
}

std::optional<DailyLocation> ReadGuestLocation(Database& database, TextPool& texts, qint32 reservation) {
    const auto extensions =
        database.OpenRecordset(u"Select * from Reservation where EventType = \"Guest Extension\" and Link = "_s +
                               QString::number(reservation));
    if (extensions->EndOfFile()) {
        return {};
    }
    return ReadLocation(database, texts, static_cast<qint16>((*extensions)["Asset"].ToInteger()));
}

std::vector<DailyNote> ReadNotes(Database& database, TextPool& texts, qint32 reservation) {
    std::vector<DailyNote> read;
    const auto notes =
        database.OpenRecordset(u"Select * from [Note] where Reservation = "_s + QString::number(reservation));
    for (; !notes->EndOfFile(); notes->MoveNext()) {
        const Recordset& note = *notes;
        read.push_back({texts.Keep(note["NoteCategory"]), texts.Keep(note["Name"]), texts.Keep(note["Note"])});
    }
    return read;
}

// The line without its details; none when the list leaves it out.
std::optional<DailyLine> ReadLine(const DailyRequest& request, const Recordset& record, TextPool& texts) {
    DailyLine line;
    line.reservation = static_cast<qint32>(record["ID"].ToInteger());
    line.asset = static_cast<qint32>(record["AssetID"].ToInteger());
    line.start = record["Start"].ToDateTime();
    line.end = record["End"].ToDateTime();
    line.movedIn = record["SLockStart"].ToBool();
    line.movedOut = record["SLockEnd"].ToBool();
    line.phoneConnected = record["TLockStart"].ToBool();
    line.phoneDisconnected = record["TLockEnd"].ToBool();
    ReadTexts<DailyLine>(record, dailyTexts, line, texts);
    return LeavesOut(request, line, record["Location"]) ? std::nullopt : std::optional(std::move(line));
}

} // namespace

DailyRows GatherDaily(const DailyRequest& request, const std::optional<ReportDays>& days, const Gathering& gathering) {
    Database& database = gathering.database;
    const auto read = [&](const Recordset& record, TextPool& texts, const Attempt& attempt) {
        std::optional<DailyLine> line = ReadLine(request, record, texts);
        if (!line) {
            return line;
        }
        if (!request.brief) {
            attempt([&] {
                line->person = ReadPerson(database, texts, line->lastName.toString(), line->firstName.toString());
            });
        }
        if (!request.brief && request.includePhone) {
            attempt([&] { line->guestLocation = ReadGuestLocation(database, texts, line->reservation); });
        }
        if (request.includeNotes) {
            attempt([&] { line->notes = ReadNotes(database, texts, line->reservation); });
        }
        return line;
    };
    return RowGatherer<DailyLine>(gathering, read).Gather([&] {
        TextPool texts;
        return OpenOverDays(database, queries.at(static_cast<size_t>(request.variant)), days,
                            [&](const Recordset& record) { ReadLine(request, record, texts); });
    });
}

} // namespace velmora
