#pragma once

#include "engine/Database.h"

#include <QString>

struct sqlite3;

namespace velmora::engine::sqlite {

// What a file must pass before it is used as a database. Damage that these checks do not see can still turn up later:
// whoever meets it leaves a damage mark, so that the next opening looks everywhere.

// Looks at the file without opening it. Throws FileNotFound, Damaged (a file of 0 bytes, which the store would take for
// an empty database) or CannotOpen (a folder, or no permission to read).
void CheckPath(const QString& path);

// Checks the file behind a connection that has just been opened, at a cost that does not grow with the file: header,
// page count against the file's size, the schema, the expected tables and indexes, the first and the last entry of
// each. The work of a writer that crashed is rolled back first. With a damage mark beside the file everything is
// checked, which takes as long as reading the file; a file that passes loses its mark.
// Throws Damaged, RecordLocked, CannotOpen, DiskError. Leaves no transaction open.
void CheckOpened(sqlite3* connection, const QString& path, const OpenOptions& options);

// The version of the schema that the database says it has; 1 where nothing says one: bringing that up to date changes
// nothing that is there already. Throws NewerVersion when the program's `schema` is older, and CannotOpen when what is
// said is not a version.
int SchemaVersion(sqlite3* connection, const QString& path, const Schema& schema);

// Reads all of the database: every page, and every index against its table. Throws Damaged with the first faults.
void CheckInFull(sqlite3* connection);

// The mark is an empty file "<database>.damaged".
void LeaveDamageMark(const QString& path) noexcept;
bool HasDamageMark(const QString& path);
void ClearDamageMark(const QString& path) noexcept;

} // namespace velmora::engine::sqlite
