#pragma once

#include "engine/dialect/Ast.h"
#include "engine/dialect/Compiler.h"
#include "engine/dialect/Order.h"
#include "engine/dialect/SqlWriter.h"

#include <QHash>

#include <vector>

namespace velmora::engine::dialect {

// Writes a resolved statement as SQL of the store that the writer stands for. Every literal and parameter becomes the
// place of a value with a binding.
class Emitter {
public:
    struct Emitted {
        QByteArray sql;
        std::vector<Binding> bindings;
    };

    // `keys`: the select returns the key columns of its origins behind the visible ones.
    static Emitted Emit(const Statement& statement, bool keys, const SqlWriter& writer);
    // The same columns of one row, found by the keys of the select's origins: see CompiledStatement::rereadSql.
    static Emitted EmitReread(const Query& query, const SqlWriter& writer);

private:
    explicit Emitter(const SqlWriter& writer) : writer_(writer) {}

    // What a select is for, and so what its text must hold besides its columns.
    enum class Use {
        Result,  // rows for the caller
        Source,  // a sub-select in FROM: its columns are named c0, c1, ...
        Value,   // one value
        Members, // behind IN
        Exists,
        Insert, // rows for a table
    };
    struct SelectOptions {
        Use use = Use::Result;
        bool keys = false;     // key columns behind the visible ones (k0, k1, ... in a Source)
        bool everyRow = false; // without WHERE and order
        bool order = false;    // Source: what its order goes by as further columns o0, o1, ...
        bool truth = false;    // Members: compared by their truth
        const std::vector<SourceColumn>* target = nullptr; // Insert: the fields that take the columns
    };
    // Statements (Emitter.cpp)
    QByteArray EmitStatement(const Statement& statement, bool keys);
    QByteArray EmitUpdate(const Statement& statement);
    QByteArray EmitInsert(const Statement& statement);
    QByteArray EmitDelete(const Statement& statement);
    QByteArray EmitActionWhere(const Statement& statement);
    // The place of the value.
    QByteArray Bind(Binding binding);
    QByteArray Place(int& number, Binding binding);

    // Queries (QueryEmitter.cpp)
    QByteArray EmitQuery(const Query& query, const SelectOptions& options);
    QByteArray EmitSelect(const Query& query, const Select& select, const SelectOptions& options);
    SqlText EmitOutput(const Query& query, const Select& select, size_t index, const SelectOptions& options);
    SqlText EmitRanges(const Expression& condition);
    QByteArray EmitSources(const Select& select, const SelectOptions& options);
    QByteArray EmitJoined(std::vector<const Source*> parts, const std::vector<const Expression*>& conditions,
                          const SelectOptions& options);
    static void FlattenJoins(const Source& source, std::vector<const Source*>& parts,
                             std::vector<const Expression*>& conditions);
    QByteArray EmitPart(const Source& source, const SelectOptions& options);
    static bool NeedsOrder(const SelectOptions& options);
    QByteArray EmitOrder(const Select& select, const std::vector<OrderKey>& order);
    SqlText EmitOrderKey(const OrderKey& key);
    QByteArray EmitOrderColumns(const std::vector<OrderKey>& order);
    QByteArray EmitKeys(const Select& select, const SelectOptions& options);
    std::vector<SqlText> KeyColumns(const std::vector<Origin>& origins) const;

    // Expressions (ExpressionEmitter.cpp)
    SqlText Emit(const Expression& expression);
    SqlText EmitCondition(const Expression& expression);
    SqlText EmitLiteral(const Expression& expression);
    SqlText EmitName(const Expression& expression);
    SqlText EmitJunction(const Expression& expression, size_t from, size_t to);
    SqlText EmitComparison(const Expression& expression);
    SqlText EmitFlagComparison(const Expression& expression);
    SqlText EmitArithmetic(const Expression& expression);
    SqlText EmitConcatenation(const Expression& expression);
    SqlText EmitBetween(const Expression& expression);
    SqlText EmitIn(const Expression& expression);
    SqlText EmitLike(const Expression& expression);
    SqlText EmitNullTest(const Expression& expression);

    // Function calls (ExpressionEmitter.cpp)
    SqlText EmitCall(const Expression& expression);
    SqlText EmitChoice(const Expression& expression);
    SqlText EmitDefault(const Expression& expression);
    SqlText EmitAggregate(const Expression& expression);
    SqlText EmitArgument(const Expression& expression, ArgumentKind kind);
    // The operand's value, turned into another kind.
    SqlText Operand(const Expression& expression, FieldType type) {
        return Convert(Emit(expression), expression.type, type);
    }

    // Values of one kind as another (ExpressionEmitter.cpp)
    SqlText Convert(const SqlText& value, FieldType from, FieldType to) const;
    // As a field of a table keeps it: whole numbers whole, dates always with the time.
    SqlText ForField(const SqlText& value, FieldType from, FieldType field) const;

    const SqlWriter& writer_;
    std::vector<Binding> bindings_;
    QHash<int, int> literalNumbers_;   // literal to the place of its value
    QHash<int, int> parameterNumbers_; // parameter to the place of its value
    // The select that aggregate functions belong to at the moment.
    const Select* select_ = nullptr;
};

} // namespace velmora::engine::dialect
