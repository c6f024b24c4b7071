#pragma once

#include "base/Value.h"
#include "engine/EngineError.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <span>

namespace velmora::engine {

class NewDatabase;

// Adds rows to one table of a database in the making, until that is finished.
class Loader {
public:
    ~Loader();
    Loader(Loader&&) noexcept;
    Loader& operator=(Loader&&) noexcept;
    Loader(const Loader&) = delete;
    Loader& operator=(const Loader&) = delete;

    // One row, its values in the order of the columns given to NewDatabase::Load; yes/no is stored as 0 or 1, a
    // date-time in storage form. Rows are stored fastest in the order of their key.
    // Throws DuplicateKey, ConstraintFailed, DiskFull, InvalidArgument (not one value per column, or a finished
    // database).
    void Add(std::span<const Value> row);
    void Add(std::initializer_list<Value> row) { Add(std::span<const Value>(row.begin(), row.size())); }

private:
    friend class NewDatabase;
    struct State;
    explicit Loader(std::shared_ptr<State> state);
    std::shared_ptr<State> state_;
};

// Makes a database file. It grows under a temporary name in the same folder and appears at its path, complete and on
// the disk, with Finish; without Finish nothing is left behind.
class NewDatabase {
public:
    // Runs the schema except its indexes, which are made by Finish once all rows are there. Throws FileExists when
    // there is something at `path`, CannotOpen, DiskFull.
    NewDatabase(const QString& path, const QString& schemaSql);
    ~NewDatabase();
    NewDatabase(const NewDatabase&) = delete;
    NewDatabase& operator=(const NewDatabase&) = delete;

    // Columns that are not named get their default, or are empty. Throws for names that the schema does not have.
    Loader Load(const QString& table, const QStringList& columns);

    // Makes the indexes and puts the file in its place; no row can be added any more. Throws DuplicateKey when rows
    // break a unique index, FileExists when another program has made the file meanwhile: that one stays as it is.
    void Finish();

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace velmora::engine
