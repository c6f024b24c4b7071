#pragma once

#include "engine/dialect/Ast.h"
#include "engine/dialect/Lexer.h"

#include <QSet>
#include <QStringList>

namespace velmora::engine::dialect {

// Gives every name of a statement its meaning: tables and stored queries (whose texts it takes in), fields, parameters,
// functions; finds out the kind of every expression and refuses those that make no sense. After it the statement holds
// all that the emitter needs. Throws EngineError with the place.
class Resolver {
public:
    // Refuses a statement that uses more than `maximumTables` tables and queries, stored ones taken in.
    Resolver(const Catalog& catalog, const SourceText& text, qsizetype maximumTables)
        : catalog_(catalog), text_(&text), maximumTables_(maximumTables) {}

    void Resolve(Statement& statement);

    // The parameters in the order of Expression::parameter.
    std::vector<ParameterInfo> TakeParameters() { return std::move(parameters_); }
    bool LiteralsShapeText() const { return literalsShapeText_; }

private:
    // The tables that a name can refer to, from the innermost select outwards.
    struct Scope {
        const std::vector<Source*>& leaves;
        const Scope* outer = nullptr;
        Select* select = nullptr; // null in an action statement
        // Where the expression stands, for errors: "WHERE"; empty where aggregate functions may stand.
        QStringView plainClause;
        bool insideAggregate = false;
    };
    struct Match {
        Source* source = nullptr;
        int column = -1;
        int count = 0;
    };

    // Statements (Resolver.cpp)
    void Declare(const std::vector<ParameterDeclaration>& declarations);
    void ResolveUpdate(Statement& statement);
    void ResolveInsert(Statement& statement);
    bool FindTable(Source& source) const;
    void ResolveTarget(Source& target);
    void CheckOnce(const Statement& statement, const Assignment& assignment, const QString& what) const;
    int TargetColumn(const Source& target, const Assignment& assignment) const;
    void CheckAssignment(FieldType from, const Source& target, int column, qsizetype at) const;

    // Sources (Resolver.cpp)
    void ResolveSource(Source& source, const Scope* outer, std::vector<Source*>& leaves);
    void ResolveNamed(Source& source);
    void NameForStore(Source& source);

    // Selects (SelectResolver.cpp)
    void ResolveQuery(Query& query, const Scope* outer);
    void ResolveSelect(Select& select, const Scope* outer);
    void ResolveItem(SelectItem& item, Scope& scope);
    void ExpandStar(const SelectItem& item, Select& select);
    void NameOutputs(Select& select) const;
    void TraceOrigins(Select& select) const;
    void UniteTypes(Query& query) const;
    void ResolveOrder(Query& query, const Scope* outer);
    int OutputOf(const Expression& expression, const Select& select);
    void CheckGrouping(const Select& select, const Expression& expression);

    // Expressions (ExpressionResolver.cpp)
    void ResolveExpression(Expression& expression, const Scope& scope);
    void ResolveCondition(Expression& expression, const Scope& scope);
    void ResolveOperands(Expression& expression, const Scope& scope);
    void ResolveName(Expression& expression, const Scope& scope);
    void ResolveCall(Expression& expression, const Scope& scope);
    void ResolveIn(Expression& expression, const Scope& scope);
    void ResolveSubquery(Expression& expression, const Scope& scope);
    void CheckPattern(const Expression& pattern);
    FieldType ArithmeticType(const Expression& expression) const;
    FieldType CallType(const Expression& expression) const;
    void CheckCondition(const Expression& expression) const;
    void CheckComparable(const Expression& first, const Expression& second, qsizetype at) const;
    void CheckArgument(const Expression& call, size_t index);
    Match FindField(const Expression& name, const Scope& scope) const;
    int ParameterNamed(const QString& name);

    [[noreturn]] void FailAt(EngineErrorNumber number, const QString& what, qsizetype at) const {
        Fail(number, what, *text_, at);
    }
    [[noreturn]] void FailAt(const QString& what, qsizetype at) const {
        Fail(EngineErrorNumber::Syntax, what, *text_, at);
    }

    const Catalog& catalog_;
    const SourceText* text_;
    const qsizetype maximumTables_;
    // The names that the PARAMETERS clause of the text under work declares.
    QStringList declaredHere_;
    QStringList openQueries_;
    QSet<QString> storeNames_;
    std::vector<ParameterInfo> parameters_;
    // A literal was judged here, so that the result serves no text with another one.
    bool literalsShapeText_ = false;
};

} // namespace velmora::engine::dialect
