#include "engine/dialect/Types.h"

#include <algorithm>
#include <array>

namespace velmora::engine::dialect {

namespace {

struct TypeName {
    QStringView word;
    SqlType type;
};

constexpr std::array typeNames = std::to_array<TypeName>({
    {u"DateTime", SqlType::DateTime}, {u"Date", SqlType::DateTime},   {u"Text", SqlType::Text},
    {u"String", SqlType::Text},       {u"Char", SqlType::Text},       {u"VarChar", SqlType::Text},
    {u"Memo", SqlType::Text},         {u"Long", SqlType::Integer},    {u"Short", SqlType::Integer},
    {u"Integer", SqlType::Integer},   {u"Int", SqlType::Integer},     {u"SmallInt", SqlType::Integer},
    {u"Byte", SqlType::Integer},      {u"Counter", SqlType::Integer}, {u"Double", SqlType::Real},
    {u"Single", SqlType::Real},       {u"IEEEDouble", SqlType::Real}, {u"IEEESingle", SqlType::Real},
    {u"Number", SqlType::Real},       {u"Real", SqlType::Real},       {u"Float", SqlType::Real},
    {u"Currency", SqlType::Real},     {u"Money", SqlType::Real},      {u"YesNo", SqlType::YesNo},
    {u"Bit", SqlType::YesNo},         {u"Boolean", SqlType::YesNo},   {u"Logical", SqlType::YesNo},
    {u"Value", SqlType::Unknown},
});

} // namespace

std::optional<SqlType> TypeOfName(QStringView word) {
    const auto found = std::find_if(typeNames.begin(), typeNames.end(), [&](const TypeName& entry) {
        return entry.word.compare(word, Qt::CaseInsensitive) == 0;
    });
    return found == typeNames.end() ? std::nullopt : std::optional(found->type);
}

QString WordOfType(SqlType type) {
    switch (type) {
    case SqlType::YesNo:
        return QStringLiteral("YesNo");
    case SqlType::Integer:
        return QStringLiteral("Long");
    case SqlType::Real:
        return QStringLiteral("Double");
    case SqlType::Text:
        return QStringLiteral("Text");
    case SqlType::DateTime:
        return QStringLiteral("DateTime");
    case SqlType::Unknown:
        break;
    }
    return QStringLiteral("Value");
}

SqlType TypeOfValue(const Value& value) {
    if (value.IsBool()) {
        return SqlType::YesNo;
    }
    if (value.IsInteger()) {
        return SqlType::Integer;
    }
    if (value.IsReal()) {
        return SqlType::Real;
    }
    if (value.IsText()) {
        return SqlType::Text;
    }
    return value.IsDateTime() ? SqlType::DateTime : SqlType::Unknown;
}

QString Describe(SqlType type) {
    switch (type) {
    case SqlType::YesNo:
        return QStringLiteral("a yes/no value");
    case SqlType::Integer:
    case SqlType::Real:
        return QStringLiteral("a number");
    case SqlType::Text:
        return QStringLiteral("a text");
    case SqlType::DateTime:
        return QStringLiteral("a date");
    case SqlType::Unknown:
        break;
    }
    return QStringLiteral("a value");
}

SqlType CommonType(SqlType first, SqlType second) {
    if (first == second || second == SqlType::Unknown) {
        return first;
    }
    if (first == SqlType::Unknown) {
        return second;
    }
    const auto numeric = [](SqlType type) { return IsNumber(type) || type == SqlType::YesNo; };
    if (numeric(first) && numeric(second)) {
        return first == SqlType::Real || second == SqlType::Real ? SqlType::Real : SqlType::Integer;
    }
    return SqlType::Text;
}

bool Comparable(SqlType first, SqlType second) {
    const auto numeric = [](SqlType type) { return IsNumber(type) || type == SqlType::YesNo; };
    return first == second || first == SqlType::Unknown || second == SqlType::Unknown ||
           (numeric(first) && numeric(second));
}

} // namespace velmora::engine::dialect
