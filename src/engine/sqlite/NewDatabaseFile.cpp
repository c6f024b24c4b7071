#include "engine/sqlite/NewDatabaseFile.h"

#include "engine/records/StoredValue.h"
#include "engine/sqlite/FileHandle.h"

#include <QByteArrayList>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::sqlite {

namespace {

[[noreturn]] void ThrowExists(const QString& path) {
    throw EngineError(EngineErrorNumber::FileExists, u"Database already exists: \"%1\"."_s.arg(path));
}

// A name beside `path` that nobody else has; the empty file is there when this returns.
QByteArray ClaimTemporaryName(const QByteArray& path) {
    for (int attempt = 0;; ++attempt) {
        QByteArray name = path + ".new-" + QByteArray::number(::getpid()) + '-' + QByteArray::number(attempt);
        if (OpenFile(name, O_RDWR | O_CREAT | O_EXCL)) {
            return name;
        }
        if (errno != EEXIST) {
            ThrowFileError(errno, u"create"_s, path);
        }
    }
}

// Gives the file its name unless the name is taken. Hard links are tried first because every local file system has
// them; the shares that do not have them can rename without replacing.
bool PlaceWithoutReplacing(const QByteArray& from, const QByteArray& to) {
    if (::link(from.constData(), to.constData()) == 0) {
        ::unlink(from.constData());
        return true;
    }
    if (errno != EEXIST && ::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0) {
        return true;
    }
    if (errno != EEXIST) {
        ThrowFileError(errno, u"create"_s, to);
    }
    return false;
}

// A new file at `path`, unless there is something already.
QByteArray ClaimNewFile(const QString& path) {
    const QByteArray target = ResolvedPath(path);
    if (::access(target.constData(), F_OK) == 0) {
        ThrowExists(path);
    }
    return ClaimTemporaryName(target);
}

} // namespace

class FileLoader final : public Loader {
public:
    FileLoader(sqlite3* connection, const QByteArray& sql, qsizetype columns)
        : insert_(std::in_place, connection, sql), columns_(columns) {}

    void Add(std::span<const Value> row) override;
    // Before the database is finished.
    void End() { insert_.reset(); }

private:
    // None once the database is finished.
    std::optional<Statement> insert_;
    qsizetype columns_;
};

void FileLoader::Add(std::span<const Value> row) {
    if (!insert_) {
        throw EngineError(EngineErrorNumber::InvalidArgument, u"A row was added to a finished database."_s);
    }
    if (static_cast<qsizetype>(row.size()) != columns_) {
        throw EngineError(EngineErrorNumber::InvalidArgument,
                          u"A row of %1 values was given for %2 columns."_s.arg(row.size()).arg(columns_));
    }
    int number = 0;
    for (const Value& value : row) {
        const auto stored = records::StoredValue::From(value, FieldType::Unknown);
        insert_->Bind(++number, stored.value_or(records::StoredValue()).AsField());
    }
    // The statement is made ready again after a failure, so that the caller may go on with the next row.
    try {
        insert_->Step();
    } catch (...) {
        insert_->Reset();
        throw;
    }
    insert_->Reset();
}

NewDatabaseFile::NewDatabaseFile(const QString& path, const Schema& schema)
    : path_(path), schema_(schema), file_(ClaimNewFile(path)) {
    file_.Run(schema_.tables);
}

std::shared_ptr<Loader> NewDatabaseFile::Load(const QString& table, const QStringList& columns) {
    QByteArrayList names;
    for (const QString& column : columns) {
        names.append(Quoted(column.toUtf8()));
    }
    const QByteArrayList marks(columns.size(), "?");
    const QByteArray sql =
        "INSERT INTO " + Quoted(table.toUtf8()) + " (" + names.join(", ") + ") VALUES (" + marks.join(", ") + ")";
    auto loader = std::make_shared<FileLoader>(file_.Handle(), sql, columns.size());
    loaders_.push_back(loader);
    return loader;
}

void NewDatabaseFile::Finish() {
    for (const std::weak_ptr<FileLoader>& known : loaders_) {
        if (const auto loader = known.lock()) {
            loader->End();
        }
    }
    file_.MakeIndexes(schema_.uniqueIndexes);
    file_.MakeIndexes(schema_.otherIndexes);
    file_.Commit();
    file_.Close();
    const QByteArray target = ResolvedPath(path_);
    if (!PlaceWithoutReplacing(file_.Path(), target)) {
        ThrowExists(path_);
    }
    file_.Release();
    SyncFolderOf(target);
}

} // namespace velmora::engine::sqlite
