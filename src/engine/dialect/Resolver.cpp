#include "engine/dialect/Resolver.h"

#include "engine/dialect/Parser.h"

#include <utility>

namespace velmora::engine::dialect {

void Resolver::Resolve(Statement& statement) {
    Declare(statement.parameters);
    literalsShapeText_ = statement.literalsShapeText;
    switch (statement.kind) {
    case Statement::Kind::Select:
        ResolveQuery(*statement.query, nullptr);
        break;
    case Statement::Kind::Update:
    case Statement::Kind::Delete:
        ResolveUpdate(statement);
        break;
    case Statement::Kind::Insert:
        ResolveInsert(statement);
        break;
    }
}

void Resolver::Declare(const std::vector<ParameterDeclaration>& declarations) {
    declaredHere_.clear();
    for (const ParameterDeclaration& declaration : declarations) {
        declaredHere_.push_back(declaration.name);
        ParameterInfo& parameter = parameters_[static_cast<size_t>(ParameterNamed(declaration.name))];
        if (parameter.declared && parameter.type != declaration.type) {
            FailAt(EngineErrorNumber::TypeMismatch,
                   QStringLiteral("The parameter \"%1\" is %2 in one text and %3 in another")
                       .arg(declaration.name, Describe(parameter.type), Describe(declaration.type)),
                   declaration.at);
        }
        parameter.declared = true;
        parameter.type = declaration.type;
    }
}

int Resolver::ParameterNamed(const QString& name) {
    for (size_t i = 0; i < parameters_.size(); ++i) {
        if (parameters_[i].name.compare(name, Qt::CaseInsensitive) == 0) {
            return static_cast<int>(i);
        }
    }
    parameters_.push_back({name, FieldType::Unknown, false});
    return static_cast<int>(parameters_.size()) - 1;
}

// Whether the name is that of a table.
bool Resolver::FindTable(Source& source) const {
    source.table = catalog_.FindTable(source.name);
    if (source.table) {
        for (const CatalogColumn& column : source.table->columns) {
            source.columns.push_back({column.name, source.ShownName(), column.type, 0, column.name});
        }
    }
    return source.table != nullptr;
}

void Resolver::ResolveTarget(Source& target) {
    if (!FindTable(target)) {
        const bool query = catalog_.FindQuery(target.name) != nullptr;
        FailAt(EngineErrorNumber::UnknownTable,
               query
                   ? QStringLiteral("Rows of the stored query \"%1\" cannot be changed by a statement").arg(target.name)
                   : QStringLiteral("There is no table \"%1\"").arg(target.name),
               target.at);
    }
    NameForStore(target);
}

void Resolver::ResolveUpdate(Statement& statement) {
    ResolveTarget(*statement.target);
    const std::vector<Source*> leaves{statement.target.get()};
    const Scope scope{leaves, nullptr, nullptr, u"an action statement"};
    for (Assignment& assignment : statement.assignments) {
        assignment.index = TargetColumn(*statement.target, assignment);
        CheckOnce(statement, assignment, QStringLiteral("The field \"%1\" is set twice: again"));
        ResolveExpression(*assignment.value, scope);
        CheckAssignment(assignment.value->type, *statement.target, assignment.index, assignment.value->at);
    }
    if (statement.where) {
        ResolveCondition(*statement.where, scope);
    }
}

void Resolver::ResolveInsert(Statement& statement) {
    Source& target = *statement.target;
    ResolveTarget(target);
    if (statement.query) {
        ResolveQuery(*statement.query, nullptr);
    }
    if (!statement.listsColumns) {
        const size_t given = statement.query ? statement.query->types.size() : statement.assignments.size();
        if (given != target.columns.size()) {
            FailAt(QStringLiteral("The table \"%1\" has %2 fields, but %3 values are given")
                       .arg(target.table->name)
                       .arg(target.columns.size())
                       .arg(given),
                   target.at);
        }
        statement.assignments.resize(given);
        for (size_t i = 0; i < given; ++i) {
            statement.assignments[i].column = target.columns[i].name;
        }
    } else if (statement.query && statement.query->types.size() != statement.assignments.size()) {
        FailAt(QStringLiteral("%1 fields are named, but the select gives %2")
                   .arg(statement.assignments.size())
                   .arg(statement.query->types.size()),
               statement.query->selects.front().at);
    }
    const std::vector<Source*> nothing;
    const Scope scope{nothing, nullptr, nullptr, u"an action statement"};
    for (size_t i = 0; i < statement.assignments.size(); ++i) {
        Assignment& assignment = statement.assignments[i];
        assignment.index = TargetColumn(target, assignment);
        CheckOnce(statement, assignment, QStringLiteral("The field \"%1\" is named twice: again"));
        if (assignment.value) {
            ResolveExpression(*assignment.value, scope);
            CheckAssignment(assignment.value->type, target, assignment.index, assignment.value->at);
        } else {
            CheckAssignment(statement.query->types[i], target, assignment.index, statement.query->selects.front().at);
        }
    }
}

// No assignment before this one is to the same column.
void Resolver::CheckOnce(const Statement& statement, const Assignment& assignment, const QString& what) const {
    for (const Assignment& other : statement.assignments) {
        if (&other == &assignment) {
            return;
        }
        if (other.index == assignment.index) {
            FailAt(what.arg(assignment.column), assignment.at);
        }
    }
}

int Resolver::TargetColumn(const Source& target, const Assignment& assignment) const {
    const bool rightTable =
        assignment.qualifier.isEmpty() || assignment.qualifier.compare(target.ShownName(), Qt::CaseInsensitive) == 0;
    for (size_t i = 0; rightTable && i < target.columns.size(); ++i) {
        if (target.columns[i].name.compare(assignment.column, Qt::CaseInsensitive) == 0) {
            return static_cast<int>(i);
        }
    }
    const QString written =
        assignment.qualifier.isEmpty() ? assignment.column : assignment.qualifier + u'.' + assignment.column;
    FailAt(EngineErrorNumber::UnknownItem,
           QStringLiteral("The table \"%1\" has no field \"%2\"").arg(target.table->name, written), assignment.at);
}

void Resolver::CheckAssignment(FieldType from, const Source& target, int column, qsizetype at) const {
    const SourceColumn& field = target.columns[static_cast<size_t>(column)];
    const bool numeric = IsNumeric(from);
    const bool fits = from == field.type || from == FieldType::Unknown || field.type == FieldType::Unknown ||
                      (numeric && IsNumeric(field.type)) || (IsNumber(from) && field.type == FieldType::Text);
    if (!fits) {
        QString hint;
        if (field.type == FieldType::DateTime) {
            hint = QStringLiteral(" (a date is written between # marks)");
        } else if (field.type == FieldType::Text && from == FieldType::DateTime) {
            hint = QStringLiteral(" (Format makes a text of a date)");
        }
        FailAt(EngineErrorNumber::TypeMismatch,
               QStringLiteral("The field \"%1\" holds %2, not %3%4")
                   .arg(field.name, Describe(field.type), Describe(from), hint),
               at);
    }
}

void Resolver::ResolveSource(Source& source, const Scope* outer, std::vector<Source*>& leaves) {
    if (source.kind == Source::Kind::Join) {
        // A condition sees the tables of its own join only.
        std::vector<Source*> joined;
        ResolveSource(*source.left, outer, joined);
        ResolveSource(*source.right, outer, joined);
        const Scope scope{joined, outer, nullptr, u"a join's condition"};
        ResolveCondition(*source.on, scope);
        leaves.insert(leaves.end(), joined.begin(), joined.end());
        return;
    }
    if (source.kind == Source::Kind::Select) {
        ResolveQuery(*source.query, outer);
    } else {
        ResolveNamed(source);
    }
    if (source.query) {
        source.columns = ColumnsOf(*source.query);
    }
    NameForStore(source);
    leaves.push_back(&source);
}

void Resolver::ResolveNamed(Source& source) {
    if (FindTable(source)) {
        return;
    }
    const QString* text = catalog_.FindQuery(source.name);
    if (!text) {
        FailAt(EngineErrorNumber::UnknownTable,
               QStringLiteral("There is no table or stored query \"%1\"").arg(source.name), source.at);
    }
    if (openQueries_.contains(source.name, Qt::CaseInsensitive)) {
        FailAt(QStringLiteral("The stored query \"%1\" uses itself").arg(source.name), source.at);
    }
    constexpr qsizetype maximumDepth = 20;
    if (openQueries_.size() >= maximumDepth) {
        FailAt(QStringLiteral("Stored queries use each other more than %1 levels deep").arg(maximumDepth), source.at);
    }
    const SourceText queryText{*text, source.name};
    Statement statement = Parse(queryText);
    if (statement.kind != Statement::Kind::Select) {
        FailAt(QStringLiteral("The stored query \"%1\" changes rows, so it cannot be read from").arg(source.name),
               source.at);
    }
    // While its text is worked on, errors name it and only its own PARAMETERS clause counts.
    const SourceText* const outerText = std::exchange(text_, &queryText);
    const QStringList outerDeclared = declaredHere_;
    openQueries_.push_back(source.name);
    Declare(statement.parameters);
    ResolveQuery(*statement.query, nullptr);
    openQueries_.pop_back();
    declaredHere_ = outerDeclared;
    text_ = outerText;
    source.query = std::move(statement.query);
}

void Resolver::NameForStore(Source& source) {
    const QString wanted = source.ShownName().isEmpty() ? QStringLiteral("select") : source.ShownName();
    const QString plain = source.alias.isEmpty() && source.table ? source.table->name : wanted;
    source.sqlAlias = plain;
    for (int number = 2; storeNames_.contains(source.sqlAlias.toLower()); ++number) {
        source.sqlAlias = plain + u'~' + QString::number(number);
    }
    storeNames_.insert(source.sqlAlias.toLower());
    if (storeNames_.size() > maximumTables_) {
        FailAt(QStringLiteral("The text and its stored queries use more than %1 tables; one more").arg(maximumTables_),
               source.at);
    }
}

} // namespace velmora::engine::dialect
