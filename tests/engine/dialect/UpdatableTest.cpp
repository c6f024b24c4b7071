#include "engine/EngineError.h"
#include "tests/engine/dialect/TestStore.h"

#include <gtest/gtest.h>

namespace velmora::engine::dialect {
namespace {

class UpdatableTest : public testing::Test {
protected:
    UpdatableTest() {
        store_.AddQuery(QStringLiteral("Offered"),
                        QStringLiteral("SELECT [Asset/StandardNote].AssetID, StandardNotes.* FROM [Asset/StandardNote] "
                                       "INNER JOIN StandardNotes ON [Asset/StandardNote].StandardNote = "
                                       "StandardNotes.Name WHERE StandardNotes.NoteCategory <> 'x'"));
        store_.AddQuery(
            QStringLiteral("Early"),
            QStringLiteral("PARAMETERS RStart DateTime; SELECT Asset.Name, Reservation.Name, Start FROM Asset "
                           "INNER JOIN Reservation ON Asset.AssetID = Reservation.Asset WHERE Start < RStart "
                           "ORDER BY Start"));
    }

    CompiledStatement Compiled(const char* text) { return Compile(QString::fromLatin1(text), store_, Purpose::Update); }
    QStringList Rows(const CompiledStatement& compiled, const char* text,
                     const std::map<QString, Value>& parameters = {}) {
        TextShape shape;
        ScanShape(QString::fromLatin1(text), shape);
        return store_.Run(compiled, compiled.sql, compiled.bindings, shape.literals, parameters).rows;
    }

    TestStore store_;
};

std::string Bases(const CompiledStatement& compiled) {
    QStringList list;
    for (const BaseTable& base : compiled.bases) {
        QStringList positions;
        for (const int position : base.keyPositions) {
            positions += QString::number(position);
        }
        list += base.table + u'/' + base.alias + u'(' +
                QStringList(base.keyColumns.begin(), base.keyColumns.end()).join(u',') + u')' + positions.join(u',');
    }
    return list.join(u' ').toStdString();
}

TEST_F(UpdatableTest, CarriesTheKeysOfEveryBaseTable) {
    const struct {
        const char* text;
        const char* bases;
        const char* firstRow;
    } cases[] = {
        {"Select * from NoteCategory", "NoteCategory/NoteCategory(Name)1", "Food|Food"},
        {"Select Caption from PrintAttributes", "PrintAttributes/PrintAttributes()1", "b|1"},
        {"SELECT Area FROM Person AS p WHERE LastName = 'BROWN'", "Person/p(LastName,FirstName)1,2",
         "north wing|Brown|Bob"},
        {"SELECT a.Name, r.Name FROM Asset a INNER JOIN Reservation r ON a.AssetID = r.Asset WHERE ID = 11",
         "Asset/a(AssetID)2 Reservation/r(ID)3", "Board Room|Review|1|11"},
        {"SELECT Note FROM [Note], Reservation WHERE [Note].Reservation = Reservation.ID AND Reservation.ID = 11",
         "Note/Note(ID)1 Reservation/Reservation(ID)2", "|3|11"},
        {"SELECT UCase(Name) FROM (SELECT * FROM Asset WHERE AssetID = 1) AS q", "Asset/Asset(AssetID)1",
         "BOARD ROOM|1"},
        {"SELECT Name, Cost FROM Offered WHERE AssetID = 1 AND Cost > 2.1",
         "Asset/StandardNote/Asset/StandardNote(AssetID,StandardNote)2,3 StandardNotes/StandardNotes(Name)4",
         "Coffee|2.5|1|Coffee|Coffee"},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.text);
        const CompiledStatement compiled = Compiled(one.text);
        EXPECT_TRUE(compiled.updatable);
        EXPECT_EQ(Bases(compiled), one.bases);
        const QStringList rows = Rows(compiled, one.text);
        ASSERT_FALSE(rows.isEmpty());
        EXPECT_EQ(rows.front().toStdString(), one.firstRow);
    }
}

TEST_F(UpdatableTest, RefusesRowsThatStandForNone) {
    for (const char* text :
         {"SELECT DISTINCT Name FROM Asset", "SELECT TOP 2 Name FROM Asset", "SELECT Count(*) FROM Asset",
          "SELECT Name FROM Asset GROUP BY Name", "SELECT Name FROM Asset UNION SELECT Name FROM Asset",
          "SELECT Asset.Name FROM Asset LEFT JOIN Reservation ON Asset.AssetID = Reservation.Asset",
          "SELECT N FROM (SELECT Count(*) AS N FROM Asset) AS q"}) {
        SCOPED_TRACE(text);
        const CompiledStatement compiled = Compiled(text);
        EXPECT_FALSE(compiled.updatable);
        EXPECT_EQ(compiled.hiddenColumns, 0);
        EXPECT_TRUE(compiled.rereadSql.isEmpty());
    }
}

TEST_F(UpdatableTest, TracesColumnsToTheirTables) {
    const CompiledStatement compiled = Compiled(
        "SELECT a.Name AS Title, Start, Start + 1 AS Later, o.Cost FROM Asset AS a, Reservation, Offered AS o");
    const auto traced = [&](size_t index) {
        const ResultColumn& column = compiled.columns.at(index);
        return (column.name + u'=' + column.table + u':' +
                (column.base < 0 ? QStringLiteral("-")
                                 : compiled.bases[static_cast<size_t>(column.base)].table + u'.' + column.baseColumn))
            .toStdString();
    };
    EXPECT_EQ(traced(0), "Title=a:Asset.Name");
    EXPECT_EQ(traced(1), "Start=Reservation:Reservation.Start");
    EXPECT_EQ(traced(2), "Later=:-");
    EXPECT_EQ(traced(3), "Cost=o:StandardNotes.Cost");
}

// A row is read again by its keys alone: also one that the text's own conditions no longer find.
TEST_F(UpdatableTest, RereadsOneRow) {
    const struct {
        const char* text;
        std::vector<Value> keys;
        const char* row;
    } cases[] = {
        {"SELECT LocationLvl + 5, Name FROM Asset WHERE Name = 'nobody' ORDER BY Name", {256}, "7|Unused 1|256"},
        {"SELECT Extension FROM Person", {QStringLiteral("adams"), QStringLiteral("Ann")}, "4711|Adams|Ann"},
        {"SELECT Asset.Name, Start FROM Asset INNER JOIN Reservation ON Asset.AssetID = Reservation.Asset AND ID > 10",
         {1, 11},
         "Board Room|2026-03-07 13:00:00|1|11"},
        {"SELECT Cost * 2 FROM Offered WHERE Cost > 100",
         {1, QStringLiteral("Tea"), QStringLiteral("Tea")},
         "4|1|Tea|Tea"},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.text);
        const CompiledStatement compiled = Compiled(one.text);
        TextShape shape;
        ScanShape(QString::fromLatin1(one.text), shape);
        const auto result =
            store_.Run(compiled, compiled.rereadSql, compiled.rereadBindings, shape.literals, {}, one.keys);
        EXPECT_EQ(result.rows.join(u'\n').toStdString(), one.row);
    }
}

TEST_F(UpdatableTest, AStoredQueryByNameIsItsOwnText) {
    const CompiledStatement compiled = Compiled("early");
    EXPECT_TRUE(compiled.updatable);
    EXPECT_EQ(Bases(compiled), "Asset/Asset(AssetID)3 Reservation/Reservation(ID)4");
    EXPECT_EQ(compiled.columns[0].table, u"Asset");
    EXPECT_EQ(compiled.columns[1].table, u"Reservation");
    ASSERT_EQ(compiled.parameters.size(), 1u);
    EXPECT_TRUE(compiled.parameters[0].declared);
    EXPECT_EQ(compiled.parameters[0].type, FieldType::DateTime);
    const auto rows = Rows(compiled, "early", {{QStringLiteral("RStart"), *ParseStorageText(u"2026-03-07 12:00:00")}});
    EXPECT_EQ(rows.join(u'\n').toStdString(), "Kiosk|Desk|2026-02-28 00:00:00|300|13\n"
                                              "Board Room|Kick-off|2026-03-07 08:00:00|1|10");
}

TEST_F(UpdatableTest, ListsDeclaredParametersFirst) {
    const CompiledStatement compiled =
        Compiled("SELECT other, RStart FROM Early WHERE Start > other AND Asset.Name Like mask");
    QStringList names;
    for (const ParameterInfo& parameter : compiled.parameters) {
        names += parameter.name + (parameter.declared ? u'!' : u'?');
    }
    EXPECT_EQ(names.join(u' ').toStdString(), "RStart! other? mask?");
    for (const Binding& binding : compiled.bindings) {
        ASSERT_EQ(binding.source, Binding::Source::Parameter);
        EXPECT_EQ(binding.type, binding.index == 0 ? FieldType::DateTime : FieldType::Unknown);
    }
}

} // namespace
} // namespace velmora::engine::dialect
