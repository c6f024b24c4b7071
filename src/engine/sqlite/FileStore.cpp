#include "engine/sqlite/FileStore.h"

#include "engine/sqlite/Functions.h"
#include "engine/sqlite/SchemaSql.h"
#include "engine/sqlite/Soundness.h"
#include "engine/sqlite/Statement.h"

#include <QFile>

#include <algorithm>
#include <ctime>
#include <thread>

using namespace std::chrono_literals;

namespace velmora::engine::sqlite {

using records::TransactionKind;

namespace {

Presence JoinChecked(const QString& path) {
    CheckPath(path);
    return Presence::Join(path);
}

DateTime WallClock() {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::tm local = {};
    localtime_r(&seconds, &local);
    // A leap second, which the wall clock cannot show, counts as the second before.
    const auto moment = MakeDateTime({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                                      local.tm_min, std::min(local.tm_sec, 59)});
    return moment.value_or(DateTime());
}

FieldType DeclaredType(const QString& declaration) {
    struct Meaning {
        QStringView declaration;
        FieldType type;
    };
    static constexpr Meaning meanings[] = {
        {u"TEXT", FieldType::Text},     {u"INTEGER", FieldType::Integer},   {u"SMALLINT", FieldType::Integer},
        {u"BOOLEAN", FieldType::YesNo}, {u"DATETIME", FieldType::DateTime}, {u"REAL", FieldType::Real},
    };
    for (const Meaning& meaning : meanings) {
        if (meaning.declaration.compare(declaration, Qt::CaseInsensitive) == 0) {
            return meaning.type;
        }
    }
    return FieldType::Unknown;
}

// One column of one table, as the store lists them table by table.
constexpr const char* columnsText =
    "SELECT t.name, c.name, c.type, c.pk FROM pragma_table_list AS t, pragma_table_info(t.name) AS c "
    "WHERE t.schema = 'main' AND t.type = 'table' AND t.name NOT LIKE 'sqlite\\_%' ESCAPE '\\' ORDER BY t.name, c.cid";

} // namespace

// One thread uses a connection, so it needs no mutex; without CREATE a missing file is an error.
FileStore::FileStore(const QString& path, const OpenOptions& options)
    : presence_(JoinChecked(path)), patience_(options.busyMilliseconds),
      connection_(QFile::encodeName(path), SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX) {
    Configure();
    RegisterFunctions(connection_.Handle(), options.now ? options.now : WallClock);
    CheckOpened(connection_.Handle(), path, options);
    onDamage_ = [path] { LeaveDamageMark(path); };
    SetWriting();
}

void FileStore::Configure() {
    sqlite3_busy_handler(connection_.Handle(), &FileStore::WaitForLock, this);
    // A misspelt column in double quotes must not become a text; a file from elsewhere must not run code.
    struct Switch {
        int option;
        int on;
    };
    for (const Switch& each :
         {Switch{SQLITE_DBCONFIG_DQS_DML, 0}, Switch{SQLITE_DBCONFIG_DQS_DDL, 0}, Switch{SQLITE_DBCONFIG_DEFENSIVE, 1},
          Switch{SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0}, Switch{SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0}}) {
        if (const int code = sqlite3_db_config(connection_.Handle(), each.option, each.on, nullptr);
            code != SQLITE_OK) {
            ThrowStoreError(connection_.Handle(), code, {});
        }
    }
    // Memory mapping would turn a failing share into a crash of the program instead of an error.
    connection_.Execute("PRAGMA temp_store = MEMORY; PRAGMA mmap_size = 0; PRAGMA cell_size_check = ON");
}

void FileStore::SetWriting() {
    connection_.Execute("PRAGMA synchronous = FULL");
    // A write-ahead log needs all users on one machine, and the file may lie on a share. Leaving that mode needs the
    // file for oneself: while others have it open, it stays as it is.
    const int code = sqlite3_exec(connection_.Handle(), "PRAGMA journal_mode = DELETE", nullptr, nullptr, nullptr);
    if (code != SQLITE_OK && !IsLocked(code)) {
        ThrowStoreError(connection_.Handle(), code, {});
    }
}

std::unique_ptr<records::StoreStatement> FileStore::Prepare(const QByteArray& sql, const QString& callerText) {
    return std::make_unique<Statement>(connection_.Handle(), sql, callerText, onDamage_);
}

void FileStore::Run(Statement& statement, const QString& callerText) {
    try {
        statement.Step(callerText);
    } catch (...) {
        statement.Reset();
        throw;
    }
    statement.Reset();
}

void FileStore::Begin(TransactionKind kind, const QString& callerText) {
    switch (kind) {
    case TransactionKind::Read:
        return Run(beginReading_, callerText);
    case TransactionKind::Write:
        return Run(beginWriting_, callerText);
    case TransactionKind::Nested:
        return Run(beginNested_, callerText);
    }
}

void FileStore::Commit(TransactionKind kind, const QString& callerText) {
    Run(kind == TransactionKind::Nested ? commitNested_ : commit_, callerText);
}

void FileStore::Rollback(TransactionKind kind) {
    if (kind == TransactionKind::Nested) {
        Run(rollbackNested_, {});
        Run(commitNested_, {});
    } else {
        Run(rollback_, {});
    }
}

void FileStore::EndReading() noexcept {
    sqlite3* const store = connection_.Handle();
    for (sqlite3_stmt* each = sqlite3_next_stmt(store, nullptr); each != nullptr;
         each = sqlite3_next_stmt(store, each)) {
        if (sqlite3_stmt_busy(each) != 0) {
            sqlite3_reset(each);
        }
    }
}

qint64 FileStore::SchemaVersion() {
    Statement version = Own("PRAGMA schema_version");
    version.Step({});
    return version.Integer(0);
}

void FileStore::AddTable(const TableDefinition& table) {
    connection_.Execute(CreateTableSql(table));
    for (const IndexDefinition& index : table.indexes) {
        connection_.Execute(CreateIndexSql(table, index));
    }
}

std::vector<CatalogTable> FileStore::ReadTables() {
    std::vector<CatalogTable> tables;
    Statement row = Own(columnsText);
    while (row.Step({})) {
        const QString name = QString::fromUtf8(row.Text(0));
        if (tables.empty() || name != tables.back().name) {
            tables.push_back({name, {}, {}});
        }
        CatalogTable& table = tables.back();
        // The column's place in the key, from 1.
        if (const auto place = static_cast<std::size_t>(row.Integer(3)); place > 0) {
            table.key.resize(std::max(table.key.size(), place));
            table.key[place - 1] = static_cast<int>(table.columns.size());
        }
        table.columns.push_back({QString::fromUtf8(row.Text(1)), DeclaredType(QString::fromUtf8(row.Text(2)))});
    }
    return tables;
}

// Short, growing waits: writers that come and go quickly leave only short gaps, which a waiter that sleeps long at a
// time keeps missing until its patience is gone.
int FileStore::WaitForLock(void* self, int attempts) {
    auto& store = *static_cast<FileStore*>(self);
    const auto now = std::chrono::steady_clock::now();
    if (attempts == 0) {
        store.deadline_ = now + store.patience_;
    }
    if (now >= store.deadline_) {
        return 0;
    }
    std::this_thread::sleep_for(std::min<std::chrono::milliseconds>(1ms + attempts * 1ms / 2, 10ms));
    return 1;
}

} // namespace velmora::engine::sqlite
