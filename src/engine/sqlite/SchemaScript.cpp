#include "engine/sqlite/SchemaScript.h"

#include <sqlite3.h>

#include <cctype>

namespace velmora::engine::sqlite {

namespace {

bool IsBlank(char letter) {
    return std::isspace(static_cast<unsigned char>(letter)) != 0;
}

// Where the first word at or behind `from` begins, past blanks and comments.
qsizetype SkipToWord(const QByteArray& sql, qsizetype from) {
    while (from < sql.size()) {
        if (sql.mid(from, 2) == "--") {
            const qsizetype end = sql.indexOf('\n', from);
            from = end < 0 ? sql.size() : end + 1;
        } else if (sql.mid(from, 2) == "/*") {
            const qsizetype end = sql.indexOf("*/", from + 2);
            from = end < 0 ? sql.size() : end + 2;
        } else if (IsBlank(sql[from])) {
            ++from;
        } else {
            break;
        }
    }
    return from;
}

QByteArray NextWord(const QByteArray& sql, qsizetype& from) {
    from = SkipToWord(sql, from);
    const qsizetype begin = from;
    while (from < sql.size() && std::isalpha(static_cast<unsigned char>(sql[from])) != 0) {
        ++from;
    }
    return sql.mid(begin, from - begin).toUpper();
}

} // namespace

SchemaStatement KindOf(const QByteArray& statement) {
    qsizetype at = 0;
    if (NextWord(statement, at) != "CREATE") {
        return SchemaStatement::Other;
    }
    const QByteArray what = NextWord(statement, at);
    if (what == "TABLE") {
        return SchemaStatement::Table;
    }
    if (what == "VIRTUAL") {
        return SchemaStatement::VirtualTable;
    }
    if (what == "INDEX") {
        return SchemaStatement::Index;
    }
    return what == "UNIQUE" ? SchemaStatement::UniqueIndex : SchemaStatement::Other;
}

SchemaScript::SchemaScript(const QString& text) {
    const QByteArray script = text.toUtf8();
    qsizetype begin = SkipToWord(script, 0);
    while (begin < script.size()) {
        // A semicolon ends a statement unless it stands in a text, a comment or a trigger's body: the store knows.
        qsizetype end = script.indexOf(';', begin);
        while (end >= 0 && sqlite3_complete(script.mid(begin, end + 1 - begin).constData()) == 0) {
            end = script.indexOf(';', end + 1);
        }
        const QByteArray statement = end < 0 ? script.mid(begin) : script.mid(begin, end + 1 - begin);
        switch (KindOf(statement)) {
        case SchemaStatement::UniqueIndex:
            uniqueIndexes.push_back(statement);
            break;
        case SchemaStatement::Index:
            otherIndexes.push_back(statement);
            break;
        default:
            beforeRows.push_back(statement);
        }
        begin = SkipToWord(script, begin + statement.size());
    }
}

} // namespace velmora::engine::sqlite
