#include "engine/sqlite/WriteScope.h"

namespace velmora::engine::sqlite {

WriteScope::WriteScope(Session& session, const QString& sql)
    : session_(session), sql_(sql), nested_(session.InTransaction()) {
    // After some failures (a full disk, for one) the store takes the whole transaction back by itself. What follows
    // must not be kept on its own.
    if (nested_ && session_.Store().InAutocommit()) {
        throw EngineError(EngineErrorNumber::Failed,
                          QStringLiteral("The transaction was taken back after a failure; start it again."), sql);
    }
    session_.Statements().Run(nested_ ? "SAVEPOINT change" : "BEGIN IMMEDIATE", sql_);
}

WriteScope::~WriteScope() {
    if (!open_ || session_.Store().InAutocommit()) {
        return;
    }
    try {
        if (nested_) {
            session_.Statements().Run("ROLLBACK TO change");
            session_.Statements().Run("RELEASE change");
        } else {
            session_.Statements().Run("ROLLBACK");
        }
    } catch (const std::exception&) {
        // The error that led here is the one to report; the journal restores the file.
    }
}

void WriteScope::Commit() {
    session_.Statements().Run(nested_ ? "RELEASE change" : "COMMIT", sql_);
    open_ = false;
}

} // namespace velmora::engine::sqlite
