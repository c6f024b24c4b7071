#pragma once

#include "engine/Catalog.h"

#include <QStringView>

#include <array>
#include <optional>
#include <span>

namespace velmora::engine::dialect {

// What a function wants in a place, and so what its operand is turned into.
enum class ArgumentKind { Any, Condition, Text, Number, Whole, Date, NumberOrDate, Interval };

enum class ResultRule { YesNo, Integer, Real, Text, DateTime, AsFirst, AsFirstNumber, WholeOfFirst, CommonOfAll };

// How it is written in SQL.
enum class FunctionForm {
    Call,             // by its name
    Choice,           // IIf: CASE
    Default,          // Nz: coalesce
    TestNull,         // IsNull
    Aggregate,        // over rows, as the store has it
    OrderedAggregate, // over rows in the order of their keys
};

// One function of the dialect. What does it in a store is in the table of that store's writer.
struct FunctionRule {
    QStringView name;
    int minimum; // arguments
    int maximum;
    std::array<ArgumentKind, 4> arguments;
    ResultRule result;
    FunctionForm form;

    bool IsAggregate() const { return form == FunctionForm::Aggregate || form == FunctionForm::OrderedAggregate; }
};

// Null for a name of none, in any letter case.
const FunctionRule* FindFunction(QStringView name);
std::span<const FunctionRule> Functions();

// What DateAdd and DateDiff count in.
enum class Interval { Year, Quarter, Month, Week, Day, Hour, Minute, Second };

// By its short name, in any letter case: yyyy, q, m, ww, d (also y and w), h, n, s. None for any other.
std::optional<Interval> IntervalOf(QStringView name);

} // namespace velmora::engine::dialect
