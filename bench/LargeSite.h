#pragma once

#include "base/Error.h"
#include "demo/DemoSite.h"

#include <QTemporaryDir>

#include <cstdio>

namespace velmora::bench {

// Measures on the large demo site: the one whose folder the first argument names, made for a Wednesday or the day in
// the second argument, else one that is made for it. Returns what the program ends with.
inline int OnLargeSite(int argc, char** argv, int (*measure)(const QString& folder, Date day)) {
    try {
        const auto given = argc > 2 ? ParseStorageText(QString::fromUtf8(argv[2])) : std::nullopt;
        const Date day = given ? DateOf(*given) : *MakeDate(2026, 3, 4);
        if (argc > 1) {
            return measure(QString::fromUtf8(argv[1]), day);
        }
        const QTemporaryDir folder;
        demo::CreateDemoSite(folder.path(), {demo::Tier::Large, day});
        return measure(folder.path(), day);
    } catch (const Error& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}

} // namespace velmora::bench
