#pragma once

#include "engine/Database.h"

#include <QString>

#include <array>
#include <memory>

namespace velmora::engine::test {

// A store that the corpus runs on. Another store is another entry in testedStores.
struct TestedStore {
    const char* name;
    // Makes a database with the program's tables and the rows of corpus/rows.sql in an empty folder, and opens it with
    // a clock that stands still at 2026-03-07 14:15.
    std::unique_ptr<Database> (*open)(const QString& folder);
};

std::unique_ptr<Database> OpenEmbedded(const QString& folder);

inline constexpr std::array testedStores = {TestedStore{"Embedded", OpenEmbedded}};

QString CorpusText(const QString& file);

} // namespace velmora::engine::test
