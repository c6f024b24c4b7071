#pragma once

#include "engine/Database.h"
#include "engine/NewDatabase.h"
#include "engine/Schema.h"

#include <QString>

#include <memory>

namespace velmora::engine {

struct CheckResult {
    bool isSound = true;
    // What is wrong, as a sentence; empty for a sound database.
    QString fault;
};

// A place where a site's database lies, or may be made, in one kind of store.
class DatabasePlace {
public:
    virtual ~DatabasePlace() = default;

    // As people are shown it.
    virtual QString Location() const = 0;
    virtual bool Exists() const = 0;
    // Throws FileNotFound (never creates anything), Damaged, NewerVersion, CannotOpen.
    virtual std::unique_ptr<Database> Open(const OpenOptions& options) const = 0;
    // Reads the whole database, beside other users and without changing it (the work of a writer that crashed is rolled
    // back, as at every opening). Throws FileNotFound, NewerVersion, CannotOpen, RecordLocked, DiskError.
    virtual CheckResult Check(const OpenOptions& options) const = 0;
    // True while anyone has the database open: another copy of a program, another opening in this one, or any program
    // that holds one of the store's locks on it. Also where it cannot be told. False where there is none.
    // Throws CannotOpen where this user could not repair it.
    virtual bool IsInUse() const = 0;
    // Throws FileExists, CannotOpen, DiskFull.
    virtual std::unique_ptr<NewDatabase> Create(const Schema& schema) const = 0;
};

} // namespace velmora::engine
