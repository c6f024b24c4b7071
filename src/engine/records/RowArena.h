#pragma once

#include "engine/Recordset.h"

#include <cstring>
#include <limits>
#include <span>
#include <vector>

namespace velmora::engine::records {

// Rows packed one behind the other, with their texts: one byte per field that says what it is, then its bytes. An empty
// field takes no more than that byte, and most fields of a wide row are empty.
class RowArena {
public:
    // A piece of memory for many rows.
    using Chunk = std::vector<char>;

    // The arena takes chunks from `spare`, which must outlive it, and gives them back: fresh pages from the system with
    // every opening of a large set would cost a tenth of the time of reading its rows.
    explicit RowArena(std::vector<Chunk>& spare) : spare_(spare) {}
    ~RowArena() { Clear(); }
    RowArena(const RowArena&) = delete;
    RowArena& operator=(const RowArena&) = delete;

    void Clear();

    // A row is begun with the number of its fields, which are then added in turn.
    void BeginRow(int fields) {
        row_ = next_;
        rows_.push_back(row_);
        room_ = static_cast<std::size_t>(fields) * longestNumber;
        MakeRoom(room_);
    }
    void AddNull() { Put(tagNull); }
    void AddInteger(qint64 number) {
        if (Fits<qint8>(number)) {
            Put(tagInt8);
            Put(static_cast<qint8>(number));
        } else if (Fits<qint32>(number)) {
            Put(tagInt32);
            Put(static_cast<qint32>(number));
        } else {
            Put(tagInt64);
            Put(number);
        }
    }
    void AddReal(double number) {
        Put(tagReal);
        Put(number);
    }
    void AddText(const char* utf8, std::size_t size) {
        MakeRoom(room_ + sizeof(TextSize) + size);
        if (size <= longestShortText) {
            Put(static_cast<unsigned char>(tagShortText + size));
        } else {
            Put(tagLongText);
            Put(static_cast<TextSize>(size));
        }
        std::memcpy(next_, utf8, size);
        next_ += size;
    }

    qint64 Size() const { return static_cast<qint64>(rows_.size()); }
    // Reads a row that has as many fields as there are `types`. Its texts are good until Clear.
    void Read(qint64 index, std::span<const FieldType> types, std::vector<Field>& row) const;

private:
    // A short text has its size in its tag: tagShortText + size.
    enum Tag : unsigned char { tagNull, tagInt8, tagInt32, tagInt64, tagReal, tagLongText, tagShortText };
    using TextSize = quint32;
    static constexpr std::size_t longestShortText = 255 - tagShortText;
    static constexpr std::size_t longestNumber = 1 + sizeof(qint64);

    template <typename T>
    static bool Fits(qint64 number) {
        return number >= std::numeric_limits<T>::min() && number <= std::numeric_limits<T>::max();
    }
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
    std::vector<Chunk>& spare_;
    std::vector<Chunk> chunks_;
    // The row being added, and what its numbers may need at most.
    char* row_ = nullptr;
    std::size_t room_ = 0;
    char* next_ = nullptr;
    char* end_ = nullptr;
};

} // namespace velmora::engine::records
