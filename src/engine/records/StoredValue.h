#pragma once

#include "base/Value.h"
#include "engine/Catalog.h"
#include "engine/Recordset.h"

#include <QByteArray>

#include <optional>
#include <span>
#include <variant>
#include <vector>

namespace velmora::engine::records {

// A value in the form in which the database holds it.
class StoredValue {
public:
    StoredValue() = default;
    // A copy of the field's value.
    explicit StoredValue(const Field& field);

    // `value` as a field of that type stores it; none when it is of a kind that the type does not take. Whole numbers
    // are rounded half to even; a yes/no takes True and False and the numbers 0, 1 and -1 that stand for them; texts
    // that read as a number or date-time are taken as one.
    static std::optional<StoredValue> From(const Value& value, FieldType type);

    // A view of the value as a field; good while the value stays.
    Field AsField(FieldType type = FieldType::Unknown) const;

private:
    using Data = std::variant<std::monostate, qint64, double, QByteArray>;
    explicit StoredValue(Data data) : data_(std::move(data)) {}

    Data data_;
};

// Copies of the fields' values.
std::vector<StoredValue> CopyOf(std::span<const Field> row);

// True when both hold the same value for a reader of that type: a yes is a yes whatever its number, a date-time the
// same moment however it is written. Texts differ when a letter's case does.
bool SameContent(const Field& a, const Field& b, FieldType type);

} // namespace velmora::engine::records
