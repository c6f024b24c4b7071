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

    // The same with the columns separated by blanks, and with a row as it is written down.
    void BeginTable(const char* table, const char* columns) {
        BeginTable(QString::fromLatin1(table), QString::fromLatin1(columns).split(u' '));
    }
    void Add(std::initializer_list<Value> row) { Add(std::span<const Value>(row.begin(), row.size())); }
};

} // namespace velmora::demo
