#include "layouts/LayoutQuery.h"

#include "engine/FieldType.h"

namespace velmora::layouts {

using namespace Qt::StringLiterals;

namespace {

QString GroupKey(const LayoutGroup& group) {
    const QString field = QueryName(group.field);
    switch (group.unit) {
    case GroupUnit::Value:
        return field;
    case GroupUnit::Day:
        return u"Format(%1, \"yyyy-mm-dd\")"_s.arg(field);
    case GroupUnit::ClosingDay:
        return u"Format(DateAdd(\"s\", -1, %1), \"yyyy-mm-dd\")"_s.arg(field);
    case GroupUnit::Initial:
        break;
    }
    return u"UCase(Left(Trim(%1), 1))"_s.arg(field);
}

QStringList Columns(const FieldList& fields) {
    QStringList columns;
    for (const FieldName& field : fields.Names()) {
        columns += u"%1 AS LayoutField%2"_s.arg(QueryName(field)).arg(columns.size() + 1);
    }
    return columns;
}

QStringList SortTexts(const std::vector<SortKey>& sort) {
    QStringList keys;
    for (const SortKey& key : sort) {
        keys += QueryName(key.field) + (key.descending ? u" DESC"_s : QString());
    }
    return keys;
}

QString Clause(const QString& word, const QStringList& parts, const QString& between) {
    return parts.isEmpty() ? QString() : u' ' + word + u' ' + parts.join(between);
}

QString FromText(const Layout& layout, QueryText& parameters) {
    QString from;
    for (const LayoutTable& table : layout.tables) {
        const QString name = u'[' + table.table + u']' + (table.alias.isEmpty() ? QString() : u" AS "_s + table.alias);
        if (from.isEmpty()) {
            from = name;
            continue;
        }
        from = u"(%1 %2 JOIN %3 ON %4)"_s.arg(from, table.optional ? u"LEFT"_s : u"INNER"_s, name,
                                              parameters.Condition(table.on));
    }
    return from;
}

} // namespace

QString QueryText::Parameter(const Value& value) {
    const QString name = u"LayoutValue%1"_s.arg(values_.size() + 1);
    Declare(name, engine::TypeOfValue(value));
    values_.push_back({name, value});
    return name;
}

void QueryText::Declare(const QString& name, engine::FieldType type) {
    declarations_ += name + u' ' + engine::WordOfType(type);
}

QString QueryText::Operand(const FormulaOperand& operand) {
    return operand.field ? QueryName(*operand.field) : Parameter(operand.value);
}

QString QueryText::Condition(const Formula& formula) {
    QStringList parts;
    for (const Formula& part : formula.parts) {
        parts += Condition(part);
    }
    switch (formula.kind) {
    case Formula::Kind::All:
        return {};
    case Formula::Kind::And:
        return u'(' + parts.join(u" And ") + u')';
    case Formula::Kind::Or:
        return u'(' + parts.join(u" Or ") + u')';
    case Formula::Kind::Not:
        return u"(Not "_s + parts.front() + u')';
    case Formula::Kind::Flag:
        return u'(' + Operand(formula.left) + u" = "_s + Parameter(true) + u')';
    case Formula::Kind::Compare:
        break;
    }
    // The parameters are numbered from left to right.
    const QString left = Operand(formula.left);
    return u'(' + left + u' ' + formula.comparison + u' ' + Operand(formula.right) + u')';
}

QString QueryText::WithParameters(const QString& statement) const {
    return declarations_.isEmpty() ? statement : u"PARAMETERS "_s + declarations_.join(u", "_s) + u"; "_s + statement;
}

std::unique_ptr<engine::QueryDef> QueryText::Open(engine::Database& database, const QString& statement) const {
    auto query = database.CreateQueryDef(WithParameters(statement));
    for (const engine::NamedValue& value : values_) {
        query->SetParameter(value.name, value.value);
    }
    return query;
}

LayoutQuery RecordQuery(const Layout& layout, const Formula& selection) {
    LayoutQuery query;
    QStringList columns = Columns(layout.fields);
    query.firstGroup = static_cast<int>(columns.size());
    QStringList order;
    for (const LayoutGroup& group : layout.groups) {
        columns += u"%1 AS LayoutGroup%2"_s.arg(GroupKey(group)).arg(order.size() + 1);
        order += GroupKey(group);
    }
    order += SortTexts(layout.sort);
    const QString from = FromText(layout, query.parameters);
    QStringList conditions{query.parameters.Condition(selection), query.parameters.Condition(layout.select)};
    conditions.removeAll(QString());
    // A layout of fixed texts alone still has a line for each record.
    query.statement = u"SELECT "_s + (columns.isEmpty() ? u"1 AS LayoutRecord"_s : columns.join(u", "_s)) +
                      u" FROM "_s + from + Clause(u"WHERE"_s, conditions, u" And "_s) +
                      Clause(u"ORDER BY"_s, order, u", "_s);
    return query;
}

LayoutQuery DetailQuery(const LayoutDetails& details) {
    LayoutQuery query;
    query.parameters.Declare(detailKey.toString(), details.key.type);
    QStringList conditions{QueryName(details.key) + u" = "_s + detailKey.toString(),
                           query.parameters.Condition(details.select)};
    conditions.removeAll(QString());
    const QStringList columns = Columns(details.fields);
    query.statement = u"SELECT "_s + (columns.isEmpty() ? u"1 AS LayoutRecord"_s : columns.join(u", "_s)) +
                      u" FROM ["_s + details.table + u']' + Clause(u"WHERE"_s, conditions, u" And "_s) +
                      Clause(u"ORDER BY"_s, SortTexts(details.sort), u", "_s);
    return query;
}

} // namespace velmora::layouts
