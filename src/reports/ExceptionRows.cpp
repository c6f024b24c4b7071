#include "reports/ExceptionRows.h"

#include "data/AssetRules.h"
#include "data/Helpers.h"

#include <array>

namespace velmora {

using namespace Qt::StringLiterals;
using engine::Database;
using engine::Recordset;

namespace {

// The person's field that is compared, and the column and table that say which locations have what it names.
struct Assignment {
    const char* assigned;
    const char* allowed;
    const char* allowedTable;
};

// By ExceptionType.
constexpr std::array<Assignment, 4> assignments{{
    {"EventType", "EventType", "[Asset/Event]"},
    {"Area", "AreaName", "[Asset/Area]"},
    {"Area2", "AreaName", "[Asset/Area]"},
    {"Area3", "AreaName", "[Asset/Area]"},
}};

QString NotCheckedInText(const ExceptionRequest& request, const QString& day, const QString& nextDay) {
    // Here the first asset that is no conference room is left out with them.
    const QString last = QString::number(request.excludeConferenceRooms ? firstOtherAsset : 0);
    return u"SELECT Asset.Name, Reservation.Start, Reservation.End, Reservation.Name, Reservation.Asset, "
           "Reservation.EventType, Reservation.LastName, Reservation.FirstName, Reservation.Organization FROM Asset "
           "INNER JOIN Reservation ON Asset.AssetID = Reservation.Asset Where (((Reservation.Start) < "_s +
           nextDay + u") And ((Reservation.End) > "_s + day +
           u") And ((Reservation.Permanent) = False) And ((Reservation.SLockStart) = False) And ((Asset.Location) = "
           "True) And ((Reservation.Asset) > "_s +
           last + u")) ORDER BY Asset.Name, Reservation.Start"_s;
}

// A person outside of what is assigned to them; none for a person who is where they belong, or nowhere.
class Outside {
public:
    Outside(Database& database, const Assignment& assignment, const QString& day, const QString& nextDay)
        : database_(database), assignment_(assignment),
          onTheDay_(u" and End > "_s + day + u" and Start < "_s + nextDay) {}

    std::optional<ExceptionRow> Read(const Recordset& person, TextPool& texts) const {
        const auto reservations = database_.OpenRecordset(
            u"Select * from Reservation Where "_s +
            PersonCondition(person["LastName"].ToText(), person["FirstName"].ToText()) + onTheDay_);
        if (reservations->EndOfFile()) {
            return {};
        }
        // Whoever has several reservations is judged by the first.
        const Recordset& reservation = *reservations;
        const engine::Field asset = reservation["Asset"];
        const engine::Field assigned = person[assignment_.assigned];
        if (asset.IsNull() || IsAllowed(asset.ToText(), assigned.ToText())) {
            return {};
        }
        const auto location = database_.OpenRecordset(u"Select * from Asset where AssetID = "_s + asset.ToText());
        if (location->EndOfFile()) {
            return {};
        }
        ExceptionRow row;
        row.location = texts.Keep((*location)["Name"]);
        row.lastName = texts.Keep(reservation["LastName"]);
        row.firstName = texts.Keep(reservation["FirstName"]);
        row.ReadPeriod(reservation);
        row.permanent = reservation["Permanent"].ToBool();
        row.asset = static_cast<qint32>(asset.ToInteger());
        row.eventType = texts.Keep(reservation["EventType"]);
        row.fourth = texts.Keep(assigned);
        return row;
    }

private:
    bool IsAllowed(const QString& asset, const QString& assigned) const {
        const auto records = database_.OpenRecordset(
            u"Select * from "_s + QLatin1StringView(assignment_.allowedTable) + u" where AssetID = "_s + asset +
            u" and "_s + QLatin1StringView(assignment_.allowed) + u" = "_s + SqlText(assigned));
        return !records->EndOfFile();
    }

    Database& database_;
    const Assignment& assignment_;
    const QString onTheDay_;
};

ExceptionRow ReadNotCheckedIn(const Recordset& record, TextPool& texts) {
    ExceptionRow row;
    row.location = texts.Keep(record["Asset.Name"]);
    row.asset = static_cast<qint32>(record["Asset"].ToInteger());
    row.occupied = !record["Start"].IsNull();
    row.lastName = texts.Keep(record["LastName"]);
    row.firstName = texts.Keep(record["FirstName"]);
    row.ReadPeriod(record);
    row.eventType = texts.Keep(record["EventType"]);
    row.fourth = texts.Keep(record["Organization"]);
    return row;
}

} // namespace

ExceptionRows GatherExceptions(const ExceptionRequest& request, const ReportDays& days, const Gathering& gathering) {
    Database& database = gathering.database;
    const QString day = SqlDate(days.start);
    const QString nextDay = SqlDate(days.end);
    if (request.type == ExceptionType::NotCheckedIn) {
        const auto read = [&](const Recordset& record, TextPool& texts, const Attempt&) {
            const ExceptionRow row = ReadNotCheckedIn(record, texts);
            const bool listed = !IsUnusedName(row.location) && BeginsWith(row.location, request.startupArgument);
            return listed ? std::optional(row) : std::nullopt;
        };
        return RowGatherer<ExceptionRow>(gathering, read).Gather([&] {
            return database.OpenRecordset(NotCheckedInText(request, day, nextDay));
        });
    }
    const Assignment& assignment = assignments.at(static_cast<size_t>(request.type));
    const Outside outside(database, assignment, day, nextDay);
    const auto read = [&](const Recordset& person, TextPool& texts, const Attempt&) {
        return outside.Read(person, texts);
    };
    return RowGatherer<ExceptionRow>(gathering, read).Gather([&] {
        return database.OpenRecordset(u"Select * from Person order by "_s + QLatin1StringView(assignment.assigned));
    });
}

} // namespace velmora
