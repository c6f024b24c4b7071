#include "engine/records/StoredValue.h"

#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::records {

namespace {

std::optional<double> NumberIn(const QString& text) {
    bool isNumber = false;
    const double number = text.trimmed().toDouble(&isNumber);
    return isNumber && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

std::optional<qint64> WholeNumber(const Value& value) {
    constexpr double limit = 9.2e18;
    double number = 0;
    if (value.IsText()) {
        bool isWhole = false;
        const qint64 whole = value.ToText().trimmed().toLongLong(&isWhole);
        if (isWhole) {
            return whole;
        }
        const auto read = NumberIn(value.ToText());
        if (!read) {
            return std::nullopt;
        }
        number = *read;
    } else if (value.IsReal()) {
        number = value.ToReal();
    } else if (value.IsDateTime()) {
        return std::nullopt;
    } else {
        return value.ToInteger();
    }
    if (!(std::abs(number) < limit)) {
        return std::nullopt;
    }
    return Value(number).ToInteger();
}

std::optional<double> RealNumber(const Value& value) {
    if (value.IsText()) {
        return NumberIn(value.ToText());
    }
    if (value.IsDateTime() || !std::isfinite(value.ToReal())) {
        return std::nullopt;
    }
    return value.ToReal();
}

std::optional<qint64> YesOrNo(const Value& value) {
    if (value.IsBool()) {
        return qint64{value.ToBool()};
    }
    if (value.IsInteger() && std::abs(value.ToInteger()) <= 1) {
        return std::abs(value.ToInteger());
    }
    return std::nullopt;
}

std::optional<QByteArray> DateTimeText(const Value& value) {
    if (const auto moment = value.ToDateTime()) {
        return StorageText(*moment).toLatin1();
    }
    return std::nullopt;
}

} // namespace

StoredValue::StoredValue(const Field& field) {
    switch (field.StoredKind()) {
    case Field::Kind::Null:
        break;
    case Field::Kind::Integer:
        data_ = field.StoredInteger();
        break;
    case Field::Kind::Real:
        data_ = field.ToReal();
        break;
    case Field::Kind::Text:
        data_ = QByteArray(field.Utf8().data(), static_cast<qsizetype>(field.Utf8().size()));
    }
}

std::optional<StoredValue> StoredValue::From(const Value& value, FieldType type) {
    const auto stored = [](auto&& converted) -> std::optional<StoredValue> {
        if (!converted) {
            return std::nullopt;
        }
        return StoredValue(Data(*std::forward<decltype(converted)>(converted)));
    };
    if (value.IsNull()) {
        return StoredValue();
    }
    switch (type) {
    case FieldType::YesNo:
        return stored(YesOrNo(value));
    case FieldType::Integer:
        return stored(WholeNumber(value));
    case FieldType::Real:
        return stored(RealNumber(value));
    case FieldType::DateTime:
        return stored(DateTimeText(value));
    case FieldType::Text:
        return StoredValue(Data(value.ToText().toUtf8()));
    case FieldType::Unknown:
        break;
    }
    if (value.IsBool()) {
        return StoredValue(Data(qint64{value.ToBool()}));
    }
    if (value.IsInteger()) {
        return StoredValue(Data(value.ToInteger()));
    }
    if (value.IsReal()) {
        return stored(RealNumber(value));
    }
    return StoredValue(Data(value.ToText().toUtf8()));
}

Field StoredValue::AsField(FieldType type) const {
    if (const auto* number = std::get_if<qint64>(&data_)) {
        return Field(type, *number);
    }
    if (const auto* number = std::get_if<double>(&data_)) {
        return Field(type, *number);
    }
    if (const auto* text = std::get_if<QByteArray>(&data_)) {
        return Field(type, text->constData(), text->size());
    }
    return {};
}

std::vector<StoredValue> CopyOf(std::span<const Field> row) {
    return std::vector<StoredValue>(row.begin(), row.end());
}

bool SameContent(const Field& a, const Field& b, FieldType type) {
    if (a.IsNull() || b.IsNull()) {
        return a.IsNull() && b.IsNull();
    }
    const bool bothTexts = a.StoredKind() == Field::Kind::Text && b.StoredKind() == Field::Kind::Text;
    if (bothTexts && a.Utf8() == b.Utf8()) {
        return true;
    }
    if (type == FieldType::DateTime && bothTexts) {
        return a.ToDateTime() && a.ToDateTime() == b.ToDateTime();
    }
    if ((a.StoredKind() == Field::Kind::Text) != (b.StoredKind() == Field::Kind::Text) || bothTexts) {
        return false;
    }
    if (type == FieldType::YesNo) {
        return a.ToBool() == b.ToBool();
    }
    return a.StoredKind() == Field::Kind::Integer && b.StoredKind() == Field::Kind::Integer
               ? a.StoredInteger() == b.StoredInteger()
               : a.ToReal() == b.ToReal();
}

} // namespace velmora::engine::records
