#pragma once

#include "engine/Recordset.h"

#include <memory>
#include <vector>

struct sqlite3_stmt;

namespace velmora::engine::sqlite {

// Rows packed one behind the other in chunks that never move: one byte per field that says what it is and how long,
// then the bytes of those fields that need any. A row costs little more than its texts.
class RowArena {
public:
    using Row = const unsigned char*;

    // Forgets all rows; keeps a little storage for the next ones.
    void Reset(int fieldsPerRow);

    // Adds the statement's current row: its first fields, or those at `positions`.
    void Append(sqlite3_stmt* statement);
    void Append(sqlite3_stmt* statement, const std::vector<int>& positions);
    void Append(const std::vector<Field>& fields);
    // Makes the row last added stand in the place of `index`.
    void MoveLastTo(qint64 index);
    // Keeps the first `size` rows.
    void Truncate(qint64 size) { rows_.resize(static_cast<std::size_t>(size)); }

    qint64 Size() const { return static_cast<qint64>(rows_.size()); }
    Row At(qint64 index) const { return rows_[static_cast<std::size_t>(index)]; }
    int FieldsPerRow() const { return fieldsPerRow_; }
    // Bytes taken from the system.
    std::size_t BytesHeld() const;

private:
    struct Chunk {
        std::unique_ptr<unsigned char[]> bytes;
        std::size_t size = 0;
    };

    template <typename Source>
    void AppendFrom(Source source);
    void MakeRoom(std::size_t bytes);

    int fieldsPerRow_ = 0;
    std::vector<Row> rows_;
    std::vector<Chunk> chunks_;
    unsigned char* rowStart_ = nullptr;
    unsigned char* next_ = nullptr;
    unsigned char* end_ = nullptr;
};

// Reads the fields of one packed row.
class RowReader {
public:
    // `types` must outlive the reader's use; one per field.
    void SetTypes(const std::vector<FieldType>& types);
    void Show(RowArena::Row row) {
        row_ = row;
        measured_ = false;
    }
    void Leave() { row_ = nullptr; }
    bool HasRow() const { return row_ != nullptr; }

    // Needs a row and an index within it. The field points into the arena.
    Field At(int index) const;

private:
    void Measure() const;

    const FieldType* types_ = nullptr;
    RowArena::Row row_ = nullptr;
    // Where each field's bytes begin, found once per row when the first field is read.
    mutable std::vector<unsigned> offsets_;
    mutable bool measured_ = false;
};

} // namespace velmora::engine::sqlite
