#include "engine/FieldType.h"

#include <array>

namespace velmora::engine {

namespace {

struct TypeWords {
    QStringView declared;
    QStringView kind;
    QStringView values;
};

// In the order of FieldType.
constexpr std::array words = std::to_array<TypeWords>({
    {u"Value", u"a value", u"a value"},
    {u"YesNo", u"a yes/no value", u"a yes/no"},
    {u"Long", u"a number", u"a whole number"},
    {u"Double", u"a number", u"a number"},
    {u"Text", u"a text", u"a text"},
    {u"DateTime", u"a date", u"a date-time"},
});

const TypeWords& WordsOf(FieldType type) {
    return words[static_cast<size_t>(type)];
}

} // namespace

FieldType TypeOfValue(const Value& value) {
    if (value.IsBool()) {
        return FieldType::YesNo;
    }
    if (value.IsInteger()) {
        return FieldType::Integer;
    }
    if (value.IsReal()) {
        return FieldType::Real;
    }
    if (value.IsText()) {
        return FieldType::Text;
    }
    return value.IsDateTime() ? FieldType::DateTime : FieldType::Unknown;
}

QString WordOfType(FieldType type) {
    return WordsOf(type).declared.toString();
}

QString Describe(FieldType type) {
    return WordsOf(type).kind.toString();
}

QString DescribeValues(FieldType type) {
    return WordsOf(type).values.toString();
}

} // namespace velmora::engine
