#include "layouts/formula/Condition.h"

#include "engine/FieldType.h"

namespace velmora::layouts {

using namespace Qt::StringLiterals;
using engine::FieldType;

namespace {

QString Sign(Formula::Comparison comparison) {
    switch (comparison) {
    case Formula::Comparison::Equal:
        return u"="_s;
    case Formula::Comparison::NotEqual:
        return u"<>"_s;
    case Formula::Comparison::Less:
        return u"<"_s;
    case Formula::Comparison::LessEqual:
        return u"<="_s;
    case Formula::Comparison::Greater:
        return u">"_s;
    case Formula::Comparison::GreaterEqual:
        break;
    }
    return u">="_s;
}

} // namespace

void QueryText::Declare(const QString& name, FieldType type) {
    declarations_ += name + u' ' + engine::WordOfType(type);
}

QString QueryText::Parameter(const Value& value) {
    const QString name = u"LayoutValue%1"_s.arg(values_.size() + 1);
    Declare(name, engine::TypeOfValue(value));
    values_.push_back({name, value});
    return name;
}

QString QueryText::Operand(const FormulaOperand& operand) {
    return operand.field ? QueryName(*operand.field) : Parameter(operand.value);
}

QString QueryText::Series(const std::vector<Formula>& parts, const QString& word) {
    QStringList conditions;
    for (const Formula& part : parts) {
        conditions += Condition(part);
    }
    return u'(' + conditions.join(word) + u')';
}

QString QueryText::Condition(const Formula& formula) {
    switch (formula.kind) {
    case Formula::Kind::All:
        return {};
    case Formula::Kind::And:
        return Series(formula.parts, u" And "_s);
    case Formula::Kind::Or:
        return Series(formula.parts, u" Or "_s);
    case Formula::Kind::Not:
        return u"(Not "_s + Condition(formula.parts.front()) + u')';
    case Formula::Kind::Flag:
        return u'(' + Operand(formula.left) + u" = "_s + Parameter(true) + u')';
    case Formula::Kind::Compare:
        break;
    }
    const QString left = Operand(formula.left);
    return u'(' + left + u' ' + Sign(formula.comparison) + u' ' + Operand(formula.right) + u')';
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

} // namespace velmora::layouts
