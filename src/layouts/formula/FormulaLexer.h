#pragma once

#include "base/Value.h"

#include <QStringView>

#include <vector>

namespace velmora::layouts {

enum class FormulaMark {
    End,
    Field, // {Table.Field}; `text` without the braces
    Value, // a number or a text
    Word,  // And, Or, Not, Yes, No, True, False, Date and whatever else is written in letters
    Open,
    Close,
    Comma,
    Minus,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
};

struct FormulaToken {
    FormulaMark mark = FormulaMark::End;
    // Place of its first character.
    qsizetype at = 0;
    QStringView text;
    Value value;
};

// The tokens of a formula, the last one an End. They are views of the formula. Throws FormulaError for what is no token
// of the language.
std::vector<FormulaToken> TokenizeFormula(QStringView formula);

} // namespace velmora::layouts
