#pragma once

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

} // namespace velmora::engine::dialect
