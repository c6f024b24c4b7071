#include "engine/records/WriteScope.h"

namespace velmora::engine::records {

WriteScope::WriteScope(Session& session, const QString& sql)
    : session_(session), sql_(sql), nested_(session.InTransaction()) {
    // After some failures (a full disk, for one) the store takes the whole transaction back by itself. What follows
    // must not be kept on its own.
    if (nested_ && !session_.Connection().InTransaction()) {
        throw EngineError(EngineErrorNumber::Failed,
                          QStringLiteral("The transaction was taken back after a failure; start it again."), sql);
    }
    session_.StopReading();
    if (nested_) {
        session_.Statements().Run("SAVEPOINT change", sql_);
    } else {
        session_.Connection().Begin(TransactionKind::Write, sql_);
    }
}

WriteScope::~WriteScope() {
    if (!open_ || !session_.Connection().InTransaction()) {
        return;
    }
    try {
        if (nested_) {
            session_.Statements().Run("ROLLBACK TO change", {});
            session_.Statements().Run("RELEASE change", {});
        } else {
            session_.Connection().Rollback();
        }
    } catch (const std::exception&) {
        // The error that led here is the one to report; the store takes the change back with the connection.
    }
}

void WriteScope::Commit() {
    if (nested_) {
        session_.Statements().Run("RELEASE change", sql_);
    } else {
        session_.Connection().Commit(sql_);
    }
    open_ = false;
}

} // namespace velmora::engine::records
