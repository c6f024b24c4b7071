#include "tests/engine/soundness/SampleDatabase.h"

#include "engine/sqlite/FilePlace.h"
#include "engine/sqlite/NewDatabaseFile.h"
#include "engine/sqlite/Presence.h"
#include "engine/sqlite/Soundness.h"
#include "engine/sqlite/Statement.h"
#include "engine/sqlite/salvage/RepairFile.h"
#include "site/SiteSchema.h"
#include "tests/engine/Child.h"

#include <QDir>
#include <QFile>

#include <csignal>
#include <sys/resource.h>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::test {

using sqlite::Connection;
using sqlite::Statement;

OpenOptions ShippedOptions() {
    return {.schema = SiteSchema()};
}

bool IsInUse(const QString& path) {
    return sqlite::FilePlace(path).IsInUse();
}

CheckResult CheckDatabase(const QString& path, const OpenOptions& options) {
    return sqlite::FilePlace(path).Check(options);
}

RepairReport RepairDatabase(const QString& path, const Schema& schema) {
    return salvage::Repair(sqlite::FilePlace(path), schema, *MakeDateTime({2026, 3, 7, 14, 15, 9}));
}

QStringList SampleFolder::Names() const {
    return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

namespace {

DateTime MomentOf(int number) {
    return StartOfDay(*MakeDate(2026, 1, 1)) + std::chrono::minutes(number * 7);
}

QString Named(const char16_t* stem, int number) {
    return QString::fromUtf16(stem) + QString::number(number);
}

void AddReservations(NewDatabase& database, int count) {
    const auto rows =
        database.Load(u"Reservation"_s,
                      {u"ID"_s, u"Asset"_s, u"Start"_s, u"End"_s, u"Name"_s, u"EventType"_s, u"LastName"_s,
                       u"FirstName"_s, u"Organization"_s, u"Attendees"_s, u"Permanent"_s, u"Link"_s, u"SLockStart"_s,
                       u"SLockEnd"_s, u"TLockStart"_s, u"TLockEnd"_s, u"TextStart"_s, u"TextEnd"_s});
    for (int id = 1; id <= count; ++id) {
        const int person = id * 31 % 97;
        rows->Add({id, id % 40 + 1, MomentOf(id), MomentOf(id + 9), Named(u"Booking \u00e4", id),
                   Named(u"Type", id % 7), Named(u"Last", person), Named(u"First", person),
                   id % 3 == 0 ? Value() : Value(Named(u"Org", id % 11)), id % 50, id % 5 == 0, id / 2, false, false,
                   true, false, u"3/7/2026 2:15 PM"_s, u"3/7/2026 3:15 PM"_s});
    }
}

void AddNotes(NewDatabase& database, int count) {
    const auto notes =
        database.Load(u"Note"_s, {u"ID"_s, u"Reservation"_s, u"Name"_s, u"Note"_s, u"Cost"_s, u"Completed"_s});
    for (int id = 1; id <= count; ++id) {
        const QString text =
            id % 25 == 0 ? u"Long note, needs pages of its own. "_s.repeated(400) : Named(u"Note ", id);
        notes->Add({id, id * 3, Named(u"Task", id % 9), text, id * 0.25, id % 2 == 0});
    }
}

} // namespace

void MakeSample(const QString& path, int reservations) {
    sqlite::NewDatabaseFile database(path, SiteSchema());
    AddReservations(database, reservations);
    AddNotes(database, reservations / 5);
    for (int id = 1; id <= 40; ++id) {
        database.Load(u"Asset"_s, {u"AssetID"_s, u"Name"_s, u"Location"_s})
            ->Add({id, Named(u"Room ", id), id % 2 == 0});
        database.Load(u"Asset/Event"_s, {u"AssetID"_s, u"EventType"_s})->Add({id, Named(u"Type", id % 7)});
        database.Load(u"Asset/Area"_s, {u"AssetID"_s, u"AreaName"_s})->Add({id, Named(u"Area", id % 7)});
        database.Load(u"WorkOrder"_s, {u"Requested"_s, u"Description"_s})->Add({MomentOf(id), Named(u"Fix ", id)});
    }
    const auto persons = database.Load(u"Person"_s, {u"LastName"_s, u"FirstName"_s, u"Area"_s, u"Phone"_s});
    for (int id = 0; id < 500; ++id) {
        const int name = id * 37 % 500;
        persons->Add({Named(u"Last", name), Named(u"First", name), Named(u"Area", id % 6), Named(u"555-", id)});
    }
    const auto links = database.Load(u"Asset/Person"_s, {u"AssetID"_s, u"LastName"_s, u"FirstName"_s});
    for (int id = 0; id < 800; ++id) {
        links->Add({id % 40, Named(u"Last", id), Named(u"First", id)});
    }
    database.Load(u"StoredQuery"_s, {u"Name"_s, u"Text"_s})->Add({u"QOne"_s, u"SELECT * FROM Asset"_s});
    database.Load(u"PrintAttributes"_s, {u"Caption"_s, u"PrintAttributes"_s})->Add({u"Title"_s, 3});
    database.Load(u"SiteProperty"_s, {u"Name"_s, u"Value"_s})->Add({u"SchemaVersion"_s, u"2"_s});
    database.Finish();
}

Rows ReadRows(const QString& path) {
    Rows rows;
    const Connection store(QFile::encodeName(path), SQLITE_OPEN_READONLY);
    Statement tables(store.Handle(), "SELECT name FROM sqlite_schema WHERE type = 'table'");
    while (tables.Step()) {
        const QByteArray table = tables.TextCopy(0);
        std::set<QByteArray>& set = rows[table];
        Statement all(store.Handle(), "SELECT * FROM " + sqlite::Quoted(table) + " NOT INDEXED");
        while (all.Step()) {
            QByteArray row;
            for (int column = 0; column < sqlite3_column_count(all.Handle()); ++column) {
                row += all.IsNull(column) ? QByteArray("~") : all.TextCopy(column);
                row += '|';
            }
            set.insert(row);
        }
    }
    return rows;
}

qint64 CountRows(const Rows& rows) {
    qint64 count = 0;
    for (const auto& [table, set] : rows) {
        count += static_cast<qint64>(set.size());
    }
    return count;
}

std::vector<int> PagesOf(const QString& path, const char* tableOrIndex, const char* kind) {
    std::vector<int> pages;
    const Connection store(QFile::encodeName(path), SQLITE_OPEN_READONLY);
    Statement list(store.Handle(), "SELECT pageno FROM dbstat WHERE name = ?1 AND pagetype = ?2 ORDER BY path");
    list.BindText(1, tableOrIndex);
    list.BindText(2, kind);
    while (list.Step()) {
        pages.push_back(static_cast<int>(list.Integer(0)));
    }
    return pages;
}

void Overwrite(const QString& path, qint64 offset, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite) || !file.seek(offset) || file.write(bytes) != bytes.size()) {
        throw std::runtime_error("cannot overwrite");
    }
}

void OverwritePage(const QString& path, int page, const QByteArray& bytes) {
    Overwrite(path, qint64{page - 1} * pageSize, bytes);
}

QByteArray Contents(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("cannot read " + path.toStdString());
    }
    return file.readAll();
}

void SetContents(const QString& path, const QByteArray& contents) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size()) {
        throw std::runtime_error("cannot write");
    }
}

void Execute(const QString& path, const char* sql) {
    Connection(QFile::encodeName(path), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE).Execute(sql);
}

int OpeningResult(const QString& path, const OpenOptions& options) {
    return ErrorOf([&] {
        sqlite::CheckPath(path);
        const sqlite::Presence presence = sqlite::Presence::Join(path);
        const Connection store(QFile::encodeName(path), SQLITE_OPEN_READWRITE);
        sqlite3_busy_timeout(store.Handle(), 50);
        sqlite::CheckOpened(store.Handle(), path, options);
    });
}

int ErrorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const EngineError& error) {
        return error.Number();
    }
    return 0;
}

bool ReportsAFullDisk(qint64 most, const std::function<void()>& action) {
    const int child = Fork([&] {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {static_cast<rlim_t>(most), static_cast<rlim_t>(most)};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        const int error = ErrorOf(action);
        return error == NumberOf(EngineErrorNumber::DiskFull) || error == NumberOf(EngineErrorNumber::DiskError) ? 0
                                                                                                                 : 1;
    });
    return Wait(child) == 0;
}

} // namespace velmora::engine::test
