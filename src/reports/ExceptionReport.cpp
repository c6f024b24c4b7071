#include "reports/ExceptionReport.h"

#include "base/Translate.h"
#include "data/AssetRules.h"
#include "data/Helpers.h"
#include "reports/ReportFrame.h"

#include <array>

namespace velmora {

using namespace Qt::StringLiterals;
using engine::Database;
using engine::Recordset;

namespace {

using Row = OccupancyRow;

QByteArray EventTypeCell(const Row& row, const LocaleText&) {
    return QByteArrayView(row.eventType).toByteArray();
}

QByteArray AssignedCell(const Row& row, const LocaleText&) {
    return QByteArrayView(row.assigned).toByteArray();
}

// A kind of exception. Of the persons outside of something also the person's field that is compared, and the column and
// table that say which locations have what it names.
struct ExceptionKind {
    const char* subtitle;
    OccupancyColumn fourthColumn;
    const char* assigned = nullptr;
    const char* allowed = nullptr;
    const char* allowedTable = nullptr;
};

// By ExceptionType.
constexpr std::array<ExceptionKind, 5> kinds{{
    {"Persons outside of Space Type", {"Space Type", AssignedCell}, "EventType", "EventType", "[Asset/Event]"},
    {"Persons outside of First Area", {"Area", AssignedCell}, "Area", "AreaName", "[Asset/Area]"},
    {"Persons outside of Second Area", {"Area", AssignedCell}, "Area2", "AreaName", "[Asset/Area]"},
    {"Persons outside of Third Area", {"Area", AssignedCell}, "Area3", "AreaName", "[Asset/Area]"},
    {"Reservations Not Checked In", {"Organization", OrganizationCell}},
}};

const ExceptionKind& KindFor(const ExceptionRequest& request) {
    return kinds.at(static_cast<size_t>(request.type));
}

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

Row ReadReservation(const Recordset& reservation, TextPool& texts) {
    Row row;
    row.asset = static_cast<qint32>(reservation["Asset"].ToInteger());
    row.lastName = texts.Keep(reservation["LastName"]);
    row.firstName = texts.Keep(reservation["FirstName"]);
    row.eventType = texts.Keep(reservation["EventType"]);
    row.organization = texts.Keep(reservation["Organization"]);
    row.ReadPeriod(reservation);
    return row;
}

// A person outside of what is assigned to them, who has these reservations on the day; none for a person who is where
// they belong, or nowhere. Whoever has several reservations is judged by the first.
std::optional<Row> ReadOutside(Database& database, const ExceptionKind& kind, const Recordset& person,
                               const QString& onTheDay, TextPool& texts) {
    const auto reservations = database.OpenRecordset(
        u"Select Asset, LastName, FirstName, EventType, Organization, Start, End, Permanent from Reservation Where "_s +
        PersonCondition(person["LastName"].ToText(), person["FirstName"].ToText()) + onTheDay);
    if (reservations->EndOfFile() || (*reservations)["Asset"].IsNull()) {
        return {};
    }
    const Recordset& reservation = *reservations;
    const QString assetId = u"AssetID = "_s + reservation["Asset"].ToText();
    const engine::Field assigned = person[kind.assigned];
    const auto allowed = database.OpenRecordset(u"Select AssetID from "_s + QLatin1StringView(kind.allowedTable) +
                                                u" where "_s + assetId + u" and "_s + QLatin1StringView(kind.allowed) +
                                                u" = "_s + SqlText(assigned.ToText()));
    if (!allowed->EndOfFile()) {
        return {};
    }
    const auto location = database.OpenRecordset(u"Select Name from Asset where "_s + assetId);
    if (location->EndOfFile()) {
        return {};
    }
    Row row = ReadReservation(reservation, texts);
    row.location = texts.Keep((*location)["Name"]);
    row.permanent = reservation["Permanent"].ToBool();
    row.assigned = texts.Keep(assigned);
    return row;
}

} // namespace

OccupancyRows GatherExceptions(const ExceptionRequest& request, const ReportDays& days, const Gathering& gathering) {
    Database& database = gathering.database;
    const QString day = SqlDate(days.start);
    const QString nextDay = SqlDate(days.end);
    if (request.type == ExceptionType::NotCheckedIn) {
        const auto read = [&](const Recordset& record, TextPool& texts) {
            Row row = ReadReservation(record, texts);
            row.location = texts.Keep(record["Asset.Name"]);
            row.occupied = !record["Start"].IsNull();
            const bool listed = !IsUnusedName(row.location) && BeginsWith(row.location, request.startupArgument);
            return listed ? std::optional(row) : std::nullopt;
        };
        return RowGatherer<Row>(gathering, read).Gather([&] {
            return database.OpenRecordset(NotCheckedInText(request, day, nextDay));
        });
    }
    const ExceptionKind& kind = KindFor(request);
    const QString onTheDay = u" and End > "_s + day + u" and Start < "_s + nextDay;
    const auto read = [&](const Recordset& person, TextPool& texts) {
        return ReadOutside(database, kind, person, onTheDay, texts);
    };
    return RowGatherer<Row>(gathering, read).Gather([&] {
        return database.OpenRecordset(u"Select * from Person order by "_s + QLatin1StringView(kind.assigned));
    });
}

void PrintExceptionReport(ReportContext& context, const ExceptionRequest& request) {
    ReportFrame frame(context, u"Print Exception Report"_s);
    const LocaleText& locale = context.program.services().localeText;
    ReportDays days;
    // Without a day there is nothing to print; the frame returns the window to idle.
    if (!frame.Start() || !frame.Step([&] { days = OneReportDay(request.date, locale); })) {
        return;
    }
    frame.SetOrientation();
    frame.PreparePrinter();
    const QString printedAt = frame.PrintedAt(u"Printed at"_s, days);
    const OccupancyRows rows = GatherExceptions(request, days, frame.Gather());
    frame.ShowSending(rows);
    const ExceptionKind& kind = KindFor(request);
    context.job.PrintReportTitle(Translate(u"Exception Report"_s), Translate(QString::fromLatin1(kind.subtitle)),
                                 printedAt);
    const OccupancyColumn columns[] = {
        {"Location", LocationCell}, {"Person", PersonCell},    {"Space Type", EventTypeCell},
        kind.fourthColumn,          {"From - To", PeriodCell},
    };
    PrintTable(context, columns, rows.rows);
    frame.End(rows, request.type == ExceptionType::NotCheckedIn ? u"Cancelled after %1 of %2 reservations"_s
                                                                : u"Cancelled after %1 of %2 persons"_s);
}

} // namespace velmora
