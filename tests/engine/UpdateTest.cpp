#include "tests/engine/TestSite.h"
#include "tests/support/Folders.h"

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::test {

namespace {

constexpr const char* oneReservation =
    "INSERT INTO Asset (AssetID, Name) VALUES (7, 'Room 7');"
    "INSERT INTO Reservation (ID, Asset, Start, Name, Attendees, SLockStart, SLockEnd) VALUES"
    "(1, 7, '2026-03-07 09:00:00', 'Talk', 12, 0, 0)";

constexpr QStringView join =
    u"SELECT * FROM Asset INNER JOIN Reservation ON Asset.AssetID = Reservation.Asset order by ID";

void Change(Recordset& rows, const char* field, const Value& value) {
    rows.Edit();
    rows.Set(field, value);
    rows.Update();
}

} // namespace

class Updating : public ::testing::Test {
protected:
    Updating() { site_.Run(oneReservation); }

    TestSite site_;
    std::unique_ptr<Database> database_ = site_.Open({.busyMilliseconds = 100});
};

TEST_F(Updating, StoresValuesInTheFormOfTheirField) {
    const auto row = Reservation(*database_, 1);
    for (const QStringList& each : TestRows(u"engine/values.txt"_s)) {
        SCOPED_TRACE(each.join(u' ').toStdString());
        const QByteArray field = each[0].toLatin1();
        const Value value = ReadValue(each[1]);
        const auto stored = [&] { return site_.Stored(("SELECT " + field + " FROM Reservation").constData()); };
        const QString before = stored();
        if (each.size() == 2) {
            ExpectError(EngineErrorNumber::TypeMismatch, each[0], [&] { Change(*row, field.constData(), value); });
            EXPECT_EQ(stored(), before);
            row->CancelUpdate();
        } else {
            Change(*row, field.constData(), value);
            EXPECT_EQ(stored(), each[2]);
            EXPECT_EQ((*row)[field.constData()].IsNull(), each[2] == u"NULL");
        }
    }
}

TEST_F(Updating, ShowsPendingValuesAndGivesThemUp) {
    const auto row = Reservation(*database_, 1);
    row->Edit();
    row->Set("attendees", 99);
    row->Set("Reservation.Name", u"New"_s);
    EXPECT_EQ((*row)["Attendees"].ToInteger(), 99);
    EXPECT_EQ((*row)["Name"].ToText(), u"New");
    EXPECT_EQ((*row)["Asset"].ToInteger(), 7);
    row->CancelUpdate();
    EXPECT_EQ((*row)["Attendees"].ToInteger(), 12);
    row->Edit();
    row->Set("Attendees", 98);
    row->MoveFirst();
    ExpectError(EngineErrorNumber::InvalidArgument, u"without Edit", [&] { row->Update(); });
    ExpectError(EngineErrorNumber::InvalidArgument, u"without Edit", [&] { row->Set("Attendees", 1); });
    EXPECT_EQ(site_.Stored("SELECT Attendees FROM Reservation"), u"12");
}

TEST_F(Updating, AnUpdateThatChangesNothingWritesNothing) {
    site_.Run("UPDATE Reservation SET SLockStart = 5, Start = '2026-03-07'");
    const auto row = Reservation(*database_, 1);
    row->Edit();
    row->Set("SLockStart", true);
    row->Set("Start", *MakeDateTime({2026, 3, 7}));
    row->Set("Name", u"Talk"_s);
    // Another user holds the write lock, so that any writing would fail.
    const auto other = site_.Open();
    const Transaction lock(*other);
    row->Update();
    EXPECT_EQ(site_.Stored("SELECT SLockStart || Start FROM Reservation"), u"52026-03-07");
}

// Two users on one record. Each case: what the other user does between this one's reading and writing of `field`.
TEST_F(Updating, TellsWhatAnotherUserDid) {
    const QHash<QString, EngineErrorNumber> errors = {{u"changed"_s, EngineErrorNumber::RecordChanged},
                                                      {u"deleted"_s, EngineErrorNumber::RecordDeleted}};
    for (const QStringList& each : TestRows(u"engine/conflicts.txt"_s)) {
        SCOPED_TRACE(each[0].toStdString());
        site_.Run("DELETE FROM Asset; DELETE FROM Reservation");
        site_.Run(oneReservation);
        const QByteArray field = each[1].toLatin1();
        const Value value = ReadValue(each[2]);
        const auto row = Reservation(*database_, 1);
        row->Edit();
        row->Set(field.constData(), value);
        site_.Run(each[0].toUtf8().constData());
        const auto update = [&] { row->Update(); };
        if (each[3] == u"kept") {
            update();
            EXPECT_EQ((*row)[field.constData()].ToText(), value.ToText());
            continue;
        }
        const QString named = each[3] == u"changed" ? each[1] : each[3];
        ExpectError(errors.value(each[3]), named, update);
        ExpectError(errors.value(each[3]), named, update); // the edit is still pending
        EXPECT_EQ((*row)[field.constData()].ToText(), value.ToText());
        row->CancelUpdate();
        if (each[3] == u"deleted") {
            ExpectError(EngineErrorNumber::RecordDeleted, u"deleted", [&] { (*row)["ID"]; });
            ExpectError(EngineErrorNumber::RecordDeleted, u"deleted", [&] { row->Edit(); });
            ExpectError(EngineErrorNumber::RecordDeleted, u"deleted", [&] { row->Delete(); });
            row->MoveNext();
            EXPECT_TRUE(row->EndOfFile());
        } else {
            Change(*row, field.constData(), value);
            EXPECT_EQ((*row)[field.constData()].ToText(), value.ToText());
        }
    }
}

TEST_F(Updating, ShowsWhatTheDatabaseHoldsWhenARecordIsMovedOnto) {
    site_.Run("INSERT INTO Reservation (ID, Name) VALUES (2, 'Second'), (3, 'Third')");
    const auto rows = database_->OpenRecordset(u"Select * from Reservation order by ID", RecordsetKind::Updatable);
    site_.Run("UPDATE Reservation SET Name = Name || '!'; DELETE FROM Reservation WHERE ID = 2");
    EXPECT_EQ((*rows)["Name"].ToText(), u"Talk");
    rows->MoveNext();
    ExpectError(EngineErrorNumber::RecordDeleted, u"deleted", [&] { (*rows)["Name"]; });
    rows->MoveNext();
    EXPECT_EQ((*rows)["Name"].ToText(), u"Third!");
    rows->MoveFirst();
    EXPECT_EQ((*rows)["Name"].ToText(), u"Talk!");
}

TEST_F(Updating, ChangesBothTablesOfAJoinOrNone) {
    const auto rows = database_->OpenRecordset(join, RecordsetKind::Updatable);
    rows->Edit();
    rows->Set("Asset.Name", u"Hall"_s);
    rows->Set("Attendees", 50);
    site_.Run("UPDATE Reservation SET Attendees = 1");
    ExpectError(EngineErrorNumber::RecordChanged, u"Attendees", [&] { rows->Update(); });
    EXPECT_EQ(site_.Stored("SELECT Name FROM Asset"), u"Room 7");
    site_.Run("UPDATE Reservation SET Attendees = 12");
    rows->Update();
    EXPECT_EQ(site_.Stored("SELECT Asset.Name || Attendees FROM Asset, Reservation"), u"Hall50");
    EXPECT_EQ((*rows)["Asset.Name"].ToText(), u"Hall");
    ExpectError(EngineErrorNumber::ReadOnly, u"joined", [&] { rows->Delete(); });
}

TEST_F(Updating, AddsToAJoinWhatTheQueryThenFinds) {
    const auto rows = database_->OpenRecordset(join, RecordsetKind::Updatable);
    rows->AddNew();
    rows->Set("Reservation.Asset", 7);
    rows->Set("Reservation.Name", u"Second"_s);
    rows->Update();
    EXPECT_EQ((*rows)["ID"].ToInteger(), 1);
    rows->GoTo(rows->LastModified());
    EXPECT_EQ((*rows)["Reservation.Name"].ToText(), u"Second");
    EXPECT_EQ((*rows)["Asset.Name"].ToText(), u"Room 7");
    rows->AddNew();
    rows->Set("Reservation.Name", u"Nowhere"_s);
    rows->Update();
    ExpectError(EngineErrorNumber::InvalidArgument, u"does not belong", [&] { rows->LastModified(); });
    rows->AddNew();
    rows->Set("Reservation.Name", u"x"_s);
    rows->Set("Asset.Name", u"y"_s);
    ExpectError(EngineErrorNumber::InvalidArgument, u"Asset, Reservation", [&] { rows->Update(); });
    EXPECT_EQ(site_.Stored("SELECT count(*) FROM Reservation"), u"3");
}

TEST_F(Updating, AddsRecordsWithTheStoresNumbers) {
    const auto notes =
        database_->OpenRecordset(u"Select * from [Note] where Reservation = 1", RecordsetKind::Updatable);
    ASSERT_TRUE(notes->EndOfFile());
    for (const int number : {1, 2}) {
        notes->AddNew();
        EXPECT_TRUE((*notes)["Name"].IsNull());
        notes->Set("Reservation", 1);
        notes->Set("Name", u"Note %1"_s.arg(number));
        notes->Set("Cost", u"12.5"_s);
        EXPECT_EQ((*notes)["Cost"].ToReal(), 12.5);
        notes->Update();
        notes->GoTo(notes->LastModified());
        EXPECT_EQ((*notes)["ID"].ToInteger(), number);
        EXPECT_EQ((*notes)["Completed"].ToValue(), Value(false));
    }
    notes->MoveFirst();
    notes->MoveLast();
    EXPECT_EQ(notes->RecordCount(), 2);
    Change(*notes, "Name", u"Changed"_s);
    EXPECT_EQ(site_.Stored("SELECT group_concat(Name) FROM Note"), u"Note 1,Changed");
}

TEST_F(Updating, KeepsKeysApart) {
    site_.Run("INSERT INTO Person (LastName, FirstName) VALUES ('Smith', 'Ann'), ('Smith', 'Bob');"
              "INSERT INTO PrintAttributes VALUES ('twin', 1), ('twin', 1)");
    const auto persons = database_->OpenRecordset(u"Select * from Person order by FirstName", RecordsetKind::Updatable);
    persons->Edit();
    persons->Set("FirstName", u"bob"_s);
    ExpectError(EngineErrorNumber::DuplicateKey, u"Person.FirstName", [&] { persons->Update(); });
    persons->Set("FirstName", Value());
    ExpectError(EngineErrorNumber::ConstraintFailed, u"Person.FirstName", [&] { persons->Update(); });
    persons->Set("FirstName", u"Zoe"_s);
    persons->Update();
    EXPECT_EQ((*persons)["FirstName"].ToText(), u"Zoe");
    Change(*persons, "Area", u"North"_s);
    Change(*persons, "LastName", u"SMITH"_s); // the same key in other letters
    EXPECT_EQ(site_.Stored("SELECT LastName || FirstName || Area FROM Person WHERE FirstName = 'Zoe'"),
              u"SMITHZoeNorth");
    // A table without a key: the rows are told apart all the same.
    const auto twins = database_->OpenRecordset(u"PrintAttributes", RecordsetKind::Updatable);
    twins->MoveNext();
    Change(*twins, "PrintAttributes", 2);
    EXPECT_EQ(site_.Stored("SELECT group_concat(PrintAttributes) FROM PrintAttributes"), u"1,2");
}

TEST_F(Updating, DeletesAndPassesOverTheGap) {
    site_.Run("INSERT INTO Reservation (ID) VALUES (2), (3)");
    const auto rows = database_->OpenRecordset(u"Select * from Reservation order by ID", RecordsetKind::Updatable);
    rows->MoveNext();
    const Bookmark second = rows->CurrentBookmark();
    rows->Delete();
    EXPECT_FALSE(rows->EndOfFile());
    ExpectError(EngineErrorNumber::RecordDeleted, u"deleted", [&] { (*rows)["ID"]; });
    ExpectError(EngineErrorNumber::RecordDeleted, u"deleted", [&] { rows->Delete(); });
    EXPECT_EQ(rows->RecordCount(), 2);
    rows->MoveNext();
    EXPECT_EQ((*rows)["ID"].ToInteger(), 3);
    rows->MovePrevious();
    EXPECT_EQ((*rows)["ID"].ToInteger(), 1);
    ExpectError(EngineErrorNumber::RecordDeleted, u"bookmarked", [&] { rows->GoTo(second); });
    rows->Delete();
    rows->MoveLast();
    EXPECT_EQ(rows->PercentPosition(), 0);
    rows->Delete();
    ExpectError(EngineErrorNumber::NoCurrentRecord, u"empty", [&] { rows->MoveFirst(); });
    rows->MoveNext();
    EXPECT_TRUE(rows->EndOfFile() && rows->BeginOfFile());
    EXPECT_EQ(site_.Stored("SELECT count(*) FROM Reservation"), u"0");
    rows->AddNew();
    rows->Update();
    EXPECT_FALSE(rows->BeginOfFile());
    rows->MoveFirst();
    EXPECT_EQ((*rows)["SLockStart"].ToValue(), Value(false));
}

TEST_F(Updating, ATransactionKeepsAllOrNothing) {
    const auto row = Reservation(*database_, 1);
    const auto changeTwo = [&] {
        Change(*row, "Attendees", 20);
        database_->Execute(u"Delete from Asset where AssetID = 7");
        ExpectError(EngineErrorNumber::ConstraintFailed, u"FirstName",
                    [&] { database_->Execute(u"INSERT INTO Person (LastName) VALUES ('x')"); });
    };
    {
        const Transaction transaction(*database_);
        changeTwo();
        ExpectError(EngineErrorNumber::InvalidArgument, u"nest", [&] { Transaction nested(*database_); });
    }
    EXPECT_EQ(site_.Stored("SELECT count(*) || (SELECT Attendees FROM Reservation) FROM Asset"), u"112");
    row->Requery();
    Transaction transaction(*database_);
    changeTwo();
    transaction.Commit();
    ExpectError(EngineErrorNumber::InvalidArgument, u"already", [&] { transaction.Commit(); });
    EXPECT_EQ(site_.Stored("SELECT count(*) || (SELECT Attendees FROM Reservation) FROM Asset"), u"020");
}

} // namespace velmora::engine::test
