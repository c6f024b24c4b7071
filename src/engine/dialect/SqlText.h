#pragma once

#include <QByteArray>

#include <algorithm>

namespace velmora::engine::dialect {

// How tightly the outermost operator of a piece of the store's SQL binds, loosest first.
enum class Binds { Or, And, Not, Equality, Order, Sum, Product, Join, Collation, Sign, Whole };

// A piece of the store's SQL.
struct SqlText {
    QByteArray text;
    Binds binds = Binds::Whole;
    // Upper bound of the symbols that the store's parser must hold at once to read it; its limit is 100.
    int pending = 1;
    // A yes/no value as it is stored: any number but 0 is true. Otherwise true is 1.
    bool stored = false;

    // Itself, in parentheses unless it binds at least as tightly as asked.
    SqlText Within(Binds least) const {
        if (binds >= least) {
            return *this;
        }
        return {'(' + text + ')', Binds::Whole, pending + 1, stored};
    }
};

// "left op right", with parentheses where they are needed. Operators of one rank are read from the left.
inline SqlText Infix(const SqlText& left, const QByteArray& op, const SqlText& right, Binds binds) {
    const SqlText first = left.Within(binds);
    const SqlText second = right.Within(static_cast<Binds>(static_cast<int>(binds) + 1));
    return {first.text + ' ' + op + ' ' + second.text, binds, std::max(first.pending, second.pending + 2), false};
}

// "name(argument, ...)"
template <typename List>
SqlText CallText(const QByteArray& name, const List& arguments) {
    SqlText call{name + '(', Binds::Whole, 3, false};
    for (const SqlText& argument : arguments) {
        if (!call.text.endsWith('(')) {
            call.text += ", ";
        }
        call.text += argument.text;
        constexpr int besides = 5;
        call.pending = std::max(call.pending, argument.pending + besides);
    }
    call.text += ')';
    return call;
}

// A name in double quotes.
QByteArray Quoted(const QString& name);

} // namespace velmora::engine::dialect
