#pragma once

#include "engine/Recordset.h"

#include <memory_resource>
#include <span>
#include <vector>

namespace velmora::engine::records {

// Rows packed one behind the other, with their texts: one byte per field that says what it is, then its bytes. An empty
// field takes no more than that byte, and most fields of a wide row are empty.
class RowArena {
public:
    void Clear();
    void Append(std::span<const Field> row) { rows_.push_back(Pack(row)); }

    qint64 Size() const { return static_cast<qint64>(rows_.size()); }
    // Reads a row that has as many fields as there are `types`. Its texts stay where they are until Clear.
    void Read(qint64 index, std::span<const FieldType> types, std::vector<Field>& row) const;

private:
    const char* Pack(std::span<const Field> row);

    std::pmr::monotonic_buffer_resource bytes_;
    std::vector<const char*> rows_;
};

} // namespace velmora::engine::records
