#pragma once

#include "engine/records/Session.h"

namespace velmora::engine::records {

// A database over a session with its store.
class SessionDatabase final : public Database {
public:
    SessionDatabase(QString path, std::unique_ptr<StoreConnection> connection)
        : path_(std::move(path)), session_(std::make_shared<Session>(std::move(connection))) {}

    std::unique_ptr<Recordset> OpenRecordset(QStringView source, RecordsetKind kind) override;
    qint64 Execute(QStringView sql) override;
    std::unique_ptr<QueryDef> OpenQueryDef(QStringView name) override;
    std::unique_ptr<QueryDef> CreateQueryDef(const QString& sql) override;
    QStringList QueryNames() override { return session_->Catalog().QueryNames(); }
    void AddTable(const TableDefinition& table) override;
    void Idle(IdleOption option) override;
    const Catalog& Schema() override { return session_->Catalog(); }
    const QString& Location() const override { return path_; }
    void BeginTransaction() override { session_->Begin(); }
    void CommitTransaction() override { session_->Commit(); }
    void RollbackTransaction() noexcept override { session_->Rollback(); }
    void BeginReading() override { session_->BeginReading(); }
    void EndReading() noexcept override { session_->EndReading(); }

private:
    QString path_;
    std::shared_ptr<Session> session_;
};

} // namespace velmora::engine::records
