#pragma once

#include "tests/support/Folders.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace velmora {

using namespace Qt::StringLiterals;

inline QByteArray FileBytes(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Makes the database of a file of rows below tests/ with the program's own stored queries.
inline void MakeTestSite(const QString& path, const QString& rows = u"/desk/site.sql"_s) {
    sqlite3* store = nullptr;
    ASSERT_EQ(sqlite3_open(path.toUtf8().constData(), &store), SQLITE_OK);
    const auto run = [store](const QByteArray& sql) {
        char* message = nullptr;
        EXPECT_EQ(sqlite3_exec(store, sql.constData(), nullptr, nullptr, &message), SQLITE_OK) << message;
        sqlite3_free(message);
    };
    const QString share = ShareFolder();
    run("PRAGMA synchronous = OFF; BEGIN;" + FileBytes(TestDataFolder() + u"/data/first-schema.sql"_s));
    run(FileBytes(TestDataFolder() + rows));
    const QDir queries(share + u"/queries"_s);
    for (const QString& name : queries.entryList({u"*.sql"_s})) {
        QByteArray text = FileBytes(queries.filePath(name));
        run("INSERT INTO StoredQuery VALUES ('" + QFileInfo(name).completeBaseName().toUtf8() + "', '" +
            text.replace("'", "''") + "');");
    }
    run("COMMIT;");
    sqlite3_close(store);
}

} // namespace velmora
