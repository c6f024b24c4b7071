#include "engine/sqlite/Connection.h"

#include "engine/sqlite/StoreError.h"

#include <QFile>

#include <sqlite3.h>

#include <algorithm>
#include <thread>

namespace velmora::engine::sqlite {

using namespace std::chrono_literals;

Connection::Connection(const QString& path, const OpenOptions& options) : patience_(options.busyMilliseconds) {
    // One thread uses a connection, so it needs no mutex; without CREATE a missing file is an error.
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
    const int code = sqlite3_open_v2(QFile::encodeName(path).constData(), &handle_, flags, nullptr);
    try {
        Check(code);
        Configure();
    } catch (...) {
        sqlite3_close_v2(handle_);
        throw;
    }
}

Connection::~Connection() {
    sqlite3_close_v2(handle_);
}

void Connection::Configure() {
    sqlite3_busy_handler(handle_, &Connection::WaitForLock, this);
    // A misspelt column in double quotes must not become a text; a file from elsewhere must not run code.
    struct Switch {
        int option;
        int on;
    };
    for (const Switch& each :
         {Switch{SQLITE_DBCONFIG_DQS_DML, 0}, Switch{SQLITE_DBCONFIG_DQS_DDL, 0}, Switch{SQLITE_DBCONFIG_DEFENSIVE, 1},
          Switch{SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0}, Switch{SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0}}) {
        Check(sqlite3_db_config(handle_, each.option, each.on, nullptr));
    }
    // Memory mapping would turn a failing share into a crash of the program instead of an error.
    Run("PRAGMA temp_store = MEMORY; PRAGMA mmap_size = 0; PRAGMA cell_size_check = ON");
}

void Connection::SetWriting() {
    Run("PRAGMA synchronous = FULL");
    // A write-ahead log needs all users on one machine, and the file may lie on a share. Leaving that mode needs the
    // file for oneself: while others have it open, it stays as it is.
    const int code = sqlite3_exec(handle_, "PRAGMA journal_mode = DELETE", nullptr, nullptr, nullptr);
    if (!IsLocked(code)) {
        Check(code);
    }
}

void Connection::Fail(int code, const QString& sql) const {
    if (IsDamage(code) && onDamage_) {
        onDamage_();
    }
    ThrowStoreError(handle_, code, sql);
}

void Connection::Run(const char* sql) const {
    Check(sqlite3_exec(handle_, sql, nullptr, nullptr, nullptr), QString::fromUtf8(sql));
}

qint64 Connection::Number(const char* sql) const {
    sqlite3_stmt* statement = nullptr;
    Check(sqlite3_prepare_v2(handle_, sql, -1, &statement, nullptr), QString::fromUtf8(sql));
    const int code = sqlite3_step(statement);
    const qint64 number = code == SQLITE_ROW ? sqlite3_column_int64(statement, 0) : 0;
    sqlite3_finalize(statement);
    if (code != SQLITE_ROW && code != SQLITE_DONE) {
        Fail(code, QString::fromUtf8(sql));
    }
    return number;
}

bool Connection::InAutocommit() const {
    return sqlite3_get_autocommit(handle_) != 0;
}

// Short, growing waits: writers that come and go quickly leave only short gaps, which a waiter that sleeps long at a
// time keeps missing until its patience is gone.
int Connection::WaitForLock(void* self, int attempts) {
    auto& connection = *static_cast<Connection*>(self);
    const auto now = std::chrono::steady_clock::now();
    if (attempts == 0) {
        connection.deadline_ = now + connection.patience_;
    }
    if (now >= connection.deadline_) {
        return 0;
    }
    std::this_thread::sleep_for(std::min<std::chrono::milliseconds>(1ms + attempts * 1ms / 2, 10ms));
    return 1;
}

} // namespace velmora::engine::sqlite
