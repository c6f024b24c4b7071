#pragma once

#include "base/DateTime.h"
#include "engine/Database.h"
#include "engine/EngineError.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace velmora::engine {

// True while anyone has the database open: another copy of a program, another opening in this one, or any program that
// holds one of the store's locks on it. Also where it cannot be told (a read-only folder). False for a missing file.
bool IsInUse(const QString& path);

struct CheckResult {
    bool isSound = true;
    // What is wrong, as a sentence; empty for a sound database.
    QString fault;
};

// Reads the whole database, beside other users and without changing it (the work of a writer that crashed is rolled
// back, as at every opening). Throws FileNotFound, CannotOpen, RecordLocked, DiskError.
CheckResult CheckDatabase(const QString& path, const OpenOptions& options = {});

// What became of one table.
struct TableRepair {
    QString table;
    qint64 rowsSaved = 0;
    // Rows that are known to be lost, and whether more may be, how many nobody can tell.
    qint64 rowsLost = 0;
    bool mayHaveLostMore = false;
    // Sentences for the user: which rows were lost, and what else is to be known about the table.
    QStringList remarks;

    bool LostNothing() const { return rowsLost == 0 && !mayHaveLostMore; }
};

struct RepairReport {
    // Where the damaged file is kept.
    QString keptAs;
    std::vector<TableRepair> tables;
    // Sentences about the file as a whole.
    QStringList remarks;

    bool LostNothing() const;
    // All of it, one line for each table and remark.
    QString ToText() const;
};

// Replaces a damaged database by a new one with all rows that can still be read, in the tables and indexes of
// `schemaSql`; tables, columns, indexes and views that the schema does not name come along. The new file is checked in
// full before it takes the old one's place, in one step: whatever happens, there is always one of the two. The damaged
// file stays beside it as "<name>.damaged-YYYYMMDD-HHMMSS" (the time is `now`); no earlier one is replaced.
//
// Throws RecordLocked while the database is in use, FileNotFound, CannotOpen, DiskFull, DiskError, and Damaged when
// there is nothing to be saved: an empty file, a file that is no database, or one with none of the schema's tables.
// On any failure the damaged file stays as it is, with nothing new beside it.
RepairReport RepairDatabase(const QString& path, const QString& schemaSql, DateTime now);

} // namespace velmora::engine
