#include "engine/dialect/Emitter.h"

#include "engine/EngineError.h"

namespace velmora::engine::dialect {

namespace {

// The store's parser holds at most 100 symbols at once; some are needed around the text.
constexpr int maximumPending = 90;

} // namespace

Emitter::Emitted Emitter::Emit(const Statement& statement, bool keys) {
    Emitter emitter;
    return emitter.Finish(emitter.EmitStatement(statement, keys));
}

Emitter::Emitted Emitter::EmitReread(const Query& query) {
    Emitter emitter;
    const SelectOptions options{Use::Result, true, true, false, nullptr};
    QByteArray sql = emitter.EmitQuery(query, options).text;
    size_t number = emitter.bindings_.size();
    const char* joint = " WHERE ";
    for (const SqlText& key : KeyColumns(query.selects.front().origins)) {
        sql += joint + key.text + " = ?" + QByteArray::number(static_cast<qulonglong>(++number));
        joint = " AND ";
    }
    return emitter.Finish(std::move(sql));
}

Emitter::Emitted Emitter::Finish(QByteArray sql) {
    return {std::move(sql), std::move(bindings_), literalsShapeText_};
}

QByteArray Emitter::Bind(Binding binding) {
    bindings_.push_back(std::move(binding));
    return '?' + QByteArray::number(static_cast<qulonglong>(bindings_.size()));
}

QByteArray Emitter::EmitStatement(const Statement& statement, bool keys) {
    switch (statement.kind) {
    case Statement::Kind::Update:
        return EmitUpdate(statement);
    case Statement::Kind::Insert:
        return EmitInsert(statement);
    case Statement::Kind::Delete:
        return EmitDelete(statement);
    case Statement::Kind::Select:
        break;
    }
    const SqlText text = EmitQuery(*statement.query, {Use::Result, keys, false, false, nullptr});
    CheckDepth(text);
    return text.text;
}

void Emitter::CheckDepth(const SqlText& text) {
    if (text.pending > maximumPending) {
        throw EngineError(EngineErrorNumber::Syntax,
                          QStringLiteral("The text nests too deeply; take parts of it into stored queries."));
    }
}

namespace {

QByteArray TargetText(const Source& target) {
    QByteArray text = Quoted(target.table->name);
    if (target.sqlAlias != target.table->name) {
        text += " AS " + Quoted(target.sqlAlias);
    }
    return text;
}

} // namespace

QByteArray Emitter::EmitUpdate(const Statement& statement) {
    const Source& target = *statement.target;
    QByteArray sql = "UPDATE " + TargetText(target) + " SET ";
    for (const Assignment& assignment : statement.assignments) {
        const SourceColumn& column = target.columns[static_cast<size_t>(assignment.index)];
        const SqlText value = ForField(Emit(*assignment.value), assignment.value->type, column.type);
        CheckDepth(value);
        if (&assignment != &statement.assignments.front()) {
            sql += ", ";
        }
        sql += Quoted(column.name) + " = " + value.text;
    }
    return sql + EmitActionWhere(statement);
}

QByteArray Emitter::EmitDelete(const Statement& statement) {
    return "DELETE FROM " + TargetText(*statement.target) + EmitActionWhere(statement);
}

QByteArray Emitter::EmitActionWhere(const Statement& statement) {
    if (!statement.where) {
        return {};
    }
    const SqlText condition = EmitCondition(*statement.where);
    CheckDepth(condition);
    return " WHERE " + condition.text;
}

QByteArray Emitter::EmitInsert(const Statement& statement) {
    const Source& target = *statement.target;
    QByteArray columns;
    QByteArray values;
    std::vector<SourceColumn> fields;
    for (const Assignment& assignment : statement.assignments) {
        const SourceColumn& column = target.columns[static_cast<size_t>(assignment.index)];
        fields.push_back(column);
        columns += (columns.isEmpty() ? "" : ", ") + Quoted(column.name);
        if (assignment.value) {
            const SqlText value = ForField(Emit(*assignment.value), assignment.value->type, column.type);
            CheckDepth(value);
            values += (values.isEmpty() ? "" : ", ") + value.text;
        }
    }
    const QByteArray sql = "INSERT INTO " + Quoted(target.table->name) + " (" + columns + ") ";
    if (!statement.query) {
        return sql + "VALUES (" + values + ')';
    }
    const SqlText rows = EmitQuery(*statement.query, {Use::Insert, false, false, false, &fields});
    CheckDepth(rows);
    return sql + rows.text;
}

} // namespace velmora::engine::dialect
