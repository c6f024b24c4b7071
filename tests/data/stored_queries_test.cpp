#include "demo/CreateDemoSite.h"
#include "engine/dialect/Compiler.h"
#include "engine/sqlite/SqliteWriter.h"
#include "site/Site.h"
#include "site/StoredQueries.h"
#include "tests/data/RawStore.h"
#include "tests/support/Folders.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace velmora {
namespace {

using test::RawStore;

const Date today = *MakeDate(2026, 3, 10);

// The record engine's rows as RawStore::Rows writes them.
QStringList RowsOf(engine::Recordset& rows) {
    QStringList lines;
    for (; !rows.EndOfFile(); rows.MoveNext()) {
        QStringList fields;
        for (size_t n = 0; n < rows.Fields().size(); ++n) {
            const engine::Field field = rows.FieldAt(static_cast<int>(n));
            const bool isFlag = rows.Fields()[n].type == engine::FieldType::YesNo && !field.IsNull();
            fields.append(isFlag ? QString::number(field.ToBool()) : field.ToText());
        }
        lines.append(fields.join(u'|'));
    }
    return lines;
}

struct QuerySite {
    QuerySite() : site(CreateSite(folder.path())), raw(site.Location()) {}
    explicit QuerySite(const demo::Options& demo)
        : site(demo::CreateDemoSite(folder.path(), demo)), raw(site.Location()) {}

    QStringList Run(const QString& query, const QString& from, const QString& to) const {
        const auto database = site.Open();
        const auto stored = database->OpenQueryDef(query);
        stored->SetParameter(u"RStart", *ParseStorageText(from));
        stored->SetParameter(u"REnd", *ParseStorageText(to));
        return RowsOf(*stored->OpenRecordset());
    }

    QTemporaryDir folder;
    Site site;
    RawStore raw;
};

// What each query means, in the store's own SQL and by other means than the queries use.
QString ReportReference(const char* where, const char* order) {
    return QStringLiteral(
               "SELECT a.AssetID, a.Name, CASE WHEN a.Location IS NOT NULL THEN a.Location <> 0 END, r.EventType, "
               "r.Name, r.Start, r.\"End\", r.Organization, r.Permanent <> 0, r.Attendees, r.LastName, r.FirstName, "
               "(SELECT Storage FROM Person p WHERE p.LastName = r.LastName AND p.FirstName = r.FirstName), "
               "(SELECT Extension FROM Person p WHERE p.LastName = r.LastName AND p.FirstName = r.FirstName), "
               "a.DefaultExtension, a.Jack, a.Port, a.StationType, a.SwitchInterface, r.ID, r.SLockStart <> 0, "
               "r.SLockEnd <> 0, r.TLockStart <> 0, r.TLockEnd <> 0 "
               "FROM Reservation r NOT INDEXED, Asset a WHERE a.AssetID = r.Asset AND (%1) ORDER BY %2")
        .arg(QLatin1String(where), QLatin1String(order));
}

constexpr const char* Ranked =
    "WITH o AS (SELECT *, row_number() OVER (PARTITION BY %1 ORDER BY ifnull(Permanent, 0) <> 0 DESC, Start, ID) n "
    "FROM Reservation NOT INDEXED WHERE \"End\" > :s AND Start < :e AND "
    "ifnull(EventType, '') COLLATE BINARY NOT IN ('UNUSED', 'UNAVAILABLE')) ";

QString PersonReference(const QString& area) {
    return QString::fromLatin1(Ranked).arg(u"LastName, FirstName"_s) +
           QStringLiteral(
               "SELECT p.%1, o.Organization, CASE WHEN o.ID IS NULL THEN p.EventType ELSE o.EventType END t, "
               "CASE WHEN o.ID IS NULL THEN -2 WHEN ifnull(o.Permanent, 0) <> 0 THEN -1 ELSE 0 END, p.LastName, "
               "p.FirstName, (SELECT Name FROM Asset WHERE AssetID = o.Asset) "
               "FROM Person p LEFT JOIN o ON o.n = 1 AND o.LastName = p.LastName AND o.FirstName = p.FirstName "
               "ORDER BY ifnull(p.%1, '') COLLATE NOCASE, ifnull(o.Organization, '') COLLATE NOCASE, "
               "ifnull(t, '') COLLATE NOCASE, 4, p.LastName, p.FirstName")
               .arg(area);
}

struct QueryCase {
    const char* name;
    QString reference;
    const char* fields;
};

const std::vector<QueryCase>& QueryCases() {
    static const char* const report =
        "AssetID Asset.Name Location EventType Reservation.Name Start End Organization Permanent Attendees LastName "
        "FirstName Storage Extension DefaultExtension Jack Port StationType SwitchInterface ID SLockStart SLockEnd "
        "TLockStart TLockEnd";
    static const std::vector<QueryCase> cases{
        {"QReport3", ReportReference("Start >= :s AND Start < :e", "Start, a.Name, ID"), report},
        {"QReport4", ReportReference("\"End\" > :s AND \"End\" <= :e", "\"End\", a.Name, ID"), report},
        {"QReport5",
         ReportReference("Start >= :s AND Start < :e OR \"End\" > :s AND \"End\" <= :e", "a.Name, Start, ID"), report},
        {"QReport2",
         u"SELECT a.Name, CASE WHEN a.Location IS NOT NULL THEN a.Location <> 0 END, r.Start, r.\"End\", "
         u"r.Permanent <> 0, r.EventType, r.LastName, r.FirstName, r.Organization FROM Asset a LEFT JOIN Reservation r "
         u"ON r.Asset = a.AssetID AND r.\"End\" > :s AND r.Start < :e ORDER BY a.Name, r.Start, r.ID, a.AssetID"_s,
         "Name Location Start End Permanent EventType LastName FirstName Organization"},
        {"RangePerson",
         u"SELECT p.LastName, p.FirstName, (SELECT Name FROM Asset WHERE AssetID = r.Asset), Phone, Extension, "
         u"r.Organization, r.EventType, r.Start, r.\"End\", r.Permanent <> 0 FROM Person p LEFT JOIN Reservation r "
         u"ON r.LastName = p.LastName AND r.FirstName = p.FirstName AND r.\"End\" > :s AND r.Start < :e "
         u"ORDER BY p.LastName, p.FirstName, r.Start, r.ID"_s,
         "LastName FirstName Name Phone Extension Organization EventType Start End Permanent"},
        {"A1",
         QString::fromLatin1(Ranked).arg(u"Asset"_s) +
             u"SELECT AreaName, CASE WHEN o.ID IS NULL THEN (SELECT EventType FROM \"Asset/Event\" t WHERE t.AssetID = "
             u"a.AssetID ORDER BY EventType LIMIT 1) ELSE o.EventType END t, o.Organization, CASE WHEN o.ID IS NULL "
             u"THEN -2 WHEN ifnull(o.Permanent, 0) <> 0 THEN -1 ELSE 0 END p, a.Name FROM Asset a "
             u"LEFT JOIN \"Asset/Area\" x ON x.AssetID = a.AssetID LEFT JOIN o ON o.n = 1 AND o.Asset = a.AssetID "
             u"WHERE a.Location <> 0 AND ifnull(a.Name, '') NOT GLOB 'Unused*' ORDER BY ifnull(AreaName, '') COLLATE "
             u"NOCASE, ifnull(t, '') COLLATE NOCASE, ifnull(o.Organization, '') COLLATE NOCASE, p, a.Name, a.AssetID"_s,
         "AreaName EventType Organization Perm Name"},
        {"P1", PersonReference(u"Area"_s), "Area Organization EventType Perm LastName FirstName Name"},
        {"P2", PersonReference(u"Area2"_s), "Area2 Organization EventType Perm LastName FirstName Name"},
        {"P3", PersonReference(u"Area3"_s), "Area3 Organization EventType Perm LastName FirstName Name"},
    };
    return cases;
}

class DemoQueries : public testing::Test {
protected:
    static void SetUpTestSuite() {
        site_ = new QuerySite(demo::Options{.tier = demo::Tier::Typical, .today = today, .seed = 1});
    }
    static void TearDownTestSuite() {
        delete site_;
        site_ = nullptr;
    }

    static QuerySite* site_;
};
QuerySite* DemoQueries::site_ = nullptr;

TEST_F(DemoQueries, AgreeWithTheirMeaning) {
    const std::pair<QString, QString> periods[] = {
        {u"2026-03-10 00:00:00"_s, u"2026-03-11 00:00:00"_s}, {u"2026-03-14 00:00:00"_s, u"2026-03-17 00:00:00"_s},
        {u"2022-06-01 00:00:00"_s, u"2022-06-02 00:00:00"_s}, {u"2026-05-04 09:30:00"_s, u"2026-05-04 10:15:00"_s},
        {u"2031-01-01 00:00:00"_s, u"2031-01-02 00:00:00"_s}, {u"2026-03-11 00:00:00"_s, u"2026-03-10 00:00:00"_s},
    };
    for (const QueryCase& query : QueryCases()) {
        for (const auto& [from, to] : periods) {
            const QStringList rows = site_->Run(QString::fromLatin1(query.name), from, to);
            const QStringList expected = site_->raw.Rows(query.reference, from, to);
            ASSERT_EQ(rows.size(), expected.size()) << query.name << ' ' << from.toStdString();
            for (qsizetype n = 0; n < rows.size(); ++n) {
                ASSERT_EQ(rows[n].toStdString(), expected[n].toStdString()) << query.name << ' ' << n;
            }
        }
    }
}

TEST_F(DemoQueries, ReturnTheirFields) {
    const auto database = site_->site.Open();
    for (const QueryCase& query : QueryCases()) {
        const auto stored = database->OpenQueryDef(QString::fromLatin1(query.name));
        stored->SetParameter(u"rstart", StartOfDay(today));
        stored->SetParameter(u"rend", StartOfDay(today));
        QStringList names;
        const auto rows = stored->OpenRecordset();
        for (const engine::FieldDescription& field : rows->Fields()) {
            const bool twice = field.name == u"Name" && QString::fromLatin1(query.fields).contains(u"Asset.Name"_s);
            names.append(twice ? field.table + u'.' + field.name : field.name);
        }
        EXPECT_EQ(names.join(u' ').toStdString(), query.fields) << query.name;
    }
}

// The texts that the reports send, of those that read reservations.
constexpr const char* NotCheckedIn =
    "SELECT Asset.Name, Reservation.Start, Reservation.End, Reservation.Name, Reservation.Asset, "
    "Reservation.EventType, Reservation.LastName, Reservation.FirstName, Reservation.Organization FROM Asset INNER "
    "JOIN Reservation ON Asset.AssetID = Reservation.Asset Where (((Reservation.Start) < #03/11/2026#) And "
    "((Reservation.End) > #03/10/2026 #) And ((Reservation.Permanent) = False) And ((Reservation.SLockStart) = False) "
    "And ((Asset.Location) = True) And ((Reservation.Asset) > 256)) ORDER BY Asset.Name, Reservation.Start";
constexpr const char* MoveIns =
    "SELECT * FROM Asset INNER JOIN Reservation ON Asset.AssetID = Reservation.Asset where Start > #03/09/2026 "
    "11:57:00 PM# and Start < #03/10/2026 11:58:00 PM# And Asset.Name Like \"B1*\" And SLockStart = False And "
    "Asset.AssetID >= 256";
constexpr const char* PersonSummary =
    "SELECT * FROM Asset INNER JOIN Reservation ON Asset.AssetID = Reservation.Asset where End > #03/10/2026 10:00:00 "
    "AM#  and LastName = \"O'Brien\" and FirstName = \"Ann\" order by End";
constexpr const char* LocationSummary =
    "SELECT * FROM Asset INNER JOIN Reservation ON Asset.AssetID = Reservation.Asset where End > #03/10/2026 10:00:00 "
    "AM#  and Asset.AssetID = 5 order by End";
constexpr const char* PersonsDay =
    "Select * from Reservation Where LastName = \"Smith\" and FirstName = \"Ann\" and End > #03/10/2026# and Start < "
    "#03/11/2026#";
constexpr const char* GuestExtension =
    "Select * from Reservation where EventType = \"Guest Extension\" and Link = 4711";

struct PlanCase {
    const char* text;
    const char* step; // of the plan
};

TEST_F(DemoQueries, AreServedByIndexes) {
    const PlanCase cases[] = {
        {"QReport3", "SEARCH Reservation USING INDEX ReservationStart (Start>? AND Start<?)"},
        {"QReport4", "SEARCH Reservation USING INDEX ReservationEnd (End>? AND End<?)"},
        {"QReport5", "MULTI-INDEX OR"},
        {"QReport2", "SEARCH Reservation USING INDEX ReservationEnd (End>?)"},
        {"RangePerson", "SEARCH Reservation USING INDEX ReservationEnd (End>?)"},
        {"A1", "SEARCH Reservation USING INDEX ReservationEnd (End>?)"},
        {"A1", "SEARCH Mine USING AUTOMATIC COVERING INDEX (c1=?)"},
        {"P1", "SEARCH Reservation USING INDEX ReservationEnd (End>?)"},
        {"P1", "SEARCH Mine USING AUTOMATIC COVERING INDEX (c1=? AND c2=?)"},
        {NotCheckedIn, "SEARCH Reservation USING INDEX ReservationEnd (End>?)"},
        {MoveIns, "SEARCH Reservation USING INDEX ReservationStart (Start>? AND Start<?)"},
        {PersonSummary, "SEARCH Reservation USING INDEX ReservationPerson (LastName=? AND FirstName=? AND End>?)"},
        {LocationSummary, "SEARCH Reservation USING INDEX ReservationAsset (Asset=? AND End>?)"},
        {PersonsDay, "SEARCH Reservation USING INDEX ReservationPerson (LastName=? AND FirstName=? AND End>?)"},
        {GuestExtension, "SEARCH Reservation USING INDEX ReservationLink (EventType=? AND Link=?)"},
    };
    const auto database = site_->site.Open();
    for (const PlanCase& each : cases) {
        const auto compiled = engine::dialect::Compile(QString::fromLatin1(each.text), database->Schema(),
                                                       engine::dialect::Purpose::Read, engine::sqlite::SqliteWriter());
        const QStringList plan = site_->raw.Plan(compiled.sql);
        EXPECT_TRUE(plan.contains(QLatin1String(each.step))) << each.text << "\n"
                                                             << plan.join(u'\n').toStdString() << "\n"
                                                             << compiled.sql.toStdString();
        EXPECT_EQ(plan.filter(u"SCAN Reservation"_s).size(), 0) << each.text;
        EXPECT_LE(plan.filter(u"USING INDEX ReservationEnd"_s).size(), 1) << each.text << " walks more than once";
    }
}

// The store's work for a day does not depend on how much lies before it.
TEST_F(DemoQueries, CostNothingForTheHistory) {
    const QString path = site_->folder.filePath(u"young.MDB"_s);
    ASSERT_TRUE(QFile::copy(site_->site.Location(), path));
    RawStore young(path);
    young.Run(u"DELETE FROM Reservation WHERE \"End\" < '2026-02-01'"_s);
    ASSERT_LT(young.Number(u"SELECT count(*) FROM Reservation"_s), 10'000);

    const auto database = site_->site.Open();
    std::vector<QString> texts{QString::fromLatin1(NotCheckedIn)};
    for (const QueryCase& query : QueryCases()) {
        texts.push_back(QString::fromLatin1(query.name));
    }
    for (const QString& text : texts) {
        const auto compiled = engine::dialect::Compile(text, database->Schema(), engine::dialect::Purpose::Read,
                                                       engine::sqlite::SqliteWriter());
        QStringList values;
        for (const engine::dialect::Binding& binding : compiled.bindings) {
            using Source = engine::dialect::Binding::Source;
            const QString period[] = {u"2026-03-10 00:00:00"_s, u"2026-03-11 00:00:00"_s};
            values.append(binding.source == Source::Parameter ? period[binding.index]
                          : binding.source == Source::Literal && text.startsWith(u"SELECT"_s)
                              ? QStringList{period[1], period[0], u"256"_s}.value(binding.index)
                              : binding.constant.ToText());
        }
        const qint64 full = site_->raw.Work(compiled.sql, values);
        const qint64 small = young.Work(compiled.sql, values);
        EXPECT_GT(small, 100) << text.toStdString();
        EXPECT_LT(static_cast<double>(full), 1.02 * static_cast<double>(small)) << text.toStdString();
    }
}

// What the reports treat apart, and how often the demo has it at least.
TEST_F(DemoQueries, ReadOddRows) {
    const std::pair<const char*, int> cases[] = {
        {"Asset WHERE Name GLOB 'Unused*'", 2},
        {"Asset WHERE Name GLOB 'unused*'", 1},
        {"Asset WHERE Location IS NULL", 1},
        {"Asset WHERE Description LIKE '%Guest Extension%' AND NOT Location", 5},
        {"Asset WHERE Jack IS NULL AND Port IS NOT NULL", 5},
        {"Reservation r JOIN Asset a ON a.AssetID = r.Asset WHERE a.Name GLOB 'Unused*'", 10},
        {"Reservation WHERE EventType COLLATE BINARY = 'UNUSED'", 50},
        {"Reservation WHERE EventType COLLATE BINARY = 'UNAVAILABLE'", 50},
        {"Reservation WHERE EventType = 'Meeting' AND EventType COLLATE BINARY <> 'Meeting'", 20},
        {"Reservation g JOIN Reservation r ON r.ID = g.Link WHERE g.EventType = 'Guest Extension' AND r.Start = "
         "g.Start",
         500},
        {"Reservation WHERE Name IS NULL", 50},
        {"Reservation WHERE EventType IS NULL", 50},
        {"Reservation WHERE Organization IS NULL", 500},
        {"Reservation WHERE LastName IS NULL AND FirstName IS NULL", 50},
        {"Reservation WHERE SLockStart IS NULL", 20},
        {"Reservation WHERE Asset NOT IN (SELECT AssetID FROM Asset)", 20},
        {"Reservation r WHERE LastName IS NOT NULL AND NOT EXISTS (SELECT 1 FROM Person p WHERE p.LastName = "
         "r.LastName "
         "AND p.FirstName = r.FirstName)",
         200},
        {"Reservation r JOIN Person p ON p.LastName = r.LastName AND p.FirstName = r.FirstName WHERE r.LastName <> "
         "p.LastName COLLATE BINARY",
         20},
        {"Reservation r JOIN Person p USING (LastName, FirstName) WHERE Permanent AND Start < '2026-03-10' AND \"End\" "
         "> "
         "'2026-03-11' AND r.EventType = 'Office' AND NOT EXISTS (SELECT 1 FROM \"Asset/Area\" x WHERE x.AssetID = "
         "r.Asset AND x.AreaName = p.Area)",
         2},
        {"Reservation r JOIN Person p USING (LastName, FirstName) WHERE Permanent AND Start < '2026-03-10' AND \"End\" "
         "> "
         "'2026-03-11' AND r.EventType = 'Office' AND NOT EXISTS (SELECT 1 FROM \"Asset/Event\" x WHERE x.AssetID = "
         "r.Asset AND x.EventType = p.EventType)",
         5},
        {"Reservation WHERE \"End\" LIKE '% 00:00:00' AND NOT Permanent", 500},
        {"Reservation WHERE strftime('%s', \"End\") - strftime('%s', Start) = 1800", 500},
        {"Person WHERE FirstName LIKE '%\"%'", 3},
        {"Person WHERE LastName LIKE '%''%'", 5},
        {"Person WHERE LastName IN ('Müller', 'García', 'Nguyễn', 'O''Brien', 'D''Angelo')", 5},
        {"Note WHERE Note LIKE '%' || char(10) || '%'", 50},
        {"Note WHERE Note LIKE '%&%' OR Note LIKE '%<%'", 50},
        {"WorkOrder WHERE NOT Completed AND Requested < '2026-03-10'", 100},
        {"PrintAttributes WHERE Caption = 'Jack' AND PrintAttributes = 1", 1},
    };
    for (const auto& [rows, atLeast] : cases) {
        EXPECT_GE(site_->raw.Number(u"SELECT count(*) FROM "_s + QString::fromUtf8(rows)), atLeast) << rows;
    }
}

TEST_F(DemoQueries, RefreshTextDatesWritesOnlyWhatDiffers) {
    const auto database = site_->site.Open();
    const auto refresh = [&] { return database->OpenQueryDef(u"RefreshTextDates")->Execute(); };
    EXPECT_GT(refresh(), 100);
    EXPECT_EQ(refresh(), 0);
    EXPECT_EQ(site_->raw.Number(u"SELECT count(*) FROM Reservation WHERE TextStart IS NULL OR TextEnd IS NULL"_s), 0);

    site_->raw.Run(u"UPDATE Reservation SET Start = '2026-03-07 00:00:00', \"End\" = '2026-03-07 14:15:09' WHERE ID = "
                   u"(SELECT min(ID) FROM Reservation);"
                   u"UPDATE Reservation SET TextEnd = lower(TextEnd) WHERE ID = (SELECT max(ID) FROM Reservation)"_s);
    EXPECT_EQ(refresh(), 2);
    EXPECT_EQ(site_->raw.Rows(u"SELECT TextStart, TextEnd FROM Reservation ORDER BY ID LIMIT 1"_s),
              QStringList{u"3/7/2026|3/7/2026 2:15:09 PM"_s});
}

TEST_F(DemoQueries, OfferStandardNotes) {
    const auto database = site_->site.Open();
    const auto rows = database->OpenRecordset(
        u"Select * from EventStdNoteSelect where EventType = \"interview\" Order by NoteCategory, Name");
    ASSERT_EQ(RowsOf(*rows).size(), 2);
    rows->MoveFirst();
    EXPECT_EQ(rows->operator[]("Name").ToText(), u"Cold drinks"_s);
    EXPECT_EQ(rows->operator[]("NoteCategory").ToText(), u"Catering"_s);
    EXPECT_EQ(rows->operator[]("Cost").ToReal(), 1.9);
    EXPECT_FALSE(rows->operator[]("Note").ToText().isEmpty());

    const QString asset = site_->raw.Rows(u"SELECT max(AssetID) FROM \"Asset/StandardNote\""_s).value(0);
    EXPECT_EQ(RowsOf(*database->OpenRecordset(u"Select * from AssetStdNoteSelect where AssetID = "_s + asset +
                                              u" Order by NoteCategory, Name"_s))
                  .size(),
              site_->raw.Number(u"SELECT count(*) FROM \"Asset/StandardNote\" WHERE AssetID = "_s + asset));
}

// Rows that are there for a reason, and what the queries make of them, by hand.
TEST(EdgeQueries, TreatEachRowAsTheyShould) {
    QuerySite site;
    const auto read = [](const char* name) {
        QFile file(TestDataFolder() + QStringLiteral("/data/") + QLatin1String(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        return QString::fromUtf8(file.readAll());
    };
    site.raw.Run(read("edge_site.sql"));
    QString found;
    for (const QueryCase& query : QueryCases()) {
        const QString from = u"2026-03-10 00:00:00"_s;
        const QString to = u"2026-03-11 00:00:00"_s;
        const QStringList rows = site.Run(QString::fromLatin1(query.name), from, to);
        EXPECT_EQ(rows.join(u'\n').toStdString(), site.raw.Rows(query.reference, from, to).join(u'\n').toStdString())
            << query.name;
        found += u"== "_s + QLatin1String(query.name) + u'\n' + rows.join(u'\n') + u'\n';
    }
    EXPECT_EQ(found.toStdString(), read("edge_site.expected").toStdString());
}

} // namespace
} // namespace velmora
