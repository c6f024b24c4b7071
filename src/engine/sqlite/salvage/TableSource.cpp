#include "engine/sqlite/salvage/TableSource.h"

#include <algorithm>
#include <set>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::salvage {

namespace {

using Kind = RecordField::Kind;

bool MayBeMissing(const TableSource& source, qint64 key) {
    const std::set<qint64>& unreadable = source.copier->Unreadable();
    return unreadable.contains(key) || std::any_of(source.holes.begin(), source.holes.end(),
                                                   [&](const KeyRange& hole) { return hole.Contains(key); });
}

// The fields of the row that the entry belongs to, in the table's order; empty for those that the entry does not have.
std::vector<RecordField> RowOf(const IndexShape& index, const TableShape& table,
                               const std::vector<RecordField>& entry) {
    std::vector<RecordField> row(table.stored.size());
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
    std::vector<RecordField> entry;
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
        const std::vector<RecordField> row = RowOf(index, table, entry);
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

namespace {

struct OwnedLeaf {
    StrayLeaf leaf;
    TableSource* owner = nullptr;
    // Which hole of the owner's it fits into.
    size_t hole = 0;
    bool isContested = false;
};

// The tables whose holes the leaf fits into.
std::vector<OwnedLeaf> PossibleOwners(TreeReader& reader, const StrayLeaf& leaf, std::vector<TableSource>& sources) {
    std::vector<OwnedLeaf> owners;
    for (TableSource& source : sources) {
        for (size_t hole = 0; hole < source.holes.size(); ++hole) {
            const KeyRange& range = source.holes[hole];
            if (!range.Contains(leaf.keys.first) || !range.Contains(leaf.keys.last)) {
                continue;
            }
            bool fits = false;
            reader.LookAtStray(leaf.page, [&](const BtreePage& page) { fits = source.copier->FitsLeaf(reader, page); });
            if (fits) {
                owners.push_back({leaf, &source, hole});
            }
        }
    }
    return owners;
}

// Of two pages with the same row numbers one is an old copy, and nothing tells which: neither is used.
void MarkContested(std::vector<OwnedLeaf>& leaves) {
    std::sort(leaves.begin(), leaves.end(), [](const OwnedLeaf& one, const OwnedLeaf& other) {
        return std::tuple(one.owner, one.hole, one.leaf.keys.first) <
               std::tuple(other.owner, other.hole, other.leaf.keys.first);
    });
    OwnedLeaf* widest = nullptr;
    for (OwnedLeaf& leaf : leaves) {
        const bool isSameHole = widest != nullptr && widest->owner == leaf.owner && widest->hole == leaf.hole;
        if (isSameHole && leaf.leaf.keys.first <= widest->leaf.keys.last) {
            widest->isContested = true;
            leaf.isContested = true;
        }
        if (!isSameHole || leaf.leaf.keys.last > widest->leaf.keys.last) {
            widest = &leaf;
        }
    }
}

} // namespace

qint64 CopyStrayRows(TreeReader& reader, std::vector<TableSource>& sources) {
    const auto hasHoles = [](const TableSource& source) { return !source.holes.empty(); };
    if (std::none_of(sources.begin(), sources.end(), hasHoles)) {
        return 0;
    }
    const std::vector<StrayLeaf> strays = reader.StrayLeaves();
    std::vector<OwnedLeaf> owned;
    for (const StrayLeaf& leaf : strays) {
        const std::vector<OwnedLeaf> owners = PossibleOwners(reader, leaf, sources);
        if (owners.size() == 1) {
            owned.push_back(owners.front());
        }
    }
    MarkContested(owned);
    auto left = static_cast<qint64>(strays.size());
    for (const OwnedLeaf& leaf : owned) {
        const auto take = [&](const BtreePage& page) { return leaf.owner->copier->TakeLeaf(reader, page); };
        if (!leaf.isContested && reader.TakeStray(leaf.leaf.page, take)) {
            --left;
        }
    }
    return left;
}

namespace {

constexpr size_t mostRanges = 20;

QString RangeText(KeyRange range) {
    return range.first == range.last ? QString::number(range.first) : u"%1 to %2"_s.arg(range.first).arg(range.last);
}

// "12 to 40, 55": runs of row numbers without a gap become one range.
QString RunsText(const std::map<qint64, QString>& rows) {
    std::vector<KeyRange> runs;
    for (const auto& [key, name] : rows) {
        if (!runs.empty() && runs.back().last + 1 == key) {
            runs.back().last = key;
        } else {
            runs.push_back({key, key});
        }
    }
    QStringList parts;
    for (size_t index = 0; index < std::min(runs.size(), mostRanges); ++index) {
        parts.append(RangeText(runs[index]));
    }
    return parts.join(u", "_s) + (runs.size() > mostRanges ? u", ..."_s : QString());
}

// The rows by what users know them by: the column that numbers them, or each row's key.
QString LostText(const TableSource& source) {
    const TableShape& shape = source.Shape();
    if (shape.rowNumberColumn >= 0) {
        const QByteArray& column = shape.stored[static_cast<size_t>(shape.rowNumberColumn)].name;
        return QString::fromUtf8(column) + u' ' + RunsText(source.lost);
    }
    RowList names;
    for (const auto& [key, name] : source.lost) {
        names.Add(name);
    }
    return names.ToText();
}

QString HoleText(KeyRange hole) {
    constexpr KeyRange everything;
    const bool isOpenBelow = hole.first == everything.first;
    const bool isOpenAbove = hole.last == everything.last;
    if (isOpenBelow && isOpenAbove) {
        return u"of any value"_s;
    }
    if (isOpenBelow) {
        return u"up to %1"_s.arg(hole.last);
    }
    return isOpenAbove ? u"from %1 on"_s.arg(hole.first) : RangeText(hole);
}

QString HolesText(const TableSource& source) {
    QStringList parts;
    for (size_t index = 0; index < std::min(source.holes.size(), mostRanges); ++index) {
        parts.append(HoleText(source.holes[index]));
    }
    const int column = source.Shape().rowNumberColumn;
    const QString number =
        column >= 0 ? QString::fromUtf8(source.Shape().stored[static_cast<size_t>(column)].name) : u"row number"_s;
    return number + u' ' + parts.join(u", "_s) + (source.holes.size() > mostRanges ? u", ..."_s : QString());
}

void AddLossRemarks(const TableSource& source, QStringList& remarks) {
    const bool isFound = source.root != 0;
    if (!isFound) {
        remarks.append(
            u"The file does not say any more where the table is: rows of it may be lost. It was made anew."_s);
    }
    if (source.restored > 0) {
        remarks.append(u"%1 of the saved rows were taken from an index."_s.arg(source.restored));
    }
    if (!source.lost.empty()) {
        remarks.append(u"Lost: %1."_s.arg(LostText(source)));
    }
    if (isFound && !source.lossIsExact) {
        remarks.append(u"More may be lost: rows with %1."_s.arg(HolesText(source)));
    }
    if (source.copier->UnreadableEntries() > 0 || source.mayMissEntries) {
        remarks.append(u"Parts of the table could not be read; more rows may be lost."_s);
    }
}

} // namespace

TableRepair Describe(const TableSource& source) {
    const TableCopier& copier = *source.copier;
    TableRepair repair;
    repair.table = QString::fromUtf8(source.Shape().name);
    repair.rowsSaved = copier.Saved();
    repair.rowsLost = static_cast<qint64>(source.lost.size()) + copier.UnreadableEntries() + copier.Duplicates().count +
                      copier.Refused().count;
    repair.mayHaveLostMore = !source.lossIsExact || source.mayMissEntries;
    AddLossRemarks(source, repair.remarks);
    if (copier.Duplicates().count > 0) {
        repair.remarks.append(
            u"Left out, because an earlier row has the same key: %1."_s.arg(copier.Duplicates().ToText()));
    }
    if (copier.Refused().count > 0) {
        repair.remarks.append(
            u"Left out, because they break a rule of the table: %1."_s.arg(copier.Refused().ToText()));
    }
    if (copier.Doubtful().count > 0) {
        repair.remarks.append(u"Saved, but with a text that may be damaged: %1."_s.arg(copier.Doubtful().ToText()));
    }
    return repair;
}

} // namespace velmora::engine::salvage
