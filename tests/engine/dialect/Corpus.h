#pragma once

#include "tests/engine/dialect/TestStore.h"

#include <QString>

#include <array>
#include <map>
#include <vector>

namespace velmora::engine::dialect {

// The files in corpus/. A case is a text of one line or more, then "----" with what is expected, then the rows:
//
//   @RStart = date 2026-03-07 00:00:00       a parameter: date, text, number, flag or null
//   SELECT Name FROM Asset WHERE AssetID = 1
//   ---- Name                                the header (left out: not compared), or "changes 2",
//   Board Room                               or: error 3075, `1, 12`, `words of it`
//
// "==== Name" in front of a text makes it a stored query. A line that starts with "%" is a remark; an empty line ends
// a case.
struct CorpusCase {
    int line = 0;
    QString queryName;
    std::map<QString, Value> parameters;
    QString text;
    QString header;
    QString expected;
    QStringList errorParts;
};

inline constexpr std::array corpusFiles = {"select.txt",      "joins.txt",   "conditions.txt",
                                           "expressions.txt", "groups.txt",  "action.txt",
                                           "queries.txt",     "callers.txt", "errors.txt"};

std::vector<CorpusCase> ReadCorpus(const QString& file);
// What a run gave, in the form of CorpusCase::expected.
QString Outcome(const TestStore::Result& result, const CorpusCase& expected);

} // namespace velmora::engine::dialect
