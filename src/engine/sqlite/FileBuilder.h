#pragma once

#include "engine/sqlite/SchemaSql.h"
#include "engine/sqlite/Statement.h"

#include <QByteArray>
#include <QString>

namespace velmora::engine::sqlite {

// A database file in the making, under a name of its own and in one transaction: it is either finished or thrown
// away. The file is removed with the builder unless it has been given its place.
class FileBuilder {
public:
    // Takes over `path`, which must not be a file that anyone needs.
    explicit FileBuilder(QByteArray path);
    ~FileBuilder();
    FileBuilder(const FileBuilder&) = delete;
    FileBuilder& operator=(const FileBuilder&) = delete;

    sqlite3* Handle() const { return store_.Handle(); }
    void Run(const std::vector<QByteArray>& statements);
    // The same for indexes of tables that have their rows.
    void MakeIndexes(const std::vector<QByteArray>& statements);
    // Commits; every change after this one is a transaction of its own.
    void Commit() { store_.Execute("COMMIT"); }
    // Closes the file and waits until it is on the disk.
    void Close();
    const QByteArray& Path() const { return path_; }
    // The file is somebody else's now.
    void Release() { path_.clear(); }

private:
    QByteArray path_;
    Connection store_;
};

} // namespace velmora::engine::sqlite
