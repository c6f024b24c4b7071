#include "demo/DemoSite.h"
#include "engine/dialect/Compiler.h"
#include "engine/sqlite/FileStore.h"
#include "site/Site.h"
#include "site/StoredQueries.h"
#include "tests/data/RawStore.h"
#include "tests/support/Folders.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace velmora {
namespace {

using test::RawStore;

const Date today = *MakeDate(2026, 3, 10);

// The record engine's rows as RawStore::Rows writes them.
QStringList RowsOf(engine::Recordset& rows) {
    QStringList lines;
    for (; !rows.EndOfFile(); rows.MoveNext()) {
        QStringList fields;
        for (size_t n = 0; n < rows.Fields().size(); ++n) {
            const engine::Field field = rows.FieldAt(static_cast<int>(n));
            const bool isFlag = rows.Fields()[n].type == engine::FieldType::YesNo && !field.IsNull();
            fields.append(isFlag ? QString::number(field.ToBool()) : field.ToText());
        }
        lines.append(fields.join(u'|'));
    }
    return lines;
}

struct QuerySite {
    QuerySite() : site(CreateSite(folder.path())), raw(site.Location()) {}
    explicit QuerySite(const demo::Options& demo)
        : site(demo::CreateDemoSite(folder.path(), demo)), raw(site.Location()) {}

    QStringList Run(const QString& query, const QString& from, const QString& to) const {
        const auto database = site.Open();
        const auto stored = database->OpenQueryDef(query);
        stored->SetParameter(u"RStart", *ParseStorageText(from));
        stored->SetParameter(u"REnd", *ParseStorageText(to));
        return RowsOf(*stored->OpenRecordset());
    }

    QTemporaryDir folder;
    Site site;
    RawStore raw;
};

// The queries of the reports.
constexpr const char* reportQueries[] = {"QReport3", "QReport4", "QReport5", "QReport2", "RangePerson",
                                         "A1",       "P1",       "P2",       "P3"};

// What a query means, in the store's own SQL and by other means than the query uses.
QString Reference(const char* query) {
    return TestText(u"data/reference/"_s + QLatin1String(query) + u".sql"_s);
}

class DemoQueries : public testing::Test {
protected:
    // Made once for all tests.
    static QuerySite& TheSite() {
        static QuerySite site(demo::Options{.tier = demo::Tier::Typical, .today = today, .seed = 1});
        return site;
    }

    QuerySite* const site_ = &TheSite();
};

TEST_F(DemoQueries, AgreeWithTheirMeaning) {
    const std::pair<QString, QString> periods[] = {
        {u"2026-03-10 00:00:00"_s, u"2026-03-11 00:00:00"_s}, {u"2026-03-14 00:00:00"_s, u"2026-03-17 00:00:00"_s},
        {u"2022-06-01 00:00:00"_s, u"2022-06-02 00:00:00"_s}, {u"2026-05-04 09:30:00"_s, u"2026-05-04 10:15:00"_s},
        {u"2031-01-01 00:00:00"_s, u"2031-01-02 00:00:00"_s}, {u"2026-03-11 00:00:00"_s, u"2026-03-10 00:00:00"_s},
    };
    for (const char* query : reportQueries) {
        for (const auto& [from, to] : periods) {
            const QStringList rows = site_->Run(QString::fromLatin1(query), from, to);
            const QStringList expected = site_->raw.Rows(Reference(query), from, to);
            ASSERT_EQ(rows.size(), expected.size()) << query << ' ' << from.toStdString();
            for (qsizetype n = 0; n < rows.size(); ++n) {
                ASSERT_EQ(rows[n].toStdString(), expected[n].toStdString()) << query << ' ' << n;
            }
        }
    }
}

// The texts that the reports send, of those that read reservations.
constexpr const char* NotCheckedIn =
    "SELECT Asset.Name, Reservation.Start, Reservation.End, Reservation.Name, Reservation.Asset, "
    "Reservation.EventType, Reservation.LastName, Reservation.FirstName, Reservation.Organization FROM Asset INNER "
    "JOIN Reservation ON Asset.AssetID = Reservation.Asset Where (((Reservation.Start) < #03/11/2026#) And "
    "((Reservation.End) > #03/10/2026 #) And ((Reservation.Permanent) = False) And ((Reservation.SLockStart) = False) "
    "And ((Asset.Location) = True) And ((Reservation.Asset) > 256)) ORDER BY Asset.Name, Reservation.Start";
TEST_F(DemoQueries, FindReservationsByTheirIndexes) {
    const auto database = site_->site.Open();
    for (const QString& text : TestText(u"data/reservation_texts.txt"_s).split(u'\n', Qt::SkipEmptyParts)) {
        const auto compiled = engine::dialect::Compile(text, database->Schema(), engine::dialect::Purpose::Read,
                                                       engine::sqlite::Writer());
        EXPECT_EQ(site_->raw.Plan(compiled.sql).filter(u"SCAN Reservation"_s).size(), 0) << text.toStdString();
    }
}

// The store's work for a day does not depend on how much lies before it.
TEST_F(DemoQueries, CostNothingForTheHistory) {
    const QString path = site_->folder.filePath(u"young.MDB"_s);
    ASSERT_TRUE(QFile::copy(site_->site.Location(), path));
    RawStore young(path);
    young.Run(u"DELETE FROM Reservation WHERE \"End\" < '2026-02-01'"_s);
    ASSERT_LT(young.Number(u"SELECT count(*) FROM Reservation"_s), 10'000);

    const auto database = site_->site.Open();
    std::vector<QString> texts{QString::fromLatin1(NotCheckedIn)};
    for (const char* query : reportQueries) {
        texts.push_back(QString::fromLatin1(query));
    }
    for (const QString& text : texts) {
        const auto compiled = engine::dialect::Compile(text, database->Schema(), engine::dialect::Purpose::Read,
                                                       engine::sqlite::Writer());
        QStringList values;
        for (const engine::dialect::Binding& binding : compiled.bindings) {
            using Source = engine::dialect::Binding::Source;
            const QString period[] = {u"2026-03-10 00:00:00"_s, u"2026-03-11 00:00:00"_s};
            values.append(binding.source == Source::Parameter ? period[binding.index]
                          : binding.source == Source::Literal && text.startsWith(u"SELECT"_s)
                              ? QStringList{period[1], period[0], u"256"_s}.value(binding.index)
                              : binding.constant.ToText());
        }
        const qint64 full = site_->raw.Work(compiled.sql, values);
        const qint64 small = young.Work(compiled.sql, values);
        EXPECT_GT(small, 100) << text.toStdString();
        EXPECT_LT(static_cast<double>(full), 1.02 * static_cast<double>(small)) << text.toStdString();
    }
}

// What the reports treat apart, and how often the demo has it at least.
TEST_F(DemoQueries, ReadOddRows) {
    for (const QString& line : TestText(u"data/odd_rows.txt"_s).split(u'\n', Qt::SkipEmptyParts)) {
        const QString rows = line.section(u' ', 1);
        EXPECT_GE(site_->raw.Number(u"SELECT count(*) FROM "_s + rows), line.section(u' ', 0, 0).toInt())
            << rows.toStdString();
    }
}

TEST_F(DemoQueries, RefreshTextDatesWritesOnlyWhatDiffers) {
    const auto database = site_->site.Open();
    const auto refresh = [&] { return database->OpenQueryDef(u"RefreshTextDates")->Execute(); };
    EXPECT_GT(refresh(), 100);
    EXPECT_EQ(refresh(), 0);
    EXPECT_EQ(site_->raw.Number(u"SELECT count(*) FROM Reservation WHERE TextStart IS NULL OR TextEnd IS NULL"_s), 0);

    site_->raw.Run(u"UPDATE Reservation SET Start = '2026-03-07 00:00:00', \"End\" = '2026-03-07 14:15:09' WHERE ID = "
                   u"(SELECT min(ID) FROM Reservation);"
                   u"UPDATE Reservation SET TextEnd = lower(TextEnd) WHERE ID = (SELECT max(ID) FROM Reservation)"_s);
    EXPECT_EQ(refresh(), 2);
    EXPECT_EQ(site_->raw.Rows(u"SELECT TextStart, TextEnd FROM Reservation ORDER BY ID LIMIT 1"_s),
              QStringList{u"3/7/2026|3/7/2026 2:15:09 PM"_s});
}

TEST_F(DemoQueries, OfferStandardNotes) {
    const auto database = site_->site.Open();
    const auto rows = database->OpenRecordset(
        u"Select * from EventStdNoteSelect where EventType = \"interview\" Order by NoteCategory, Name");
    ASSERT_EQ(RowsOf(*rows).size(), 2);
    rows->MoveFirst();
    EXPECT_EQ(rows->operator[]("Name").ToText(), u"Cold drinks"_s);
    EXPECT_EQ(rows->operator[]("NoteCategory").ToText(), u"Catering"_s);
    EXPECT_EQ(rows->operator[]("Cost").ToReal(), 1.9);
    EXPECT_FALSE(rows->operator[]("Note").ToText().isEmpty());

    const QString asset = site_->raw.Rows(u"SELECT max(AssetID) FROM \"Asset/StandardNote\""_s).value(0);
    EXPECT_EQ(RowsOf(*database->OpenRecordset(u"Select * from AssetStdNoteSelect where AssetID = "_s + asset +
                                              u" Order by NoteCategory, Name"_s))
                  .size(),
              site_->raw.Number(u"SELECT count(*) FROM \"Asset/StandardNote\" WHERE AssetID = "_s + asset));
}

// Rows that are there for a reason, and what the queries make of them, by hand.
TEST(EdgeQueries, TreatEachRowAsTheyShould) {
    QuerySite site;
    site.raw.Run(TestText(u"data/edge_site.sql"_s));
    QString found;
    for (const char* query : reportQueries) {
        const QString from = u"2026-03-10 00:00:00"_s;
        const QString to = u"2026-03-11 00:00:00"_s;
        const QStringList rows = site.Run(QString::fromLatin1(query), from, to);
        EXPECT_EQ(rows.join(u'\n').toStdString(), site.raw.Rows(Reference(query), from, to).join(u'\n').toStdString())
            << query;
        found += u"== "_s + QLatin1String(query) + u'\n' + rows.join(u'\n') + u'\n';
    }
    EXPECT_EQ(found.toStdString(), TestText(u"data/edge_site.expected"_s).toStdString());
}

} // namespace
} // namespace velmora
