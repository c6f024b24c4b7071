#pragma once

#include "base/Value.h"
#include "engine/Catalog.h"
#include "engine/Database.h"

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <vector>

namespace velmora::engine::dialect {

enum class StatementKind { Select, Update, Insert, Delete };

using ParameterInfo = QueryDef::ParameterDescription;

// Where the value in one place of the emitted text comes from.
struct Binding {
    enum class Source {
        Literal,   // the literal number `index` of the caller's text, counted from 0 in the order of the text
        Constant,  // `constant` (a literal of a stored query, or a value worked out at compile time)
        Parameter, // `parameters[index]`
    };
    Source source = Source::Constant;
    int index = 0;
    Value constant;
    // The type to bind as: DateTime in its storage form, YesNo as 0 or 1, others as the value is.
    FieldType type = FieldType::Unknown;
};

struct ResultColumn {
    // The field's name as the reader asks for it: the alias, the column's name as the schema writes it, or Expr1000.
    QString name;
    // The table name or alias as written in the text; empty for an expression.
    QString table;
    FieldType type = FieldType::Unknown;
    // Index into `bases` and the column's schema name when the field is a plain column of a base table; else -1.
    int base = -1;
    QString baseColumn;
};

// A table whose rows the result's rows can be traced back to.
struct BaseTable {
    QString table; // schema name
    QString alias; // as written in the text; the table's name without one
    // Schema names of the key columns; empty: the store's row number is the key.
    std::vector<QString> keyColumns;
    // Result positions (counted over visible and hidden columns) that hold the key, parallel to keyColumns; one
    // position for the row number.
    std::vector<int> keyPositions;
};

// A text of the program's dialect, ready for a store. Immutable once made; may be shared.
struct CompiledStatement {
    StatementKind kind = StatementKind::Select;
    // UTF-8 for the store, with the places of `bindings`.
    QByteArray sql;
    std::vector<Binding> bindings; // by the number of the place, from 1
    std::vector<ParameterInfo> parameters;

    // For Select: the visible columns; the emitted text may return hidden key columns behind them.
    std::vector<ResultColumn> columns;
    int hiddenColumns = 0;
    // True when every row stands for one row of each base table, so that it can be edited and deleted.
    bool updatable = false;
    std::vector<BaseTable> bases;
    // Reads the same columns of one row again by the keys of its bases; empty unless updatable. Its parameters are
    // rereadBindings for the select list and joins, then the key values: those of bases[0] in order, then bases[1], ...
    // (from the place rereadBindings.size()+1 on).
    QByteArray rereadSql;
    std::vector<Binding> rereadBindings;

    // For Update, Insert and Delete: the schema name of the table written to.
    QString target;

    // True when a literal shaped the emitted text (TOP, the prefix of a Like pattern): the statement then serves only
    // texts equal to this one. False: it serves every text of the same shape, with that text's literals bound.
    bool literalsShapeText = false;
};

class SqlWriter;

// Compiles for an updatable set (hidden keys and rereadSql are emitted) or for plain reading.
enum class Purpose { Read, Update };

// Throws EngineError with the position (line and column, or the word at fault) for a text outside the dialect, an
// unknown table or function, an ambiguous field, an impossible date, a comparison of kinds that do not compare.
// A bare table or stored query name is the text "SELECT * FROM [name]".
CompiledStatement Compile(QStringView text, const Catalog& catalog, Purpose purpose, const SqlWriter& writer);

// The shape of a text: the text with its literals taken out (each replaced by a mark of its kind), and the literals
// in their order. Two texts with equal `key` compile to the same statement when literalsShapeText is false.
// `recognised` is false for a text that the quick scan leaves to the compiler (for example a bad date); the caller then
// compiles it and gets the error.
struct TextShape {
    QString key;
    std::vector<Value> literals;
    bool recognised = false;
};

// One pass, no parsing: cheap enough to run on a text built per call. Reuses the storage of `shape`.
void ScanShape(QStringView text, TextShape& shape);

} // namespace velmora::engine::dialect
