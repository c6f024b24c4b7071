#include "engine/dialect/FunctionTable.h"

#include <algorithm>

namespace velmora::engine::dialect {

namespace {

struct IntervalName {
    QStringView name;
    Interval interval;
};

constexpr std::array intervals = std::to_array<IntervalName>({
    {u"yyyy", Interval::Year},
    {u"q", Interval::Quarter},
    {u"m", Interval::Month},
    {u"ww", Interval::Week},
    {u"d", Interval::Day},
    {u"y", Interval::Day},
    {u"w", Interval::Day},
    {u"h", Interval::Hour},
    {u"n", Interval::Minute},
    {u"s", Interval::Second},
});

using enum ArgumentKind;
using Form = FunctionForm;
using Result = ResultRule;

// clang-format off
constexpr std::array functions = std::to_array<FunctionRule>({
    // name         arguments  kinds                            result                 form
    {u"Abs",        1, 1, {Number},                             Result::AsFirstNumber, Form::Call},
    {u"Avg",        1, 1, {Number},                             Result::Real,          Form::Aggregate},
    {u"Count",      1, 1, {Any},                                Result::Integer,       Form::Aggregate},
    {u"Date",       0, 0, {},                                   Result::DateTime,      Form::Call},
    {u"DateAdd",    3, 3, {Interval, Number, ArgumentKind::Date}, Result::DateTime,      Form::Call},
    {u"DateDiff",   3, 3, {Interval, ArgumentKind::Date, ArgumentKind::Date}, Result::Integer,       Form::Call},
    {u"First",      1, 1, {Any},                                Result::AsFirst,       Form::OrderedAggregate},
    {u"Format",     1, 2, {NumberOrDate, ArgumentKind::Text},   Result::Text,          Form::Call},
    {u"IIf",        3, 3, {Condition, Any, Any},                Result::CommonOfAll,   Form::Choice},
    {u"InStr",      2, 4, {Any, Any, Any, Any},                 Result::Integer,       Form::Call},
    {u"Int",        1, 1, {NumberOrDate},                       Result::WholeOfFirst,  Form::Call},
    {u"IsNull",     1, 1, {Any},                                Result::YesNo,         Form::TestNull},
    {u"Last",       1, 1, {Any},                                Result::AsFirst,       Form::OrderedAggregate},
    {u"LCase",      1, 1, {ArgumentKind::Text},                 Result::Text,          Form::Call},
    {u"Left",       2, 2, {ArgumentKind::Text, Whole},          Result::Text,          Form::Call},
    {u"Len",        1, 1, {ArgumentKind::Text},                 Result::Integer,       Form::Call},
    {u"Max",        1, 1, {Any},                                Result::AsFirst,       Form::Aggregate},
    {u"Mid",        2, 3, {ArgumentKind::Text, Whole, Whole},   Result::Text,          Form::Call},
    {u"Min",        1, 1, {Any},                                Result::AsFirst,       Form::Aggregate},
    {u"Now",        0, 0, {},                                   Result::DateTime,      Form::Call},
    {u"Nz",         1, 2, {Any, Any},                           Result::CommonOfAll,   Form::Default},
    {u"Right",      2, 2, {ArgumentKind::Text, Whole},          Result::Text,          Form::Call},
    {u"Round",      1, 2, {Number, Whole},                      Result::AsFirstNumber, Form::Call},
    {u"StrComp",    2, 3, {ArgumentKind::Text, ArgumentKind::Text, Whole},
                                                                Result::Integer,       Form::Call},
    {u"Sum",        1, 1, {Number},                             Result::AsFirstNumber, Form::Aggregate},
    {u"Trim",       1, 1, {ArgumentKind::Text},                 Result::Text,          Form::Call},
    {u"UCase",      1, 1, {ArgumentKind::Text},                 Result::Text,          Form::Call},
});
// clang-format on

} // namespace

const FunctionRule* FindFunction(QStringView name) {
    const auto found = std::find_if(functions.begin(), functions.end(), [&](const FunctionRule& rule) {
        return rule.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == functions.end() ? nullptr : &*found;
}

std::span<const FunctionRule> Functions() {
    return functions;
}

std::optional<dialect::Interval> IntervalOf(QStringView name) {
    const auto found = std::find_if(intervals.begin(), intervals.end(), [&](const IntervalName& each) {
        return each.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == intervals.end() ? std::nullopt : std::optional(found->interval);
}

} // namespace velmora::engine::dialect
