#include "engine/dialect/FunctionTable.h"

#include <algorithm>

namespace velmora::engine::dialect {

namespace {

using enum ArgumentKind;
using Form = FunctionForm;
using Result = ResultRule;

// clang-format off
constexpr std::array functions = std::to_array<FunctionRule>({
    // name         arguments  kinds                            result                 form             store's name
    {u"Abs",        1, 1, {Number},                             Result::AsFirstNumber, Form::Call,      "abs"},
    {u"Avg",        1, 1, {Number},                             Result::Real,          Form::Aggregate, "avg"},
    {u"Count",      1, 1, {Any},                                Result::Integer,       Form::Aggregate, "count"},
    {u"Date",       0, 0, {},                                   Result::DateTime,      Form::Call,      "dialect_date"},
    {u"DateAdd",    3, 3, {ArgumentKind::Text, Number, ArgumentKind::Date},
                                                                Result::DateTime,      Form::Call,      "dialect_date_add"},
    {u"DateDiff",   3, 3, {ArgumentKind::Text, ArgumentKind::Date, ArgumentKind::Date},
                                                                Result::Integer,       Form::Call,      "dialect_date_diff"},
    {u"First",      1, 1, {Any},                                Result::AsFirst,       Form::OrderedAggregate, "dialect_first"},
    {u"Format",     1, 2, {NumberOrDate, ArgumentKind::Text},   Result::Text,          Form::Call,      "dialect_format"},
    {u"IIf",        3, 3, {Condition, Any, Any},                Result::CommonOfAll,   Form::Choice,    ""},
    {u"InStr",      2, 4, {Any, Any, Any, Any},                 Result::Integer,       Form::Call,      "dialect_instr"},
    {u"Int",        1, 1, {NumberOrDate},                       Result::WholeOfFirst,  Form::Call,      "dialect_int"},
    {u"IsNull",     1, 1, {Any},                                Result::YesNo,         Form::TestNull,  ""},
    {u"Last",       1, 1, {Any},                                Result::AsFirst,       Form::OrderedAggregate, "dialect_last"},
    {u"LCase",      1, 1, {ArgumentKind::Text},                 Result::Text,          Form::Call,      "dialect_lcase"},
    {u"Left",       2, 2, {ArgumentKind::Text, Whole},          Result::Text,          Form::Call,      "dialect_left"},
    {u"Len",        1, 1, {ArgumentKind::Text},                 Result::Integer,       Form::Call,      "dialect_len"},
    {u"Max",        1, 1, {Any},                                Result::AsFirst,       Form::Aggregate, "max"},
    {u"Mid",        2, 3, {ArgumentKind::Text, Whole, Whole},   Result::Text,          Form::Call,      "dialect_mid"},
    {u"Min",        1, 1, {Any},                                Result::AsFirst,       Form::Aggregate, "min"},
    {u"Now",        0, 0, {},                                   Result::DateTime,      Form::Call,      "dialect_now"},
    {u"Nz",         1, 2, {Any, Any},                           Result::CommonOfAll,   Form::Default,   "coalesce"},
    {u"Right",      2, 2, {ArgumentKind::Text, Whole},          Result::Text,          Form::Call,      "dialect_right"},
    {u"Round",      1, 2, {Number, Whole},                      Result::AsFirstNumber, Form::Call,      "dialect_round"},
    {u"StrComp",    2, 3, {ArgumentKind::Text, ArgumentKind::Text, Whole},
                                                                Result::Integer,       Form::Call,      "dialect_strcomp"},
    {u"Sum",        1, 1, {Number},                             Result::AsFirstNumber, Form::Aggregate, "sum"},
    {u"Trim",       1, 1, {ArgumentKind::Text},                 Result::Text,          Form::Call,      "trim"},
    {u"UCase",      1, 1, {ArgumentKind::Text},                 Result::Text,          Form::Call,      "dialect_ucase"},
});
// clang-format on

} // namespace

int FindFunction(QStringView name) {
    const auto found = std::find_if(functions.begin(), functions.end(), [&](const FunctionRule& rule) {
        return rule.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == functions.end() ? -1 : static_cast<int>(found - functions.begin());
}

const FunctionRule& FunctionAt(int index) {
    return functions[static_cast<size_t>(index)];
}

} // namespace velmora::engine::dialect
