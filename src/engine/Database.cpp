#include "engine/Database.h"

namespace velmora::engine {

Transaction::Transaction(Database& database) : database_(&database) {
    database.BeginTransaction();
}

Transaction::~Transaction() {
    if (database_ != nullptr) {
        database_->RollbackTransaction();
    }
}

void Transaction::Commit() {
    if (database_ == nullptr) {
        throw EngineError(EngineErrorNumber::InvalidArgument,
                          QStringLiteral("The transaction has been committed already."));
    }
    database_->CommitTransaction();
    database_ = nullptr;
}

} // namespace velmora::engine
