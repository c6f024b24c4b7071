#pragma once

#include "engine/dialect/SqlWriter.h"

namespace velmora::engine::sqlite {

using dialect::SqlText;

// The SQL of the embedded store. What it has no function for, Functions.cpp brings along.
class SqliteWriter final : public dialect::SqlWriter {
public:
    size_t MaximumValues() const override;
    QByteArray Placeholder(size_t number, FieldType type) const override;
    SqlText Flag(bool value) const override;

    SqlText IsTrue(const SqlText& value, FieldType type) const override;
    SqlText IsFalse(const SqlText& value, FieldType type) const override;
    SqlText AsNumber(const SqlText& value, FieldType type) const override;
    SqlText AsText(const SqlText& value, FieldType type) const override;
    SqlText AsWhole(const SqlText& value, FieldType type) const override;
    SqlText AsMoment(const SqlText& value, FieldType type) const override;
    SqlText Collated(const SqlText& value, FieldType type) const override;

    SqlText Quotient(const SqlText& first, const SqlText& second) const override;
    SqlText Remainder(const SqlText& first, const SqlText& second) const override;
    SqlText AddDays(const SqlText& date, const SqlText& days) const override;
    SqlText DaysBetween(const SqlText& later, const SqlText& earlier) const override;
    SqlText SumOfAny(const SqlText& first, const SqlText& second) const override;
    SqlText DifferenceOfAny(const SqlText& first, const SqlText& second) const override;
    SqlText Like(const SqlText& value, const SqlText& pattern) const override;

    SqlText Call(const dialect::FunctionRule& function, std::span<const SqlText> arguments) const override;
    SqlText Aggregate(const dialect::FunctionRule& function, const SqlText& operand, FieldType type,
                      std::span<const SqlText> keys) const override;

    QByteArray Joined(std::span<const QByteArray> sources, std::span<const SqlText> conditions) const override;
    QByteArray OrderTerm(const SqlText& term, bool descending) const override;
    QByteArray Limit(qint64 rows) const override;
    QByteArray RowIdentity() const override;
    QByteArray IsKey(const QByteArray& column, const QByteArray& place) const override;
    QByteArray StillHolds(const QByteArray& column, FieldType type, const QByteArray& place) const override;
    SqlText Narrow(const SqlText& condition) const override;
};

} // namespace velmora::engine::sqlite
