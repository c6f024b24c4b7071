#pragma once

#include "base/Program.h"
#include "engine/Database.h"

#include <QStringList>

#include <vector>

namespace velmora {

// One entry of the quick-status list.
struct StatusEntry {
    // A person as "Smith, Ann", an asset by its name.
    QString text;
    // An asset's number; for a person how many letters of the text are the last name.
    int itemData = 0;
    friend bool operator==(const StatusEntry&, const StatusEntry&) = default;
};

// The list of `statusType`: 0, all persons in the order of their names, or 1, all assets but the Unused ones
// by name. A failure is reported by a message, and the list is empty.
std::vector<StatusEntry> FillStatusList(const Program& program, qint16 statusType, engine::Database& database);

// The lines of an entry's summary: a heading, and one line for each reservation of the person or asset that has not
// ended yet, the earliest end first. `statusType` says what the entry is. A failure is reported with module
// "Service Administration" and procedure "Status Summary"; when it is ignored the lines made so far are returned.
QStringList StatusSummary(const Program& program, qint16 statusType, engine::Database& database,
                          const StatusEntry& entry);

} // namespace velmora
