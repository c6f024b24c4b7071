#pragma once

#include "engine/sqlite/salvage/TreeReader.h"

#include <QByteArray>

#include <vector>

namespace velmora::engine::salvage {

// What the file says of one table, index, view or trigger, texts in UTF-8.
struct SchemaEntry {
    QByteArray type;
    QByteArray name;
    // The table that an index or trigger belongs to.
    QByteArray table;
    // Where its tree begins; 0 for what has none.
    quint32 root = 0;
    // Empty for an index that comes with its table.
    QByteArray sql;

    // Letter case does not matter.
    bool IsNamed(const QByteArray& other) const { return name.compare(other, Qt::CaseInsensitive) == 0; }
};

struct SchemaEntries {
    std::vector<SchemaEntry> entries;
    // False when a part of the schema could not be read.
    bool isComplete = true;
    // How texts are stored in this file, as sqlite3_bind_text64 takes it: told from the entries themselves, because the
    // header may be broken.
    unsigned char textEncoding = 1;
};

// Entries on pages that cannot be reached any more are found, too.
SchemaEntries ReadSchemaEntries(TreeReader& reader);

// A text in UTF-8, from an encoding of the file's.
QByteArray Utf8Text(Bytes text, unsigned char encoding);

} // namespace velmora::engine::salvage
