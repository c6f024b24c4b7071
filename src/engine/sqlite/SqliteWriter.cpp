#include "engine/sqlite/FileStore.h"

#include <algorithm>
#include <iterator>

namespace velmora::engine::sqlite {

using dialect::Binds;
using dialect::CallText;
using dialect::Infix;
using dialect::Negated;
using dialect::Negative;
using dialect::SqlText;

namespace {

// The store's own functions of the dialect; all others are ours and bear the dialect's name (Functions.cpp).
constexpr QStringView ownFunctions[] = {u"Abs", u"Avg", u"Count", u"Max", u"Min", u"Sum", u"Trim"};

QByteArray StoreName(const dialect::FunctionRule& function) {
    const bool own =
        std::find(std::begin(ownFunctions), std::end(ownFunctions), function.name) != std::end(ownFunctions);
    return (own ? "" : "dialect_") + function.name.toLatin1().toLower();
}

// What the store has no function for, Functions.cpp brings along.
class SqliteWriter final : public dialect::SqlWriter {
public:
    qsizetype MaximumTables() const override {
        return 60; // the store joins 64
    }

    size_t MaximumValues() const override {
        return 32000; // the store's own limit is not much higher
    }

    QByteArray Placeholder(size_t number, FieldType /*type*/) const override {
        return '?' + QByteArray::number(static_cast<qulonglong>(number));
    }

    // Not 1 and 0, which would number a column in ORDER BY and GROUP BY.
    SqlText Flag(bool value) const override { return {value ? QByteArrayLiteral("TRUE") : QByteArrayLiteral("FALSE")}; }

    SqlText IsTrue(const SqlText& value, FieldType type) const override {
        if (type == FieldType::YesNo && !value.stored) {
            return value;
        }
        return Infix(value, "<>", {QByteArrayLiteral("0")}, Binds::Equality);
    }

    SqlText IsFalse(const SqlText& value, FieldType type) const override {
        if (type == FieldType::YesNo && !value.stored) {
            return Negated(value);
        }
        return Infix(value, "=", {QByteArrayLiteral("0")}, Binds::Equality);
    }

    SqlText AsNumber(const SqlText& value, FieldType type) const override {
        if (type == FieldType::YesNo) {
            return Negative(IsTrue(value, type));
        }
        return type == FieldType::Unknown ? CallText("dialect_number", {value}) : value;
    }

    SqlText AsText(const SqlText& value, FieldType type) const override {
        switch (type) {
        case FieldType::Text:
            return value;
        case FieldType::Integer:
            return {"CAST(" + value.text + " AS TEXT)"};
        case FieldType::DateTime:
            return CallText("dialect_general_date", {value});
        case FieldType::YesNo:
            return {"CASE " + IsTrue(value, type).text + " WHEN 1 THEN 'True' WHEN 0 THEN 'False' END"};
        case FieldType::Real:
        case FieldType::Unknown:
            break;
        }
        return CallText("dialect_text", {value});
    }

    SqlText AsWhole(const SqlText& value, FieldType type) const override {
        if (type == FieldType::Integer) {
            return value;
        }
        return type == FieldType::YesNo ? AsNumber(value, type) : CallText("dialect_whole", {value});
    }

    SqlText AsMoment(const SqlText& value, FieldType type) const override {
        return type == FieldType::DateTime ? value : CallText("dialect_moment", {value});
    }

    SqlText Collated(const SqlText& value, FieldType type) const override {
        if (type != FieldType::Text && type != FieldType::Unknown) {
            return value;
        }
        return {value.Within(Binds::Collation).text + " COLLATE NOCASE", Binds::Collation};
    }

    SqlText Quotient(const SqlText& first, const SqlText& second) const override {
        return Infix({"CAST(" + first.text + " AS REAL)"}, "/", second, Binds::Product);
    }

    SqlText Remainder(const SqlText& first, const SqlText& second) const override {
        return Infix(first, "%", second, Binds::Product);
    }

    SqlText AddDays(const SqlText& date, const SqlText& days) const override {
        return CallText("dialect_add_days", {date, days});
    }

    SqlText DaysBetween(const SqlText& later, const SqlText& earlier) const override {
        return CallText("dialect_days_between", {later, earlier});
    }

    SqlText SumOfAny(const SqlText& first, const SqlText& second) const override {
        return CallText("dialect_add", {first, second});
    }

    SqlText DifferenceOfAny(const SqlText& first, const SqlText& second) const override {
        return CallText("dialect_subtract", {first, second});
    }

    SqlText Like(const SqlText& value, const SqlText& pattern) const override {
        return CallText("dialect_like", {pattern, value});
    }

    SqlText Call(const dialect::FunctionRule& function, std::span<const SqlText> arguments) const override {
        return CallText(StoreName(function), arguments);
    }

    // One flat list with the conditions behind it: the store is free to choose the order.
    QByteArray Joined(std::span<const QByteArray> sources, std::span<const SqlText> conditions) const override {
        QByteArray text;
        for (const QByteArray& source : sources) {
            text += (text.isEmpty() ? "" : " JOIN ") + source;
        }
        const char* joint = " ON ";
        for (const SqlText& condition : conditions) {
            text += joint + condition.Within(Binds::Not).text;
            joint = " AND ";
        }
        return text;
    }

    QByteArray OrderTerm(const SqlText& term, bool descending) const override {
        return descending ? term.text + " DESC" : term.text;
    }

    QByteArray Limit(qint64 rows) const override { return " LIMIT " + QByteArray::number(rows); }

    QByteArray RowIdentity() const override { return QByteArrayLiteral("rowid"); }

    QByteArray IsKey(const QByteArray& column, const QByteArray& place) const override {
        return column + " IS " + place;
    }

    // Any number but 0 is a yes.
    QByteArray StillHolds(const QByteArray& column, FieldType type, const QByteArray& place) const override {
        return (type == FieldType::YesNo ? '(' + column + " <> 0) IS " : column + " COLLATE BINARY IS ") + place;
    }

    SqlText Narrow(const SqlText& condition) const override {
        return CallText("likelihood", {condition, {QByteArrayLiteral("0.02")}});
    }
};

const SqliteWriter writer;

} // namespace

const dialect::SqlWriter& Writer() noexcept {
    return writer;
}

} // namespace velmora::engine::sqlite
