#include "engine/salvage/TableSource.h"

#include <algorithm>
#include <set>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::salvage {

namespace {

using Kind = StoredValue::Kind;

bool MayBeMissing(const TableSource& source, qint64 key) {
    const std::set<qint64>& unreadable = source.copier->Unreadable();
    return unreadable.contains(key) || std::any_of(source.holes.begin(), source.holes.end(),
                                                   [&](const KeyRange& hole) { return hole.Contains(key); });
}

// The fields of the row that the entry belongs to, in the table's order; empty for those that the entry does not have.
std::vector<StoredValue> RowOf(const IndexShape& index, const TableShape& table,
                               const std::vector<StoredValue>& entry) {
    std::vector<StoredValue> row(table.stored.size());
    for (size_t field = 0; field < entry.size(); ++field) {
        if (index.columns[field] >= 0) {
            row[static_cast<size_t>(index.columns[field])] = entry[field];
        }
    }
    return row;
}

// False when the index has not been read to its end.
bool TraceThrough(TreeReader& reader, quint32 root, const IndexShape& index, TableSource& source) {
    const TableShape& table = source.Shape();
    const bool coversRow = index.Covers(table);
    bool isComplete = true;
    std::vector<StoredValue> entry;
    const bool reachedAll = reader.WalkIndex(root, [&](const Cell& cell) {
        const std::optional<Bytes> record = reader.Record(cell);
        if (!record || !DecodeRecord(*record, entry) || entry.size() != index.columns.size() ||
            entry.back().kind != Kind::Integer) {
            isComplete = false;
            return;
        }
        const qint64 key = entry.back().integer;
        if (!MayBeMissing(source, key) || source.copier->HasRow(key)) {
            return;
        }
        const std::vector<StoredValue> row = RowOf(index, table, entry);
        if (coversRow && source.copier->TakeRow(key, row)) {
            ++source.restored;
        } else if (!coversRow) {
            source.lost.emplace(key, source.copier->NameOf(key, row));
        }
    });
    return isComplete && reachedAll;
}

} // namespace

void CopyReachableRows(TreeReader& reader, TableSource& source) {
    TableCopier& copier = *source.copier;
    if (source.Shape().hasRowNumbers) {
        source.holes =
            reader.WalkTable(source.root, [&](const BtreePage& leaf) { return copier.TakeLeaf(reader, leaf); });
    } else {
        source.mayMissEntries =
            !reader.WalkIndex(source.root, [&](const Cell& cell) { copier.TakeEntry(reader, cell); });
    }
}

void TraceMissingRows(TreeReader& reader, const SchemaEntries& schema, TableSource& source) {
    const std::set<qint64>& unreadable = source.copier->Unreadable();
    if (source.holes.empty() && unreadable.empty()) {
        return;
    }
    source.lossIsExact = source.holes.empty();
    for (const IndexShape& index : ReadIndexShapes(source.original->Handle(), source.Shape())) {
        const auto entry =
            std::find_if(schema.entries.begin(), schema.entries.end(), [&](const SchemaEntry& candidate) {
                return candidate.type == "index" && candidate.IsNamed(index.name);
            });
        if (entry != schema.entries.end() && TraceThrough(reader, entry->root, index, source)) {
            source.lossIsExact = true;
            break;
        }
    }
    for (const qint64 key : unreadable) {
        if (!source.copier->HasRow(key)) {
            source.lost.try_emplace(key, source.copier->NameOf(key, {}));
        }
    }
}

} // namespace velmora::engine::salvage
