#pragma once

#include "tests/engine/soundness/SampleDatabase.h"

namespace velmora::engine::test {

// One way to break a sample database, and what comes of it.
struct Damage {
    const char* name;
    // SQL that runs before, each in a connection of its own.
    std::vector<const char*> before;
    void (*apply)(const QString& path);
    // The error of the next opening; 0 where the damage lies too deep for it.
    int opening;
    // The same for a full check: a page that holds nothing but the rest of a text has no structure to be wrong.
    int check;
    // The error of a repair.
    int repair;
    // The tables that may lose rows.
    std::vector<const char*> losers;
};

const std::vector<Damage>& Damages();
void PrintTo(const Damage& damage, std::ostream* out);

} // namespace velmora::engine::test
