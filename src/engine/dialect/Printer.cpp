#include "engine/dialect/Printer.h"

#include "engine/dialect/Lexer.h"
#include "engine/dialect/Literals.h"
#include "engine/dialect/Types.h"

#include <QLocale>

#include <algorithm>
#include <array>

namespace velmora::engine::dialect {

namespace {

// How tightly operators bind, loosest first.
enum Rank { OrRank, AndRank, NotRank, TestRank, JoinRank, SumRank, ModRank, ProductRank, SignRank, WholeRank };

struct OperatorMark {
    QStringView mark;
    Rank rank;
};

// In the order of Operator.
constexpr std::array operatorMarks = std::to_array<OperatorMark>({
    {u"+", SumRank},
    {u"-", SumRank},
    {u"*", ProductRank},
    {u"/", ProductRank},
    {u"Mod", ModRank},
    {u"&", JoinRank},
    {u"=", TestRank},
    {u"<>", TestRank},
    {u"<", TestRank},
    {u"<=", TestRank},
    {u">", TestRank},
    {u">=", TestRank},
});

QString Name(const QString& name) {
    const bool plain = !IsKeyword(name) && ClassOf(name.front().unicode()) == CharClass::Word &&
                       std::all_of(name.begin(), name.end(), [](QChar c) { return IsWordPart(c.unicode()); });
    return plain ? name : u'[' + name + u']';
}

QString LiteralText(const Value& value) {
    if (value.IsText()) {
        return u'"' + value.ToText().replace(u'"', QStringLiteral("\"\"")) + u'"';
    }
    if (value.IsReal()) {
        const QString text = QString::number(value.ToReal(), 'g', QLocale::FloatingPointShortest);
        return text.contains(u'.') || text.contains(u'e') ? text : text + QStringLiteral(".0");
    }
    if (value.IsDateTime()) {
        const DateTimeFields fields = Fields(*value.ToDateTime());
        const auto two = [](int number) { return QString::number(number).rightJustified(2, u'0'); };
        return QStringLiteral("#%1/%2/%3 %4:%5:%6#")
            .arg(two(fields.month), two(fields.day), QString::number(fields.year).rightJustified(4, u'0'),
                 two(fields.hour), two(fields.minute), two(fields.second));
    }
    return value.ToText();
}

class Printer {
public:
    QString Statement(const dialect::Statement& statement);
    QString Expression(const dialect::Expression& expression, Rank least = OrRank);

private:
    using Node = dialect::Expression;

    QString Query(const dialect::Query& query);
    QString Select(const dialect::Select& select);
    QString Source(const dialect::Source& source, bool nested);
    QString Assignments(const dialect::Statement& statement);
    QString Insertion(const dialect::Statement& statement);
    QString Joined(const std::vector<ExpressionPtr>& list, QStringView between, Rank least, size_t from = 0);
    QString Plain(const Node& node, Rank& rank);
};

QString Printer::Joined(const std::vector<ExpressionPtr>& list, QStringView between, Rank least, size_t from) {
    QString text;
    for (size_t i = from; i < list.size(); ++i) {
        text += (i == from ? QString() : between.toString()) + Expression(*list[i], least);
    }
    return text;
}

QString Printer::Expression(const Node& expression, Rank least) {
    Rank rank = WholeRank;
    const QString text = Plain(expression, rank);
    return rank < least ? u'(' + text + u')' : text;
}

QString Printer::Plain(const Node& node, Rank& rank) {
    using Kind = Node::Kind;
    const QString negation = node.negated ? QStringLiteral("NOT ") : QString();
    const auto operand = [&](size_t index, Rank least) { return Expression(*node.operands[index], least); };
    switch (node.kind) {
    case Kind::Literal:
    case Kind::Flag:
        return LiteralText(node.value);
    case Kind::Null:
        return QStringLiteral("NULL");
    case Kind::Name:
        return (node.qualifier.isEmpty() ? QString() : Name(node.qualifier) + u'.') + Name(node.name);
    case Kind::Negate:
        rank = SignRank;
        return QStringLiteral("- ") + operand(0, SignRank);
    case Kind::Not:
        rank = NotRank;
        return QStringLiteral("NOT ") + operand(0, NotRank);
    case Kind::And:
        rank = AndRank;
        return Joined(node.operands, u" AND ", NotRank);
    case Kind::Or:
        rank = OrRank;
        return Joined(node.operands, u" OR ", AndRank);
    case Kind::Binary: {
        const OperatorMark& mark = operatorMarks[static_cast<size_t>(node.op)];
        rank = mark.rank;
        return operand(0, rank) + u' ' + mark.mark.toString() + u' ' + operand(1, static_cast<Rank>(rank + 1));
    }
    case Kind::Between:
        rank = TestRank;
        return operand(0, TestRank) + u' ' + negation + QStringLiteral("BETWEEN ") + operand(1, JoinRank) +
               QStringLiteral(" AND ") + operand(2, JoinRank);
    case Kind::In:
        rank = TestRank;
        return operand(0, TestRank) + u' ' + negation + QStringLiteral("IN (") +
               (node.query ? Query(*node.query) : Joined(node.operands, u", ", OrRank, 1)) + u')';
    case Kind::Like:
        rank = TestRank;
        return operand(0, TestRank) + u' ' + negation + QStringLiteral("LIKE ") + operand(1, JoinRank);
    case Kind::IsNull:
        rank = TestRank;
        return operand(0, TestRank) + QStringLiteral(" IS ") + negation + QStringLiteral("NULL");
    case Kind::Exists:
        return QStringLiteral("EXISTS (") + Query(*node.query) + u')';
    case Kind::Subquery:
        return u'(' + Query(*node.query) + u')';
    case Kind::Call:
        return node.name + u'(' + (node.countsRows ? QStringLiteral("*") : Joined(node.operands, u", ", OrRank)) + u')';
    }
    return {};
}

QString Printer::Query(const dialect::Query& query) {
    QString text;
    for (const dialect::Select& select : query.selects) {
        if (!text.isEmpty()) {
            text += select.unionAll ? QStringLiteral(" UNION ALL ") : QStringLiteral(" UNION ");
        }
        text += Select(select);
    }
    for (const OrderItem& item : query.orderBy) {
        text += &item == &query.orderBy.front() ? QStringLiteral(" ORDER BY ") : QStringLiteral(", ");
        text += Expression(*item.expression) + (item.descending ? QStringLiteral(" DESC") : QString());
    }
    return text;
}

QString Printer::Select(const dialect::Select& select) {
    QString text = QStringLiteral("SELECT ");
    if (select.distinct) {
        text += QStringLiteral("DISTINCT ");
    }
    if (select.top) {
        text += QStringLiteral("TOP %1 ").arg(*select.top);
    }
    for (const SelectItem& item : select.items) {
        text += &item == &select.items.front() ? QString() : QStringLiteral(", ");
        if (item.star) {
            text += (item.starOf.isEmpty() ? QString() : Name(item.starOf) + u'.') + u'*';
        } else {
            text += Expression(*item.expression);
        }
        if (!item.alias.isEmpty()) {
            text += QStringLiteral(" AS ") + Name(item.alias);
        }
    }
    for (const SourcePtr& source : select.from) {
        text +=
            (source == select.from.front() ? QStringLiteral(" FROM ") : QStringLiteral(", ")) + Source(*source, false);
    }
    if (select.where) {
        text += QStringLiteral(" WHERE ") + Expression(*select.where);
    }
    if (!select.groupBy.empty()) {
        text += QStringLiteral(" GROUP BY ") + Joined(select.groupBy, u", ", OrRank);
    }
    if (select.having) {
        text += QStringLiteral(" HAVING ") + Expression(*select.having);
    }
    return text;
}

QString Printer::Source(const dialect::Source& source, bool nested) {
    if (source.kind == dialect::Source::Kind::Join) {
        const QString word = source.join == JoinKind::Inner  ? QStringLiteral(" INNER JOIN ")
                             : source.join == JoinKind::Left ? QStringLiteral(" LEFT JOIN ")
                                                             : QStringLiteral(" RIGHT JOIN ");
        const QString text = Source(*source.left, false) + word + Source(*source.right, true) + QStringLiteral(" ON ") +
                             Expression(*source.on);
        return nested ? u'(' + text + u')' : text;
    }
    const QString text =
        source.kind == dialect::Source::Kind::Select ? u'(' + Query(*source.query) + u')' : Name(source.name);
    return source.alias.isEmpty() ? text : text + QStringLiteral(" AS ") + Name(source.alias);
}

QString Printer::Assignments(const dialect::Statement& statement) {
    QString text = QStringLiteral("UPDATE ") + Source(*statement.target, false) + QStringLiteral(" SET ");
    for (const Assignment& one : statement.assignments) {
        text += &one == &statement.assignments.front() ? QString() : QStringLiteral(", ");
        text += (one.qualifier.isEmpty() ? QString() : Name(one.qualifier) + u'.') + Name(one.column) +
                QStringLiteral(" = ") + Expression(*one.value);
    }
    return text;
}

QString Printer::Insertion(const dialect::Statement& statement) {
    QStringList columns;
    QStringList values;
    for (const Assignment& one : statement.assignments) {
        columns += statement.listsColumns ? Name(one.column) : QString();
        values += one.value ? Expression(*one.value) : QString();
    }
    QString text = QStringLiteral("INSERT INTO ") + Name(statement.target->name) + u' ';
    if (statement.listsColumns) {
        text += u'(' + columns.join(QStringLiteral(", ")) + QStringLiteral(") ");
    }
    return text + (statement.query ? Query(*statement.query)
                                   : QStringLiteral("VALUES (") + values.join(QStringLiteral(", ")) + u')');
}

QString Printer::Statement(const dialect::Statement& statement) {
    QString text;
    for (const ParameterDeclaration& one : statement.parameters) {
        text += (text.isEmpty() ? QStringLiteral("PARAMETERS ") : QStringLiteral(", ")) + Name(one.name) + u' ' +
                WordOfType(one.type);
    }
    text += text.isEmpty() ? QString() : QStringLiteral("; ");
    using Kind = dialect::Statement::Kind;
    switch (statement.kind) {
    case Kind::Select:
        return text + Query(*statement.query);
    case Kind::Insert:
        return text + Insertion(statement);
    case Kind::Update:
        text += Assignments(statement);
        break;
    case Kind::Delete:
        text += QStringLiteral("DELETE FROM ") + Source(*statement.target, false);
        break;
    }
    return statement.where ? text + QStringLiteral(" WHERE ") + Expression(*statement.where) : text;
}

} // namespace

QString Print(const Statement& statement) {
    return Printer().Statement(statement);
}

QString Print(const Expression& expression) {
    return Printer().Expression(expression);
}

} // namespace velmora::engine::dialect
