#include "engine/records/SessionDatabase.h"

#include "engine/records/CursorRecordset.h"
#include "engine/records/StoredValue.h"
#include "engine/records/UpdatableRecordset.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::records {

namespace {

const NamedValue* FindValue(const std::vector<NamedValue>& values, QStringView name) {
    const auto found = std::find_if(values.begin(), values.end(), [name](const NamedValue& value) {
        return value.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == values.end() ? nullptr : &*found;
}

// Puts the values in the plan's order. Throws MissingParameter naming all that have none.
void FillParameters(QueryInput& input, const std::vector<NamedValue>& values) {
    QStringList missing;
    input.parameters.clear();
    for (const dialect::ParameterInfo& parameter : input.query->compiled.parameters) {
        const NamedValue* value = FindValue(values, parameter.name);
        if (value == nullptr) {
            missing.append(parameter.name);
        } else {
            input.parameters.push_back(value->value);
        }
    }
    if (!missing.isEmpty()) {
        throw EngineError(EngineErrorNumber::MissingParameter,
                          u"Too few parameters. Expected %1: %2."_s.arg(missing.size()).arg(missing.join(u", "_s)),
                          input.text);
    }
}

// Opens the recordset of a text with these parameters.
std::unique_ptr<Recordset> OpenRecords(Session& session, QStringView text, RecordsetKind kind,
                                       const std::vector<NamedValue>& parameters) {
    return session.OnCurrentSchema([&]() -> std::unique_ptr<Recordset> {
        const bool toChange = kind == RecordsetKind::Updatable;
        QueryInput input{text.toString(), {}, {}, {}};
        const CompiledQuery& query =
            session.Compile(input, toChange ? dialect::Purpose::Update : dialect::Purpose::Read);
        if (query.IsAction()) {
            throw EngineError(EngineErrorNumber::InvalidArgument,
                              u"The query changes records and returns none; execute it instead of opening it."_s,
                              input.text);
        }
        FillParameters(input, parameters);
        if (toChange && query.compiled.updatable) {
            return std::make_unique<UpdatableRecordset>(session, std::move(input));
        }
        return std::make_unique<SnapshotRecordset>(
            session, std::move(input),
            toChange ? u"The recordset cannot be changed: its rows do not stand for single records of tables."_s
                     : u"The recordset was opened as a snapshot and cannot be changed."_s);
    });
}

// Runs a text as an action in a transaction of its own; returns the rows affected.
qint64 RunAction(Session& session, QStringView text, const std::vector<NamedValue>& parameters) {
    return session.OnCurrentSchema([&] {
        QueryInput input{text.toString(), {}, {}, {}};
        const CompiledQuery& query = session.Compile(input, dialect::Purpose::Read);
        if (!query.IsAction()) {
            throw EngineError(EngineErrorNumber::InvalidArgument,
                              u"The query returns records and changes none; open it instead of executing it."_s,
                              input.text);
        }
        FillParameters(input, parameters);
        WriteScope scope(session, input.text);
        session.Start(input)->Step(input.text);
        const qint64 rows = session.Connection().RowsChanged();
        session.NoteChange(query.compiled.target);
        scope.Commit();
        return rows;
    });
}

class SessionQuery final : public QueryDef {
public:
    // Throws for a text that does not compile.
    SessionQuery(Session& session, const QString& text);

    void SetParameter(QStringView name, const Value& value) override;
    std::vector<ParameterDescription> Parameters() const override { return query_->compiled.parameters; }
    bool IsAction() const override { return query_->IsAction(); }
    std::unique_ptr<Recordset> OpenRecordset(RecordsetKind kind) override;
    qint64 Execute() override;

private:
    const std::shared_ptr<Session> session_;
    const QString text_;
    std::shared_ptr<const CompiledQuery> query_;
    std::vector<NamedValue> values_;
};

SessionQuery::SessionQuery(Session& session, const QString& text) : session_(session.shared_from_this()), text_(text) {
    session.OnCurrentSchema([&] {
        QueryInput input{text_, {}, {}, {}};
        session.Compile(input, dialect::Purpose::Read);
        query_ = std::move(input.query);
    });
}

void SessionQuery::SetParameter(QStringView name, const Value& value) {
    const auto& known = query_->compiled.parameters;
    const auto found = std::find_if(known.begin(), known.end(), [name](const dialect::ParameterInfo& parameter) {
        return parameter.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    if (found == known.end()) {
        QStringList names;
        for (const dialect::ParameterInfo& parameter : known) {
            names.append(parameter.name);
        }
        throw EngineError(EngineErrorNumber::UnknownItem,
                          u"The query has no parameter named \"%1\"; it has: %2."_s.arg(
                              name, names.isEmpty() ? u"none"_s : names.join(u", "_s)),
                          text_);
    }
    const FieldType type = found->declared ? found->type : FieldType::Unknown;
    const auto stored = StoredValue::From(value, type);
    if (!stored) {
        throw EngineError(
            EngineErrorNumber::TypeMismatch,
            u"The parameter \"%1\" takes %2; \"%3\" is none."_s.arg(found->name, DescribeValues(type), value.ToText()),
            text_);
    }
    const Value converted = found->declared ? stored->AsField(type).ToValue() : value;
    std::erase_if(values_,
                  [name](const NamedValue& each) { return each.name.compare(name, Qt::CaseInsensitive) == 0; });
    values_.push_back({found->name, converted});
}

std::unique_ptr<Recordset> SessionQuery::OpenRecordset(RecordsetKind kind) {
    return OpenRecords(*session_, text_, kind, values_);
}

qint64 SessionQuery::Execute() {
    return RunAction(*session_, text_, values_);
}

} // namespace

std::unique_ptr<Recordset> SessionDatabase::OpenRecordset(QStringView source, RecordsetKind kind) {
    return OpenRecords(*session_, source, kind, {});
}

qint64 SessionDatabase::Execute(QStringView sql) {
    return RunAction(*session_, sql, {});
}

std::unique_ptr<QueryDef> SessionDatabase::OpenQueryDef(QStringView name) {
    return CreateQueryDef(session_->OnCurrentSchema([&] {
        const QString* text = session_->Catalog().FindQuery(name);
        if (text == nullptr) {
            throw EngineError(EngineErrorNumber::UnknownTable,
                              u"There is no stored query named \"%1\" in the database."_s.arg(name));
        }
        return *text;
    }));
}

std::unique_ptr<QueryDef> SessionDatabase::CreateQueryDef(const QString& sql) {
    return std::make_unique<SessionQuery>(*session_, sql);
}

void SessionDatabase::AddTable(const TableDefinition& table) {
    session_->Connection().AddTable(table);
    session_->Refresh();
}

void SessionDatabase::Idle(IdleOption option) {
    switch (option) {
    case IdleOption::FreeLocks:
        session_->FreeLocks();
        break;
    case IdleOption::RefreshCache:
        session_->Refresh();
        break;
    }
}

} // namespace velmora::engine::records
