#include "engine/records/RowArena.h"

#include <cstring>

namespace velmora::engine::records {

namespace {

using TextSize = quint32;

std::size_t PackedSize(const Field& field) {
    switch (field.StoredKind()) {
    case Field::Kind::Null:
        return 1;
    case Field::Kind::Text:
        return 1 + sizeof(TextSize) + field.Utf8().size();
    case Field::Kind::Integer:
    case Field::Kind::Real:
        break;
    }
    return 1 + sizeof(qint64);
}

template <typename T>
void Put(char*& to, T value) {
    std::memcpy(to, &value, sizeof value);
    to += sizeof value;
}

template <typename T>
T Take(const char*& from) {
    T value;
    std::memcpy(&value, from, sizeof value);
    from += sizeof value;
    return value;
}

} // namespace

void RowArena::Clear() {
    rows_.clear();
    bytes_.release();
}

const char* RowArena::Pack(std::span<const Field> row) {
    std::size_t size = 0;
    for (const Field& field : row) {
        size += PackedSize(field);
    }
    auto* const begin = static_cast<char*>(bytes_.allocate(size, 1));
    char* to = begin;
    for (const Field& field : row) {
        Put(to, field.StoredKind());
        switch (field.StoredKind()) {
        case Field::Kind::Null:
            break;
        case Field::Kind::Integer:
            Put(to, field.StoredInteger());
            break;
        case Field::Kind::Real:
            Put(to, field.ToReal());
            break;
        case Field::Kind::Text:
            const std::string_view text = field.Utf8();
            Put(to, static_cast<TextSize>(text.size()));
            text.copy(to, text.size());
            to += text.size();
        }
    }
    return begin;
}

void RowArena::Read(qint64 index, std::span<const FieldType> types, std::vector<Field>& row) const {
    row.resize(types.size());
    const char* from = rows_[static_cast<std::size_t>(index)];
    auto type = types.begin();
    for (Field& field : row) {
        switch (Take<Field::Kind>(from)) {
        case Field::Kind::Null:
            field = Field();
            break;
        case Field::Kind::Integer:
            field = Field(*type, Take<qint64>(from));
            break;
        case Field::Kind::Real:
            field = Field(*type, Take<double>(from));
            break;
        case Field::Kind::Text:
            const auto size = Take<TextSize>(from);
            field = Field(*type, from, size);
            from += size;
        }
        ++type;
    }
}

} // namespace velmora::engine::records
