#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace velmora::engine {

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

} // namespace velmora::engine
