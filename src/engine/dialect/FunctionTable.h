#pragma once

#include "engine/Catalog.h"

#include <QStringView>

#include <array>

namespace velmora::engine::dialect {

// What a function wants in a place, and so what its operand is turned into.
enum class ArgumentKind { Any, Condition, Text, Number, Whole, Date, NumberOrDate, Interval };

enum class ResultRule { YesNo, Integer, Real, Text, DateTime, AsFirst, AsFirstNumber, WholeOfFirst, CommonOfAll };

// How the store is told to do it.
enum class FunctionForm {
    Call,             // storeName(arguments)
    Choice,           // IIf: CASE
    Default,          // Nz: coalesce
    TestNull,         // IsNull
    Aggregate,        // storeName(argument)
    OrderedAggregate, // storeName(argument, key of the row ...)
};

// One function of the dialect. A store of another make needs another column of store names, nothing else.
struct FunctionRule {
    QStringView name;
    int minimum; // arguments
    int maximum;
    std::array<ArgumentKind, 4> arguments;
    ResultRule result;
    FunctionForm form;
    const char* storeName;

    bool IsAggregate() const { return form == FunctionForm::Aggregate || form == FunctionForm::OrderedAggregate; }
};

// The place of a function in the table, in any letter case; -1 without one.
int FindFunction(QStringView name);
const FunctionRule& FunctionAt(int index);

} // namespace velmora::engine::dialect
