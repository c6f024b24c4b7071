#pragma once

#include "engine/Database.h"
#include "engine/sqlite/Session.h"

namespace velmora::engine::sqlite {

class SqliteDatabase final : public Database {
public:
    SqliteDatabase(const QString& path, const OpenOptions& options);

    std::unique_ptr<Recordset> OpenRecordset(QStringView source, RecordsetKind kind) override;
    qint64 Execute(QStringView sql) override;
    std::unique_ptr<QueryDef> OpenQueryDef(QStringView name) override;
    std::unique_ptr<QueryDef> CreateQueryDef(const QString& sql) override;
    QStringList QueryNames() const override { return session_->Catalog().QueryNames(); }
    void Idle(IdleOption option) override;
    const Catalog& Schema() const override { return session_->Catalog(); }
    const QString& Path() const override { return path_; }
    void BeginTransaction() override { session_->Begin(); }
    void CommitTransaction() override { session_->Commit(); }
    void RollbackTransaction() noexcept override { session_->Rollback(); }
    void BeginReading() override { session_->BeginReading(); }
    void EndReading() noexcept override { session_->EndReading(); }

private:
    QString path_;
    std::shared_ptr<Session> session_;
};

} // namespace velmora::engine::sqlite
