#pragma once

#include "engine/Catalog.h"
#include "engine/dialect/FunctionTable.h"

#include <QByteArray>
#include <QString>

#include <initializer_list>
#include <span>

namespace velmora::engine::dialect {

// How tightly the outermost operator of a piece of SQL binds, loosest first.
enum class Binds { Or, And, Not, Equality, Order, Sum, Product, Join, Collation, Sign, Whole };

// A piece of a store's SQL.
struct SqlText {
    QByteArray text;
    Binds binds = Binds::Whole;
    // A yes/no value as a field keeps it, which a store may do as any number but 0 for true.
    bool stored = false;

    // Itself, in parentheses unless it binds at least as tightly as asked.
    SqlText Within(Binds least) const {
        return binds >= least ? *this : SqlText{'(' + text + ')', Binds::Whole, stored};
    }
};

// "left op right", with parentheses where they are needed. Operators of one rank are read from the left.
inline SqlText Infix(const SqlText& left, const QByteArray& op, const SqlText& right, Binds binds) {
    const auto tighter = static_cast<Binds>(static_cast<int>(binds) + 1);
    return {left.Within(binds).text + ' ' + op + ' ' + right.Within(tighter).text, binds};
}

// "name(argument, ...)"
inline SqlText CallText(const QByteArray& name, std::span<const SqlText> arguments) {
    QByteArray list;
    for (const SqlText& argument : arguments) {
        list += (list.isEmpty() ? "" : ", ") + argument.text;
    }
    return {name + '(' + list + ')'};
}
inline SqlText CallText(const QByteArray& name, std::initializer_list<SqlText> arguments) {
    return CallText(name, std::span(arguments.begin(), arguments.size()));
}

inline SqlText Negative(const SqlText& number) {
    return {'-' + number.Within(Binds::Whole).text, Binds::Sign};
}

inline SqlText Negated(const SqlText& condition) {
    return {"NOT " + condition.Within(Binds::Not).text, Binds::Not};
}

// A name in double quotes.
inline QByteArray Quoted(const QString& name) {
    return '"' + name.toUtf8().replace('"', "\"\"") + '"';
}

// The constructs in which the SQL of stores differs. The emitter walks the typed tree, decides what a text means, and
// asks the writer of its store how that is written; what every store writes alike is in the emitter. Has no state.
class SqlWriter {
public:
    constexpr SqlWriter() = default;
    virtual ~SqlWriter() = default;
    SqlWriter(const SqlWriter&) = delete;
    SqlWriter& operator=(const SqlWriter&) = delete;

    // The most tables and sub-selects that one statement takes.
    virtual qsizetype MaximumTables() const = 0;
    // The most values that one statement takes.
    virtual size_t MaximumValues() const = 0;
    // Where the value `number` of the statement stands, counted from 1.
    virtual QByteArray Placeholder(size_t number, FieldType type) const = 0;
    virtual SqlText Flag(bool value) const = 0;

    // Values of one kind as another. IsTrue and IsFalse are neither true nor false for an empty value.
    virtual SqlText IsTrue(const SqlText& value, FieldType type) const = 0;
    virtual SqlText IsFalse(const SqlText& value, FieldType type) const = 0;
    virtual SqlText AsNumber(const SqlText& value, FieldType type) const = 0;
    virtual SqlText AsText(const SqlText& value, FieldType type) const = 0;
    virtual SqlText AsWhole(const SqlText& value, FieldType type) const = 0;
    // As a field of type DateTime keeps it.
    virtual SqlText AsMoment(const SqlText& value, FieldType type) const = 0;
    // For comparing and ordering: a text, or what may be one, without regard to the case of A to Z.
    virtual SqlText Collated(const SqlText& value, FieldType type) const = 0;

    // Operators that are not the same everywhere.
    virtual SqlText Quotient(const SqlText& first, const SqlText& second) const = 0; // never cut to a whole number
    virtual SqlText Remainder(const SqlText& first, const SqlText& second) const = 0;
    virtual SqlText AddDays(const SqlText& date, const SqlText& days) const = 0;
    virtual SqlText DaysBetween(const SqlText& later, const SqlText& earlier) const = 0;
    // What the operands hold when the statement runs decides whether numbers, dates or texts are meant.
    virtual SqlText SumOfAny(const SqlText& first, const SqlText& second) const = 0;
    virtual SqlText DifferenceOfAny(const SqlText& first, const SqlText& second) const = 0;
    virtual SqlText Like(const SqlText& value, const SqlText& pattern) const = 0;

    // A function of the form Call, or one over rows; behind the operand of First and Last come the key fields by whose
    // order they go.
    virtual SqlText Call(const FunctionRule& function, std::span<const SqlText> arguments) const = 0;

    // Clauses of a select. `conditions` are those of all the inner joins.
    virtual QByteArray Joined(std::span<const QByteArray> sources, std::span<const SqlText> conditions) const = 0;
    virtual QByteArray OrderTerm(const SqlText& term, bool descending) const = 0; // empty sorts first
    virtual QByteArray Limit(qint64 rows) const = 0;
    // The field that identifies a row of a table without a key.
    virtual QByteArray RowIdentity() const = 0;
    // Conditions on a field of the row to be written: that it is the key's, and that it still holds what was read, to
    // the letter's case. Empty equals empty.
    virtual QByteArray IsKey(const QByteArray& column, const QByteArray& place) const = 0;
    virtual QByteArray StillHolds(const QByteArray& column, FieldType type, const QByteArray& place) const = 0;
    // The condition, marked as one that few rows meet.
    virtual SqlText Narrow(const SqlText& condition) const = 0;
};

} // namespace velmora::engine::dialect
