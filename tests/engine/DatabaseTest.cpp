#include "tests/engine/TestSite.h"

#include "engine/Catalog.h"

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::test {

namespace {

constexpr const char* site = "INSERT INTO Reservation (ID, Start, \"End\", Name, SLockStart, Attendees) VALUES"
                             "(1, '2026-03-07 09:00:00', '2026-03-07 10:00:00', 'Early', 0, 4),"
                             "(2, '2026-03-08 09:00:00', '2026-03-08 10:00:00', 'Late', 1, 5);"
                             "INSERT INTO StoredQuery VALUES"
                             "('InRange', 'PARAMETERS RStart DateTime, REnd DateTime; SELECT ID, Name FROM Reservation "
                             "WHERE Start >= RStart And Start < REnd ORDER BY ID'),"
                             "('Tick', 'PARAMETERS Flag YesNo; UPDATE Reservation SET SLockEnd = Flag'),"
                             "('TickAll', 'UPDATE Reservation SET SLockStart = True'),"
                             "('Names', 'SELECT ID, Name FROM Reservation')";

} // namespace

class OnDatabase : public ::testing::Test {
protected:
    OnDatabase() { site_.Run(site); }

    TestSite site_;
    std::unique_ptr<Database> database_ = site_.Open({.busyMilliseconds = 100});
};

TEST_F(OnDatabase, OpensTablesStoredQueriesAndTexts) {
    EXPECT_EQ(Shown(*database_, u"Names"), u"1|Early / 2|Late");
    EXPECT_EQ(Shown(*database_, u"[names]"), u"1|Early / 2|Late");
    EXPECT_EQ(Shown(*database_, u"Select Name from Names where ID = 2"), u"Late");
    EXPECT_EQ(database_->OpenRecordset(u"reservation")->Fields().size(), 18u);
    EXPECT_EQ(database_->QueryNames().join(u','), u"InRange,Names,Tick,TickAll");
    struct Case {
        QStringView text;
        EngineErrorNumber error;
        QStringView words;
    };
    const Case cases[] = {
        {u"Select * from Nowhere", EngineErrorNumber::UnknownTable, u"Nowhere"},
        {u"Select * from Reservation where Nam = 1", EngineErrorNumber::MissingParameter, u"Expected 1: Nam."},
        {u"InRange", EngineErrorNumber::MissingParameter, u"Too few parameters. Expected 2: RStart, REnd."},
        {u"Delete from Asset", EngineErrorNumber::InvalidArgument, u"execute it"},
    };
    for (const Case& each : cases) {
        const QString text = each.text.toString();
        ExpectError(each.error, each.words, [&] { database_->OpenRecordset(text); });
        try {
            database_->OpenRecordset(text);
        } catch (const EngineError& error) {
            EXPECT_EQ(error.Sql(), text);
        }
    }
}

TEST_F(OnDatabase, QueriesTakeParameters) {
    const auto query = database_->OpenQueryDef(u"inrange");
    EXPECT_FALSE(query->IsAction());
    ASSERT_EQ(query->Parameters().size(), 2u);
    EXPECT_EQ(query->Parameters()[1].name, u"REnd");
    EXPECT_EQ(query->Parameters()[1].type, FieldType::DateTime);
    query->SetParameter(u"rstart", *MakeDateTime({2026, 3, 8}));
    ExpectError(EngineErrorNumber::MissingParameter, u"Expected 1: REnd.", [&] { query->OpenRecordset(); });
    query->SetParameter(u"REnd", u"2026-03-09"_s);
    EXPECT_EQ(Shown(*query->OpenRecordset()), u"2|Late");
    query->SetParameter(u"RStart", u"2026-03-07 09:00:00"_s);
    const auto rows = query->OpenRecordset(RecordsetKind::Updatable);
    EXPECT_EQ(Shown(*rows), u"1|Early / 2|Late");
    site_.Run("DELETE FROM Reservation WHERE ID = 1");
    rows->Requery();
    EXPECT_EQ(Shown(*rows), u"2|Late");
    ExpectError(EngineErrorNumber::TypeMismatch, u"\"RStart\" takes a date-time",
                [&] { query->SetParameter(u"RStart", u"soon"_s); });
    ExpectError(EngineErrorNumber::UnknownItem, u"RStart, REnd", [&] { query->SetParameter(u"From", 1); });
    ExpectError(EngineErrorNumber::UnknownTable, u"Nothing", [&] { database_->OpenQueryDef(u"Nothing"); });
    ExpectError(EngineErrorNumber::InvalidArgument, u"open it", [&] { query->Execute(); });

    const auto free =
        database_->CreateQueryDef(u"Select Name from Reservation where Attendees = [How many] or Name = Who"_s);
    free->SetParameter(u"how many", 4);
    free->SetParameter(u"Who", u"late"_s);
    EXPECT_FALSE(free->Parameters().front().declared);
    site_.Run("INSERT INTO Reservation (Name, Attendees) VALUES ('Extra', 4)");
    EXPECT_EQ(Shown(*free->OpenRecordset()), u"Late / Extra");
}

TEST_F(OnDatabase, ExecutesActions) {
    const auto tick = database_->OpenQueryDef(u"Tick");
    EXPECT_TRUE(tick->IsAction());
    tick->SetParameter(u"Flag", true);
    EXPECT_EQ(tick->Execute(), 2);
    ExpectError(EngineErrorNumber::InvalidArgument, u"execute it", [&] { tick->OpenRecordset(); });
    EXPECT_EQ(database_->Execute(u"TickAll"), 2);
    EXPECT_EQ(site_.Stored("SELECT sum(SLockStart) || sum(SLockEnd) FROM Reservation"), u"22");
    EXPECT_EQ(database_->Execute(u"INSERT INTO NoteCategory (Name) VALUES ('It''s \"one\"')"), 1);
    ExpectError(EngineErrorNumber::DuplicateKey, u"NoteCategory.Name", [&] {
        database_->Execute(u"INSERT INTO NoteCategory (Name) SELECT Name FROM Reservation UNION ALL SELECT Name FROM "
                           "Reservation");
    });
    EXPECT_EQ(site_.Stored("SELECT count(*) FROM NoteCategory"), u"1");
    EXPECT_EQ(database_->Execute(u"Delete from [Reservation] where ID =1"), 1);
    EXPECT_EQ(database_->Execute(u"Delete from [Reservation] where ID =1"), 0);
}

TEST_F(OnDatabase, SeesChangedTablesAndQueries) {
    const auto other = site_.Open();
    EXPECT_EQ(Shown(*database_, u"Names"), u"1|Early / 2|Late");
    EXPECT_EQ(Shown(*other, u"Names"), u"1|Early / 2|Late");
    // This program's own change shows at once, another one's after the refresh.
    database_->Execute(u"UPDATE StoredQuery SET [Text] = 'SELECT Name FROM Reservation' WHERE Name = 'Names'");
    EXPECT_EQ(Shown(*database_, u"Names"), u"Early / Late");
    other->Idle(IdleOption::FreeLocks);
    other->Idle(IdleOption::RefreshCache);
    EXPECT_EQ(Shown(*other, u"Names"), u"Early / Late");
    {
        const Transaction undone(*database_);
        const auto queries =
            database_->OpenRecordset(u"Select * from StoredQuery where Name = 'Names'", RecordsetKind::Updatable);
        queries->Edit();
        queries->Set("Text", u"SELECT ID FROM Reservation"_s);
        queries->Update();
        EXPECT_EQ(Shown(*database_, u"Names"), u"1 / 2");
    }
    EXPECT_EQ(Shown(*database_, u"Names"), u"Early / Late");

    EXPECT_EQ(Shown(*database_, u"NoteCategory"), u"");
    site_.Run("CREATE TABLE Fresh (ID INTEGER PRIMARY KEY, Flag BOOLEAN, Odd BLOB, At DATETIME);"
              "INSERT INTO Fresh VALUES (4, 1, x'41', NULL); ALTER TABLE NoteCategory ADD COLUMN Colour TEXT;"
              "INSERT INTO NoteCategory VALUES ('a', 'red')");
    EXPECT_EQ(Shown(*database_, u"Select ID, Flag, Odd, At from Fresh"), u"4|True|A|");
    EXPECT_EQ(Shown(*database_, u"Select Colour from NoteCategory"), u"red");
    EXPECT_EQ(Shown(*database_, u"NoteCategory"), u"a|red");
    site_.Run("ALTER TABLE NoteCategory RENAME COLUMN Colour TO Shade");
    EXPECT_EQ(Shown(*database_, u"NoteCategory"), u"a|red");
    EXPECT_EQ(Shown(*database_, u"Select Shade from NoteCategory"), u"red");
    ExpectError(EngineErrorNumber::MissingParameter, u"Colour",
                [&] { database_->OpenRecordset(u"Select Colour from NoteCategory"); });
    const auto* table = database_->Schema().FindTable(u"FRESH");
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->columns[2].type, FieldType::Unknown);
    const auto* links = database_->Schema().FindTable(u"asset/person");
    ASSERT_NE(links, nullptr);
    EXPECT_EQ(links->key, (std::vector<int>{0, 1, 2}));
}

TEST_F(OnDatabase, ReportsLocksOfOthersAndKeepsTheEdit) {
    const auto other = site_.Open();
    const auto row = Reservation(*database_, 1);
    row->Edit();
    row->Set("Attendees", 9);
    {
        const Transaction lock(*other);
        ExpectError(EngineErrorNumber::RecordLocked, u"locked", [&] { row->Update(); });
        ExpectError(EngineErrorNumber::RecordLocked, u"locked", [&] { database_->Execute(u"TickAll"); });
        ExpectError(EngineErrorNumber::RecordLocked, u"locked", [&] { const Transaction second(*database_); });
        EXPECT_EQ(Shown(*database_, u"Names"), u"1|Early / 2|Late"); // readers go on
    }
    row->Update();
    EXPECT_EQ(site_.Stored("SELECT Attendees FROM Reservation WHERE ID = 1"), u"9");
}

TEST(OpeningADatabase, RefusesWhatIsNone) {
    const QTemporaryDir folder;
    const QString missing = folder.filePath(u"missing.mdb"_s);
    ExpectError(EngineErrorNumber::FileNotFound, u"missing.mdb", [&] { Database::Open(missing); });
    EXPECT_FALSE(QFile::exists(missing));
}

} // namespace velmora::engine::test
