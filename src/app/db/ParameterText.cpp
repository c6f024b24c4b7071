#include "app/db/ParameterText.h"

#include <QRegularExpression>

#include <cmath>

namespace velmora::db {

namespace {

using engine::FieldType;

std::optional<Value> ReadDateTime(const QString& text) {
    constexpr qsizetype dayLength = 10;
    constexpr qsizetype fullLength = 19;
    const bool isForm = text.size() == dayLength || (text.size() == fullLength && text[dayLength] == u' ');
    const std::optional<DateTime> moment = isForm ? ParseStorageText(text) : std::nullopt;
    return moment ? std::optional<Value>(*moment) : std::nullopt;
}

std::optional<Value> ReadYesNo(const QString& text) {
    const bool isTrue = text.compare(u"true", Qt::CaseInsensitive) == 0;
    const bool isFalse = text.compare(u"false", Qt::CaseInsensitive) == 0;
    return isTrue || isFalse ? std::optional<Value>(isTrue) : std::nullopt;
}

// Numbers have no blanks, no "inf" and no digits of other scripts.
bool Matches(const QString& text, const char* form) {
    return QRegularExpression(QRegularExpression::anchoredPattern(QLatin1StringView(form))).match(text).hasMatch();
}

std::optional<Value> ReadInteger(const QString& text) {
    bool fits = false;
    const qint64 number = text.toLongLong(&fits);
    return fits && Matches(text, "[+-]?[0-9]+") ? std::optional<Value>(number) : std::nullopt;
}

std::optional<Value> ReadReal(const QString& text) {
    bool fits = false;
    const double number = text.toDouble(&fits);
    const bool isNumber = Matches(text, "[+-]?([0-9]+\\.?[0-9]*|\\.[0-9]+)([eE][+-]?[0-9]+)?");
    return fits && isNumber && std::isfinite(number) ? std::optional<Value>(number) : std::nullopt;
}

} // namespace

std::optional<Value> ReadParameter(const QString& text, FieldType type) {
    switch (type) {
    case FieldType::YesNo:
        return ReadYesNo(text);
    case FieldType::Integer:
        return ReadInteger(text);
    case FieldType::Real:
        return ReadReal(text);
    case FieldType::DateTime:
        return ReadDateTime(text);
    case FieldType::Text:
        return Value(text);
    case FieldType::Unknown:
        break;
    }
    for (const auto read : {ReadInteger, ReadReal, ReadDateTime, ReadYesNo}) {
        if (const std::optional<Value> value = read(text)) {
            return value;
        }
    }
    return Value(text);
}

QString TypeInWords(FieldType type) {
    switch (type) {
    case FieldType::YesNo:
        return QStringLiteral("true or false");
    case FieldType::DateTime:
        return DescribeValues(type) + QStringLiteral(" as YYYY-MM-DD or YYYY-MM-DD HH:MM:SS");
    case FieldType::Unknown:
        return DescribeValues(FieldType::Text);
    default:
        return DescribeValues(type);
    }
}

} // namespace velmora::db
