#pragma once

#include "engine/sqlite/Session.h"

namespace velmora::engine::sqlite {

// Opens the recordset of the storage's text, whose parameters are filled in.
std::unique_ptr<Recordset> OpenOn(Session& session, std::unique_ptr<RecordsetStorage> storage, RecordsetKind kind,
                                  const std::vector<NamedValue>& parameters);
// Runs the text as an action in a transaction of its own; returns the rows affected.
qint64 RunAction(Session& session, QueryInput& input, const std::vector<NamedValue>& parameters);

class SqliteQueryDef final : public QueryDef {
public:
    // Throws for a text that does not compile.
    SqliteQueryDef(Session& session, const QString& text);

    void SetParameter(QStringView name, const Value& value) override;
    std::vector<QueryDef::ParameterDescription> Parameters() const override;
    bool IsAction() const override;
    std::unique_ptr<Recordset> OpenRecordset(RecordsetKind kind) override;
    qint64 Execute() override;

private:
    const std::shared_ptr<Session> keepsSession_;
    Session& session_;
    QueryInput input_;
    std::vector<NamedValue> values_;
};

} // namespace velmora::engine::sqlite
