#pragma once

#include "base/Value.h"
#include "engine/EngineError.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <span>

namespace velmora::engine {

// Adds rows to one table of a database in the making, until that is finished.
class Loader {
public:
    virtual ~Loader() = default;
    Loader(const Loader&) = delete;
    Loader& operator=(const Loader&) = delete;

    // One row, its values in the order of the columns given to NewDatabase::Load; yes/no is stored as 0 or 1, a
    // date-time in storage form. Rows are stored fastest in the order of their key.
    // Throws DuplicateKey, ConstraintFailed, DiskFull, InvalidArgument (not one value per column, or a finished
    // database).
    virtual void Add(std::span<const Value> row) = 0;
    void Add(std::initializer_list<Value> row) { Add(std::span<const Value>(row.begin(), row.size())); }

protected:
    Loader() = default;
};

// A database in the making: nobody sees it before Finish, complete and on the disk; without Finish nothing is left
// behind. It has the tables of its schema; the indexes are made once all rows are there.
class NewDatabase {
public:
    virtual ~NewDatabase() = default;
    NewDatabase(const NewDatabase&) = delete;
    NewDatabase& operator=(const NewDatabase&) = delete;

    // Columns that are not named get their default, or are empty. Throws for names that the schema does not have. The
    // loader must not outlive the database.
    virtual std::shared_ptr<Loader> Load(const QString& table, const QStringList& columns) = 0;

    // Makes the indexes and puts the database in its place; no row can be added any more. Throws DuplicateKey when rows
    // break a unique index, FileExists when another program has made the database meanwhile: that one stays as it is.
    virtual void Finish() = 0;

protected:
    NewDatabase() = default;
};

} // namespace velmora::engine
