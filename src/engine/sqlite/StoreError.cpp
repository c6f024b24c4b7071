#include "engine/sqlite/StoreError.h"

#include <sqlite3.h>

#include <new>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::sqlite {

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
