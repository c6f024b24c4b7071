#pragma once

#include "engine/dialect/SqlWriter.h"

namespace velmora::engine::sqlite {

// The SQL of the embedded store. What it has no function for, Functions.cpp brings along.
class SqliteWriter final : public dialect::SqlWriter {
public:
    size_t MaximumValues() const override;
    QByteArray Placeholder(size_t number, FieldType type) const override;
    dialect::SqlText Flag(bool value) const override;

    dialect::SqlText IsTrue(const dialect::SqlText& value, FieldType type) const override;
    dialect::SqlText IsFalse(const dialect::SqlText& value, FieldType type) const override;
    dialect::SqlText AsNumber(const dialect::SqlText& value, FieldType type) const override;
    dialect::SqlText AsText(const dialect::SqlText& value, FieldType type) const override;
    dialect::SqlText AsWhole(const dialect::SqlText& value, FieldType type) const override;
    dialect::SqlText AsMoment(const dialect::SqlText& value, FieldType type) const override;
    dialect::SqlText Collated(const dialect::SqlText& value, FieldType type) const override;

    dialect::SqlText Quotient(const dialect::SqlText& first, const dialect::SqlText& second) const override;
    dialect::SqlText Remainder(const dialect::SqlText& first, const dialect::SqlText& second) const override;
    dialect::SqlText AddDays(const dialect::SqlText& date, const dialect::SqlText& days) const override;
    dialect::SqlText DaysBetween(const dialect::SqlText& later, const dialect::SqlText& earlier) const override;
    dialect::SqlText SumOfAny(const dialect::SqlText& first, const dialect::SqlText& second) const override;
    dialect::SqlText DifferenceOfAny(const dialect::SqlText& first, const dialect::SqlText& second) const override;
    dialect::SqlText Like(const dialect::SqlText& value, const dialect::SqlText& pattern) const override;

    dialect::SqlText Call(const dialect::FunctionRule& function,
                          std::span<const dialect::SqlText> arguments) const override;
    dialect::SqlText Aggregate(const dialect::FunctionRule& function, const dialect::SqlText& operand, FieldType type,
                               std::span<const dialect::SqlText> keys) const override;

    QByteArray Joined(std::span<const QByteArray> sources, std::span<const dialect::SqlText> conditions) const override;
    QByteArray OrderTerm(const dialect::SqlText& term, bool descending) const override;
    QByteArray Limit(qint64 rows) const override;
    QByteArray RowIdentity() const override;
    QByteArray IsKey(const QByteArray& column, const QByteArray& place) const override;
    QByteArray StillHolds(const QByteArray& column, FieldType type, const QByteArray& place) const override;
    dialect::SqlText Narrow(const dialect::SqlText& condition) const override;
};

} // namespace velmora::engine::sqlite
