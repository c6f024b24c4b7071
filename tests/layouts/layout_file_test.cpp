#include "tests/layouts/LayoutFixture.h"

namespace velmora::layouts {
namespace {

class LayoutFileTest : public LayoutFixture {
protected:
    Layout Read(const QByteArray& json) { return ReadLayout(json, u"Mine.rpx"_s, database_->Schema()); }
    // A layout with these lines behind its first three.
    static QByteArray With(const QByteArray& lines) {
        return "{\n\"title\": \"T\",\n\"tables\": [{\"table\": \"Reservation\"}],\n" + lines + "\n}";
    }
    void ExpectFault(const QByteArray& json, int line, const QString& key, const QString& says) {
        const QString said = Failure([&] { Read(json); });
        const QString place = key.isEmpty() ? QString() : u", "_s + key;
        EXPECT_TRUE(said.startsWith(u"The report layout Mine.rpx is wrong in line %1%2: "_s.arg(line).arg(place)))
            << json.toStdString() << "\n"
            << said.toStdString();
        EXPECT_TRUE(said.contains(says)) << said.toStdString();
    }
};

constexpr char column[] = "\"columns\": [{\"value\": \"x\"}]";

TEST_F(LayoutFileTest, ReadsTheShippedLayouts) {
    const QStringList names = QDir(ShareFolder() + u"/layouts"_s).entryList(QDir::Files);
    EXPECT_EQ(names.size(), 8);
    for (const QString& name : names) {
        EXPECT_EQ(Failure([&] { ReadLayoutFile(Path(name), database_->Schema()); }), QString());
    }
    // A byte order mark, as some editors leave it.
    EXPECT_EQ(Read("\xEF\xBB\xBF" + With(column)).columns.size(), 1U);
}

TEST_F(LayoutFileTest, NamesFileLineAndKey) {
    for (const QString& block : TestText(u"layouts/faults.txt"_s).split(u"\n@"_s).mid(1)) {
        const QStringList head = block.section(u'\n', 0, 0).section(u' ', 1).split(u" | "_s);
        QByteArray json = block.section(u'\n', 1).toUtf8();
        const bool whole = block.startsWith(u'@');
        ExpectFault(whole ? json : With(json), head.at(0).toInt(), head.at(1), head.at(2));
    }
    ExpectFault(With("\"empty\": \"\xff\""), 4, u"column 1"_s, u"not UTF-8"_s);
}

TEST_F(LayoutFileTest, RefusesWhatIsNoFile) {
    EXPECT_TRUE(Failure([&] { ReadLayoutFile(Path(u"No.rpx"_s), database_->Schema()); }).contains(Path(u"No.rpx"_s)));
    EXPECT_TRUE(Failure([&] { ReadLayoutFile(folder_.path(), database_->Schema()); }).contains(u"is missing"_s));
    WriteLayout(u"Big.rpx"_s, QByteArray(2 << 20, ' '));
    EXPECT_TRUE(Failure([&] { ReadLayoutFile(Path(u"Big.rpx"_s), database_->Schema()); }).contains(u"larger than"_s));
    EXPECT_TRUE(Failure([&] { Read(QByteArray(100000, '[')); }).contains(u"levels deep"_s));
    // Values never become part of the query's text, and names are the database's own.
    EXPECT_TRUE(
        Failure([&] { Read(With("\"sort\": [\"Reservation.ID DESC; DROP TABLE Asset\"]")); }).contains(u"no field"_s));
}

// Who changes a layout has the document alone.
TEST_F(LayoutFileTest, TheDocumentKnowsTheTablesAndItsExampleRuns) {
    const QString document = QString::fromUtf8(FileBytes(ShareFolder() + u"/../docs/layouts.md"_s));
    const QString example = document.section(u"```json"_s, 1, 1).section(u"```"_s, 0, 0);
    EXPECT_EQ(Failure([&] { Read(example.toUtf8()); }), QString());
    for (const QString& table : store_->Rows(u"SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE "
                                             "'sqlite%' AND name NOT IN ('StoredQuery', 'PrintAttributes')"_s)) {
        const QString fields = document.section(u"\n| `"_s + table + u"` | "_s, 1).section(u'\n', 0, 0);
        for (const engine::CatalogColumn& each : database_->Schema().FindTable(table)->columns) {
            const QString name = u'`' + each.name + u'`';
            const bool isText = each.type == engine::FieldType::Text;
            EXPECT_TRUE(fields.contains(name + (isText ? u""_s : u" ("_s)))
                << table.toStdString() << name.toStdString();
        }
    }
}

} // namespace
} // namespace velmora::layouts
