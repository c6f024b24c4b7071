// Runs the real program and compares what it prints and returns.

#include "engine/Database.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace velmora {
namespace {

struct Result {
    int code = -1;
    QByteArray out;
    QByteArray err;
};

Result Call(const QStringList& words, const QString& outputFile = {}) {
    QProcess process;
    if (!outputFile.isEmpty()) {
        process.setStandardOutputFile(outputFile);
    }
    process.start(QStringLiteral(VELMORA_DB), words);
    EXPECT_TRUE(process.waitForFinished(120'000)) << words.join(u' ').toStdString();
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit) << words.join(u' ').toStdString();
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
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
    void MakeSite() { ASSERT_EQ(Call({u"create"_s, site_}).code, 0); }

    Result Query(const QString& sql, const QStringList& parameters = {}) {
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
    const Result help = Call({u"--help"_s});
    EXPECT_EQ(help.code, 0);
    for (const char* part : {"Usage: velmora-db", "create", "check", "repair", "query", "--demo", "--param"}) {
        EXPECT_TRUE(help.out.contains(part)) << part;
    }
    EXPECT_EQ(help.err, "");
    EXPECT_EQ(Call({u"query"_s, u"--help"_s}).out, help.out);

    const QStringList wrong[] = {
        {},
        {u"destroy"_s, site_},
        {u"create"_s},
        {u"create"_s, u""_s},
        {u"create"_s, site_, u"more"_s},
        {u"create"_s, site_, u"--demo"_s},
        {u"create"_s, site_, u"--demo"_s, u"huge"_s},
        {u"create"_s, site_, u"--today"_s, u"2026-02-30"_s},
        {u"create"_s, site_, u"--today"_s, u"2026-03-01 10:00:00"_s},
        {u"create"_s, site_, u"--seed"_s, u"-1"_s},
        {u"create"_s, site_, u"--seed=x"_s},
        {u"create"_s, site_, u"--param"_s, u"a=1"_s},
        {u"check"_s, site_, u"--demo"_s, u"typical"_s},
        {u"check"_s, site_, u"--nonsense"_s},
        {u"query"_s, site_},
        {u"query"_s, site_, u" "_s},
        {u"query"_s, site_, u"A1"_s, u"P1"_s},
        {u"query"_s, site_, u"A1"_s, u"--param"_s, u"RStart"_s},
        {u"query"_s, site_, u"A1"_s, u"--param"_s, u"=2026-03-10"_s},
    };
    for (const QStringList& words : wrong) {
        const Result result = Call(words);
        EXPECT_EQ(result.code, 2) << words.join(u' ').toStdString();
        EXPECT_EQ(result.out, "") << words.join(u' ').toStdString();
        EXPECT_TRUE(result.err.startsWith("velmora-db: ") && result.err.contains(help.out)) << result.err.constData();
    }
    EXPECT_FALSE(QFile::exists(site_));
}

TEST_F(VelmoraDb, CreatesASiteOnce) {
    const Result created = Call({u"create"_s, site_});
    EXPECT_EQ(created.code, 0);
    EXPECT_EQ(created.out, database_.toUtf8() + ": created\n");
    EXPECT_EQ(created.err, "");
    EXPECT_EQ(FilesOfSite(), newSite_);

    const QByteArray before = Content(database_);
    const Result again = Call({u"create"_s, site_, u"--demo"_s, u"typical"_s});
    EXPECT_EQ(again.code, 1);
    EXPECT_EQ(again.out, "");
    EXPECT_EQ(again.err, "velmora-db: Database already exists: \"" + database_.toUtf8() + "\".\n");
    EXPECT_EQ(Content(database_), before);
    EXPECT_EQ(FilesOfSite(), newSite_);

    // A folder that cannot be made: nothing of it stays.
    QFile file(folder_.filePath(u"file"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const Result impossible = Call({u"create"_s, file.fileName() + u"/site"_s});
    EXPECT_EQ(impossible.code, 1);
    EXPECT_TRUE(impossible.err.contains(file.fileName().toUtf8() + "/site")) << impossible.err.constData();
    EXPECT_EQ(Call({u"create"_s, u"/proc/velmora/site"_s}).code, 1);

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
    EXPECT_EQ(Call(words).code, 0);
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
        const Result result = Call(words);
        EXPECT_EQ(result.code, 6) << words.join(u' ').toStdString();
        EXPECT_EQ(result.out, "");
        EXPECT_TRUE(result.err.startsWith("velmora-db: ") && result.err.contains(database_.toUtf8()));
        EXPECT_FALSE(QFile::exists(site_));
    }
}

struct QueryCase {
    QString sql;
    QStringList parameters;
    int code;
    QByteArray out; // or, when the code is not 0, words of the reason
};

TEST_F(VelmoraDb, PrintsRowsToTheByte) {
    MakeSite();
    const QString twoNames = u"SELECT Asset.Name, Reservation.Name, [Start] FROM Asset INNER JOIN Reservation ON "
                             u"Asset.AssetID = Reservation.Asset"_s;
    const QueryCase cases[] = {
        {u"INSERT INTO Asset (AssetID, Name, Location, Description) VALUES (1, \"a\tb\\c\", True, \"x\ny\r\"\"z\"\"\")"_s,
         {},
         0,
         "rows: 1\n"},
        {u"INSERT INTO Asset (AssetID, Name) VALUES (300, 'Zürich 東京')"_s, {}, 0, "rows: 1\n"},
        {u"SELECT AssetID, Name, Location, Description, LocationLvl FROM Asset"_s,
         {},
         0,
         "AssetID\tName\tLocation\tDescription\tLocationLvl\n1\ta\\tb\\\\c\tTrue\tx\\ny\\r\"z\"\t\n"
         "300\tZürich 東京\tFalse\t\t\n"},
        {u"INSERT INTO Reservation (ID, Asset, Start, End, Name, Permanent) VALUES (7, 300, #3/7/2026 2:15 PM#, "
         u"#3/8/2026#, Null, -1);"_s,
         {},
         0,
         "rows: 1\n"},
        {twoNames, {}, 0, "Asset.Name\tReservation.Name\tStart\nZürich 東京\t\t2026-03-07 14:15:00\n"},
        {u"SELECT Permanent, End, 7/2, Not Permanent, \"\" FROM Reservation"_s,
         {},
         0,
         "Permanent\tEnd\tExpr1000\tExpr1001\tExpr1002\nTrue\t2026-03-08 00:00:00\t3.5\tFalse\t\n"},
        {u"SELECT * FROM NoteCategory"_s, {}, 0, "Name\n"},
        {u"NoteCategory"_s, {}, 0, "Name\n"},
        {u"refreshtextdates"_s, {}, 0, "rows: 1\n"},
        {u"SELECT TextStart, TextEnd FROM Reservation"_s, {}, 0, "TextStart\tTextEnd\n3/7/2026 2:15 PM\t3/8/2026\n"},
        {u"DELETE FROM Asset WHERE AssetID > 1000"_s, {}, 0, "rows: 0\n"},
        // Refused texts change nothing.
        {u"SELEKT 1"_s, {}, 1, "SELEKT"},
        {u"SELECT Nam FROM Asset"_s, {}, 1, "Nam"},
        {u"SELECT * FROM Nowhere"_s, {}, 1, "Nowhere"},
        {u"PRAGMA user_version = 3"_s, {}, 1, "PRAGMA"},
        {u"DELETE FROM Asset; DELETE FROM Reservation"_s, {}, 1, ""},
        {u"INSERT INTO Asset (AssetID, Name) VALUES (1, 'again')"_s, {}, 1, ""},
        {u"SELECT Count(*) AS N FROM Asset"_s, {}, 0, "N\n2\n"},
    };
    for (const QueryCase& each : cases) {
        const Result result = Query(each.sql, each.parameters);
        EXPECT_EQ(result.code, each.code) << each.sql.toStdString() << '\n' << result.err.constData();
        if (each.code == 0) {
            EXPECT_EQ(result.out, each.out) << each.sql.toStdString();
            EXPECT_EQ(result.err, "");
        } else {
            EXPECT_EQ(result.out, "");
            EXPECT_TRUE(result.err.startsWith("velmora-db: ") && result.err.contains(each.out))
                << result.err.constData();
        }
    }
}

TEST_F(VelmoraDb, ReadsParameters) {
    MakeSite();
    ASSERT_EQ(Query(u"INSERT INTO Asset (AssetID, Name, Location) VALUES (1, 'true', True)"_s).code, 0);
    const QString typed = u"PARAMETERS d DateTime, y Bit, n Long, r Double, t Text; SELECT d, y, n, r, t FROM Asset"_s;
    const QStringList good{u"D=2026-03-10"_s, u"y=TRUE"_s, u"n=-7"_s, u"r=1e2"_s, u"t=a=b"_s};
    const auto with = [&](const QString& other) {
        QStringList parameters = good;
        for (QString& parameter : parameters) {
            if (parameter.startsWith(other.left(2), Qt::CaseInsensitive)) {
                parameter = other;
            }
        }
        return parameters;
    };
    const QueryCase cases[] = {
        {typed, good, 0, "2026-03-10 00:00:00\tTrue\t-7\t100\ta=b"},
        {typed, with(u"d=2026-03-10 14:15:09"_s), 0, "2026-03-10 14:15:09\tTrue\t-7\t100\ta=b"},
        {typed, with(u"t="_s), 0, "2026-03-10 00:00:00\tTrue\t-7\t100\t"},
        {typed, with(u"d=3/10/2026"_s), 1, "\"3/10/2026\""},
        {typed, with(u"d=2026-02-30"_s), 1, "\"2026-02-30\""},
        {typed, with(u"d="_s), 1, "\"d\""},
        {typed, with(u"y=yes"_s), 1, "true or false"},
        {typed, with(u"n=1.5"_s), 1, "whole number"},
        {typed, with(u"r=inf"_s), 1, "a number"},
        {typed, good.mid(0, 3), 1, "r, t"},
        {typed, good + QStringList{u"other=1"_s}, 1, "\"other\""},
        // Undeclared: a number, a date-time, true or false where it reads as one, else a text.
        {u"SELECT AssetID FROM Asset WHERE AssetID = x"_s, {u"X=1"_s}, 0, "1"},
        {u"SELECT x + 1 AS a FROM Asset"_s, {u"x=1.5"_s}, 0, "2.5"},
        {u"SELECT AssetID FROM Asset WHERE Location = x"_s, {u"x=true"_s}, 0, "1"},
        {u"SELECT AssetID FROM Asset WHERE #3/7/2026# < x"_s, {u"x=2026-03-08"_s}, 0, "1"},
        {u"SELECT x & \"!\" AS a FROM Asset"_s, {u"x= 1 "_s}, 0, " 1 !"},
        {u"SELECT AssetID FROM Asset WHERE Name = x"_s, {}, 1, "x"},
        {u"qreport3"_s, {u"RSTART=2026-03-10"_s}, 1, "REnd"},
    };
    for (const QueryCase& each : cases) {
        const Result result = Query(each.sql, each.parameters);
        const std::string call = each.sql.toStdString() + ' ' + each.parameters.join(u' ').toStdString();
        EXPECT_EQ(result.code, each.code) << call << '\n' << result.err.constData();
        if (each.code == 0) {
            EXPECT_EQ(result.out.mid(result.out.indexOf('\n') + 1), each.out + '\n') << call;
        } else {
            EXPECT_TRUE(result.out.isEmpty() && result.err.contains(each.out)) << call << result.err.constData();
        }
    }
}

TEST_F(VelmoraDb, FailsWhenNobodyTakesItsOutput) {
    MakeSite();
    const Result full = Call({u"query"_s, site_, u"StoredQuery"_s}, u"/dev/full"_s);
    EXPECT_EQ(full.code, 1);
    EXPECT_TRUE(full.err.startsWith("velmora-db: Cannot write to standard output: ")) << full.err.constData();
    EXPECT_EQ(Call({u"--help"_s}, u"/dev/full"_s).code, 1);
    // Whoever is told of a failure finds nothing changed.
    EXPECT_EQ(Call({u"query"_s, site_, u"DELETE FROM StoredQuery"_s}, u"/dev/full"_s).code, 1);
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
    const Result idle = Call({u"repair"_s, site_});
    EXPECT_EQ(idle.code, 0);
    EXPECT_EQ(idle.out, database_.toUtf8() + ": sound, nothing to repair\n");
    EXPECT_EQ(Content(database_), sound);

    Overwrite(database_, sound.size() - 4096, QByteArray(4096, '\x5a'));
    const Result damaged = Call({u"check"_s, site_});
    EXPECT_EQ(damaged.code, 3);
    EXPECT_TRUE(damaged.out.startsWith(database_.toUtf8() + ": damaged\n") && damaged.out.count('\n') == 2)
        << damaged.out.constData();

    {
        const auto user = engine::Database::Open(database_);
        const Result busy = Call({u"repair"_s, site_});
        EXPECT_EQ(busy.code, 4);
        EXPECT_EQ(busy.err, "velmora-db: " + database_.toUtf8() + " is in use by another program.\n");
    }
    const Result repaired = Call({u"repair"_s, site_});
    EXPECT_EQ(repaired.code, 0) << repaired.err.constData();
    EXPECT_TRUE(repaired.out.startsWith(database_.toUtf8() + ": repaired\n")) << repaired.out.constData();
    EXPECT_TRUE(repaired.out.contains("NoteCategory")) << repaired.out.constData();
    EXPECT_EQ(Call({u"check"_s, site_}).code, 0);
    EXPECT_EQ(QDir(site_).entryList({u"*damaged-*"_s}).size(), 1);
}

TEST_F(VelmoraDb, GivesUpOnWhatIsNoDatabase) {
    MakeSite();
    const QByteArray contents[] = {"", "This is a letter, and no database at all.\n", QByteArray(8192, '\0')};
    for (const QByteArray& content : contents) {
        QFile file(database_);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(content);
        file.close();
        EXPECT_EQ(Call({u"check"_s, site_}).code, 3);
        const Result query = Query(u"A1"_s);
        EXPECT_EQ(query.code, 3);
        EXPECT_EQ(query.out, "");
        const Result repair = Call({u"repair"_s, site_});
        EXPECT_EQ(repair.code, 5);
        EXPECT_NE(repair.err, "");
        EXPECT_EQ(Content(database_), content);
        EXPECT_EQ(QDir(site_).entryList({u"*.new*"_s, u"*damaged*"_s}, QDir::Files).filter(u"Velmora.MDB."_s).size(),
                  0);
    }
}

} // namespace
} // namespace velmora
