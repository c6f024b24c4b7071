// Runs the real program and compares what it prints and returns.

#include "engine/Database.h"
#include "tests/app/Programs.h"
#include "tests/data/RawStore.h"

#include <QDir>
#include <QTemporaryDir>

using namespace Qt::Literals::StringLiterals;

namespace velmora {
namespace {

Outcome Call(const QStringList& words, const QString& outputFile = {}) {
    QProcess process;
    if (!outputFile.isEmpty()) {
        process.setStandardOutputFile(outputFile);
    }
    process.start(QStringLiteral(VELMORA_DB), words);
    return Finish(process);
}

// What a file of cases writes with names.
QByteArray WithCharacters(QByteArray text) {
    return text.replace("<TAB>", "\t").replace("<CR>", "\r").replace("<LF>", "\n").replace("<SPACE>", " ");
}

QByteArray Content(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

void Overwrite(const QString& path, qint64 position, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.seek(position);
    file.write(bytes);
}

class VelmoraDb : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(folder_.isValid()); }

    // A folder with an empty database.
    void MakeSite() { ASSERT_EQ(Call({u"create"_s, site_}).exitCode, 0); }

    Outcome Query(const QString& sql, const QStringList& parameters = {}) {
        QStringList words{u"query"_s, site_, sql};
        for (const QString& parameter : parameters) {
            words << u"--param"_s << parameter;
        }
        return Call(words);
    }

    QTemporaryDir folder_;
    QStringList FilesOfSite() const { return QDir(site_).entryList(QDir::Files); }

    // What a new site without demo data has.
    const QStringList newSite_{u"Connect.rpx"_s,  u"Directry.rpx"_s, u"Disconn.rpx"_s,
                               u"Occupant.rpt"_s, u"Reminder.rpx"_s, u"Setup.rpx"_s,
                               u"Takedown.rpx"_s, u"Velmora.MDB"_s,  u"WorkOrd.rpx"_s};
    // Folders may be called anything.
    QString site_ = folder_.filePath(u"Zürich 東京/it's a site"_s);
    QString database_ = site_ + u"/Velmora.MDB"_s;
};

TEST_F(VelmoraDb, TellsItsUsage) {
    const Outcome help = Call({u"--help"_s});
    EXPECT_EQ(help.exitCode, 0);
    for (const char* part : {"Usage: velmora-db", "create", "check", "repair", "query", "--demo", "--param"}) {
        EXPECT_TRUE(help.out.contains(part)) << part;
    }
    EXPECT_EQ(help.error, "");
    EXPECT_EQ(Call({u"query"_s, u"--help"_s}).out, help.out);

    for (const QByteArray& line : CaseLines("db-usage.txt")) {
        QStringList words;
        for (const QByteArray& word : line.split(' ')) {
            words += word == "SITE" ? site_ : QString::fromUtf8(word == "<EMPTY>" ? "" : WithCharacters(word));
        }
        const Outcome outcome = Call(line.isEmpty() ? QStringList() : words);
        EXPECT_EQ(outcome.exitCode, 2) << line.constData();
        EXPECT_EQ(outcome.out, "") << line.constData();
        EXPECT_TRUE(outcome.error.startsWith("velmora-db: ") && outcome.error.contains(help.out))
            << outcome.error.constData();
    }
    EXPECT_FALSE(QFile::exists(site_));
}

TEST_F(VelmoraDb, CreatesASiteOnce) {
    const Outcome created = Call({u"create"_s, site_});
    EXPECT_EQ(created.exitCode, 0);
    EXPECT_EQ(created.out, database_.toUtf8() + ": created\n");
    EXPECT_EQ(created.error, "");
    EXPECT_EQ(FilesOfSite(), newSite_);

    const QByteArray before = Content(database_);
    const Outcome again = Call({u"create"_s, site_, u"--demo"_s, u"typical"_s});
    EXPECT_EQ(again.exitCode, 1);
    EXPECT_EQ(again.out, "");
    EXPECT_EQ(again.error, "velmora-db: Database already exists: \"" + database_.toUtf8() + "\".\n");
    EXPECT_EQ(Content(database_), before);
    EXPECT_EQ(FilesOfSite(), newSite_);

    // A folder that cannot be made: nothing of it stays.
    QFile file(folder_.filePath(u"file"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const Outcome impossible = Call({u"create"_s, file.fileName() + u"/site"_s});
    EXPECT_EQ(impossible.exitCode, 1);
    EXPECT_TRUE(impossible.error.contains(file.fileName().toUtf8() + "/site")) << impossible.error.constData();
    EXPECT_EQ(Call({u"create"_s, u"/proc/velmora/site"_s}).exitCode, 1);

    EXPECT_EQ(Query(u"SELECT Name FROM StoredQuery"_s).out,
              "Name\nA1\nAssetStdNoteSelect\nDailyReservations\nEventStdNoteSelect\nP1\nP2\nP3\nQReport2\nQReport3\n"
              "QReport4\nQReport5\nRangePerson\nRefreshTextDates\n");
}

TEST_F(VelmoraDb, CreatesADemoSite) {
    ASSERT_TRUE(QDir().mkpath(site_));
    QFile own(site_ + u"/htmlpost.txt"_s);
    ASSERT_TRUE(own.open(QIODevice::WriteOnly));
    own.write("our own");
    own.close();
    QFile ownLayout(site_ + u"/Setup.rpx"_s);
    ASSERT_TRUE(ownLayout.open(QIODevice::WriteOnly));
    ownLayout.write("our own layout");
    ownLayout.close();

    const QStringList words{u"create"_s, site_, u"--demo=typical"_s, u"--today"_s, u"2026-03-10"_s,
                            u"--seed"_s, u"5"_s};
    EXPECT_EQ(Call(words).exitCode, 0);
    EXPECT_EQ(Query(u"SELECT Count(*) AS N, Min(Start) AS Earliest FROM Reservation"_s).out.left(16),
              "N\tEarliest\n75000");
    EXPECT_TRUE(Content(site_ + u"/htmlpre.txt"_s).startsWith("<!DOCTYPE html>"));
    EXPECT_EQ(Content(own.fileName()), "our own");
    EXPECT_EQ(Content(ownLayout.fileName()), "our own layout");
    EXPECT_TRUE(Content(site_ + u"/Reminder.rpx"_s).startsWith("{"));
    EXPECT_EQ(Call({u"check"_s, site_}).out, database_.toUtf8() + ": sound\n");
}

TEST_F(VelmoraDb, MissesADatabase) {
    for (const QStringList& words :
         {QStringList{u"check"_s, site_}, {u"repair"_s, site_}, {u"query"_s, site_, u"A1"_s}}) {
        const Outcome result = Call(words);
        EXPECT_EQ(result.exitCode, 6) << words.join(u' ').toStdString();
        EXPECT_EQ(result.out, "");
        EXPECT_TRUE(result.error.startsWith("velmora-db: ") && result.error.contains(database_.toUtf8()));
        EXPECT_FALSE(QFile::exists(site_));
    }
}

TEST_F(VelmoraDb, RunsQueries) {
    MakeSite();
    QByteArray sql;
    QStringList parameters;
    QByteArray printed;
    QByteArray reason;
    int count = 0;
    for (const QByteArray& line : CaseLines("db-queries.txt")) {
        const QByteArray rest = WithCharacters(line.mid(2));
        if (line.startsWith("+ ")) {
            parameters += QString::fromUtf8(rest);
        } else if (line.startsWith("> ")) {
            printed += rest + '\n';
        } else if (line.startsWith("! ")) {
            reason = rest;
        } else if (!line.isEmpty()) {
            sql = WithCharacters(line);
        } else if (!sql.isEmpty()) {
            ++count;
            const Outcome outcome = Query(QString::fromUtf8(sql), parameters);
            EXPECT_EQ(outcome.exitCode, reason.isEmpty() ? 0 : 1) << sql.constData() << outcome.error.constData();
            EXPECT_EQ(outcome.out, printed) << sql.constData();
            EXPECT_EQ(outcome.error.isEmpty(), reason.isEmpty());
            EXPECT_TRUE(outcome.error.contains(reason)) << sql.constData() << outcome.error.constData();
            sql = printed = reason = {};
            parameters.clear();
        }
    }
    EXPECT_GT(count, 30);
}

TEST_F(VelmoraDb, FailsWhenNobodyTakesItsOutput) {
    MakeSite();
    const Outcome full = Call({u"query"_s, site_, u"StoredQuery"_s}, u"/dev/full"_s);
    EXPECT_EQ(full.exitCode, 1);
    EXPECT_TRUE(full.error.startsWith("velmora-db: Cannot write to standard output: ")) << full.error.constData();
    EXPECT_EQ(Call({u"--help"_s}, u"/dev/full"_s).exitCode, 1);
    const Outcome created = Call({u"create"_s, site_ + u"2"_s}, u"/dev/full"_s);
    EXPECT_EQ(created.exitCode, 1);
    EXPECT_TRUE(created.error.contains(" was created; only the line that says so")) << created.error.constData();
    // Whoever is told of a failure finds nothing changed.
    EXPECT_EQ(Call({u"query"_s, site_, u"DELETE FROM StoredQuery"_s}, u"/dev/full"_s).exitCode, 1);
    EXPECT_EQ(Query(u"SELECT Count(*) AS N FROM StoredQuery"_s).out, "N\n13\n");

    // More than a pipe holds, into a reader that goes away.
    QProcess shell;
    shell.start(u"bash"_s, {u"-c"_s,
                            u"\"$0\" query \"$1\" 'SELECT a.Text FROM StoredQuery AS a, StoredQuery AS b, "
                            u"StoredQuery AS c' | true; exit ${PIPESTATUS[0]}"_s,
                            QStringLiteral(VELMORA_DB), site_});
    ASSERT_TRUE(shell.waitForFinished(120'000));
    EXPECT_EQ(shell.exitCode(), 1);
}

TEST_F(VelmoraDb, ChecksAndRepairs) {
    MakeSite();
    ASSERT_EQ(
        Query(u"INSERT INTO NoteCategory (Name) SELECT a.Name & b.Name & a.Text FROM StoredQuery AS a, StoredQuery "
              u"AS b"_s)
            .out,
        "rows: 169\n");
    EXPECT_EQ(Call({u"check"_s, site_}).out, database_.toUtf8() + ": sound\n");
    const QByteArray sound = Content(database_);
    const Outcome idle = Call({u"repair"_s, site_});
    EXPECT_EQ(idle.exitCode, 0);
    EXPECT_EQ(idle.out, database_.toUtf8() + ": sound, nothing to repair\n");
    EXPECT_EQ(Content(database_), sound);

    Overwrite(database_, sound.size() - 4096, QByteArray(4096, '\x5a'));
    const Outcome damaged = Call({u"check"_s, site_});
    EXPECT_EQ(damaged.exitCode, 3);
    EXPECT_TRUE(damaged.out.startsWith(database_.toUtf8() + ": damaged\n") && damaged.out.count('\n') == 2)
        << damaged.out.constData();

    {
        const auto user = engine::Database::Open(database_);
        const Outcome busy = Call({u"repair"_s, site_});
        EXPECT_EQ(busy.exitCode, 4);
        EXPECT_EQ(busy.error, "velmora-db: " + database_.toUtf8() + " is in use by another program.\n");
    }
    const Outcome repaired = Call({u"repair"_s, site_});
    EXPECT_EQ(repaired.exitCode, 0) << repaired.error.constData();
    EXPECT_TRUE(repaired.out.startsWith(database_.toUtf8() + ": repaired\n")) << repaired.out.constData();
    EXPECT_TRUE(repaired.out.contains("NoteCategory")) << repaired.out.constData();
    EXPECT_EQ(Call({u"check"_s, site_}).exitCode, 0);
    EXPECT_EQ(QDir(site_).entryList({u"*damaged-*"_s}).size(), 1);
}

TEST_F(VelmoraDb, SaysWhyATableOfThisVersionIsMissing) {
    MakeSite();
    test::RawStore other(database_);
    other.Run(u"DROP TABLE SiteProperty"_s);
    other.Run(u"BEGIN IMMEDIATE"_s); // nobody else may change the site
    const Outcome query = Query(u"SELECT * FROM SiteProperty"_s);
    EXPECT_EQ(query.exitCode, 1);
    EXPECT_TRUE(query.error.contains("has version 1; this needs version")) << query.error.constData();
    EXPECT_FALSE(Query(u"SELECT * FROM Asset"_s).error.contains("version"));
}

TEST_F(VelmoraDb, GivesUpOnWhatIsNoDatabase) {
    MakeSite();
    const QByteArray contents[] = {"", "This is a letter, and no database at all.\n", QByteArray(8192, '\0')};
    for (const QByteArray& content : contents) {
        QFile file(database_);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(content);
        file.close();
        EXPECT_EQ(Call({u"check"_s, site_}).exitCode, 3);
        const Outcome query = Query(u"A1"_s);
        EXPECT_EQ(query.exitCode, 3);
        EXPECT_EQ(query.out, "");
        const Outcome repair = Call({u"repair"_s, site_});
        EXPECT_EQ(repair.exitCode, 5);
        EXPECT_NE(repair.error, "");
        EXPECT_EQ(Content(database_), content);
        EXPECT_EQ(QDir(site_).entryList({u"*.new*"_s, u"*damaged*"_s}, QDir::Files).filter(u"Velmora.MDB."_s).size(),
                  0);
    }
}

} // namespace
} // namespace velmora
