#include "engine/sqlite/Soundness.h"

#include "engine/sqlite/FileHandle.h"
#include "engine/sqlite/Statement.h"

#include <QFile>
#include <QSet>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::sqlite {

namespace {

[[noreturn]] void ThrowDamaged(const QString& path, const QString& what) {
    throw EngineError(EngineErrorNumber::Damaged, u"The database \"%1\" is damaged: %2."_s.arg(path, what));
}

// Ends the transaction it began, however the check ends.
class ReadTransaction {
public:
    explicit ReadTransaction(sqlite3* connection) : connection_(connection) { Execute(connection, "BEGIN"); }
    ~ReadTransaction() { sqlite3_exec(connection_, "ROLLBACK", nullptr, nullptr, nullptr); }
    ReadTransaction(const ReadTransaction&) = delete;
    ReadTransaction& operator=(const ReadTransaction&) = delete;

private:
    sqlite3* connection_;
};

// Every index leads to the rows of its table in an order of its own: with a small cache each page is read many times.
class LargeCache {
public:
    explicit LargeCache(sqlite3* connection) : connection_(connection) {
        Statement size(connection, "PRAGMA main.cache_size");
        size.Step();
        before_ = size.Integer(0);
        constexpr qint64 kibibytes = -262144;
        SetSize(kibibytes);
    }
    ~LargeCache() { SetSize(before_); }
    LargeCache(const LargeCache&) = delete;
    LargeCache& operator=(const LargeCache&) = delete;

private:
    void SetSize(qint64 size) const {
        const QByteArray pragma = "PRAGMA main.cache_size = " + QByteArray::number(size);
        sqlite3_exec(connection_, pragma.constData(), nullptr, nullptr, nullptr);
    }

    sqlite3* connection_;
    qint64 before_ = 0;
};

quint32 BigEndian32(const unsigned char* bytes) {
    return quint32{bytes[0]} << 24 | quint32{bytes[1]} << 16 | quint32{bytes[2]} << 8 | bytes[3];
}

bool HasWriteAheadPages(const QString& path) {
    struct stat log = {};
    return ::stat((ResolvedPath(path) + "-wal").constData(), &log) == 0 && log.st_size > 0;
}

// The header and the size as the store's own handle sees them: opening the file by other means and closing it again
// would take away all locks that this process holds on it.
void CheckHeader(sqlite3* connection, const QString& path) {
    sqlite3_file* file = nullptr;
    if (sqlite3_file_control(connection, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK || file == nullptr ||
        file->pMethods == nullptr) {
        throw EngineError(EngineErrorNumber::CannotOpen, u"The database \"%1\" could not be read."_s.arg(path));
    }
    sqlite3_int64 size = 0;
    constexpr int headerSize = 100;
    std::array<unsigned char, headerSize> header = {};
    if (file->pMethods->xFileSize(file, &size) != SQLITE_OK) {
        throw EngineError(EngineErrorNumber::DiskError, u"The size of \"%1\" could not be read."_s.arg(path));
    }
    if (size < headerSize) {
        ThrowDamaged(path, u"it ends within its header"_s);
    }
    if (file->pMethods->xRead(file, header.data(), headerSize, 0) != SQLITE_OK) {
        throw EngineError(EngineErrorNumber::DiskError, u"The header of \"%1\" could not be read."_s.arg(path));
    }
    if (std::memcmp(header.data(), "SQLite format 3", 16) != 0) {
        ThrowDamaged(path, u"it does not begin as a database"_s);
    }
    const quint32 stored = quint32{header[16]} << 8 | header[17];
    const quint32 pageSize = stored == 1 ? 65536 : stored;
    if (pageSize < 512 || pageSize > 65536 || (pageSize & (pageSize - 1)) != 0) {
        ThrowDamaged(path, u"its header names an impossible page size"_s);
    }
    const quint32 pages = BigEndian32(&header[28]);
    const bool countIsCurrent = BigEndian32(&header[24]) == BigEndian32(&header[92]);
    // While pages wait in the write-ahead log, the file itself may lag behind.
    if (countIsCurrent && size < qint64{pages} * pageSize && !HasWriteAheadPages(path)) {
        ThrowDamaged(path, u"it is cut off after %1 of %2 bytes"_s.arg(size).arg(qint64{pages} * pageSize));
    }
}

struct Names {
    QSet<QByteArray> tables;
    QSet<QByteArray> indexes;
};

Names ReadNames(sqlite3* connection) {
    Names names;
    Statement schema(connection, "SELECT type, name FROM sqlite_schema");
    while (schema.Step()) {
        if (schema.Text(0) == "table") {
            names.tables.insert(schema.TextCopy(1).toLower());
        } else if (schema.Text(0) == "index") {
            names.indexes.insert(schema.TextCopy(1).toLower());
        }
    }
    return names;
}

// Of a table or view; none where there is neither.
QStringList ColumnsOf(sqlite3* connection, const QString& table) {
    QStringList columns;
    Statement list(connection, "SELECT name FROM pragma_table_info(?1)");
    list.BindText(1, table.toUtf8());
    while (list.Step()) {
        columns.append(QString::fromUtf8(list.Text(0)));
    }
    return columns;
}

void CheckTable(sqlite3* connection, const QString& path, const TableDefinition& table, const Names& present) {
    if (!present.tables.contains(table.name.toUtf8().toLower())) {
        ThrowDamaged(path, u"the table \"%1\" is missing"_s.arg(table.name));
    }
    for (const IndexDefinition& index : table.indexes) {
        if (!present.indexes.contains(index.name.toUtf8().toLower())) {
            ThrowDamaged(path, u"the index \"%1\" is missing"_s.arg(index.name));
        }
    }
    const QStringList columns = ColumnsOf(connection, table.name);
    for (const ColumnDefinition& column : table.columns) {
        if (!columns.contains(column.name, Qt::CaseInsensitive)) {
            ThrowDamaged(path, u"the column \"%1.%2\" is missing"_s.arg(table.name, column.name));
        }
    }
}

void ReadEnds(sqlite3* connection, const QByteArray& select, const QByteArray& key) {
    for (const char* direction : {" ASC LIMIT 1", " DESC LIMIT 1"}) {
        Statement(connection, select + " ORDER BY " + key + direction).Step();
    }
}

bool HasRowNumbers(sqlite3* connection, const QByteArray& table) {
    Statement list(connection, "SELECT wr FROM pragma_table_list(?1) WHERE schema = 'main'");
    list.BindText(1, table);
    return list.Step() && list.Integer(0) == 0;
}

void ReadIndexEnds(sqlite3* connection, const QByteArray& table) {
    Statement indexes(connection, "SELECT list.name, info.name FROM pragma_index_list(?1, 'main') AS list, "
                                  "pragma_index_info(list.name, 'main') AS info "
                                  "WHERE info.seqno = 0 AND info.name IS NOT NULL AND NOT list.partial");
    indexes.BindText(1, table);
    while (indexes.Step()) {
        const QByteArray field = Quoted(indexes.TextCopy(1));
        ReadEnds(connection,
                 "SELECT " + field + " FROM " + Quoted(table) + " INDEXED BY " + Quoted(indexes.TextCopy(0)), field);
    }
}

void ReadFirstEntries(sqlite3* connection, const QByteArray& table) {
    if (HasRowNumbers(connection, table)) {
        ReadEnds(connection, "SELECT * FROM " + Quoted(table) + " NOT INDEXED", "rowid");
        ReadIndexEnds(connection, table);
    } else {
        Statement(connection, "SELECT * FROM " + Quoted(table) + " LIMIT 1").Step();
    }
}

void CheckAll(sqlite3* connection, const QString& path, const Schema& schema) {
    const Names present = ReadNames(connection);
    CheckHeader(connection, path);
    if (!schema.tables.empty()) {
        const std::vector<TableDefinition> tables = schema.TablesOf(SchemaVersion(connection, path, schema));
        for (const TableDefinition& table : tables) {
            CheckTable(connection, path, table, present);
        }
        for (const TableDefinition& table : tables) {
            ReadFirstEntries(connection, table.name.toUtf8());
        }
    }
    if (HasDamageMark(path)) {
        CheckInFull(connection);
    }
}

QByteArray MarkPath(const QString& path) {
    return ResolvedPath(path) + ".damaged";
}

} // namespace

int SchemaVersion(sqlite3* connection, const QString& path, const Schema& schema) {
    const QStringList columns = ColumnsOf(connection, propertyTable.toString());
    if (columns.isEmpty()) {
        return 1;
    }
    if (!columns.contains(u"Name"_s, Qt::CaseInsensitive) || !columns.contains(u"Value"_s, Qt::CaseInsensitive)) {
        throw EngineError(EngineErrorNumber::CannotOpen,
                          u"The table \"%1\" of the database \"%2\" has no columns Name and Value: it is not this "
                          "program's. Give it another name."_s.arg(propertyTable, path));
    }
    int version = 1;
    Statement property(connection, "SELECT Value FROM " + Quoted(propertyTable.toUtf8()) + " WHERE Name = ?1");
    property.BindText(1, schemaVersionProperty.toUtf8());
    while (property.Step()) {
        const QString text = QString::fromUtf8(property.Text(0)).trimmed();
        bool isNumber = true;
        const qint64 number = text.isEmpty() ? 1 : text.toLongLong(&isNumber);
        if (!isNumber || number < 1) {
            throw EngineError(
                EngineErrorNumber::CannotOpen,
                u"The database \"%1\" says that its version is \"%2\", which is not a version number: "
                "correct the property %3 in its table %4."_s.arg(path, text, schemaVersionProperty, propertyTable));
        }
        if (number > schema.version) {
            throw EngineError(EngineErrorNumber::NewerVersion,
                              u"The database \"%1\" has version %2, and this program knows versions up to %3: a newer "
                              "program is needed."_s.arg(path, text)
                                  .arg(schema.version));
        }
        version = std::max(version, static_cast<int>(number));
    }
    return version;
}

void CheckPath(const QString& path) {
    const QByteArray name = QFile::encodeName(path);
    struct stat status = {};
    if (::stat(name.constData(), &status) != 0) {
        if (errno == ENOENT || errno == ENOTDIR) {
            throw EngineError(EngineErrorNumber::FileNotFound, u"There is no database \"%1\"."_s.arg(path));
        }
        ThrowFileError(errno == ELOOP ? EACCES : errno, u"open"_s, name);
    }
    if (!S_ISREG(status.st_mode)) {
        throw EngineError(EngineErrorNumber::CannotOpen, u"\"%1\" is not a file and cannot be opened."_s.arg(path));
    }
    if (::access(name.constData(), R_OK) != 0) {
        ThrowFileError(errno, u"open"_s, name);
    }
    if (status.st_size == 0) {
        ThrowDamaged(path, u"it is empty"_s);
    }
}

void CheckOpened(sqlite3* connection, const QString& path, const OpenOptions& options) {
    const bool marked = HasDamageMark(path);
    try {
        const ReadTransaction transaction(connection);
        CheckAll(connection, path, options.schema);
    } catch (const EngineError& error) {
        // What keeps a sound file from being read says so; whatever else the store says here ("malformed", "unsupported
        // file format") is about a file that is none.
        if (error.Kind() == EngineErrorNumber::Failed) {
            ThrowDamaged(path, error.Description());
        }
        throw;
    }
    if (marked) {
        ClearDamageMark(path);
    }
}

void CheckInFull(sqlite3* connection) {
    const LargeCache cache(connection);
    QStringList faults;
    Statement check(connection, "PRAGMA main.integrity_check(5)");
    while (check.Step()) {
        faults.append(QString::fromUtf8(check.Text(0)));
    }
    if (faults != QStringList{u"ok"_s}) {
        throw EngineError(EngineErrorNumber::Damaged,
                          u"The database is damaged: %1."_s.arg(faults.join(u"; "_s).simplified()));
    }
}

void LeaveDamageMark(const QString& path) noexcept {
    try {
        static_cast<void>(OpenFile(MarkPath(path), O_WRONLY | O_CREAT));
    } catch (const std::bad_alloc&) {
        // Without the mark the next opening checks less; nothing else depends on it.
    }
}

bool HasDamageMark(const QString& path) {
    return ::access(MarkPath(path).constData(), F_OK) == 0;
}

void ClearDamageMark(const QString& path) noexcept {
    try {
        ::unlink(MarkPath(path).constData());
    } catch (const std::bad_alloc&) {
        // The mark stays: the next opening checks in full once more.
    }
}

} // namespace velmora::engine::sqlite
