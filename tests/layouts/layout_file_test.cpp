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
    struct Case {
        QByteArray json;
        int line;
        QString key;
        QString says;
    };
    const QByteArray heading = "\"groups\": [{\"by\": \"Reservation.Start\",\n";
    const std::vector<Case> cases = {
        // What is no JSON.
        {"", 1, u"column 1"_s, u"the file ends"_s},
        {"[]", 1, {}, u"an object in braces"_s},
        {With("\"columns\": [,]"), 4, u"column 13"_s, u"a value is missing"_s},
        {With("\"columns\": [{\"value\": \"x\"},]"), 4, u"column 28"_s, u"a value is missing"_s},
        {With("\"empty\": \"a\nb\""), 4, u"column 12"_s, u"closing quote"_s},
        {With("\"empty\": \"\\q\""), 4, u"column 12"_s, u"no \\q"_s},
        {With("\"empty\": \"\\u12G4\""), 4, u"column 12"_s, u"hexadecimal"_s},
        {With("\"empty\": nix"), 4, u"column 10"_s, u"\"nix\" is no value"_s},
        {With("\"empty\": 'x'"), 4, u"column 10"_s, u"a value is missing"_s},
        {With("// note"), 4, u"column 1"_s, u"a key in double quotes"_s},
        {With("\"empty\": \"a\",\n\"empty\": \"b\""), 5, u"column 8"_s, u"\"empty\" stands here twice"_s},
        {With(column) + " x", 5, u"column 3"_s, u"behind the last"_s},
        {With("\"empty\": \"\xff\""), 4, u"column 1"_s, u"not UTF-8"_s},
        // What is no layout.
        {With("\"colums\": []"), 4, u"colums"_s, u"no such key; the keys here are comment, tables"_s},
        {With("\"empty\": 1"), 4, u"empty"_s, u"a text in double quotes"_s},
        {With("\"empty\": \"x\""), 1, {}, u"\"columns\" or \"body\" is missing"_s},
        {"{\"tables\": [{\"table\": \"Reservation\"}],\n\"columns\": []}", 1, {}, u"the key \"title\" is missing"_s},
        {"{\"title\": \"\", \"tables\": [{\"table\": \"Asset\"}]}", 1, u"title"_s, u"the text is empty"_s},
        {"{\"title\": \"T\",\n\"tables\": [\n{\"table\": \"Reservations\"}]}", 3, u"tables[1].table"_s,
         u"no table \"Reservations\""_s},
        {"{\"title\": \"T\",\n\"tables\": [{\"table\": \"Asset\"},\n{\"table\": \"Note\"}]}", 3, u"tables[2]"_s,
         u"the key \"on\" is missing"_s},
        {"{\"title\": \"T\",\n\"tables\": [{\"table\": \"Asset\"},\n{\"table\": \"Asset\", \"on\": \"Yes\"}]}", 3,
         u"tables[2]"_s, u"the name Asset is taken"_s},
        {"{\"title\": \"T\",\n\"tables\": [{\"table\": \"Asset\"},\n{\"table\": \"Note\",\n\"on\": \"{Asset.Nme} = "
         "1\"}]}",
         4, u"tables[2].on"_s, u"no field {Asset.Nme}"_s},
        {"{\"title\": \"T\",\n\"tables\": [{\"table\": \"Asset\"},\n{\"table\": \"Note\",\n\"on\": \"{Asset.AssetID} = "
         "{Asset.LocationLvl} And {Note.ID} > {Asset.AssetID}\"}]}",
         4, u"tables[2].on"_s, u"does not tie Note"_s},
        {"{\"title\": \"T\",\n\"tables\": [{\"table\": \"Asset\", \"as\": \"A] x\"}]}", 2, u"tables[1].as"_s,
         u"letters and digits"_s},
        {With("\"sort\": [\"Reservation.Start\",\n\"Reservation.Strat\"]"), 5, u"sort[2]"_s, u"no field"_s},
        {With("\"sort\": [1]"), 4, u"sort[1]"_s, u"a text is wanted"_s},
        {With("\"select\": \"{Reservation.Start} <\""), 4, u"select"_s, u"at its end"_s},
        {With("\"orientation\": \"upside down\""), 4, u"orientation"_s, u"none of: portrait, landscape"_s},
        {With("\"fontSize\": 5"), 4, u"fontSize"_s, u"from 6 to 24"_s},
        {With(heading + "\"unit\": \"initial\"}]"), 5, u"groups[1].unit"_s, u"is a text"_s},
        {With(heading + "\"heading\": \"{Reservation.Start:day}\"}]"), 5, u"groups[1].heading"_s,
         u"no format \"day\""_s},
        {With(heading + "\"footer\": \"{Reservation.Start}\"}]"), 5, u"groups[1].footer"_s, u"no record here"_s},
        {With("\"title2\": 1"), 4, u"title2"_s, u"no such key"_s},
        {With("\"columns\": [{\"value\": \"x\",\n\"tick\": \"Reservation.Permanent\"}]"), 4, u"columns[1]"_s,
         u"one of"_s},
        {With("\"columns\": [{},\n{\"tick\": \"Reservation.Start\"}]"), 4, u"columns[1]"_s, u"one of"_s},
        {With("\"columns\": [{\"value\": \"a\"},\n{\"tick\": \"Reservation.Start\"}]"), 5, u"columns[2].tick"_s,
         u"yes/no"_s},
        {With("\"columns\": [{\"value\": \"a\",\n\"width\": \"3\"}]"), 5, u"columns[1].width"_s, u"a number"_s},
        {With("\"columns\": [{\"value\": \"{Reservation.Name\"}]"), 4, u"columns[1].value"_s, u"closing \"}\""_s},
        {With("\"columns\": [{\"value\": \"{Reservation.Name:time}\"}]"), 4, u"columns[1].value"_s, u"holds a text"_s},
        {With("\"columns\": [{\"value\": \"{Reservation.Start:if x}\"}]"), 4, u"columns[1].value"_s,
         u"a yes/no value"_s},
        {With("\"columns\": [{\"value\": \"[x]\"}]"), 4, u"columns[1].value"_s, u"needs a field"_s},
        {With("\"columns\": [{\"value\": \"{Page}\"}]"), 4, u"columns[1].value"_s, u"\"pageFooter\""_s},
        {With("\"columns\": [{\"value\": \"{Nonsense}\"}]"), 4, u"columns[1].value"_s, u"nothing called {Nonsense}"_s},
        {With("\"body\": [{\"text\": \"x\"},\n{\"txt\": \"x\"}]"), 5, u"body[2]"_s, u"one of"_s},
        {With("\"body\": [{\"text\": \"x\"}],\n\"columns\": [{\"value\": \"x\"}]"), 1, {}, u"not both"_s},
        {With(QByteArray(column) + ",\n\"details\": {\"table\": \"Note\", \"text\": \"x\"}"), 5, u"details"_s,
         u"\"field\" is missing"_s},
        {With(QByteArray(column) + ",\n\"details\": {\"table\": \"Note\", \"text\": \"{Reservation.ID}\",\n\"field\": "
                                   "\"Note.Reservation\", \"equals\": \"Reservation.ID\"}"),
         5, u"details.text"_s, u"the tables are Note"_s},
        {With(QByteArray(column) +
              ",\n\"details\": {\"table\": \"Note\", \"text\": \"x\", \"field\": \"Note.Reservation\",\n"
              "\"equals\": \"Reservation.Start\"}"),
         6, u"details.equals"_s, u"holds a date and \"field\" a number"_s},
        {With("\"body\": [{\"text\": \"x\"},\n{\"rule\": false}]"), 5, u"body[2].rule"_s, u"is true"_s},
        {With(QByteArray(column) + ",\n\"pageFooter\": {\"middle\": \"x\"}"), 5, u"pageFooter.middle"_s,
         u"left, center, right"_s},
    };
    for (const Case& c : cases) {
        const QString said = Failure([&] { Read(c.json); });
        const QString key = c.key.isEmpty() ? QString() : u", "_s + c.key;
        EXPECT_TRUE(said.startsWith(u"The report layout Mine.rpx is wrong in line %1%2: "_s.arg(c.line).arg(key)))
            << c.json.toStdString() << "\n"
            << said.toStdString();
        EXPECT_TRUE(said.contains(c.says)) << said.toStdString();
    }
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
