#include "engine/dialect/Types.h"

#include <algorithm>
#include <array>

namespace velmora::engine::dialect {

namespace {

struct TypeName {
    QStringView word;
    FieldType type;
};

constexpr std::array typeNames = std::to_array<TypeName>({
    {u"DateTime", FieldType::DateTime}, {u"Date", FieldType::DateTime},   {u"Text", FieldType::Text},
    {u"String", FieldType::Text},       {u"Char", FieldType::Text},       {u"VarChar", FieldType::Text},
    {u"Memo", FieldType::Text},         {u"Long", FieldType::Integer},    {u"Short", FieldType::Integer},
    {u"Integer", FieldType::Integer},   {u"Int", FieldType::Integer},     {u"SmallInt", FieldType::Integer},
    {u"Byte", FieldType::Integer},      {u"Counter", FieldType::Integer}, {u"Double", FieldType::Real},
    {u"Single", FieldType::Real},       {u"IEEEDouble", FieldType::Real}, {u"IEEESingle", FieldType::Real},
    {u"Number", FieldType::Real},       {u"Real", FieldType::Real},       {u"Float", FieldType::Real},
    {u"Currency", FieldType::Real},     {u"Money", FieldType::Real},      {u"YesNo", FieldType::YesNo},
    {u"Bit", FieldType::YesNo},         {u"Boolean", FieldType::YesNo},   {u"Logical", FieldType::YesNo},
    {u"Value", FieldType::Unknown},
});

} // namespace

std::optional<FieldType> TypeOfName(QStringView word) {
    const auto found = std::find_if(typeNames.begin(), typeNames.end(), [&](const TypeName& entry) {
        return entry.word.compare(word, Qt::CaseInsensitive) == 0;
    });
    return found == typeNames.end() ? std::nullopt : std::optional(found->type);
}

FieldType CommonType(FieldType first, FieldType second) {
    if (first == second || second == FieldType::Unknown) {
        return first;
    }
    if (first == FieldType::Unknown) {
        return second;
    }
    const auto numeric = [](FieldType type) { return IsNumber(type) || type == FieldType::YesNo; };
    if (numeric(first) && numeric(second)) {
        return first == FieldType::Real || second == FieldType::Real ? FieldType::Real : FieldType::Integer;
    }
    return FieldType::Text;
}

bool Comparable(FieldType first, FieldType second) {
    const auto numeric = [](FieldType type) { return IsNumber(type) || type == FieldType::YesNo; };
    return first == second || first == FieldType::Unknown || second == FieldType::Unknown ||
           (numeric(first) && numeric(second));
}

} // namespace velmora::engine::dialect
