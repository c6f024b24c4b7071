#pragma once

#include "engine/RepairReport.h"
#include "engine/sqlite/salvage/SchemaEntries.h"
#include "engine/sqlite/salvage/TableCopier.h"

#include <map>
#include <memory>
#include <vector>

namespace velmora::engine::salvage {

// One table of the damaged file on its way into the new one.
struct TableSource {
    // In memory and without rows: the table and its indexes as the damaged file describes them, or as the schema does
    // where the file does not.
    std::unique_ptr<sqlite::Connection> original;
    std::unique_ptr<TableCopier> copier;
    // Where the table's tree begins; 0 where the file does not say.
    quint32 root = 0;
    bool isInSchema = false;

    // Row numbers whose rows may be missing: what stood on pages that could not be read.
    std::vector<KeyRange> holes;
    // The same for a table without row numbers.
    bool mayMissEntries = false;
    // Rows that an index had whole.
    qint64 restored = 0;
    // Rows that are known to be gone, with their names; all that are gone where the loss is exact.
    std::map<qint64, QString> lost;
    bool lossIsExact = true;

    const TableShape& Shape() const { return copier->Shape(); }
};

// Copies the rows that the table's own tree leads to.
void CopyReachableRows(TreeReader& reader, TableSource& source);

// Gives pages with rows that no tree leads to any more to the table that misses just such rows: their row numbers lie
// in a hole of that table, and of no other whose columns they fit. Returns how many pages were left.
qint64 CopyStrayRows(TreeReader& reader, std::vector<TableSource>& sources);

// Looks up in the table's indexes which rows are missing in the new table, and takes those that an index has whole.
void TraceMissingRows(TreeReader& reader, const SchemaEntries& schema, TableSource& source);

TableRepair Describe(const TableSource& source);

} // namespace velmora::engine::salvage
