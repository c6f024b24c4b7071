#include "site/Site.h"
#include "site/SiteVersion.h"
#include "site/StoredQueries.h"
#include "tests/data/RawStore.h"
#include "tests/support/Folders.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velmora {
namespace {

using namespace Qt::StringLiterals;

class KeptLog : public Log {
public:
    void Write(const QString& entry) noexcept override { text += entry + u'\n'; }
    QString text;
};

// A site as programs of the first version made it, with an earlier text of one of its queries and one of its own.
class OldSite : public testing::Test {
protected:
    OldSite() {
        Store().Run(TestText(u"data/first-schema.sql"_s));
        for (const StoredQueryText& query : StoredQueryTexts()) {
            if (query.name != u"DailyReservations") {
                Put(query.name, query.text);
            }
        }
        Put(u"QReport3"_s, TestText(u"site/QReport3.first.sql"_s).trimmed());
        Put(u"P1"_s, u"SELECT 1 AS Ours FROM Note"_s);
    }

    test::RawStore Store() const { return test::RawStore(folder_.filePath(u"Velmora.MDB"_s)); }
    void Put(const QString& query, QString text) const {
        Store().Run(
            u"INSERT OR REPLACE INTO StoredQuery VALUES ('%1', '%2')"_s.arg(query, text.replace(u'\'', u"''"_s)));
    }
    QString TextOf(const QString& query) const {
        return Store().Rows(u"SELECT Text FROM StoredQuery WHERE Name = '%1'"_s.arg(query)).join(u'\n');
    }
    QStringList Properties() const { return Store().Rows(u"SELECT Name, Value FROM SiteProperty ORDER BY Name"_s); }

    QTemporaryDir folder_;
    Site site_{folder_.path()};
    KeptLog log_;
};

QString OwnText(const QString& name) {
    for (const StoredQueryText& query : StoredQueryTexts()) {
        if (query.name == name) {
            return query.text;
        }
    }
    return {};
}

TEST_F(OldSite, IsSoundAndBroughtUpToDateWhenOpened) {
    EXPECT_TRUE(site_.Check().isSound);
    // A desk of the old program, at work meanwhile.
    const auto old = engine::Database::Open(site_.Location());
    const auto rows = old->OpenRecordset(u"StoredQuery", engine::RecordsetKind::Updatable);

    Store().Run(u"DELETE FROM StoredQuery WHERE Name = 'P2'"_s);
    const auto database = site_.Open(&log_);
    EXPECT_EQ(TextOf(u"P2"_s), QString()) << "what the site has removed stays away";
    EXPECT_EQ(Properties(),
              (QStringList{u"SchemaVersion|2"_s, u"StoredQueryRevision|%1"_s.arg(StoredQueryRevision())}));
    EXPECT_EQ(TextOf(u"QReport3"_s), OwnText(u"QReport3"_s));
    EXPECT_EQ(TextOf(u"P1"_s), u"SELECT 1 AS Ours FROM Note"_s);
    EXPECT_EQ(TextOf(u"DailyReservations"_s), OwnText(u"DailyReservations"_s));
    for (const char16_t* part :
         {u"from version 1 to version 2", u"QReport3 has", u"P1 was changed", u"DailyReservations was"}) {
        EXPECT_TRUE(log_.text.contains(part)) << log_.text.toStdString();
    }
    EXPECT_FALSE(WhyOutdated(*database));
    EXPECT_TRUE(site_.Check().isSound);

    EXPECT_EQ(old->Execute(u"INSERT INTO NoteCategory (Name) VALUES (\"Setup\")"), 1);
    EXPECT_EQ(old->OpenRecordset(u"DailyReservations")->RecordCount(), 0);
    rows->MoveNext();
    EXPECT_FALSE((*rows)["Name"].ToText().isEmpty());

    log_.text.clear();
    site_.Open(&log_);
    EXPECT_EQ(log_.text, QString());
}

TEST_F(OldSite, IsBroughtUpToDateByOneOfTwoThatOpenItAtOnce) {
    std::array<pid_t, 4> children{};
    for (pid_t& child : children) {
        child = ::fork();
        if (child == 0) {
            int lines = 50;
            try {
                const auto database = site_.Open(&log_);
                lines = static_cast<int>(log_.text.count(u"from version 1"));
            } catch (...) { // NOLINT(bugprone-empty-catch)
                // The exit code says it.
            }
            ::_exit(lines);
        }
    }
    int lines = 0;
    for (const pid_t child : children) {
        int status = 0;
        ::waitpid(child, &status, 0);
        lines += WEXITSTATUS(status);
    }
    EXPECT_EQ(lines, 1);
    EXPECT_EQ(Properties().front(), u"SchemaVersion|2"_s);
}

TEST_F(OldSite, AStepThatFailsLeavesEverythingAsItWas) {
    Store().Run(u"CREATE TRIGGER Guard BEFORE UPDATE ON StoredQuery BEGIN SELECT RAISE(ABORT, 'not mine'); END"_s);
    const QString before = TextOf(u"QReport3"_s);
    {
        const auto database = site_.Open(&log_);
        EXPECT_TRUE(log_.text.contains(u"could not be brought up to date") && log_.text.contains(u"not mine"));
        EXPECT_EQ(database->OpenRecordset(u"Asset")->RecordCount(), 0);
        const auto reason = WhyOutdated(*database);
        ASSERT_TRUE(reason);
        EXPECT_TRUE(reason->contains(u"version 1") && reason->contains(u"version 2")) << reason->toStdString();
    }
    EXPECT_EQ(Store().Number(u"SELECT count(*) FROM sqlite_master WHERE name = 'SiteProperty'"_s), 0);
    EXPECT_EQ(TextOf(u"QReport3"_s), before);
    Store().Run(u"DROP TRIGGER Guard"_s);
    site_.Open();
    EXPECT_EQ(Properties().front(), u"SchemaVersion|2"_s);
}

TEST_F(OldSite, IsReadAsItIsWhereNobodyMayWrite) {
    const QByteArray path = folder_.path().toUtf8();
    ASSERT_EQ(::chmod(site_.Location().toUtf8().constData(), 0444) + ::chmod(path.constData(), 0555), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        constexpr uid_t nobody = 65534;
        bool isRead = ::geteuid() != 0 || ::setuid(nobody) == 0;
        try {
            const auto database = site_.Open(&log_);
            isRead = isRead && WhyOutdated(*database) && database->OpenRecordset(u"Asset")->RecordCount() == 0 &&
                     log_.text.contains(u"could not be brought up to date");
        } catch (...) {
            isRead = false;
        }
        ::_exit(isRead ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(::chmod(path.constData(), 0755), 0);
    EXPECT_EQ(Store().Number(u"SELECT count(*) FROM sqlite_master WHERE name = 'SiteProperty'"_s), 0);
}

TEST_F(OldSite, OfANewerOrUnreadableVersionIsRefusedAndLeftAlone) {
    using engine::EngineErrorNumber;
    site_.Open();
    struct Case {
        QString version;
        EngineErrorNumber kind;
        QStringList words;
    };
    for (const Case& each : {Case{u"7"_s, EngineErrorNumber::NewerVersion, {u"version 7"_s, u"up to 2"_s}},
                             Case{u"99999999999"_s, EngineErrorNumber::NewerVersion, {u"version 99999999999"_s}},
                             Case{u"3.0"_s, EngineErrorNumber::CannotOpen, {u"\"3.0\""_s, u"SchemaVersion"_s}},
                             Case{u"-1"_s, EngineErrorNumber::CannotOpen, {u"\"-1\""_s}}}) {
        Store().Run(u"UPDATE SiteProperty SET Value = '%1' WHERE Name = 'schemaversion'"_s.arg(each.version));
        for (const std::function<void()>& use :
             {std::function<void()>([&] { site_.Open(); }), {[&] { site_.Check(); }}, {[&] {
                  site_.Repair(*MakeDateTime({2026, 3, 7, 14, 15, 9}));
              }}}) {
            try {
                use();
                FAIL() << "used a site of version " << each.version.toStdString();
            } catch (const engine::EngineError& error) {
                EXPECT_EQ(error.Kind(), each.kind) << error.what();
                for (const QString& word : each.words) {
                    EXPECT_TRUE(error.Description().contains(word)) << error.what();
                }
            }
        }
        EXPECT_EQ(Properties().front(), u"SchemaVersion|"_s + each.version);
    }
    EXPECT_EQ(QDir(folder_.path()).entryList({u"*.damaged-*"_s}), QStringList());
    Store().Run(u"ALTER TABLE SiteProperty RENAME COLUMN Value TO Val"_s);
    EXPECT_THROW(site_.Open(), engine::EngineError);
}

// What other programs see of the tables: columns, keys, indexes and how numbers are assigned.
QStringList ShapeOf(test::RawStore& store) {
    return store.Rows(u"SELECT t.name, c.name, c.type, c.\"notnull\", c.dflt_value, c.pk FROM pragma_table_list AS t, "
                      "pragma_table_info(t.name) AS c WHERE t.schema = 'main' AND t.name <> 'SiteProperty' "
                      "AND t.name NOT LIKE 'sqlite_schema' ORDER BY t.name, c.cid"_s) +
           store.Rows(u"SELECT t.name, i.name, i.\"unique\", i.origin, x.seqno, x.name, x.\"desc\", x.coll, x.key "
                      "FROM pragma_table_list AS t, pragma_index_list(t.name) AS i, pragma_index_xinfo(i.name) AS x "
                      "WHERE t.name <> 'SiteProperty' ORDER BY t.name, i.seq, x.seqno"_s) +
           store.Rows(u"SELECT name FROM sqlite_schema WHERE sql LIKE '%AUTOINCREMENT%' ORDER BY name"_s);
}

TEST_F(OldSite, HasTheTablesOfANewOne) {
    const Site young(folder_.filePath(u"young"_s));
    young.Create();
    test::RawStore oldStore = Store();
    test::RawStore youngStore(young.Location());
    const QStringList expected = ShapeOf(oldStore);
    EXPECT_GT(expected.size(), 150);
    EXPECT_EQ(ShapeOf(youngStore), expected);
    // The collation of a column that no index has shows in a comparison.
    for (test::RawStore* store : {&oldStore, &youngStore}) {
        store->Run(u"INSERT INTO Note (Note) VALUES ('Ann'); INSERT INTO StoredQuery VALUES ('Q', 'Ann')"_s);
        EXPECT_EQ(store->Number(u"SELECT count(*) FROM Note WHERE Note = 'ANN'"_s), 1);
        EXPECT_EQ(store->Number(u"SELECT count(*) FROM StoredQuery WHERE Text = 'ANN'"_s), 0);
    }
}

TEST(ShippedQueries, NameEveryTextOfTheProgram) {
    const QString shipped = TestText(u"../share/shipped-queries.txt"_s);
    for (const StoredQueryText& query : StoredQueryTexts()) {
        const QByteArray hash = QCryptographicHash::hash(query.text.toUtf8(), QCryptographicHash::Sha256).toHex();
        EXPECT_TRUE(shipped.contains(QString::fromLatin1(hash) + u' ' + query.name + u'\n'))
            << "scripts/ship-queries adds the line of " << query.name.toStdString();
    }
}

TEST(SiteRepair, AMissingColumnIsDamageAndLostQueriesComeBack) {
    const QTemporaryDir folder;
    const Site site(folder.path());
    site.Create();
    {
        test::RawStore raw(site.Location());
        raw.Run(u"INSERT INTO Note (Reservation, Note) VALUES (7, 'kept');"
                u"UPDATE StoredQuery SET Text = 'SELECT 1 AS Ours FROM Note' WHERE Name = 'A1';"
                u"DELETE FROM StoredQuery WHERE Name IN ('P1', 'QReport3');"
                u"ALTER TABLE Note DROP COLUMN CompletedBy"_s);
    }
    try {
        site.Open();
        FAIL() << "opened a database without one of its columns";
    } catch (const engine::EngineError& error) {
        EXPECT_EQ(error.Number(), 3049);
        EXPECT_TRUE(error.Description().contains(u"Note.CompletedBy"_s)) << error.what();
    }
    const QString account = site.Repair(*MakeDateTime({2026, 3, 7, 14, 15, 9})).ToText();
    EXPECT_TRUE(account.contains(u"QReport3"_s) && account.contains(u"P1"_s)) << account.toStdString();
    const auto database = site.Open();
    EXPECT_EQ((*database->OpenRecordset(u"Select * from [Note] where Reservation = 7"))["Note"].ToText(), u"kept"_s);
    EXPECT_EQ((*database->OpenRecordset(u"A1"))["Ours"].ToInteger(), 1) << "a query that is there stays the site's own";
    EXPECT_EQ(database->QueryNames().size(), static_cast<qsizetype>(StoredQueryTexts().size()));
}

TEST_F(OldSite, IsRepairedAndBroughtUpToDate) {
    Store().Run(u"DROP INDEX AssetName"_s);
    EXPECT_FALSE(site_.Check().isSound);
    const QString account = site_.Repair(*MakeDateTime({2026, 3, 7, 14, 15, 9})).ToText();
    EXPECT_TRUE(account.contains(u"from version 1 to version 2")) << account.toStdString();
    EXPECT_FALSE(account.contains(u"lost;") || account.contains(u"SiteProperty")) << account.toStdString();
    EXPECT_EQ(Properties().front(), u"SchemaVersion|2"_s);
    EXPECT_EQ(TextOf(u"QReport3"_s), OwnText(u"QReport3"_s));
}

TEST_F(OldSite, WithAQueryOrTableOfANeededNameKeepsItsQueries) {
    Put(u"DailyReservations"_s, u"SELECT Note AS Ours FROM Note"_s);
    const QString before = TextOf(u"QReport3"_s);
    for (const QString& next : {u"DELETE FROM StoredQuery WHERE Name = 'DailyReservations'; "
                                "CREATE TABLE DailyReservations (Ours)"_s,
                                u"ALTER TABLE DailyReservations RENAME TO Ours"_s}) {
        log_.text.clear();
        site_.Open(&log_);
        EXPECT_TRUE(log_.text.contains(u"named DailyReservations")) << log_.text.toStdString();
        EXPECT_EQ(TextOf(u"QReport3"_s), before);
        Store().Run(next);
    }
    site_.Open();
    EXPECT_EQ(TextOf(u"QReport3"_s), OwnText(u"QReport3"_s));
}

TEST_F(OldSite, IsReadWhileAnotherHoldsTheWriteLock) {
    test::RawStore other = Store();
    other.Run(u"BEGIN IMMEDIATE"_s);
    EXPECT_EQ(site_.Open(&log_)->OpenRecordset(u"Asset")->RecordCount(), 0);
    EXPECT_TRUE(log_.text.contains(u"could not be brought up to date")) << log_.text.toStdString();
}

} // namespace
} // namespace velmora
