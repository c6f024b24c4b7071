#include "tests/engine/TestSite.h"
#include "tests/support/Folders.h"

#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::test {

namespace {

// The bare store, open on the file as long as one call takes.
class Store {
public:
    explicit Store(const QString& path) {
        EXPECT_EQ(sqlite3_open(path.toUtf8().constData(), &handle_), SQLITE_OK);
        sqlite3_busy_timeout(handle_, 5000);
        sqlite3_exec(handle_, "PRAGMA synchronous = OFF", nullptr, nullptr, nullptr);
    }
    ~Store() { EXPECT_EQ(sqlite3_close(handle_), SQLITE_OK); }
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;
    sqlite3* Handle() const { return handle_; }

private:
    sqlite3* handle_ = nullptr;
};

} // namespace

TestSite::TestSite() : path_(folder_.filePath(u"Velmora.MDB"_s)) {
    Run(TestBytes(u"data/first-schema.sql"_s).constData());
}

std::unique_ptr<Database> TestSite::Open(const OpenOptions& options) const {
    return Database::Open(path_, options);
}

void TestSite::Run(const char* sql) const {
    const Store store(path_);
    ASSERT_EQ(sqlite3_exec(store.Handle(), sql, nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(store.Handle());
}

QString TestSite::Stored(const char* sql) const {
    const Store store(path_);
    sqlite3_stmt* statement = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(store.Handle(), sql, -1, &statement, nullptr), SQLITE_OK);
    EXPECT_EQ(sqlite3_step(statement), SQLITE_ROW);
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
    const QString stored = text == nullptr ? u"NULL"_s : QString::fromUtf8(text);
    sqlite3_finalize(statement);
    return stored;
}

void ExpectError(EngineErrorNumber number, QStringView words, const std::function<void()>& work) {
    try {
        work();
        ADD_FAILURE() << "no error " << static_cast<int>(number);
    } catch (const EngineError& error) {
        EXPECT_EQ(error.Kind(), number) << error.what();
        EXPECT_TRUE(error.Description().contains(words)) << error.what();
    }
}

QString Shown(Recordset& rows) {
    QStringList lines;
    for (; !rows.EndOfFile(); rows.MoveNext()) {
        QStringList fields;
        for (int i = 0; i < static_cast<int>(rows.Fields().size()); ++i) {
            fields.append(rows.FieldAt(i).ToText());
        }
        lines.append(fields.join(u'|'));
    }
    return lines.join(u" / "_s);
}

QString Shown(Database& database, QStringView source) {
    return Shown(*database.OpenRecordset(source));
}

std::unique_ptr<Recordset> Reservation(Database& database, int id) {
    return database.OpenRecordset(u"Select * from Reservation where ID = "_s + QString::number(id),
                                  RecordsetKind::Updatable);
}

Value ReadValue(const QString& written) {
    const QString kind = written.section(u' ', 0, 0);
    const QString rest = written.section(u' ', 1);
    if (kind == u"date") {
        return *ParseStorageText(rest);
    }
    if (kind == u"number") {
        return rest.contains(u'.') ? Value(rest.toDouble()) : Value(rest.toLongLong());
    }
    if (kind == u"flag") {
        return rest == u"true";
    }
    return kind == u"text" ? Value(rest) : Value();
}

} // namespace velmora::engine::test
