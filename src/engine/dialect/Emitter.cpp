#include "engine/dialect/Emitter.h"

#include "engine/EngineError.h"

namespace velmora::engine::dialect {

Emitter::Emitted Emitter::Emit(const Statement& statement, bool keys, const SqlWriter& writer) {
    Emitter emitter(writer);
    QByteArray sql = emitter.EmitStatement(statement, keys);
    return {std::move(sql), std::move(emitter.bindings_)};
}

Emitter::Emitted Emitter::EmitReread(const Query& query, const SqlWriter& writer) {
    Emitter emitter(writer);
    SelectOptions options;
    options.keys = true;
    options.everyRow = true;
    QByteArray sql = emitter.EmitQuery(query, options);
    size_t number = emitter.bindings_.size();
    const char* joint = " WHERE ";
    for (const SqlText& key : emitter.KeyColumns(query.selects.front().origins)) {
        sql += joint + key.text + " = " + writer.Placeholder(++number, FieldType::Unknown);
        joint = " AND ";
    }
    return {std::move(sql), std::move(emitter.bindings_)};
}

QByteArray Emitter::Bind(Binding binding) {
    if (bindings_.size() == writer_.MaximumValues()) {
        throw EngineError(EngineErrorNumber::Syntax,
                          QStringLiteral("The text has more than %1 values.").arg(writer_.MaximumValues()));
    }
    bindings_.push_back(std::move(binding));
    return writer_.Placeholder(bindings_.size(), bindings_.back().type);
}

// The place of a value that may have one already: `number` is 0 without one.
QByteArray Emitter::Place(int& number, Binding binding) {
    if (number != 0) {
        return writer_.Placeholder(static_cast<size_t>(number), binding.type);
    }
    number = static_cast<int>(bindings_.size()) + 1;
    return Bind(std::move(binding));
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
    SelectOptions options;
    options.keys = keys;
    return EmitQuery(*statement.query, options);
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
    return " WHERE " + EmitCondition(*statement.where).text;
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
            values += (values.isEmpty() ? "" : ", ") + value.text;
        }
    }
    const QByteArray sql = "INSERT INTO " + Quoted(target.table->name) + " (" + columns + ") ";
    if (!statement.query) {
        return sql + "VALUES (" + values + ')';
    }
    SelectOptions options{Use::Insert};
    options.target = &fields;
    return sql + EmitQuery(*statement.query, options);
}

} // namespace velmora::engine::dialect
