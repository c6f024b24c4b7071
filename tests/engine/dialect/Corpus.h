#pragma once

#include "engine/Database.h"

#include <QString>
#include <QStringList>

#include <array>
#include <memory>
#include <vector>

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

// The files in corpus/. A case is a text of one line or more, then "----" with what is expected, then the rows:
//
//   @RStart = date 2026-03-07 00:00:00       a parameter: date, text, number, flag or null
//   SELECT Name FROM Asset WHERE AssetID = 1
//   ---- Name                                the header (left out: not compared), or "changes 2",
//   Board Room                               or: error 3075, `1, 12`, `words of it`
//
// ">>>> Name = words" in front of a text sets the field in the first row of an updatable set; the row is then what the
// field shows. "==== Name" in front of a text makes it a stored query. A line that starts with "%" is a remark; an
// empty line ends a case.
struct CorpusCase {
    int line = 0;
    QString queryName;
    QString changedField;
    QString newValue;
    std::vector<NamedValue> parameters;
    QString text;
    QString header;
    QString expected;
    QStringList errorParts;
};

inline constexpr std::array corpusFiles = {"select.txt",  "joins.txt",  "conditions.txt", "expressions.txt",
                                           "groups.txt",  "action.txt", "queries.txt",    "reports.txt",
                                           "callers.txt", "errors.txt", "patterns.txt",   "updatable.txt"};

std::vector<CorpusCase> ReadCorpus(const QString& file);

struct Outcome {
    QString header;
    QString result; // the rows, their fields separated by "|"; or "changes 2"; or "error 3075"
    QString words;  // of the error
};

// Runs the case, or stores it as a query. Throws nothing.
Outcome OutcomeOf(Database& database, const CorpusCase& one, RecordsetKind kind = RecordsetKind::Snapshot);

} // namespace velmora::engine::test
