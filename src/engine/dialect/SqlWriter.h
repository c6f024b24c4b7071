#pragma once

#include "engine/Catalog.h"
#include "engine/dialect/FunctionTable.h"
#include "engine/dialect/SqlText.h"

#include <span>

namespace velmora::engine::dialect {

// The constructs in which the SQL of stores differs. The emitter walks the typed tree, decides what a text means, and
// asks the writer of its store how that is written; what every store writes alike is in the emitter. Has no state.
class SqlWriter {
public:
    constexpr SqlWriter() = default;
    virtual ~SqlWriter() = default;
    SqlWriter(const SqlWriter&) = delete;
    SqlWriter& operator=(const SqlWriter&) = delete;

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

    // A function of the form Call, and those over rows; `keys` are the key fields by whose order first and last go.
    virtual SqlText Call(const FunctionRule& function, std::span<const SqlText> arguments) const = 0;
    virtual SqlText Aggregate(const FunctionRule& function, const SqlText& operand, FieldType type,
                              std::span<const SqlText> keys) const = 0;

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
