#include "engine/Recordset.h"

namespace velmora::engine {

bool Field::ToBool() const {
    switch (kind_) {
    case Kind::Integer:
        return integer_ != 0;
    case Kind::Real:
        return real_ != 0;
    default:
        return false;
    }
}

qint64 Field::ToInteger() const {
    switch (kind_) {
    case Kind::Null:
        return 0;
    case Kind::Integer:
        return type_ == FieldType::YesNo ? -qint64{integer_ != 0} : integer_;
    default:
        return ToValue().ToInteger();
    }
}

double Field::ToReal() const {
    return kind_ == Kind::Real ? real_ : ToValue().ToReal();
}

QString Field::ToText() const {
    if (kind_ == Kind::Text) {
        return QString::fromUtf8(text_, size_);
    }
    return ToValue().ToText();
}

std::optional<DateTime> Field::ToDateTime() const {
    if (kind_ != Kind::Text) {
        return std::nullopt;
    }
    return ParseStorageText(text_, size_);
}

Value Field::ToValue() const {
    switch (kind_) {
    case Kind::Null:
        return {};
    case Kind::Integer:
        return type_ == FieldType::YesNo ? Value(integer_ != 0) : Value(integer_);
    case Kind::Real:
        return type_ == FieldType::YesNo ? Value(real_ != 0) : Value(real_);
    case Kind::Text:
        if (type_ == FieldType::DateTime) {
            if (const auto moment = ParseStorageText(text_, size_)) {
                return *moment;
            }
        }
        return QString::fromUtf8(text_, size_);
    }
    return {};
}

} // namespace velmora::engine
