#include "tests/engine/TestSite.h"
#include "tests/engine/dialect/TestedStores.h"

#include <QTemporaryDir>

namespace velmora::engine::test {
namespace {

class UpdatableTest : public testing::TestWithParam<TestedStore> {
protected:
    UpdatableTest() {
        StoreQuery(u"Offered", u"SELECT [Asset/StandardNote].AssetID, StandardNotes.* FROM [Asset/StandardNote] INNER "
                               "JOIN StandardNotes ON [Asset/StandardNote].StandardNote = StandardNotes.Name WHERE "
                               "StandardNotes.NoteCategory <> ''x''");
        StoreQuery(u"Early",
                   u"PARAMETERS RStart DateTime; SELECT Asset.Name, Reservation.Name, Start FROM Asset INNER "
                   "JOIN Reservation ON Asset.AssetID = Reservation.Asset WHERE Start < RStart ORDER BY Start");
    }
    void StoreQuery(QStringView name, QStringView text) {
        database_->Execute(QStringLiteral("INSERT INTO StoredQuery (Name, Text) VALUES ('%1', '%2')").arg(name, text));
    }
    std::unique_ptr<Recordset> Open(const char* text) {
        return database_->OpenRecordset(QString::fromLatin1(text), RecordsetKind::Updatable);
    }

    QTemporaryDir folder_;
    std::unique_ptr<Database> database_ = GetParam().open(folder_.path());
};

// A field is written to the table that it comes from, also through joins, aliases and stored queries; the row then
// shows it, even where the text's own conditions no longer find the row.
TEST_P(UpdatableTest, WritesEachFieldToItsTable) {
    const struct {
        const char* text;
        const char* field;
        const char* value;
        const char* stored; // a text that shows it
    } cases[] = {
        {"Select * from NoteCategory where Name = 'Food'", "Name", "Meals",
         "SELECT Name FROM NoteCategory WHERE Name = 'Meals'"},
        {"Select Caption from PrintAttributes where Caption = 'b'", "Caption", "bold",
         "SELECT Caption FROM PrintAttributes WHERE Caption = 'bold'"},
        {"SELECT Area FROM Person AS p WHERE LastName = 'BROWN'", "Area", "South",
         "SELECT Area FROM Person WHERE FirstName = 'Bob'"},
        {"SELECT a.Name AS Title, r.Name FROM Asset a INNER JOIN Reservation r ON a.AssetID = r.Asset WHERE ID = 11",
         "Title", "Hall", "SELECT Name FROM Asset WHERE AssetID = 1"},
        {"SELECT Note FROM [Note], Reservation WHERE [Note].Reservation = Reservation.ID AND Reservation.ID = 11",
         "Note", "soon", "SELECT Note FROM [Note] WHERE ID = 3"},
        {"SELECT Jack FROM (SELECT * FROM Asset WHERE Jack = 'J2') AS q", "Jack", "J3",
         "SELECT Jack FROM Asset WHERE AssetID = 256"},
        {"SELECT Note, Cost * 2 FROM Offered WHERE AssetID = 1 AND Cost > 2.1", "Note", "hot",
         "SELECT Note FROM StandardNotes WHERE Name = 'Coffee'"},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.text);
        const auto rows = Open(one.text);
        rows->Edit();
        rows->Set(one.field, QString::fromLatin1(one.value));
        rows->Update();
        EXPECT_EQ((*rows)[one.field].ToText(), QString::fromLatin1(one.value));
        EXPECT_EQ(Shown(*database_, QString::fromLatin1(one.stored)), QString::fromLatin1(one.value));
    }
}

TEST_P(UpdatableTest, RefusesRowsThatStandForNone) {
    for (const char* text :
         {"SELECT DISTINCT Name FROM Asset", "SELECT TOP 2 Name FROM Asset", "SELECT Count(*) FROM Asset",
          "SELECT Name FROM Asset GROUP BY Name", "SELECT Name FROM Asset UNION SELECT Name FROM Asset",
          "SELECT Asset.Name FROM Asset LEFT JOIN Reservation ON Asset.AssetID = Reservation.Asset",
          "SELECT N FROM (SELECT Count(*) AS N FROM Asset) AS q"}) {
        SCOPED_TRACE(text);
        const auto rows = Open(text);
        ExpectError(EngineErrorNumber::ReadOnly, u"cannot be changed", [&] { rows->Edit(); });
    }
    const auto computed = Open("SELECT Attendees + 1 AS More FROM Reservation");
    computed->Edit();
    EXPECT_THROW(computed->Set("More", 5), EngineError);
}

TEST_P(UpdatableTest, AStoredQueryByNameIsItsOwnText) {
    const auto query = database_->CreateQueryDef(QStringLiteral("early"));
    query->SetParameter(u"rstart", *ParseStorageText(u"2026-03-07 12:00:00"));
    const auto rows = query->OpenRecordset(RecordsetKind::Updatable);
    EXPECT_EQ((*rows)["Asset.Name"].ToText(), u"Kiosk");
    rows->Edit();
    rows->Set("Reservation.Name", QStringLiteral("Booth"));
    rows->Update();
    EXPECT_EQ(Shown(*database_, u"SELECT Name FROM Reservation WHERE ID = 13"), u"Booth");
}

TEST_P(UpdatableTest, ListsDeclaredParametersFirst) {
    const auto query = database_->CreateQueryDef(
        QStringLiteral("SELECT other, RStart FROM Early WHERE Start > other AND Asset.Name Like mask"));
    QStringList names;
    for (const auto& parameter : query->Parameters()) {
        names += parameter.name + (parameter.declared ? u'!' : u'?');
    }
    EXPECT_EQ(names.join(u' '), u"RStart! other? mask?");
}

INSTANTIATE_TEST_SUITE_P(Stores, UpdatableTest, testing::ValuesIn(testedStores),
                         [](const auto& store) { return std::string(store.param.name); });

} // namespace
} // namespace velmora::engine::test
