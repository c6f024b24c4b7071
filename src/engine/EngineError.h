#pragma once

#include "base/Error.h"

#include <QString>

namespace velmora::engine {

// The numbers by which users and scripts know the engine's errors.
enum class EngineErrorNumber {
    Syntax = 3075,           // text that is not in the SQL dialect; the description names the position
    UnknownItem = 3265,      // no field or parameter of that name in the recordset or query
    NoCurrentRecord = 3021,  // a field is read, or a record changed, without a current record
    DuplicateKey = 3022,     // a second row with the same key
    FileNotFound = 3024,     // no database file at that path
    ReadOnly = 3027,         // the recordset cannot be changed
    FileExists = 3204,       // a new database would take the place of one that is there
    CannotOpen = 3051,       // the file is there, but may not be opened
    Damaged = 3049,          // the file is not a sound database
    NewerVersion = 3343,     // a program of a later version has made the database, or brought it up to date
    MissingParameter = 3061, // a parameter, or a name that is no field, has no value
    UnknownTable = 3078,     // no table or stored query of that name
    AmbiguousField = 3079,   // a plain name that more than one table has
    UnknownFunction = 3085,  // a function that the dialect does not have
    TypeMismatch = 3464,     // a value of a kind that the place does not take
    RecordDeleted = 3167,    // another user deleted the record meanwhile
    RecordChanged = 3197,    // another user changed the same field meanwhile
    RecordLocked = 3260,     // another user holds the database locked for longer than the engine waits
    InvalidArgument = 3001,  // a call that makes no sense in the present state (Update without Edit)
    DiskFull = 3026,
    DiskError = 3043,        // the file system failed to read or write
    ConstraintFailed = 3314, // a required field is empty
    Failed = 3000,           // anything else; the description carries the store's own words
};

// A failure of the record engine, with the SQL text at which it happened (empty when there was none).
class EngineError : public Error {
public:
    EngineError(EngineErrorNumber number, QString description, QString sql = {})
        : Error(static_cast<int>(number), std::move(description), QStringLiteral("Velmora Database Engine"),
                std::move(sql)) {}

    EngineErrorNumber Kind() const { return static_cast<EngineErrorNumber>(Number()); }
    // The text as the caller gave it, in the program's dialect.
    const QString& Sql() const { return Detail(); }
};

} // namespace velmora::engine
