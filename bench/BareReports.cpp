#include "bench/BareReports.h"

namespace velmora::bench {

BareReports::BareReports(const QString& path, Date day)
    : store_(path), start_(StorageText(StartOfDay(day)).toStdString()),
      end_(StorageText(StartOfDay(day + std::chrono::days(1))).toStdString()) {
    occupants_ = PrepareOverDay(R"(
        SELECT a.Name, a.Location, r.Start, r."End", r.Permanent, r.EventType, r.LastName, r.FirstName, r.Organization
        FROM Asset a LEFT JOIN (SELECT DISTINCT ID, Asset, Start, "End", Permanent, EventType, LastName, FirstName,
                                    Organization
                                FROM Reservation WHERE "End" > ?1 AND Start < ?2) r ON r.Asset = a.AssetID
        ORDER BY a.Name, r.Start, r.ID)");
    phone_ = store_.Prepare("SELECT * FROM Person WHERE LastName = ?1 AND FirstName = ?2");
    directory_ = PrepareOverDay(R"(
        SELECT p.LastName, p.FirstName, a.Name, p.Phone, p.Extension, r.Organization, r.EventType, r.Start, r."End",
            r.Permanent
        FROM Person p LEFT JOIN (SELECT DISTINCT ID, Asset, Start, "End", Permanent, EventType, LastName, FirstName,
                                     Organization
                                 FROM Reservation WHERE "End" > ?1 AND Start < ?2) r
            ON r.LastName = p.LastName AND r.FirstName = p.FirstName
            LEFT JOIN Asset a ON a.AssetID = r.Asset
        ORDER BY p.LastName, p.FirstName, r.Start, r.ID)");
    byType_ = store_.Prepare("SELECT * FROM Person ORDER BY EventType, LastName, FirstName");
    ofPerson_ = store_.Prepare(R"(
        SELECT * FROM Reservation WHERE LastName = ?3 AND FirstName = ?4 AND "End" > ?1 AND Start < ?2 ORDER BY ID)");
    BindText(ofPerson_, 1, start_);
    BindText(ofPerson_, 2, end_);
    allowed_ = store_.Prepare("SELECT * FROM \"Asset/Event\" WHERE AssetID = ?1 AND EventType = ?2");
    asset_ = store_.Prepare("SELECT * FROM Asset WHERE AssetID = ?1");
    notCheckedIn_ = PrepareOverDay(R"(
        SELECT a.Name, r.Start, r."End", r.Name, r.Asset, r.EventType, r.LastName, r.FirstName, r.Organization
        FROM Asset a JOIN Reservation r ON a.AssetID = r.Asset
        WHERE r."End" > ?1 AND r.Start < ?2 AND r.Permanent = 0 AND r.SLockStart = 0 AND a.Location <> 0 AND r.Asset > 0
        ORDER BY a.Name, r.Start)");
    locations_ = PrepareOverDay(R"(
        SELECT x.AreaName, CASE WHEN p.Best IS NULL THEN p.Allowed ELSE r.EventType END AS Type, r.Organization,
            CASE WHEN p.Best IS NULL THEN -2 WHEN r.Permanent <> 0 THEN -1 ELSE 0 END AS Perm, p.Name
        FROM (SELECT DISTINCT AssetID, Name,
                  (SELECT min(EventType) FROM "Asset/Event" e WHERE e.AssetID = a.AssetID) AS Allowed,
                  (SELECT ID
                   FROM (SELECT DISTINCT ID, Asset, Start, coalesce(Permanent, 0) <> 0 AS Lasting FROM Reservation
                         WHERE "End" > ?1 AND Start < ?2
                             AND coalesce(EventType, '') COLLATE BINARY NOT IN ('UNUSED', 'UNAVAILABLE')) m
                   WHERE m.Asset = a.AssetID ORDER BY Lasting DESC, Start, ID LIMIT 1) AS Best
              FROM Asset a WHERE Location <> 0 AND coalesce(Name, '') NOT GLOB 'Unused*') p
            LEFT JOIN "Asset/Area" x ON x.AssetID = p.AssetID
            LEFT JOIN Reservation r ON r.ID = p.Best
        ORDER BY coalesce(x.AreaName, ''), coalesce(Type, ''), coalesce(r.Organization, ''), Perm, p.Name, p.AssetID)");
    persons_ = PrepareOverDay(R"(
        SELECT p.Area, r.Organization, CASE WHEN p.Best IS NULL THEN p.EventType ELSE r.EventType END AS Type,
            CASE WHEN p.Best IS NULL THEN -2 WHEN r.Permanent <> 0 THEN -1 ELSE 0 END AS Perm, p.LastName, p.FirstName,
            a.Name
        FROM (SELECT DISTINCT LastName, FirstName, Area, EventType,
                  (SELECT ID
                   FROM (SELECT DISTINCT ID, LastName, FirstName, Start, coalesce(Permanent, 0) <> 0 AS Lasting
                         FROM Reservation WHERE "End" > ?1 AND Start < ?2
                             AND coalesce(EventType, '') COLLATE BINARY NOT IN ('UNUSED', 'UNAVAILABLE')) m
                   WHERE m.LastName = q.LastName AND m.FirstName = q.FirstName
                   ORDER BY Lasting DESC, Start, ID LIMIT 1) AS Best
              FROM Person q) p
            LEFT JOIN Reservation r ON r.ID = p.Best
            LEFT JOIN Asset a ON a.AssetID = r.Asset
        ORDER BY coalesce(p.Area, ''), coalesce(r.Organization, ''), coalesce(Type, ''), Perm, p.LastName,
            p.FirstName)");
    pass_ =
        PrepareOverDay("SELECT count(*) FROM Reservation INDEXED BY ReservationEnd WHERE \"End\" > ?1 AND Start < ?2");
}

sqlite3_stmt* BareReports::PrepareOverDay(const char* sql) {
    sqlite3_stmt* statement = store_.Prepare(sql);
    BindText(statement, 1, start_);
    BindText(statement, 2, end_);
    return statement;
}

std::string_view BareReports::Text(sqlite3_stmt* statement, int column) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
    return text == nullptr ? std::string_view()
                           : std::string_view(text, static_cast<size_t>(sqlite3_column_bytes(statement, column)));
}

void BareReports::BindText(sqlite3_stmt* statement, int index, std::string_view text) {
    sqlite3_bind_text(statement, index, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
}

void BareReports::ReadRow(sqlite3_stmt* statement) {
    const int columns = sqlite3_column_count(statement);
    for (int column = 0; column < columns; ++column) {
        if (sqlite3_column_type(statement, column) == SQLITE_INTEGER) {
            bytes_ += sqlite3_column_int64(statement, column) != 0 ? 1 : 0;
        } else if (sqlite3_column_text(statement, column) != nullptr) {
            bytes_ += sqlite3_column_bytes(statement, column);
        }
    }
}

qint64 BareReports::ReadAll(sqlite3_stmt* statement) {
    qint64 rows = 0;
    for (; store_.Step(statement); ++rows) {
        ReadRow(statement);
    }
    sqlite3_reset(statement);
    return rows;
}

qint64 BareReports::Occupants() {
    constexpr int eventType = 5;
    constexpr int lastName = 6;
    qint64 listed = 0;
    while (store_.Step(occupants_)) {
        ReadRow(occupants_);
        if (Text(occupants_, 0).starts_with("Unused") || sqlite3_column_int(occupants_, 1) == 0 ||
            sqlite3_column_type(occupants_, 2) == SQLITE_NULL || Text(occupants_, eventType) == "UNAVAILABLE") {
            continue;
        }
        ++listed;
        BindText(phone_, 1, Text(occupants_, lastName));
        BindText(phone_, 2, Text(occupants_, lastName + 1));
        ReadAll(phone_);
    }
    sqlite3_reset(occupants_);
    return listed;
}

qint64 BareReports::Directory() {
    constexpr int eventType = 6;
    qint64 listed = 0;
    while (store_.Step(directory_)) {
        ReadRow(directory_);
        listed += !Text(directory_, 2).empty() && Text(directory_, eventType) != "UNAVAILABLE" ? 1 : 0;
    }
    sqlite3_reset(directory_);
    return listed;
}

bool BareReports::IsMisplaced(sqlite3_stmt* person) {
    constexpr int reservationAsset = 1;
    constexpr int personEventType = 2;
    BindText(ofPerson_, 3, Text(person, 0));
    BindText(ofPerson_, 4, Text(person, 1));
    bool misplaced = false;
    if (store_.Step(ofPerson_)) {
        const qint64 asset = sqlite3_column_int64(ofPerson_, reservationAsset);
        sqlite3_bind_int64(allowed_, 1, asset);
        BindText(allowed_, 2, Text(person, personEventType));
        if (ReadAll(allowed_) == 0) {
            ReadRow(ofPerson_);
            sqlite3_bind_int64(asset_, 1, asset);
            misplaced = ReadAll(asset_) > 0;
        }
    }
    sqlite3_reset(ofPerson_);
    return misplaced;
}

qint64 BareReports::Exceptions() {
    qint64 listed = 0;
    while (store_.Step(byType_)) {
        ReadRow(byType_);
        listed += IsMisplaced(byType_) ? 1 : 0;
    }
    sqlite3_reset(byType_);
    return listed;
}

qint64 BareReports::NotCheckedIn() {
    qint64 listed = 0;
    while (store_.Step(notCheckedIn_)) {
        ReadRow(notCheckedIn_);
        listed += Text(notCheckedIn_, 0).starts_with("Unused") ? 0 : 1;
    }
    sqlite3_reset(notCheckedIn_);
    return listed;
}

} // namespace velmora::bench
