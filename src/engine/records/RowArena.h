#pragma once

#include "engine/Recordset.h"

#include <cstring>
#include <limits>
#include <memory>
#include <span>
#include <vector>

namespace velmora::engine::records {

// Rows packed one behind the other, with their texts: one byte per field that says what it is, then its bytes. An empty
// field takes no more than that byte, and most fields of a wide row are empty.
class RowArena {
public:
    void Clear();

    // A row is begun with the number of its fields, which are then added in turn.
    void BeginRow(int fields) {
        room_ = static_cast<std::size_t>(fields) * longestNumber;
        row_ = next_;
        MakeRoom(room_);
        rows_.push_back(row_);
    }
    void AddNull() { Put(Tag::Null); }
    void AddInteger(qint64 number) {
        if (number >= std::numeric_limits<qint8>::min() && number <= std::numeric_limits<qint8>::max()) {
            Put(Tag::SmallInteger);
            Put(static_cast<qint8>(number));
        } else {
            Put(Tag::Integer);
            Put(number);
        }
    }
    void AddReal(double number) {
        Put(Tag::Real);
        Put(number);
    }
    void AddText(const char* utf8, std::size_t size) {
        MakeRoom(room_ + sizeof(TextSize) + size);
        rows_.back() = row_; // it may have moved to a new chunk
        Put(Tag::Text);
        Put(static_cast<TextSize>(size));
        std::memcpy(next_, utf8, size);
        next_ += size;
    }

    qint64 Size() const { return static_cast<qint64>(rows_.size()); }
    // Reads a row that has as many fields as there are `types`. Its texts are good until Clear.
    void Read(qint64 index, std::span<const FieldType> types, std::vector<Field>& row) const;

private:
    enum class Tag : unsigned char { Null, SmallInteger, Integer, Real, Text };
    using TextSize = quint32;
    static constexpr std::size_t longestNumber = 1 + sizeof(qint64);

    template <typename T>
    void Put(T value) {
        std::memcpy(next_, &value, sizeof value);
        next_ += sizeof value;
    }
    void MakeRoom(std::size_t bytes) {
        if (static_cast<std::size_t>(end_ - next_) < bytes) {
            StartChunk(bytes);
        }
    }
    // Goes on in a new chunk, with the row that has been begun.
    void StartChunk(std::size_t bytes);

    std::vector<const char*> rows_;
    std::vector<std::unique_ptr<char[]>> chunks_;
    // The row being added, and what its numbers may need at most.
    char* row_ = nullptr;
    std::size_t room_ = 0;
    char* next_ = nullptr;
    char* end_ = nullptr;
};

} // namespace velmora::engine::records
