#pragma once

#include "engine/Database.h"
#include "layouts/formula/Formula.h"

namespace velmora::layouts {

// A query text in the making. Values never stand in the text: each is a parameter of its own kind.
class QueryText {
public:
    // The formula as a condition of the program's dialect, in parentheses; empty for a formula that selects everything.
    QString Condition(const Formula& formula);
    // The name of a new parameter that holds the value.
    QString Parameter(const Value& value);
    // Declares a parameter whose value is set before each run.
    void Declare(const QString& name, engine::FieldType type);

    // The query behind a PARAMETERS clause, its values set.
    std::unique_ptr<engine::QueryDef> Open(engine::Database& database, const QString& statement) const;
    QString WithParameters(const QString& statement) const;

private:
    QString Operand(const FormulaOperand& operand);
    QString Series(const std::vector<Formula>& parts, const QString& word);

    QStringList declarations_;
    std::vector<engine::NamedValue> values_;
};

} // namespace velmora::layouts
