#include "bench/BareStore.h"

#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>

namespace velmora::bench {

BareStore::BareStore(const QString& path) {
    Check(sqlite3_open_v2(path.toUtf8().constData(), &handle_,
                          SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr));
    Run("PRAGMA temp_store = MEMORY; PRAGMA mmap_size = 0; PRAGMA cell_size_check = ON; PRAGMA synchronous = OFF;"
        "PRAGMA journal_mode = DELETE");
}

BareStore::~BareStore() {
    while (sqlite3_stmt* statement = sqlite3_next_stmt(handle_, nullptr)) {
        sqlite3_finalize(statement);
    }
    sqlite3_close(handle_);
}

void BareStore::Check(int code) {
    if (code != SQLITE_OK) {
        std::fprintf(stderr, "The store failed: %s\n", sqlite3_errmsg(handle_));
        std::exit(1);
    }
}

void BareStore::Run(const std::string& sql) {
    Check(sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, nullptr));
}

sqlite3_stmt* BareStore::Prepare(const char* sql) {
    sqlite3_stmt* statement = nullptr;
    Check(sqlite3_prepare_v3(handle_, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr));
    return statement;
}

bool BareStore::Step(sqlite3_stmt* statement) {
    const int code = sqlite3_step(statement);
    if (code != SQLITE_ROW && code != SQLITE_DONE) {
        Check(code);
    }
    return code == SQLITE_ROW;
}

} // namespace velmora::bench
