#pragma once

#include "engine/Database.h"

#include <QString>

#include <vector>

namespace velmora {

// What a site's database is made from: the script of its tables and indexes in the store's own SQL, and the stored
// queries in the program's dialect. Both are compiled into the program.
QString SiteSchemaText();

struct StoredQueryText {
    QString name;
    QString text;
};

// In alphabetical order.
std::vector<StoredQueryText> StoredQueryTexts();

// How a site's database is opened: one that lacks a table or index of the script is damaged.
engine::OpenOptions SiteOptions();

} // namespace velmora
