#include "engine/sqlite/Statement.h"

#include <sqlite3.h>

#include <new>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::sqlite {

Statement::Statement(sqlite3* connection, const QByteArray& sql) : connection_(connection) {
    Prepare(sql, QString::fromUtf8(sql));
}

Statement::Statement(sqlite3* connection, const QByteArray& sql, const QString& callerText, const DamageHook& onDamage)
    : connection_(connection), onDamage_(&onDamage) {
    Prepare(sql, callerText);
}

void Statement::Prepare(const QByteArray& sql, const QString& text) {
    sqlite3_stmt* statement = nullptr;
    const int code = sqlite3_prepare_v3(connection_, sql.constData(), static_cast<int>(sql.size() + 1),
                                        SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    statement_.reset(statement);
    Check(code, text);
}

void Statement::Check(int code, const QString& text) const {
    if (code == SQLITE_OK) {
        return;
    }
    if (onDamage_ != nullptr && *onDamage_ && IsDamage(code)) {
        (*onDamage_)();
    }
    ThrowStoreError(connection_, code, text);
}

bool Statement::Step() {
    const int code = sqlite3_step(statement_.get());
    if (code != SQLITE_ROW && code != SQLITE_DONE) {
        Check(code, QString::fromUtf8(sqlite3_sql(statement_.get())));
    }
    return code == SQLITE_ROW;
}

bool Statement::Step(const QString& callerText) {
    const int code = sqlite3_step(statement_.get());
    if (code != SQLITE_ROW && code != SQLITE_DONE) {
        Check(code, callerText);
    }
    return code == SQLITE_ROW;
}

void Statement::Bind(int number, const Field& value) {
    int code = SQLITE_OK;
    switch (value.StoredKind()) {
    case Field::Kind::Null:
        code = sqlite3_bind_null(statement_.get(), number);
        break;
    case Field::Kind::Integer:
        code = sqlite3_bind_int64(statement_.get(), number, value.StoredInteger());
        break;
    case Field::Kind::Real:
        code = sqlite3_bind_double(statement_.get(), number, value.ToReal());
        break;
    case Field::Kind::Text:
        const std::string_view text = value.Utf8();
        code = sqlite3_bind_text64(statement_.get(), number, text.empty() ? "" : text.data(), text.size(),
                                   SQLITE_TRANSIENT, SQLITE_UTF8);
    }
    Check(code, {});
}

namespace {

Field FieldOf(sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
        return {};
    case SQLITE_INTEGER:
        return Field(FieldType::Unknown, qint64{sqlite3_value_int64(value)});
    case SQLITE_FLOAT:
        return Field(FieldType::Unknown, sqlite3_value_double(value));
    default:
        const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
        return Field(FieldType::Unknown, text == nullptr ? "" : text, sqlite3_value_bytes(value));
    }
}

void Append(records::RowArena& rows, sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
        return rows.AddNull();
    case SQLITE_INTEGER:
        return rows.AddInteger(sqlite3_value_int64(value));
    case SQLITE_FLOAT:
        return rows.AddReal(sqlite3_value_double(value));
    default:
        const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
        rows.AddText(text == nullptr ? "" : text, static_cast<std::size_t>(sqlite3_value_bytes(value)));
    }
}

} // namespace

// A connection without a mutex lets a value be asked for what it is; asking the statement for each property costs three
// times as much, and a wide row is mostly this.
void Statement::ReadRow(std::span<Field> row) const {
    int column = 0;
    for (Field& field : row) {
        field = FieldOf(sqlite3_column_value(statement_.get(), column++));
    }
}

void Statement::AppendRow(records::RowArena& rows, int fields) const {
    rows.BeginRow(fields);
    for (int column = 0; column < fields; ++column) {
        Append(rows, sqlite3_column_value(statement_.get(), column));
    }
}

QByteArrayView Statement::Text(int column) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_.get(), column));
    return {text == nullptr ? "" : text, sqlite3_column_bytes(statement_.get(), column)};
}

void Execute(sqlite3* connection, const QByteArray& sql) {
    if (sqlite3_exec(connection, sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        ThrowStoreError(connection, sqlite3_extended_errcode(connection), QString::fromUtf8(sql));
    }
}

QByteArray Quoted(const QByteArray& name) {
    QByteArray inner = name;
    inner.replace("\"", "\"\"");
    return '"' + inner + '"';
}

Connection::Connection(const QByteArray& path, int flags) {
    sqlite3* handle = nullptr;
    const int code = sqlite3_open_v2(path.constData(), &handle, flags | SQLITE_OPEN_EXRESCODE, nullptr);
    handle_.reset(handle);
    if (code != SQLITE_OK) {
        ThrowStoreError(handle, code, {});
    }
}

void Connection::Close() {
    sqlite3* const handle = handle_.release();
    const int code = sqlite3_close(handle);
    if (code != SQLITE_OK) {
        handle_.reset(handle);
        ThrowStoreError(handle, code, {});
    }
}

namespace {

int Primary(int code) {
    return code & 0xff;
}

QString StoreWords(sqlite3* connection, int code) {
    if (connection != nullptr && sqlite3_extended_errcode(connection) == code) {
        return QString::fromUtf8(sqlite3_errmsg(connection));
    }
    return QString::fromUtf8(sqlite3_errstr(code));
}

// The store names the fields of a failed constraint behind a colon: "UNIQUE constraint failed: Person.LastName, ...".
QString ConstraintFields(const QString& words) {
    const qsizetype colon = words.indexOf(u": "_s);
    return colon < 0 ? QString() : words.mid(colon + 2);
}

[[noreturn]] void ThrowConstraint(int code, const QString& words, const QString& sql) {
    const QString fields = ConstraintFields(words);
    switch (code) {
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
        throw EngineError(EngineErrorNumber::DuplicateKey,
                          u"The change was not made because there is already a record with the same value in %1, "
                          "which must differ from record to record."_s.arg(fields.isEmpty() ? u"the key"_s : fields),
                          sql);
    case SQLITE_CONSTRAINT_NOTNULL:
        throw EngineError(EngineErrorNumber::ConstraintFailed, u"The field %1 must not be empty."_s.arg(fields), sql);
    default:
        throw EngineError(EngineErrorNumber::ConstraintFailed,
                          u"The change breaks a rule of the database: %1"_s.arg(words), sql);
    }
}

// The store has no code of its own for a text that its parser has no room for.
bool TooDeep(const QString& words) {
    return words == u"parser stack overflow"_s || words.startsWith(u"Expression tree is too large"_s);
}

struct Translation {
    int code;
    EngineErrorNumber number;
    const char* sentence;
};

// By primary result code. A sentence without %1 says all that the user can use.
constexpr Translation translations[] = {
    {SQLITE_BUSY, EngineErrorNumber::RecordLocked, "The database is locked by another user. Try again in a moment."},
    {SQLITE_LOCKED, EngineErrorNumber::RecordLocked, "The database is locked by another user. Try again in a moment."},
    {SQLITE_CORRUPT, EngineErrorNumber::Damaged, "The database file is damaged (%1). Repair it."},
    {SQLITE_NOTADB, EngineErrorNumber::Damaged, "The file is not a sound database (%1). Repair it."},
    {SQLITE_FULL, EngineErrorNumber::DiskFull,
     "There is no room left on the disk for the change. Free some space and try again."},
    {SQLITE_IOERR, EngineErrorNumber::DiskError, "The disk or the network failed to read or write the database (%1)."},
    {SQLITE_CANTOPEN, EngineErrorNumber::CannotOpen, "The database file cannot be opened (%1)."},
    {SQLITE_PERM, EngineErrorNumber::CannotOpen, "The database file may not be opened (%1)."},
    {SQLITE_AUTH, EngineErrorNumber::CannotOpen, "The database file may not be opened (%1)."},
    {SQLITE_READONLY, EngineErrorNumber::ReadOnly,
     "The database cannot be changed: the file or its folder is read-only (%1)."},
    {SQLITE_MISMATCH, EngineErrorNumber::TypeMismatch, "A value is of a kind that its field does not take (%1)."},
    {SQLITE_TOOBIG, EngineErrorNumber::Failed, "A value is too large for the database (%1)."},
    {SQLITE_INTERRUPT, EngineErrorNumber::Failed, "The operation was interrupted."},
    {SQLITE_SCHEMA, EngineErrorNumber::Failed,
     "The tables of the database were changed by another program meanwhile (%1). Try again."},
};

} // namespace

bool IsDamage(int code) {
    return Primary(code) == SQLITE_CORRUPT || Primary(code) == SQLITE_NOTADB;
}

bool IsLocked(int code) {
    return Primary(code) == SQLITE_BUSY || Primary(code) == SQLITE_LOCKED;
}

void ThrowStoreError(sqlite3* connection, int code, const QString& sql) {
    if (Primary(code) == SQLITE_NOMEM || code == SQLITE_IOERR_NOMEM) {
        throw std::bad_alloc();
    }
    const QString words = StoreWords(connection, code);
    if (Primary(code) == SQLITE_CONSTRAINT) {
        ThrowConstraint(code, words, sql);
    }
    for (const Translation& translation : translations) {
        if (translation.code == Primary(code)) {
            QString sentence = QString::fromLatin1(translation.sentence);
            throw EngineError(translation.number, sentence.replace(u"%1"_s, words), sql);
        }
    }
    if (TooDeep(words)) {
        throw EngineError(EngineErrorNumber::Syntax,
                          u"The text nests too deeply; take parts of it into stored queries."_s, sql);
    }
    throw EngineError(EngineErrorNumber::Failed, u"The statement failed: %1"_s.arg(words), sql);
}

} // namespace velmora::engine::sqlite
