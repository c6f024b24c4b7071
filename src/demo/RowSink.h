#pragma once

#include "base/Value.h"

#include <QString>
#include <QStringList>

#include <span>

namespace velmora::demo {

// Where the rows of a demo site go: a new database, or a test's own record.
class RowSink {
public:
    virtual ~RowSink() = default;
    // The rows that follow belong to this table and hold these columns in this order. Each table begins once.
    virtual void BeginTable(const QString& table, const QStringList& columns) = 0;
    virtual void Add(std::span<const Value> row) = 0;
};

} // namespace velmora::demo
