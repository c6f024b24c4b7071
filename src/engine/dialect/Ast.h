#pragma once

#include "base/Value.h"
#include "engine/Catalog.h"
#include "engine/dialect/Compiler.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace velmora::engine::dialect {

struct FunctionRule;
struct Query;
struct Source;

enum class Operator {
    Add,
    Subtract,
    Multiply,
    Divide,
    Modulo,
    Concatenate,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
};

inline bool IsComparison(Operator op) {
    return op >= Operator::Equal;
}

// One node of an expression. The parser fills the first part, the resolver the second.
struct Expression {
    enum class Kind {
        Literal, // `value`
        Flag,    // True or False, in `value`
        Null,
        Name,   // `qualifier` (may be empty) and `name`
        Negate, // -operand
        Binary, // `op`
        Not,
        And,     // two operands or more
        Or,      // two operands or more
        Between, // value, low, high
        In,      // value, then the list; or value and `query`
        Like,    // value, pattern
        IsNull,
        Exists,   // `query`
        Subquery, // `query`
        Call,     // `name`, operands
    };

    Kind kind = Kind::Null;
    qsizetype at = 0; // place in its text
    Operator op = Operator::Equal;
    bool negated = false;    // Not Between, Not In, Not Like, Is Not Null
    bool countsRows = false; // Count(*)
    int literal = -1;        // number of the literal in the caller's text; -1 for one of a stored query
    int height = 1;          // nodes on the longest way down
    Value value;
    QString qualifier;
    QString name;
    std::vector<std::unique_ptr<Expression>> operands;
    std::unique_ptr<Query> query;

    FieldType type = FieldType::Unknown;
    const Source* source = nullptr;         // Name: where the field comes from; null for a parameter
    int column = -1;                        // its place in source->columns
    int parameter = -1;                     // Name: its place among the statement's parameters
    const FunctionRule* function = nullptr; // Call
};

using ExpressionPtr = std::unique_ptr<Expression>;

// A field of a table or sub-select as the select around it sees it: `table` is the table or alias that it has inside of
// a sub-select, `base` says which of the sub-select's origins it is a plain column of.
using SourceColumn = ResultColumn;

// A base table of which every row of a source or select has one row.
struct Origin {
    const CatalogTable* table = nullptr;
    QString alias;
    const Source* source = nullptr; // the source of the select that brings it in
    int inner = -1;                 // its place among the origins of source->query; -1: the source is the table
};

enum class JoinKind { Inner, Left, Right };

// A table, stored query, sub-select or join in a FROM clause.
struct Source {
    enum class Kind { Named, Select, Join };
    Kind kind = Kind::Named;
    qsizetype at = 0;
    QString name;
    QString alias;                // as written; empty without one
    std::unique_ptr<Query> query; // Select; for a stored query set by the resolver
    JoinKind join = JoinKind::Inner;
    std::unique_ptr<Source> left;
    std::unique_ptr<Source> right;
    ExpressionPtr on;

    const CatalogTable* table = nullptr; // Named, when it is a base table
    QString sqlAlias;                    // unique in the statement
    std::vector<SourceColumn> columns;

    const QString& ShownName() const { return alias.isEmpty() ? name : alias; }
};

using SourcePtr = std::unique_ptr<Source>;

struct SelectItem {
    qsizetype at = 0;
    bool star = false;
    QString starOf; // Table.*
    ExpressionPtr expression;
    QString alias;
};

// A column of a select's result, stars taken apart. `base` counts the select's `origins`.
struct OutputColumn : ResultColumn {
    const Expression* expression = nullptr;
    bool aliased = false;
};

// One SELECT ... HAVING of a query.
struct Select {
    qsizetype at = 0;
    bool distinct = false;
    std::optional<qint64> top;
    std::vector<SelectItem> items;
    std::vector<SourcePtr> from;
    ExpressionPtr where;
    std::vector<ExpressionPtr> groupBy;
    ExpressionPtr having;
    // A UNION ALL before this select keeps equal rows; meaningless for the first one.
    bool unionAll = false;

    std::vector<Source*> leaves;
    std::vector<OutputColumn> outputs;
    std::vector<ExpressionPtr> starColumns; // what the stars stand for; `outputs` refers to them
    bool aggregated = false;
    // The base tables, when every row of the result stands for one row of each of them; else empty.
    std::vector<Origin> origins;
};

struct OrderItem {
    ExpressionPtr expression;
    bool descending = false;

    int output = -1; // the output column it names, by its alias, name or number
};

struct Query {
    std::vector<Select> selects; // joined by UNION
    std::vector<OrderItem> orderBy;

    std::vector<FieldType> types; // of the result columns, over all selects
};

struct ParameterDeclaration {
    qsizetype at = 0;
    QString name;
    FieldType type = FieldType::Unknown;
};

struct Assignment {
    qsizetype at = 0;
    QString qualifier;
    QString column;
    ExpressionPtr value;

    int index = -1; // the column in the target table
};

struct Statement {
    using Kind = StatementKind;
    Kind kind = Kind::Select;
    std::vector<ParameterDeclaration> parameters;

    SourcePtr target;                    // Update, Insert, Delete
    std::vector<Assignment> assignments; // Update; Insert: columns and, with VALUES, their values
    bool listsColumns = false;           // Insert: the text names the columns
    ExpressionPtr where;                 // Update, Delete
    std::unique_ptr<Query> query;        // Select, Insert ... Select

    bool literalsShapeText = false;
};

// Whether two resolved expressions say the same. `usesLiterals` is set when they do only because their literals are
// equal. Expressions with a select in them never count as the same.
bool SameExpression(const Expression& first, const Expression& second, bool& usesLiterals);

bool IsAggregate(const Expression& expression);

// The operands, and every expression of a select inside.
void ForEachChild(const Expression& expression, const std::function<void(const Expression&)>& visit);

// The columns of a resolved query's rows. Those of a UNION are columns of no one base.
std::vector<ResultColumn> ColumnsOf(const Query& query);

// The kind of a result that is sometimes of one and sometimes of the other kind: kinds that do not mix become text.
FieldType CommonType(FieldType first, FieldType second);

// True for the kinds that are calculated with: a yes/no value is 0 or -1.
inline bool IsNumeric(FieldType type) {
    return IsNumber(type) || type == FieldType::YesNo;
}

} // namespace velmora::engine::dialect
