#include "engine/Database.h"

namespace velmora::engine {

QueryDef::QueryDef(std::unique_ptr<Implementation> implementation) : implementation_(std::move(implementation)) {}
QueryDef::~QueryDef() = default;
QueryDef::QueryDef(QueryDef&&) noexcept = default;
QueryDef& QueryDef::operator=(QueryDef&&) noexcept = default;

void QueryDef::SetParameter(QStringView name, const Value& value) {
    implementation_->SetParameter(name, value);
}

std::vector<QueryDef::ParameterDescription> QueryDef::Parameters() const {
    return implementation_->Parameters();
}

bool QueryDef::IsAction() const {
    return implementation_->IsAction();
}

std::unique_ptr<Recordset> QueryDef::OpenRecordset(RecordsetKind kind) {
    return implementation_->OpenRecordset(kind);
}

qint64 QueryDef::Execute() {
    return implementation_->Execute();
}

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
