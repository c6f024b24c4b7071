#include "engine/sqlite/QueryInput.h"

#include <QStringEncoder>

namespace velmora::engine::sqlite {

namespace {

constexpr qsizetype storageTextSize = 19;
// UTF-8 bytes that one UTF-16 unit can need.
constexpr qsizetype bytesPerUnit = 3;

const Value& ValueOf(const dialect::Binding& binding, const QueryInput& input) {
    const auto index = static_cast<std::size_t>(binding.index);
    switch (binding.source) {
    case dialect::Binding::Source::Literal:
        return input.shape.literals[index];
    case dialect::Binding::Source::Parameter:
        return input.parameters[index];
    case dialect::Binding::Source::Constant:
        break;
    }
    return binding.constant;
}

const QString* TextOf(const Value& value) {
    return std::get_if<QString>(&value.Data());
}

} // namespace

void ValueBinder::Bind(Statement& statement, const std::vector<dialect::Binding>& bindings, const QueryInput& input) {
    // Room for everything first: the statement keeps addresses, so the bytes must not move later.
    qsizetype needed = 0;
    for (const dialect::Binding& binding : bindings) {
        const QString* text = TextOf(ValueOf(binding, input));
        needed += text == nullptr ? storageTextSize : std::max(text->size() * bytesPerUnit, storageTextSize);
    }
    if (bytes_.size() < needed) {
        bytes_.resize(needed);
    }
    next_ = bytes_.data();
    int place = 0;
    for (const dialect::Binding& binding : bindings) {
        BindValue(statement, ++place, ValueOf(binding, input), binding.type);
    }
}

void ValueBinder::BindValue(Statement& statement, int place, const Value& value, FieldType type) {
    if (const QString* text = TextOf(value)) {
        if (type == FieldType::DateTime) {
            if (const auto moment = ParseStorageText(*text)) {
                return BindMoment(statement, place, *moment);
            }
        }
        BindText(statement, place, *text);
    } else if (value.IsDateTime()) {
        BindMoment(statement, place, *value.ToDateTime());
    } else if (value.IsReal()) {
        statement.BindReal(place, value.ToReal());
    } else if (value.IsBool()) {
        statement.BindInteger(place, value.ToBool() ? 1 : 0);
    } else if (value.IsInteger()) {
        statement.BindInteger(place, value.ToInteger());
    } else {
        statement.BindNull(place);
    }
}

void ValueBinder::BindText(Statement& statement, int place, QStringView text) {
    char* begin = next_;
    // Nearly all texts are plain letters, which need no encoder.
    const char16_t* at = text.utf16();
    const char16_t* const end = at + text.size();
    while (at < end && *at < 0x80) {
        *next_++ = static_cast<char>(*at++);
    }
    if (at < end) {
        QStringEncoder encoder(QStringEncoder::Utf8);
        next_ = encoder.appendToBuffer(next_, QStringView(at, end));
    }
    statement.BindText(place, begin, next_ - begin);
}

void ValueBinder::BindMoment(Statement& statement, int place, DateTime moment) {
    char text[storageTextSize];
    WriteStorageText(moment, text);
    char* begin = next_;
    next_ = std::copy(std::begin(text), std::end(text), begin);
    statement.BindText(place, begin, storageTextSize);
}

} // namespace velmora::engine::sqlite
