#include "engine/NewDatabase.h"

#include "engine/sqlite/FileBuilder.h"
#include "engine/sqlite/FileHandle.h"
#include "engine/sqlite/StoreError.h"

#include <QByteArrayList>
#include <QStringEncoder>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine {

namespace {

[[noreturn]] void ThrowExists(const QString& path) {
    throw EngineError(EngineErrorNumber::FileExists, u"Database already exists: \"%1\"."_s.arg(path));
}

// A name beside `path` that nobody else has; the empty file is there when this returns.
QByteArray ClaimTemporaryName(const QByteArray& path) {
    for (int attempt = 0;; ++attempt) {
        QByteArray name = path + ".new-" + QByteArray::number(::getpid()) + '-' + QByteArray::number(attempt);
        if (sqlite::OpenFile(name, O_RDWR | O_CREAT | O_EXCL)) {
            return name;
        }
        if (errno != EEXIST) {
            sqlite::ThrowFileError(errno, u"create"_s, path);
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
        sqlite::ThrowFileError(errno, u"create"_s, to);
    }
    return false;
}

} // namespace

// Values are bound from one buffer that keeps its size from row to row.
struct Loader::State {
    State(sqlite3* database, const QByteArray& sql, int columnCount)
        : connection(database), insert(std::in_place, database, sql), columns(columnCount),
          encoder(QStringEncoder::Utf8, QStringConverter::Flag::Stateless) {}

    void Bind(int number, const Value& value) {
        std::visit([&](const auto& held) { BindHeld(number, held); }, value.Data());
    }
    void BindHeld(int number, std::monostate) { sqlite3_bind_null(insert->Handle(), number); }
    void BindHeld(int number, bool yes) { sqlite3_bind_int(insert->Handle(), number, yes ? 1 : 0); }
    void BindHeld(int number, qint64 whole) { sqlite3_bind_int64(insert->Handle(), number, whole); }
    void BindHeld(int number, double real) { sqlite3_bind_double(insert->Handle(), number, real); }
    void BindHeld(int number, const QString& text) {
        char* const begin = end;
        end = encoder.appendToBuffer(begin, text);
        BindBytes(number, begin);
    }
    void BindHeld(int number, DateTime moment) {
        char text[19];
        WriteStorageText(moment, text);
        char* const begin = end;
        end = std::copy(std::begin(text), std::end(text), begin);
        BindBytes(number, begin);
    }
    void BindBytes(int number, const char* begin) {
        sqlite3_bind_text(insert->Handle(), number, begin, static_cast<int>(end - begin), SQLITE_STATIC);
    }

    sqlite3* connection;
    // None once the database is finished.
    std::optional<sqlite::Statement> insert;
    int columns;
    QStringEncoder encoder;
    QByteArray buffer;
    char* end = nullptr;
};

Loader::Loader(std::shared_ptr<State> state) : state_(std::move(state)) {}
Loader::~Loader() = default;
Loader::Loader(Loader&&) noexcept = default;
Loader& Loader::operator=(Loader&&) noexcept = default;

void Loader::Add(std::span<const Value> row) {
    if (!state_->insert) {
        throw EngineError(EngineErrorNumber::InvalidArgument, u"A row was added to a finished database."_s);
    }
    if (static_cast<int>(row.size()) != state_->columns) {
        throw EngineError(EngineErrorNumber::InvalidArgument,
                          u"A row of %1 values was given for %2 columns."_s.arg(row.size()).arg(state_->columns));
    }
    constexpr qsizetype storageTextSize = 19;
    qsizetype room = 0;
    for (const Value& value : row) {
        const auto* const text = std::get_if<QString>(&value.Data());
        room += text != nullptr ? state_->encoder.requiredSpace(text->size()) : storageTextSize;
    }
    if (state_->buffer.size() < room) {
        state_->buffer.resize(room * 2);
    }
    state_->end = state_->buffer.data();
    int number = 0;
    for (const Value& value : row) {
        state_->Bind(++number, value);
    }
    // The statement is made ready again before a failure is reported, so that the caller may go on with the next row.
    sqlite3_stmt* const insert = state_->insert->Handle();
    if (sqlite3_step(insert) != SQLITE_DONE) {
        const int code = sqlite3_extended_errcode(state_->connection);
        try {
            sqlite::ThrowStoreError(state_->connection, code, QString::fromUtf8(sqlite3_sql(insert)));
        } catch (...) {
            sqlite3_reset(insert);
            throw;
        }
    }
    sqlite3_reset(insert);
}

struct NewDatabase::State {
    State(const QString& givenPath, const QString& schemaSql)
        : path(givenPath), schema(schemaSql), file(ClaimTemporaryName(sqlite::ResolvedPath(givenPath))) {
        file.Run(schema.beforeRows);
    }

    QString path;
    sqlite::SchemaScript schema;
    sqlite::FileBuilder file;
    std::vector<std::weak_ptr<Loader::State>> loaders;
};

NewDatabase::NewDatabase(const QString& path, const QString& schemaSql) {
    if (::access(sqlite::ResolvedPath(path).constData(), F_OK) == 0) {
        ThrowExists(path);
    }
    state_ = std::make_unique<State>(path, schemaSql);
}

NewDatabase::~NewDatabase() = default;

Loader NewDatabase::Load(const QString& table, const QStringList& columns) {
    QByteArrayList names;
    for (const QString& column : columns) {
        names.append(sqlite::Quoted(column.toUtf8()));
    }
    const QByteArrayList marks(columns.size(), "?");
    const QByteArray sql = "INSERT INTO " + sqlite::Quoted(table.toUtf8()) + " (" + names.join(", ") + ") VALUES (" +
                           marks.join(", ") + ")";
    auto loader = std::make_shared<Loader::State>(state_->file.Handle(), sql, static_cast<int>(columns.size()));
    state_->loaders.push_back(loader);
    return Loader(std::move(loader));
}

void NewDatabase::Finish() {
    for (const std::weak_ptr<Loader::State>& known : state_->loaders) {
        if (const std::shared_ptr<Loader::State> loader = known.lock()) {
            loader->insert.reset();
        }
    }
    sqlite::FileBuilder& file = state_->file;
    file.MakeIndexes(state_->schema.uniqueIndexes);
    file.MakeIndexes(state_->schema.otherIndexes);
    file.Commit();
    file.Close();
    const QByteArray target = sqlite::ResolvedPath(state_->path);
    if (!PlaceWithoutReplacing(file.Path(), target)) {
        ThrowExists(state_->path);
    }
    file.Release();
    sqlite::SyncFolderOf(target);
}

} // namespace velmora::engine
