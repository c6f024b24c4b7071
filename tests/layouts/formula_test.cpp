#include "layouts/LayoutQuery.h"
#include "tests/layouts/LayoutFixture.h"

namespace velmora::layouts {
namespace {

class FormulaTest : public LayoutFixture {
protected:
    FormulaTest() {
        for (const char16_t* name : {u"Reservation", u"Asset", u"Asset/Event"}) {
            scope_.Add(*database_->Schema().FindTable(QStringView(name)), {});
        }
    }

    // The numbers of the reservations that a formula selects.
    QString Select(const QString& formula) {
        QueryText query;
        const QString condition = query.Condition(ParseFormula(formula, scope_));
        const auto rows = query
                              .Open(*database_, u"SELECT Reservation.ID FROM Reservation INNER JOIN Asset ON "
                                                "Reservation.Asset = Asset.AssetID WHERE "_s +
                                                    condition + u" ORDER BY Reservation.ID"_s)
                              ->OpenRecordset();
        QStringList numbers;
        for (; !rows->EndOfFile(); rows->MoveNext()) {
            numbers += rows->FieldAt(0).ToText();
        }
        return numbers.join(u' ');
    }
    QString SelectBySql(const QString& where) {
        return store_
            ->Rows(u"SELECT Reservation.ID FROM Reservation JOIN Asset ON Asset = AssetID WHERE "_s + where +
                   u" ORDER BY 1"_s)
            .join(u' ');
    }

    FieldScope scope_;
};

TEST_F(FormulaTest, SelectsWhatItSays) {
    // Flags of other programs: any number but 0 is a yes, and an empty one neither.
    store_->Run(
        u"UPDATE Reservation SET Permanent = 7 WHERE ID = 30; UPDATE Reservation SET Permanent = NULL WHERE ID = 31"_s);
    for (const QStringList& each : TestRows(u"layouts/formulas.txt"_s)) {
        const QString expected = SelectBySql(each.at(1));
        EXPECT_FALSE(expected.isEmpty()) << each[1].toStdString();
        EXPECT_EQ(Select(each[0]).toStdString(), expected.toStdString()) << each[0].toStdString();
    }
    EXPECT_EQ(Select(u"Yes = No"_s), QString());
    EXPECT_EQ(Select(u"True"_s), SelectBySql(u"1"_s));
}

TEST_F(FormulaTest, KeepsValuesOutOfTheText) {
    QueryText query;
    const QString condition = query.Condition(ParseFormula(
        u"{Reservation.Name} = 'x'' Or 1=1; DROP TABLE Asset --' And {Reservation.Start} < Date(2026,3,6) Or Not {Asset.Location}"_s,
        scope_));
    EXPECT_EQ(query.WithParameters(condition).toStdString(),
              "PARAMETERS LayoutValue1 Text, LayoutValue2 DateTime, LayoutValue3 YesNo; "
              "((([Reservation].[Name] = LayoutValue1) And ([Reservation].[Start] < LayoutValue2)) Or "
              "(Not ([Asset].[Location] = LayoutValue3)))");
    EXPECT_EQ(ParseFormula(u" \t\r\n"_s, scope_).kind, Formula::Kind::All);
}

TEST_F(FormulaTest, NamesThePlaceOfAnError) {
    for (const QStringList& each : TestRows(u"layouts/formula_errors.txt"_s)) {
        const auto at = each.at(1).toLongLong();
        const QString said = Failure([&] { ParseFormula(each[0], scope_); });
        EXPECT_TRUE(said.contains(each.at(2))) << said.toStdString();
        const QString place = at >= each[0].size() ? u"at its end"_s : u"at position %1 "_s.arg(at + 1);
        EXPECT_TRUE(said.contains(place)) << each[0].toStdString() << said.toStdString();
    }
}

TEST_F(FormulaTest, IsReadAndRunOnlyWithinBounds) {
    // The widest and deepest ones that are taken run; one more is refused before anything runs.
    const QString wide = QStringList(200, u"{Asset.AssetID} <> 1"_s).join(u" And "_s);
    EXPECT_EQ(Select(wide), Select(u"True"_s));
    EXPECT_TRUE(Failure([&] { ParseFormula(wide + u" Or Yes"_s, scope_); }).contains(u"more than 200"_s));
    const auto deep = [](int levels) { return QString(levels, u'(') + u"Yes"_s + QString(levels, u')'); };
    EXPECT_EQ(Select(deep(29)), Select(u"True"_s));
    QString mixed = u"{Asset.AssetID} <> 1"_s;
    for (int i = 0; i < 14; ++i) {
        mixed = u"Not (Not ("_s + mixed + u" Or No) And Yes)"_s;
    }
    EXPECT_TRUE(Failure([&] { ParseFormula(mixed, scope_); }).contains(u"levels deep"_s));
    for (const QString& hostile :
         {deep(100000), QString(1000000, u'('), u"Not "_s.repeated(3000) + u"Yes"_s, deep(31)}) {
        EXPECT_FALSE(Failure([&] { ParseFormula(hostile, scope_); }).isEmpty());
    }
}

} // namespace
} // namespace velmora::layouts
