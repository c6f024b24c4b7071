#include "engine/records/Session.h"

namespace velmora::engine::records {

const SchemaCatalog& Session::Catalog() {
    catalog_.Read();
    return catalog_;
}

const CompiledQuery& Session::Compile(QueryInput& input, dialect::Purpose purpose) {
    QueryCache& cache = purpose == dialect::Purpose::Read ? toRead_ : toUpdate_;
    input.query = cache.Find(input.text, Catalog(), input.literals);
    return *input.query;
}

StatementCache::Lease Session::Start(const QueryInput& input) {
    const dialect::CompiledStatement& compiled = input.query->compiled;
    auto statement = statements_.Acquire(compiled.sql, input.text);
    BindValues(*statement, compiled.bindings, input);
    return statement;
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
    if (!inTransaction_) {
        connection_->EndReading();
    }
}

bool Session::Refresh() {
    const bool changed = catalog_.Refresh();
    if (changed) {
        toRead_.Clear();
        toUpdate_.Clear();
        statements_.Clear();
    }
    return changed;
}

void Session::NoteChange(QStringView table) {
    if (table.compare(storedQueryTable, Qt::CaseInsensitive) == 0) {
        catalog_.ForgetQueries();
        toRead_.Clear();
        toUpdate_.Clear();
        queriesTouched_ = true;
    }
}

void Session::Begin() {
    if (inTransaction_) {
        throw EngineError(EngineErrorNumber::InvalidArgument,
                          QStringLiteral("A transaction is open already; transactions do not nest."));
    }
    StopReading();
    connection_->Begin(TransactionKind::Write, {});
    inTransaction_ = true;
    queriesTouched_ = false;
}

void Session::Commit() {
    if (!connection_->InTransaction()) {
        throw EngineError(EngineErrorNumber::Failed,
                          QStringLiteral("The changes were taken back after a failure; nothing was kept."));
    }
    connection_->Commit(TransactionKind::Write, {});
    inTransaction_ = false;
}

void Session::Rollback() noexcept {
    inTransaction_ = false;
    try {
        if (connection_->InTransaction()) {
            connection_->Rollback(TransactionKind::Write);
        }
        if (queriesTouched_) {
            NoteChange(storedQueryTable);
        }
    } catch (const std::exception&) {
        // A rollback that fails leaves the changes to the store, which takes them back with the connection.
    }
}

void Session::BeginReading() {
    if (readingScopes_ == 0 && !connection_->InTransaction()) {
        connection_->Begin(TransactionKind::Read, {});
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
    if (std::exchange(holdsReadLock_, false) && connection_->InTransaction()) {
        connection_->Commit(TransactionKind::Read, {});
    }
}

WriteScope::WriteScope(Session& session, const QString& sql)
    : session_(session), sql_(sql), kind_(session.InTransaction() ? TransactionKind::Nested : TransactionKind::Write) {
    // After some failures (a full disk, for one) the store takes the whole transaction back by itself. What follows
    // must not be kept on its own.
    if (kind_ == TransactionKind::Nested && !session_.Connection().InTransaction()) {
        throw EngineError(EngineErrorNumber::Failed,
                          QStringLiteral("The transaction was taken back after a failure; start it again."), sql);
    }
    session_.StopReading();
    session_.Connection().Begin(kind_, sql_);
}

WriteScope::~WriteScope() {
    if (!open_ || !session_.Connection().InTransaction()) {
        return;
    }
    try {
        session_.Connection().Rollback(kind_);
    } catch (const std::exception&) {
        // The error that led here is the one to report; the store takes the change back with the connection.
    }
}

void WriteScope::Commit() {
    session_.Connection().Commit(kind_, sql_);
    open_ = false;
}

} // namespace velmora::engine::records
