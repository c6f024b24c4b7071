// Measures the record engine against the store's plain C interface, side by side in one run, and fails when a ratio is
// above its limit.
#include "bench/BareStore.h"
#include "bench/BenchSite.h"
#include "bench/Measure.h"
#include "engine/Database.h"

#include <QStringBuilder>
#include <QTemporaryDir>

#include <malloc.h>
#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <span>
#include <vector>

using namespace Qt::Literals::StringLiterals;
using velmora::bench::BareStore;
using velmora::bench::Median;
using velmora::bench::Milliseconds;
using velmora::engine::Database;
using velmora::engine::Field;
using velmora::engine::Recordset;
using velmora::engine::RecordsetKind;

// What both sides call to wait for the disk: nobody waits here, since what is measured is the engine and not the disk.
extern "C" int fsync(int /*file*/) {
    return 0;
}
extern "C" int fdatasync(int /*file*/) {
    return 0;
}

namespace {

constexpr int lookups = 20'000;
constexpr int changes = 2'000;
// The short pieces of work are measured in slices, turn and turn about, so that what else the machine does meets both
// sides alike.
constexpr int slices = 20;

struct Measurement {
    const char* what;
    double limit;
    // One slice of the work; slices count from 0.
    std::function<void(int)> bare;
    std::function<void(int)> engine;
    int slices = 1;
};

// Runs both sides in turn. True when the middle one of the ratios is within its limit.
bool Measure(const Measurement& measurement, int rounds) {
    std::vector<double> bare;
    std::vector<double> engine;
    std::vector<double> ratios;
    measurement.bare(0);
    measurement.engine(0);
    for (int run = 0; run < rounds * measurement.slices; ++run) {
        const int slice = run % measurement.slices;
        bare.push_back(Milliseconds([&] { measurement.bare(slice); }));
        engine.push_back(Milliseconds([&] { measurement.engine(slice); }));
        ratios.push_back(engine.back() / bare.back());
    }
    const double ratio = Median(ratios);
    std::printf("%-52s %9.2f ms %9.2f ms %6.2f %6.2f %s\n", measurement.what, measurement.slices * Median(bare),
                measurement.slices * Median(engine), ratio, measurement.limit,
                ratio <= measurement.limit ? "" : "ABOVE");
    return ratio <= measurement.limit;
}

// What both sides add up, so that no reading is left out.
struct Sum {
    qint64 total = 0;
    Sum() = default;
    Q_DISABLE_COPY_MOVE(Sum)
    ~Sum() {
        if (total == 0) {
            std::fprintf(stderr, "Nothing was read\n");
            std::exit(1);
        }
    }
    void Add(const Field& field) {
        total += field.StoredKind() == Field::Kind::Text ? static_cast<qint64>(field.Utf8().size()) : field.ToInteger();
    }
    void AddText(sqlite3_stmt* row, int column) {
        const auto* text = sqlite3_column_text(row, column);
        total += sqlite3_column_bytes(row, column) + (text != nullptr && *text == 0);
    }
    void AddNumber(sqlite3_stmt* row, int column) { total += sqlite3_column_int64(row, column); }
};

constexpr const char* joinText = "SELECT * FROM Asset INNER JOIN Reservation ON Asset.AssetID = Reservation.Asset";

void ReadJoinBare(BareStore& store, sqlite3_stmt* join) {
    Sum sum;
    while (store.Step(join)) {
        for (const int text : {1, 7, 8, 14, 15, 16, 17, 18, 19}) {
            sum.AddText(join, text);
        }
        for (const int number : {0, 12, 24}) {
            sum.AddNumber(join, number);
        }
    }
    sqlite3_reset(join);
}

void ReadJoin(Database& database) {
    Sum sum;
    const auto rows = database.OpenRecordset(QString::fromLatin1(joinText));
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        const Recordset& row = *rows;
        sum.Add(row["AssetID"]);
        sum.Add(row["Asset.Name"]);
        sum.Add(row["Jack"]);
        sum.Add(row["Port"]);
        sum.Add(row["ID"]);
        sum.Add(row["Start"]);
        sum.Add(row["End"]);
        sum.Add(row["Reservation.Name"]);
        sum.Add(row["EventType"]);
        sum.Add(row["LastName"]);
        sum.Add(row["FirstName"]);
        sum.Add(row["SLockStart"]);
    }
}

struct Name {
    QString last;
    QString first;
    QByteArray lastBytes;
    QByteArray firstBytes;
};

// The persons in the order in which they are looked up, made beforehand.
std::vector<Name> NamesToLookUp() {
    std::vector<Name> names;
    for (int i = 0; i < lookups; ++i) {
        const int person = i * 31 % velmora::bench::benchPersons;
        const QString last = velmora::bench::LastNameOf(person);
        const QString first = velmora::bench::FirstNameOf(person);
        names.push_back({last, first, last.toUtf8(), first.toUtf8()});
    }
    return names;
}

void LookUpBare(BareStore& store, sqlite3_stmt* lookup, std::span<const Name> names) {
    const auto bind = [lookup](int place, const QByteArray& bytes) {
        sqlite3_bind_text(lookup, place, bytes.constData(), static_cast<int>(bytes.size()), SQLITE_STATIC);
    };
    Sum sum;
    for (const Name& name : names) {
        bind(1, name.lastBytes);
        bind(2, name.firstBytes);
        while (store.Step(lookup)) {
            for (const int column : {0, 1, 6, 7, 8}) {
                sum.AddText(lookup, column);
            }
        }
        sqlite3_reset(lookup);
    }
}

void LookUp(Database& database, std::span<const Name> names) {
    Sum sum;
    for (const Name& name : names) {
        const QString text =
            u"Select * from Person where LastName = \""_s % name.last % u"\" and FirstName = \""_s % name.first % u'"';
        const auto found = database.OpenRecordset(text);
        if (!found->EndOfFile()) {
            const Recordset& person = *found;
            sum.Add(person["LastName"]);
            sum.Add(person["FirstName"]);
            sum.Add(person["Phone"]);
            sum.Add(person["Extension"]);
            sum.Add(person["Storage"]);
        }
    }
}

int ReservationOf(int change) {
    return change * 37 % velmora::bench::benchReservations + 1;
}

struct BareUpdate {
    sqlite3_stmt* read;
    sqlite3_stmt* begin;
    sqlite3_stmt* update;
    sqlite3_stmt* commit;
};

void RunOnce(BareStore& store, sqlite3_stmt* statement) {
    store.Step(statement);
    sqlite3_reset(statement);
}

// Reads the record, turns one flag round and writes it in a transaction of its own.
void ChangeBare(BareStore& store, const BareUpdate& statements, int first, int last) {
    for (int i = first; i < last; ++i) {
        sqlite3_bind_int(statements.read, 1, ReservationOf(i));
        store.Step(statements.read);
        const int flag = sqlite3_column_int(statements.read, 12);
        sqlite3_reset(statements.read);
        RunOnce(store, statements.begin);
        sqlite3_bind_int(statements.update, 1, 1 - flag);
        sqlite3_bind_int(statements.update, 2, ReservationOf(i));
        RunOnce(store, statements.update);
        RunOnce(store, statements.commit);
    }
}

void Change(Database& database, int first, int last) {
    for (int i = first; i < last; ++i) {
        const auto record = database.OpenRecordset(
            u"Select * from Reservation where ID = "_s + QString::number(ReservationOf(i)), RecordsetKind::Updatable);
        record->Edit();
        record->Set("SLockStart", !(*record)["SLockStart"].ToBool());
        record->Update();
    }
}

// The store's own function that makes texts of dates is the measure for the dialect's.
void FormatBare(BareStore& store, sqlite3_stmt* format) {
    Sum sum;
    while (store.Step(format)) {
        sum.AddNumber(format, 0);
    }
    sqlite3_reset(format);
}

void Format(Database& database) {
    Sum sum;
    sum.Add(
        database.OpenRecordset(u"SELECT Count(*) FROM Reservation WHERE Format(Start) <> \"\" And Format(End) <> \"\"")
            ->FieldAt(0));
}

// On a database of its own, whose session has not kept any memory yet.
bool MeasureMemory(const QString& path) {
    constexpr double limit = 30.0;
    const auto heap = [] {
        const struct mallinfo2 info = mallinfo2();
        return info.uordblks + info.hblkhd;
    };
    const auto database = Database::Open(path);
    static_cast<void>(database->OpenRecordset(u"SELECT Count(*) FROM Asset"));
    const auto before = heap();
    const auto rows = database->OpenRecordset(QString::fromLatin1(joinText));
    rows->MoveLast();
    const double megabytes = static_cast<double>(heap() - before) / (1024.0 * 1024.0);
    std::printf("%-52s %35.2f MB %5.0f MB %s\n", "Memory of that join as a snapshot", megabytes, limit,
                megabytes <= limit ? "" : "ABOVE");
    return megabytes <= limit && rows->RecordCount() >= velmora::bench::benchReservations;
}

} // namespace

int main() {
    QTemporaryDir folder;
    const QString path = folder.filePath(u"bench.mdb"_s);
    velmora::bench::MakeBenchSite(path);

    BareStore store(path);
    store.Run("PRAGMA synchronous = FULL");
    const auto database = Database::Open(path);

    sqlite3_stmt* join = store.Prepare(joinText);
    sqlite3_stmt* lookup = store.Prepare("SELECT * FROM Person WHERE LastName = ?1 AND FirstName = ?2");
    const BareUpdate update{store.Prepare("SELECT * FROM Reservation WHERE ID = ?1"), store.Prepare("BEGIN IMMEDIATE"),
                            store.Prepare("UPDATE Reservation SET SLockStart = ?1 WHERE ID = ?2"),
                            store.Prepare("COMMIT")};

    const std::vector<Name> names = NamesToLookUp();
    std::printf("%-52s %12s %12s %6s %6s\n", "", "bare", "engine", "ratio", "limit");
    bool good = Measure({"Join of 50,000 rows, 12 fields by name", 1.6, [&](int) { ReadJoinBare(store, join); },
                         [&](int) { ReadJoin(*database); }},
                        9);
    good &= MeasureMemory(path);
    const auto namesOf = [&names](int slice) {
        constexpr size_t size = lookups / slices;
        return std::span<const Name>(names).subspan(static_cast<size_t>(slice) * size, size);
    };
    good &= Measure({"20,000 look-ups, text built per call", 1.2,
                     [&](int slice) { LookUpBare(store, lookup, namesOf(slice)); },
                     [&](int slice) { LookUp(*database, namesOf(slice)); }, slices},
                    9);
    constexpr int size = changes / slices;
    good &= Measure({"2,000 records opened and one field updated", 1.1,
                     [&](int slice) { ChangeBare(store, update, slice * size, (slice + 1) * size); },
                     [&](int slice) { Change(*database, slice * size, (slice + 1) * size); }, slices},
                    9);
    sqlite3_stmt* format =
        store.Prepare("SELECT count(*) FROM Reservation WHERE strftime('%m/%d/%Y %H:%M', Start) <> '' "
                      "AND strftime('%m/%d/%Y %H:%M', \"End\") <> ''");
    good &= Measure(
        {"100,000 dates as texts", 1.0, [&](int) { FormatBare(store, format); }, [&](int) { Format(*database); }}, 9);
    return good ? 0 : 1;
}
