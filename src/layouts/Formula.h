#pragma once

#include "base/Value.h"
#include "layouts/FieldScope.h"

#include <QStringView>

#include <optional>
#include <vector>

namespace velmora::layouts {

// One side of a comparison: a field, or a value that the formula names.
struct FormulaOperand {
    std::optional<FieldName> field;
    Value value;
    engine::FieldType Type() const;
};

// A record selection formula as a tree.
struct Formula {
    enum class Kind {
        All,     // an empty formula: every record
        And,     // all of `parts`
        Or,      // any of `parts`
        Not,     // not `parts[0]`
        Compare, // left, comparison, right
        Flag,    // `left` is a yes
    };

    Kind kind = Kind::All;
    QString comparison; // = <> < <= > >=
    FormulaOperand left;
    FormulaOperand right;
    std::vector<Formula> parts;

    // The dates that it names, in their order.
    std::vector<DateTime> Dates() const;
};

// Reads a formula of the selection language: fields as {Table.Field}, dates as Date(year, month, day), numbers, texts
// in single or double quotes, Yes, No, True, False; = <> < <= > >=; Not before And before Or; parentheses. Words and
// names ignore letter case. A yes/no field alone is a condition.
//
// Throws an Error whose description names the place for anything else: a field that `scope` does not have, a date that
// does not exist, values of kinds that do not compare, and a text that is longer or nests deeper than any sensible one.
Formula ParseFormula(QStringView text, const FieldScope& scope);

// Whether a formula can compare values of the two types.
bool SameKind(engine::FieldType left, engine::FieldType right);

} // namespace velmora::layouts
