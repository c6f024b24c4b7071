#include "engine/sqlite/Session.h"

#include "engine/sqlite/Functions.h"

#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <ctime>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::sqlite {

namespace {

// A report that reads ahead has some dozens of small sets open at a time.
constexpr std::size_t idleStorageKept = 64;

DateTime WallClock() {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::tm local = {};
    localtime_r(&seconds, &local);
    // A leap second, which the wall clock cannot show, counts as the second before.
    const auto moment = MakeDateTime({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                                      local.tm_min, std::min(local.tm_sec, 59)});
    return moment.value_or(DateTime());
}

} // namespace

Session::Session(Presence presence, const QString& path, const OpenOptions& options)
    : presence_(std::move(presence)), connection_(path, options), statements_(connection_), catalog_(connection_) {
    RegisterFunctions(connection_.Handle(), options.now ? options.now : WallClock);
}

const Plan& Session::PlanFor(QueryInput& input, dialect::Purpose purpose) {
    input.plan = plans_.Find(connection_, catalog_, input.text, input.shape, purpose);
    return *input.plan;
}

bool Session::MayBeOutdated(EngineErrorNumber number) {
    switch (number) {
    case EngineErrorNumber::Failed:
    case EngineErrorNumber::UnknownTable:
    case EngineErrorNumber::UnknownItem:
    case EngineErrorNumber::MissingParameter:
    case EngineErrorNumber::AmbiguousField:
        return true;
    default:
        return false;
    }
}

void Session::FreeLocks() {
    if (inTransaction_) {
        return;
    }
    sqlite3* store = connection_.Handle();
    for (sqlite3_stmt* each = sqlite3_next_stmt(store, nullptr); each != nullptr;
         each = sqlite3_next_stmt(store, each)) {
        if (sqlite3_stmt_busy(each) != 0) {
            sqlite3_reset(each);
        }
    }
}

bool Session::Refresh() {
    const bool changed = catalog_.Refresh();
    if (changed) {
        plans_.Clear();
        statements_.Clear();
    }
    return changed;
}

void Session::NoteChange(QStringView table) {
    if (table.compare(storedQueryTable, Qt::CaseInsensitive) == 0) {
        catalog_.ForgetQueries();
        plans_.Clear();
        queriesTouched_ = true;
    }
}

void Session::Begin() {
    if (inTransaction_) {
        throw EngineError(EngineErrorNumber::InvalidArgument,
                          QStringLiteral("A transaction is open already; transactions do not nest."));
    }
    StopReading();
    statements_.Run("BEGIN IMMEDIATE"_ba);
    inTransaction_ = true;
    queriesTouched_ = false;
}

void Session::Commit() {
    if (connection_.InAutocommit()) {
        throw EngineError(EngineErrorNumber::Failed,
                          QStringLiteral("The changes were taken back after a failure; nothing was kept."));
    }
    statements_.Run("COMMIT"_ba);
    inTransaction_ = false;
}

void Session::Rollback() noexcept {
    inTransaction_ = false;
    try {
        if (!connection_.InAutocommit()) {
            statements_.Run("ROLLBACK"_ba);
        }
        if (queriesTouched_) {
            NoteChange(storedQueryTable);
        }
    } catch (const std::exception&) {
        // A rollback that fails leaves the journal in place, from which the next reader restores the file.
    }
}

void Session::BeginReading() {
    if (readingScopes_ == 0 && connection_.InAutocommit()) {
        statements_.Run("BEGIN");
        holdsReadLock_ = true;
    }
    ++readingScopes_;
}

void Session::EndReading() noexcept {
    --readingScopes_;
    if (readingScopes_ > 0) {
        return;
    }
    try {
        StopReading();
    } catch (const std::exception&) {
        // What was only read has nothing to lose; the next statement meets the failure again.
    }
}

void Session::StopReading() {
    if (std::exchange(holdsReadLock_, false) && !connection_.InAutocommit()) {
        statements_.Run("COMMIT");
    }
}

std::unique_ptr<RecordsetStorage> Session::TakeStorage() {
    if (idleStorage_.empty()) {
        idleStorage_.reserve(idleStorageKept);
        return std::make_unique<RecordsetStorage>();
    }
    auto storage = std::move(idleStorage_.back());
    idleStorage_.pop_back();
    return storage;
}

void Session::GiveBack(std::unique_ptr<RecordsetStorage> storage) noexcept {
    if (storage != nullptr && idleStorage_.size() < idleStorageKept) {
        storage->input.plan.reset();
        storage->input.parameters.clear();
        storage->rows.Reset(0);
        storage->keys.Reset(0);
        idleStorage_.push_back(std::move(storage));
    }
}

} // namespace velmora::engine::sqlite
