#include "tests/engine/soundness/Damages.h"

#include <QFile>

#include <ostream>

namespace velmora::engine::test {

namespace {

constexpr int damaged = 3049;
constexpr auto smashed = '\x5a';

int Middle(const QString& path, const char* name, const char* kind) {
    const std::vector<int> pages = PagesOf(path, name, kind);
    return pages.at(pages.size() / 2);
}

void Truncate(const QString& path, double share, int more = 0) {
    QFile file(path);
    const auto pages = static_cast<qint64>(share * static_cast<double>(file.size()) / pageSize);
    file.resize(pages * pageSize + more);
}

void SmashAll(const QString& path, const std::vector<int>& pages) {
    for (const int page : pages) {
        OverwritePage(path, page);
    }
}

void Nothing(const QString&) {}

// Takes an index out of the schema's list, so that it misses what is written, and puts it back.
#define HIDE(index)                                                                                                    \
    "PRAGMA writable_schema = ON; CREATE TABLE Hidden AS SELECT * FROM sqlite_schema WHERE name = '" index "';"        \
    "DELETE FROM sqlite_schema WHERE name = '" index "'"
constexpr const char* unhide =
    "PRAGMA writable_schema = ON; INSERT INTO sqlite_schema SELECT * FROM Hidden; DROP TABLE Hidden";

// The header names the first page of the list of free pages.
int FirstFreePage(const QString& path) {
    const QByteArray header = Contents(path).left(100);
    return static_cast<unsigned char>(header[35]) | static_cast<unsigned char>(header[34]) << 8;
}

} // namespace

const std::vector<Damage>& Damages() {
    // clang-format off
    static const std::vector<Damage> damages = {
        {"EmptyFile", {}, [](const QString& path) { SetContents(path, {}); }, damaged, damaged, damaged, {}},
        {"TextFile", {}, [](const QString& path) { SetContents(path, QByteArray("some text\r\n").repeated(9000)); }, damaged, damaged, damaged, {}},
        {"ShortFile", {}, [](const QString& path) { SetContents(path, "SQLite format 3"); }, damaged, damaged, damaged, {}},
        {"Zeros", {}, [](const QString& path) { SetContents(path, QByteArray(100000, '\0')); }, damaged, damaged, damaged, {}},
        {"OtherProgramsDatabase", {}, [](const QString& path) { SetContents(path, {}); Execute(path,
            "CREATE TABLE Bookmark (ID INTEGER PRIMARY KEY, Title TEXT); INSERT INTO Bookmark VALUES (1, 'x')"); }, damaged, damaged, damaged, {}},
        {"EmptyDatabase", {}, [](const QString& path) { SetContents(path, {}); Execute(path, "PRAGMA user_version = 3"); }, damaged, damaged, damaged, {}},

        {"SiteAdditions", {"CREATE TABLE Parking (Place TEXT PRIMARY KEY, Level INTEGER) WITHOUT ROWID; INSERT INTO Parking VALUES ('b', 2), ('a', 1);"
            "CREATE TABLE Log (Entry TEXT); INSERT INTO Log (rowid, Entry) VALUES (77, 'x'); CREATE UNIQUE INDEX LogEntry ON Log (Entry);"
            "ALTER TABLE Person ADD COLUMN Badge TEXT DEFAULT 'none' COLLATE NOCASE; UPDATE Person SET Badge = 'b17' WHERE LastName = 'Last17';"
            "CREATE VIEW Rooms AS SELECT Name FROM Asset; CREATE TRIGGER Keep AFTER DELETE ON Log BEGIN SELECT 1; END;"
            "DELETE FROM WorkOrder WHERE ID > 30; PRAGMA user_version = 12"},
            [](const QString& path) { OverwritePage(path, PagesOf(path, "Asset", "leaf")[0]); Overwrite(path, 30, "xx"); }, damaged, damaged, 0, {"Asset"}},
        {"Magic", {}, [](const QString& path) { Overwrite(path, 0, "XXXX"); }, damaged, damaged, 0, {}},
        {"Header", {}, [](const QString& path) { Overwrite(path, 0, QByteArray(100, smashed)); }, damaged, damaged, 0, {}},
        {"PageSize", {}, [](const QString& path) { Overwrite(path, 16, QByteArray("\x20\x00", 2)); }, damaged, damaged, 0, {}},
        {"PageCount", {}, [](const QString& path) { Overwrite(path, 28, QByteArray("\x00\x7f\x00\x00", 4)); }, damaged, damaged, 0, {}},
        {"TextEncoding", {}, [](const QString& path) { Overwrite(path, 56, QByteArray("\x00\x00\x00\x02", 4)); }, damaged, damaged, 0, {}},
        {"FirstPage", {}, [](const QString& path) { OverwritePage(path, 1); }, damaged, damaged, 0, {}},
        {"FirstPageZero", {}, [](const QString& path) { OverwritePage(path, 1, QByteArray(pageSize, '\0')); }, damaged, damaged, 0, {}},
        // Tables of the same shape cannot be told apart without the schema's list.
        {"SchemaLeaf", {}, [](const QString& path) { OverwritePage(path, PagesOf(path, "sqlite_schema", "leaf").front()); }, damaged, damaged, 0,
            {"Asset/Event", "Asset/Area"}},
        {"WholeSchema", {}, [](const QString& path) { SmashAll(path, PagesOf(path, "sqlite_schema", "leaf")); OverwritePage(path, 1); },
            damaged, damaged, 0, {"Asset/Event", "Asset/Area", "PrintAttributes", "SiteProperty", "StoredQuery"}},

        {"TableLeaf", {}, [](const QString& path) { OverwritePage(path, Middle(path, "Reservation", "leaf")); }, 0, damaged, 0, {"Reservation"}},
        {"TableRoot", {}, [](const QString& path) { OverwritePage(path, PagesOf(path, "Reservation", "internal").front()); }, damaged, damaged, 0, {}},
        {"FirstTableLeaf", {}, [](const QString& path) { OverwritePage(path, PagesOf(path, "Reservation", "leaf").front()); }, damaged, damaged, 0,
            {"Reservation"}},
        {"ManyPages", {}, [](const QString& path) {
            const std::vector<int> leaves = PagesOf(path, "Reservation", "leaf");
            SmashAll(path, {leaves[4], leaves[5], leaves[9], leaves[leaves.size() - 2], PagesOf(path, "Person", "leaf")[2],
                            PagesOf(path, "Person", "internal")[0], PagesOf(path, "Reservation", "internal")[0]}); },
            damaged, damaged, 0, {"Reservation", "Person"}},
        {"PageOfAnotherTable", {}, [](const QString& path) {
            const int other = Middle(path, "Person", "leaf");
            OverwritePage(path, Middle(path, "Reservation", "leaf"), Contents(path).mid(qsizetype{other - 1} * pageSize, pageSize)); },
            0, damaged, 0, {"Reservation"}},
        {"HalfATableLeaf", {}, [](const QString& path) {
            OverwritePage(path, Middle(path, "Reservation", "leaf"), QByteArray(pageSize / 2, '\0')); }, 0, damaged, 0, {"Reservation"}},
        {"CoveredTableLeaf", {}, [](const QString& path) { OverwritePage(path, Middle(path, "Asset/Person", "leaf")); }, 0, damaged, 0, {}},
        {"OverflowPage", {}, [](const QString& path) { OverwritePage(path, Middle(path, "Note", "overflow")); }, 0, damaged, 0, {"Note"}},
        {"LastOverflowPageZero", {}, [](const QString& path) {
            OverwritePage(path, PagesOf(path, "Note", "overflow").back(), QByteArray(pageSize, '\0')); }, 0, 0, 0, {"Note"}},
        {"LoopOfPages", {}, [](const QString& path) {
            const int root = PagesOf(path, "Reservation", "internal").front();
            QByteArray self(4, '\0');
            self[3] = static_cast<char>(root);
            Overwrite(path, qint64{root - 1} * pageSize + 8, self); }, damaged, damaged, 0, {}},

        {"IndexLeaf", {}, [](const QString& path) { OverwritePage(path, Middle(path, "ReservationStart", "leaf")); }, 0, damaged, 0, {}},
        {"IndexRoot", {}, [](const QString& path) { OverwritePage(path, PagesOf(path, "ReservationLink", "internal").front()); }, damaged, damaged, 0, {}},
        {"KeyIndexRoot", {}, [](const QString& path) {
            OverwritePage(path, PagesOf(path, "sqlite_autoindex_Person_1", "internal").front()); }, damaged, damaged, 0, {}},
        {"MissingIndex", {}, [](const QString& path) { Execute(path, "DROP INDEX ReservationPerson"); }, damaged, damaged, 0, {}},
        {"MissingTable", {}, [](const QString& path) { Execute(path, "DROP TABLE StandardNotes"); }, damaged, damaged, 0, {}},
        {"RowMissingInIndex", {HIDE("ReservationStart"),
            "UPDATE Reservation SET Start = '2031-01-01 00:00:00' WHERE ID = 700", unhide}, Nothing, 0, damaged, 0, {}},
        {"DuplicateKey", {HIDE("AssetName"), "INSERT INTO Asset (AssetID, Name) VALUES (90, 'room 7')", unhide},
            Nothing, 0, damaged, 0, {"Asset"}},
        {"FreePage", {"DELETE FROM Reservation WHERE ID BETWEEN 300 AND 900"},
            [](const QString& path) { OverwritePage(path, FirstFreePage(path)); }, 0, damaged, 0, {}},
        {"HalfTheFile", {}, [](const QString& path) { Truncate(path, 0.5); }, damaged, damaged, 0, {"Reservation", "Note", "Person", "Asset/Person"}},
        {"NineTenthsOfTheFile", {}, [](const QString& path) { Truncate(path, 0.9); }, damaged, damaged, 0, {"Reservation", "Person", "Asset/Person"}},
        {"CutWithinAPage", {}, [](const QString& path) { Truncate(path, 0.7, 1000); }, damaged, damaged, 0,
            {"Reservation", "Note", "Person", "Asset/Person"}},
        {"OneByteShort", {}, [](const QString& path) { Truncate(path, 1.0, -1); }, damaged, damaged, 0, {}},
        {"Nothing", {}, Nothing, 0, 0, 0, {}},
    };
    // clang-format on
    return damages;
}

void PrintTo(const Damage& damage, std::ostream* out) {
    *out << damage.name;
}

} // namespace velmora::engine::test
