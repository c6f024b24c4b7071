#pragma once

#include "base/DateTime.h"
#include "engine/sqlite/FileHandle.h"
#include "engine/sqlite/Presence.h"

#include <QByteArray>
#include <QString>

#include <sys/stat.h>

namespace velmora::engine::salvage {

// A damaged database that is ours alone, and its replacement by a new file.
//
// A writer that crashed leaves a journal beside the file, without which the file is not what it should be. The exchange
// works on a copy into which the journal has been played back; the file and its journal stay as they are until a new
// database is ready.
class FileExchange {
public:
    // Throws FileNotFound, CannotOpen, RecordLocked when anyone has the database open.
    explicit FileExchange(const QString& path);
    ~FileExchange();
    FileExchange(const FileExchange&) = delete;
    FileExchange& operator=(const FileExchange&) = delete;

    // The file to read the rows from.
    const QByteArray& Source() const { return copy_.isEmpty() ? path_ : copy_; }
    // Where to build the new database.
    QByteArray NewPath() const { return path_ + ".repair-new"; }

    // Puts the complete new file at NewPath() in the database's place and clears the damage mark. Returns under which
    // dated name the damaged file is kept.
    QByteArray Replace(DateTime now);

private:
    void MakeCopy();
    void RemoveRemains() const;
    QByteArray KeepOriginal(DateTime now) const;
    void CopyOwnership(const QByteArray& to) const;

    QString givenPath_;
    QByteArray path_;
    sqlite::Presence presence_;
    // Holds every lock of the store's on the file, so that no other program can open it either.
    sqlite::FileHandle file_;
    struct stat status_ = {};
    // Empty where there was no journal.
    QByteArray copy_;
};

} // namespace velmora::engine::salvage
