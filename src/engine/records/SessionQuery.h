#pragma once

#include "engine/records/Session.h"

namespace velmora::engine::records {

// Opens the recordset of a text with these parameters.
std::unique_ptr<Recordset> OpenRecords(Session& session, QStringView text, RecordsetKind kind,
                                       const std::vector<NamedValue>& parameters);
// Runs a text as an action in a transaction of its own; returns the rows affected.
qint64 RunAction(Session& session, QStringView text, const std::vector<NamedValue>& parameters);

class SessionQuery final : public QueryDef {
public:
    // Throws for a text that does not compile.
    SessionQuery(Session& session, const QString& text);

    void SetParameter(QStringView name, const Value& value) override;
    std::vector<ParameterDescription> Parameters() const override;
    bool IsAction() const override { return query_->IsAction(); }
    std::unique_ptr<Recordset> OpenRecordset(RecordsetKind kind) override;
    qint64 Execute() override;

private:
    const std::shared_ptr<Session> session_;
    const QString text_;
    std::shared_ptr<const CompiledQuery> query_;
    std::vector<NamedValue> values_;
};

} // namespace velmora::engine::records
