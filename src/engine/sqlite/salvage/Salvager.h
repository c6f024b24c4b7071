#pragma once

#include "engine/RepairReport.h"
#include "engine/sqlite/FileBuilder.h"
#include "engine/sqlite/salvage/TableSource.h"

#include <memory>
#include <vector>

namespace velmora::engine::salvage {

// Builds a new database from what can be read of a damaged one.
class Salvager {
public:
    // Reads the database at `damaged`, which nobody changes meanwhile, and builds a new one at `target`.
    Salvager(const QByteArray& damaged, const QByteArray& target, const Schema& schema);

    // Copies everything and checks the result in full. The report lacks only where the damaged file is kept.
    // Throws Damaged when none of the schema's tables can be found.
    RepairReport Run();
    // The new file.
    sqlite::FileBuilder& File() { return target_; }

private:
    void AddSources();
    void AddSource(const QByteArray& table, const SchemaEntry* entry, bool isInSchema);
    std::unique_ptr<sqlite::Connection> Original(const QByteArray& table, const SchemaEntry* entry) const;
    void AddColumnsOfSite(sqlite3* original, const TableShape& shape);
    void MakeUniqueIndexes();
    void DemandOwnTables(bool rowsAreCopied) const;
    void CopySequences();
    bool TakeSequences(const BtreePage& leaf);
    void RaiseSequence(const TableSource& source);
    void ClaimOtherTables();
    void MakeIndexesAndViews();
    void CopyFileNumbers();

    bool TargetHas(const QByteArray& name) const;
    // Makes what the schema does not name; what cannot be made any more is remarked upon.
    void MakeAnew(const SchemaEntry& entry);
    RepairReport Report(qint64 strayLeaves) const;

    const SchemaEntry* FindTable(const QByteArray& name) const;

    PageFile file_;
    TreeReader reader_;
    SchemaEntries found_;
    sqlite::SchemaSql schema_;
    sqlite::FileBuilder target_;
    std::vector<TableSource> sources_;
    QStringList remarks_;
};

} // namespace velmora::engine::salvage
