#pragma once

#include "engine/Database.h"
#include "layouts/file/LayoutFile.h"

#include <QStringList>

namespace velmora::layouts {

// A query text in the making. Values never stand in the text: each is a parameter of its own kind.
class QueryText {
public:
    // The formula as a condition of the program's dialect, in parentheses; empty for a formula that selects everything.
    QString Condition(const Formula& formula);
    // Declares a parameter whose value is set before each run.
    void Declare(const QString& name, engine::FieldType type);

    // The query behind a PARAMETERS clause, its values set.
    std::unique_ptr<engine::QueryDef> Open(engine::Database& database, const QString& statement) const;
    QString WithParameters(const QString& statement) const;

private:
    QString Operand(const FormulaOperand& operand);
    // The name of a new parameter that holds the value.
    QString Parameter(const Value& value);

    QStringList declarations_;
    std::vector<engine::NamedValue> values_;
};

// The query of a layout's records: its fields in the order of the FieldList, and behind them what makes each group.
struct LayoutQuery {
    QueryText parameters;
    QString statement;
    // Column of the first group's key.
    int firstGroup = 0;
};

// `selection` is the formula of the run; the layout's own one applies too.
LayoutQuery RecordQuery(const Layout& layout, const Formula& selection);

// The query of the records below one record, whose field the parameter `detailKey` holds.
inline constexpr QStringView detailKey = u"LayoutDetailKey";
LayoutQuery DetailQuery(const LayoutDetails& details);

} // namespace velmora::layouts
