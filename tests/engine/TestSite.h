#pragma once

#include "engine/Database.h"

#include <QString>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>

namespace velmora::engine::test {

// A site's database in a folder of its own, made from the program's schema.
class TestSite {
public:
    TestSite();

    const QString& Path() const { return path_; }
    std::unique_ptr<Database> Open(const OpenOptions& options = {}) const;
    // Runs statements by the store's own means, behind the engine's back.
    void Run(const char* sql) const;
    // The first column of the first row, by the store's own means; "NULL" when empty.
    QString Stored(const char* sql) const;

private:
    QTemporaryDir folder_;
    QString path_;
};

// Does `work`, which must fail with that number and with `words` somewhere in its description.
void ExpectError(EngineErrorNumber number, QStringView words, const std::function<void()>& work);

// All rows, fields joined by '|', rows by ' / '.
QString Shown(Recordset& rows);
QString Shown(Database& database, QStringView source);

// The one row of that reservation, to be edited.
std::unique_ptr<Recordset> Reservation(Database& database, int id);

// A value as the text files of the tests have it: "date 2026-03-07", "text Ann", "number 2.5", "flag true" or "null".
Value ReadValue(const QString& written);

} // namespace velmora::engine::test
