#include "tests/engine/TestSite.h"

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::test {

namespace {

constexpr const char* threeAssets = "INSERT INTO Asset (AssetID, Name) VALUES (10, 'A'), (20, 'B'), (30, 'C')";

// Where a set stands: the asset's number, or which end, or the number of the error.
QString Place(Recordset& rows) {
    if (rows.EndOfFile()) {
        return rows.BeginOfFile() ? u"empty"_s : u"end"_s;
    }
    return rows.BeginOfFile() ? u"begin"_s : rows["AssetID"].ToText();
}

// Plays the moves f, l, n, p (first, last, next, previous), b (bookmark), g (go to it), r (query again).
QString Play(Recordset& rows, const char* moves) {
    Bookmark bookmark;
    try {
        for (const char* move = moves; *move != 0; ++move) {
            switch (*move) {
            case 'f':
                rows.MoveFirst();
                break;
            case 'l':
                rows.MoveLast();
                break;
            case 'n':
                rows.MoveNext();
                break;
            case 'p':
                rows.MovePrevious();
                break;
            case 'b':
                bookmark = rows.CurrentBookmark();
                break;
            case 'g':
                rows.GoTo(bookmark);
                break;
            default:
                rows.Requery();
            }
        }
        return Place(rows);
    } catch (const EngineError& error) {
        return QString::number(error.Number());
    }
}

struct MoveCase {
    const char* moves;
    const char* place;
};

constexpr MoveCase fullSet[] = {
    {"", "10"},      {"n", "20"},     {"nn", "30"},     {"nnn", "end"}, {"nnnn", "3021"},   {"nnnp", "30"},
    {"p", "begin"},  {"pp", "3021"},  {"pn", "10"},     {"pnn", "20"},  {"l", "30"},        {"lp", "20"},
    {"ln", "end"},   {"lnpp", "20"},  {"lnf", "10"},    {"pl", "30"},   {"nf", "10"},       {"bnng", "10"},
    {"nblng", "20"}, {"nbfpg", "20"}, {"nbgn", "30"},   {"nbgp", "10"}, {"lbnngn", "3021"}, {"lbng", "30"},
    {"pb", "3021"},  {"g", "3001"},   {"bnrg", "3001"}, {"nr", "10"},   {"lnr", "10"},      {"rbng", "10"},
};
constexpr MoveCase emptySet[] = {{"", "empty"}, {"f", "3021"}, {"l", "3021"}, {"n", "3021"},
                                 {"p", "3021"}, {"b", "3021"}, {"r", "empty"}};

} // namespace

class EitherKind : public ::testing::TestWithParam<RecordsetKind> {
protected:
    TestSite site_;
};
INSTANTIATE_TEST_SUITE_P(Recordset, EitherKind, ::testing::Values(RecordsetKind::Snapshot, RecordsetKind::Updatable));

TEST_P(EitherKind, MovesAndBookmarksAtTheBorders) {
    site_.Run(threeAssets);
    const auto database = site_.Open();
    for (const MoveCase& each : fullSet) {
        const auto rows = database->OpenRecordset(u"Select * from Asset order by AssetID", GetParam());
        EXPECT_EQ(Play(*rows, each.moves), QLatin1String(each.place)) << each.moves;
    }
    for (const MoveCase& each : emptySet) {
        const auto rows = database->OpenRecordset(u"Select * from Asset where AssetID > 90", GetParam());
        EXPECT_EQ(Play(*rows, each.moves), QLatin1String(each.place)) << "empty set: " << each.moves;
        ExpectError(EngineErrorNumber::NoCurrentRecord, u"empty", [&] { (*rows)["Name"]; });
    }
}

TEST_P(EitherKind, CountsAndPercents) {
    site_.Run(threeAssets);
    const auto database = site_.Open();
    const auto rows = database->OpenRecordset(u"Select * from Asset order by AssetID", GetParam());
    EXPECT_EQ(rows->PercentPosition(), 0);
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), 3);
    EXPECT_DOUBLE_EQ(rows->PercentPosition(), 200.0 / 3);
    rows->MoveNext();
    EXPECT_EQ(rows->PercentPosition(), 100);
    ExpectError(EngineErrorNumber::NoCurrentRecord, u"behind its last", [&] { (*rows)["Name"]; });
    const auto empty = database->OpenRecordset(u"Select * from Person", GetParam());
    EXPECT_EQ(empty->RecordCount(), 0);
    EXPECT_EQ(empty->PercentPosition(), 0);
}

TEST_P(EitherKind, ABookmarkBelongsToItsSet) {
    site_.Run(threeAssets);
    const auto database = site_.Open();
    const auto one = database->OpenRecordset(u"Select * from Asset", GetParam());
    const auto other = database->OpenRecordset(u"Select * from Asset", GetParam());
    ExpectError(EngineErrorNumber::InvalidArgument, u"not of this recordset",
                [&] { other->GoTo(one->CurrentBookmark()); });
}

// Fields of a join by plain, qualified, differently spelt, unknown and doubtful names.
TEST_P(EitherKind, FindsFieldsByName) {
    site_.Run("INSERT INTO Asset (AssetID, Name, Jack) VALUES (5, 'Room', 'J1');"
              "INSERT INTO Reservation (ID, Asset, Name) VALUES (9, 5, 'Talk')");
    const auto database = site_.Open();
    const auto plain = database->OpenRecordset(
        u"SELECT * FROM Asset INNER JOIN Reservation ON Asset.AssetID = Reservation.Asset", GetParam());
    const auto aliased = database->OpenRecordset(
        u"SELECT R.Name, A.Name, A.Jack AS Plug, ID + 1 FROM Asset AS A, Reservation AS R WHERE A.AssetID = R.Asset",
        GetParam());
    struct Case {
        Recordset& rows;
        const char* name;
        const char* shown;
        EngineErrorNumber error = {};
    };
    const Case cases[] = {
        {*plain, "Jack", "J1"},
        {*plain, "jACK", "J1"},
        {*plain, "Asset.Name", "Room"},
        {*plain, "RESERVATION.name", "Talk"},
        {*plain, "Reservation.ID", "9"},
        {*plain, "Name", "Asset.Name, Reservation.Name", EngineErrorNumber::AmbiguousField},
        {*plain, "Jakc", "Asset.Jack", EngineErrorNumber::UnknownItem},
        {*plain, "Zebra", "no such field", EngineErrorNumber::UnknownItem},
        {*plain, "Person.Name", "\"Person.Name\"", EngineErrorNumber::UnknownItem},
        {*aliased, "R.Name", "Talk"},
        {*aliased, "A.Name", "Room"},
        {*aliased, "Plug", "J1"},
        {*aliased, "Expr1000", "10"},
        {*aliased, "Name", "R.Name, A.Name", EngineErrorNumber::AmbiguousField},
        {*aliased, "Jack", "\"Jack\"", EngineErrorNumber::UnknownItem},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        const QString expected = QString::fromLatin1(each.shown);
        if (each.error == EngineErrorNumber{}) {
            EXPECT_EQ(each.rows[each.name].ToText(), expected);
        } else {
            ExpectError(each.error, expected, [&] { each.rows[each.name]; });
        }
    }
    // One buffer that holds one name after the other must not be taken for its address.
    char name[] = "Jack";
    EXPECT_EQ((*plain)[name].ToText(), u"J1");
    std::copy_n("Port", 4, name);
    EXPECT_TRUE((*plain)[name].IsNull());
    ExpectError(EngineErrorNumber::UnknownItem, u"number 99", [&] { plain->FieldAt(99); });
}

TEST_P(EitherKind, ReadsStoredValuesByTheirDeclaredType) {
    site_.Run("INSERT INTO Reservation (ID, Start, \"End\", Attendees, Permanent, SLockStart, Name) VALUES"
              "(1, '2026-03-29 02:30:00', '2026-03-07', 3.5, 5, NULL, 'x'), (2, 'next week', 12, 'many', 'no', 0, '')");
    const auto database = site_.Open();
    const auto rows = database->OpenRecordset(u"Select * from Reservation order by ID", GetParam());
    const Recordset& row = *rows;
    EXPECT_EQ(row["Start"].ToDateTime(), MakeDateTime({2026, 3, 29, 2, 30, 0}));
    EXPECT_EQ(row["End"].ToValue(), Value(*MakeDateTime({2026, 3, 7})));
    EXPECT_EQ(row["Attendees"].ToInteger(), 4);
    EXPECT_EQ(row["Attendees"].ToValue(), Value(3.5));
    EXPECT_TRUE(row["Permanent"].ToBool());
    EXPECT_EQ(row["Permanent"].ToValue(), Value(true));
    EXPECT_EQ(row["Permanent"].ToText(), u"True");
    EXPECT_EQ(row["Permanent"].ToInteger(), -1);
    EXPECT_TRUE(row["SLockStart"].IsNull());
    EXPECT_FALSE(row["SLockStart"].ToBool());
    EXPECT_EQ(row["Organization"].ToText(), u"");
    EXPECT_EQ(row["Organization"].ToValue(), Value());
    rows->MoveNext();
    EXPECT_EQ(row["Start"].ToDateTime(), std::nullopt);
    EXPECT_EQ(row["Start"].ToValue(), Value(u"next week"_s));
    EXPECT_EQ(row["Attendees"].ToText(), u"many");
    EXPECT_EQ(row["Attendees"].ToInteger(), 0);
    EXPECT_FALSE(row["Permanent"].ToBool());
    EXPECT_FALSE(row["Name"].IsNull());
    EXPECT_EQ(row["Name"].Utf8(), "");
}

// Every size class of the packed rows, read in both directions.
TEST_P(EitherKind, HandsOutValuesOfEverySize) {
    using Limits = std::numeric_limits<qint64>;
    const std::vector<qint64> numbers = {0,     1,      -1,         127,        -128,          128,
                                         32767, -32769, 2147483647, 2147483648, Limits::max(), Limits::min()};
    const std::vector<int> lengths = {0, 1, 245, 246, 247, 4096, 300'000, 3, 70'000};
    site_.Run("CREATE TABLE Probe (ID INTEGER PRIMARY KEY, Number INTEGER, Text TEXT, Tail REAL)");
    QByteArray inserts = "BEGIN;";
    int rowsMade = 0;
    for (const int length : lengths) {
        for (const qint64 number : numbers) {
            inserts += "INSERT INTO Probe VALUES (" + QByteArray::number(rowsMade++) + ',' +
                       (number == Limits::min() ? "-9223372036854775807 - 1" : QByteArray::number(number)) +
                       ",replace(printf('%" + QByteArray::number(length) + "s',''),' ','x')," +
                       QByteArray::number(static_cast<double>(number % 1000) + 0.25) + ");";
        }
    }
    site_.Run((inserts + "COMMIT").constData());
    const auto database = site_.Open();
    const auto rows =
        database->OpenRecordset(u"Select Text, Number, Text As Again, Tail, ID from Probe order by ID", GetParam());
    rows->MoveLast();
    ASSERT_EQ(rows->RecordCount(), rowsMade);
    for (int index = rowsMade - 1; index >= 0; --index, rows->MovePrevious()) {
        const auto number = numbers[static_cast<std::size_t>(index) % numbers.size()];
        const auto length = lengths[static_cast<std::size_t>(index) / numbers.size()];
        for (const int text : {0, 2}) {
            ASSERT_EQ(rows->FieldAt(text).Utf8(), std::string(static_cast<std::size_t>(length), 'x')) << index;
        }
        ASSERT_EQ(rows->FieldAt(1).ToInteger(), number) << index;
        ASSERT_EQ(rows->FieldAt(3).ToReal(), static_cast<double>(number % 1000) + 0.25) << index;
        ASSERT_EQ(rows->FieldAt(4).ToInteger(), index);
    }
    EXPECT_TRUE(rows->BeginOfFile());
}

// Names as people have them, looked up by texts that are put together with doubled quotes.
TEST_P(EitherKind, LooksUpAwkwardNames) {
    const QStringList names =
        u"O'Brien|\"Bo\" Diddley|100%|a_b|*star*|Müller-Žižek|#1 [x] ?|'|\"|日本 😀|; DROP TABLE Person"_s.split(u'|');
    const auto database = site_.Open();
    const auto all = database->OpenRecordset(u"Select * from Person", RecordsetKind::Updatable);
    for (const QString& name : names) {
        all->AddNew();
        all->Set("LastName", name);
        all->Set("FirstName", name);
        all->Update();
    }
    for (const QString& name : names) {
        const QString quoted = u'"' + QString(name).replace(u'"', u"\"\""_s) + u'"';
        const auto rows = database->OpenRecordset(
            QString(u"Select * from Person where LastName = "_s + quoted + u" and FirstName = "_s + quoted),
            GetParam());
        ASSERT_FALSE(rows->EndOfFile()) << qPrintable(name);
        EXPECT_EQ((*rows)["LastName"].ToText(), name);
        rows->MoveLast();
        EXPECT_EQ(rows->RecordCount(), 1) << qPrintable(name);
    }
}

TEST_P(EitherKind, SetsOnOneTextDoNotDisturbEachOther) {
    site_.Run(threeAssets);
    const auto database = site_.Open();
    const auto text = [](qint64 asset) { return u"Select * from Asset where AssetID >= "_s + QString::number(asset); };
    const auto outer = database->OpenRecordset(text(10), GetParam());
    QString met;
    for (; !outer->EndOfFile(); outer->MoveNext()) {
        const auto inner = database->OpenRecordset(text((*outer)["AssetID"].ToInteger()), GetParam());
        for (; !inner->EndOfFile(); inner->MoveNext()) {
            met += (*outer)["Name"].ToText() + (*inner)["Name"].ToText() + u' ';
        }
    }
    EXPECT_EQ(met, u"AA AB AC BB BC CC ");
    outer->Requery();
    outer->MoveLast();
    EXPECT_EQ(outer->RecordCount(), 3);
}

TEST(Snapshot, KeepsItsRowsAndHoldsNoLock) {
    TestSite site;
    site.Run(threeAssets);
    const auto database = site.Open();
    const auto rows = database->OpenRecordset(u"Select * from Asset order by AssetID");
    rows->MoveNext();
    site.Run("UPDATE Asset SET Name = Name || '!'; DELETE FROM Asset WHERE AssetID = 30");
    EXPECT_EQ((*rows)["Name"].ToText(), u"B");
    rows->MoveNext();
    EXPECT_EQ((*rows)["Name"].ToText(), u"C");
    rows->Requery();
    EXPECT_EQ((*rows)["Name"].ToText(), u"A!");
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), 2);
}

TEST(Snapshot, RefusesChanges) {
    TestSite site;
    site.Run(threeAssets);
    const auto database = site.Open();
    const auto snapshot = database->OpenRecordset(u"Asset");
    const auto grouped = database->OpenRecordset(u"SELECT DISTINCT Name FROM Asset", RecordsetKind::Updatable);
    for (Recordset* rows : {snapshot.get(), grouped.get()}) {
        ExpectError(EngineErrorNumber::ReadOnly, u"cannot be changed", [&] { rows->Edit(); });
        ExpectError(EngineErrorNumber::ReadOnly, u"cannot be changed", [&] { rows->AddNew(); });
        ExpectError(EngineErrorNumber::ReadOnly, u"cannot be changed", [&] { rows->Delete(); });
    }
    EXPECT_EQ((*grouped)["Name"].ToText(), u"A");
}

} // namespace velmora::engine::test
