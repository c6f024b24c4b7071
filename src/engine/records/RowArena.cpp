#include "engine/records/RowArena.h"

#include <algorithm>

namespace velmora::engine::records {

namespace {

// Most sets are small; the rows of a large one are read in one go.
constexpr std::size_t firstChunk = 2048;
constexpr std::size_t laterChunk = 65536;

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
    chunks_.clear();
    row_ = next_ = end_ = nullptr;
}

void RowArena::StartChunk(std::size_t bytes) {
    const auto begun = static_cast<std::size_t>(next_ - row_);
    const std::size_t size = std::max(begun + bytes, chunks_.empty() ? firstChunk : laterChunk);
    chunks_.push_back(std::make_unique_for_overwrite<char[]>(size));
    char* const start = chunks_.back().get();
    if (begun > 0) {
        std::memcpy(start, row_, begun);
    }
    row_ = start;
    next_ = start + begun;
    end_ = start + size;
}

void RowArena::Read(qint64 index, std::span<const FieldType> types, std::vector<Field>& row) const {
    row.resize(types.size());
    const char* from = rows_[static_cast<std::size_t>(index)];
    auto type = types.begin();
    for (Field& field : row) {
        switch (Take<Tag>(from)) {
        case Tag::Null:
            field = Field();
            break;
        case Tag::SmallInteger:
            field = Field(*type, qint64{Take<qint8>(from)});
            break;
        case Tag::Integer:
            field = Field(*type, Take<qint64>(from));
            break;
        case Tag::Real:
            field = Field(*type, Take<double>(from));
            break;
        case Tag::Text:
            const auto size = Take<TextSize>(from);
            field = Field(*type, from, size);
            from += size;
        }
        ++type;
    }
}

} // namespace velmora::engine::records
