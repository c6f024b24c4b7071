#include "engine/sqlite/SqliteQueryDef.h"

#include "engine/sqlite/SnapshotRecordset.h"
#include "engine/sqlite/StoredValue.h"
#include "engine/sqlite/UpdatableRecordset.h"
#include "engine/sqlite/WriteScope.h"

#include <sqlite3.h>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::sqlite {

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
    for (const dialect::ParameterInfo& parameter : input.plan->compiled.parameters) {
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

} // namespace

std::unique_ptr<Recordset> OpenOn(Session& session, std::unique_ptr<RecordsetStorage> storage, RecordsetKind kind,
                                  const std::vector<NamedValue>& parameters) {
    const bool toChange = kind == RecordsetKind::Updatable;
    const Plan& plan = session.PlanFor(storage->input, toChange ? dialect::Purpose::Update : dialect::Purpose::Read);
    if (plan.IsAction()) {
        throw EngineError(EngineErrorNumber::InvalidArgument,
                          u"The query changes records and returns none; execute it instead of opening it."_s,
                          storage->input.text);
    }
    FillParameters(storage->input, parameters);
    if (!toChange) {
        return std::make_unique<SnapshotRecordset>(session, std::move(storage),
                                                   u"The recordset was opened as a snapshot and cannot be changed."_s);
    }
    if (!plan.compiled.updatable) {
        return std::make_unique<SnapshotRecordset>(
            session, std::move(storage),
            u"The recordset cannot be changed: its rows do not stand for single records of tables."_s);
    }
    return std::make_unique<UpdatableRecordset>(session, std::move(storage));
}

qint64 RunAction(Session& session, QueryInput& input, const std::vector<NamedValue>& parameters) {
    const Plan& plan = session.PlanFor(input, dialect::Purpose::Read);
    if (!plan.IsAction()) {
        throw EngineError(EngineErrorNumber::InvalidArgument,
                          u"The query returns records and changes none; open it instead of executing it."_s,
                          input.text);
    }
    FillParameters(input, parameters);
    WriteScope scope(session, input.text);
    {
        ValueBinder binder;
        Statement statement = plan.statement->Acquire(input.text);
        binder.Bind(statement, plan.compiled.bindings, input);
        statement.Step(input.text);
    }
    const qint64 rows = sqlite3_changes64(session.Store().Handle());
    session.NoteChange(plan.compiled.target);
    scope.Commit();
    return rows;
}

SqliteQueryDef::SqliteQueryDef(Session& session, const QString& text)
    : keepsSession_(session.shared_from_this()), session_(session) {
    input_.Assign(text);
    session_.OnCurrentSchema([this] { session_.PlanFor(input_, dialect::Purpose::Read); });
}

void SqliteQueryDef::SetParameter(QStringView name, const Value& value) {
    const auto& known = input_.plan->compiled.parameters;
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
                          input_.text);
    }
    const FieldType type = found->declared ? found->type : FieldType::Unknown;
    const auto stored = StoredValue::From(value, type);
    if (!stored) {
        throw EngineError(
            EngineErrorNumber::TypeMismatch,
            u"The parameter \"%1\" takes %2; \"%3\" is none."_s.arg(found->name, DescribeValues(type), value.ToText()),
            input_.text);
    }
    const Value converted = found->declared ? stored->AsField(type).ToValue() : value;
    values_.erase(
        std::remove_if(values_.begin(), values_.end(),
                       [name](const NamedValue& each) { return each.name.compare(name, Qt::CaseInsensitive) == 0; }),
        values_.end());
    values_.push_back({found->name, converted});
}

std::vector<QueryDef::ParameterDescription> SqliteQueryDef::Parameters() const {
    std::vector<QueryDef::ParameterDescription> descriptions;
    for (const dialect::ParameterInfo& parameter : input_.plan->compiled.parameters) {
        descriptions.push_back({parameter.name, parameter.type, parameter.declared});
    }
    return descriptions;
}

bool SqliteQueryDef::IsAction() const {
    return input_.plan->IsAction();
}

std::unique_ptr<Recordset> SqliteQueryDef::OpenRecordset(RecordsetKind kind) {
    return session_.OnCurrentSchema([&] {
        auto storage = session_.TakeStorage();
        storage->input.Assign(input_.text);
        return OpenOn(session_, std::move(storage), kind, values_);
    });
}

qint64 SqliteQueryDef::Execute() {
    return session_.OnCurrentSchema([this] { return RunAction(session_, input_, values_); });
}

} // namespace velmora::engine::sqlite
