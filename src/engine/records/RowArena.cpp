#include "engine/records/RowArena.h"

#include <algorithm>
#include <iterator>

namespace velmora::engine::records {

namespace {

constexpr std::size_t chunkSize = 65536;

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
    std::move(chunks_.begin(), chunks_.end(), std::back_inserter(spare_));
    chunks_.clear();
    row_ = next_ = end_ = nullptr;
}

void RowArena::StartChunk(std::size_t bytes) {
    const auto begun = static_cast<std::size_t>(next_ - row_);
    if (spare_.empty() || begun + bytes > chunkSize) {
        chunks_.emplace_back(std::max(begun + bytes, chunkSize));
    } else {
        chunks_.push_back(std::move(spare_.back()));
        spare_.pop_back();
    }
    char* const start = chunks_.back().data();
    if (begun > 0) {
        std::memcpy(start, row_, begun);
    }
    rows_.back() = start;
    row_ = start;
    next_ = start + begun;
    end_ = start + chunks_.back().size();
}

void RowArena::Read(qint64 index, std::span<const FieldType> types, std::vector<Field>& row) const {
    row.resize(types.size());
    const char* from = rows_[static_cast<std::size_t>(index)];
    auto type = types.begin();
    for (Field& field : row) {
        switch (const auto tag = Take<unsigned char>(from)) {
        case tagNull:
            field = Field();
            break;
        case tagInt8:
            field = Field(*type, qint64{Take<qint8>(from)});
            break;
        case tagInt32:
            field = Field(*type, qint64{Take<qint32>(from)});
            break;
        case tagInt64:
            field = Field(*type, Take<qint64>(from));
            break;
        case tagReal:
            field = Field(*type, Take<double>(from));
            break;
        default:
            const std::size_t size = tag == tagLongText ? Take<TextSize>(from) : std::size_t{tag} - tagShortText;
            field = Field(*type, from, static_cast<qsizetype>(size));
            from += size;
        }
        ++type;
    }
}

} // namespace velmora::engine::records
