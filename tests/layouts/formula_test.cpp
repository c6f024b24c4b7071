#include "layouts/formula/Condition.h"
#include "layouts/formula/FormulaError.h"
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
    const std::pair<const char*, const char*> cases[] = {
        {"{Reservation.Start} >= Date(2026,03,06) And {Reservation.Start} < Date(2026,03,07)",
         "Start >= '2026-03-06' AND Start < '2026-03-07'"},
        {"{Reservation.End} > Date(2026, 3, 5) and {RESERVATION.end} <= date(2026,3,6)",
         "\"End\" > '2026-03-05 00:00:00' AND \"End\" <= '2026-03-06 00:00:00'"},
        {"{Reservation.Permanent} = No", "Permanent = 0"},
        {"{Reservation.Permanent} = Yes", "Permanent <> 0"},
        {"{Reservation.Permanent}", "Permanent <> 0"},
        {"Not {Reservation.Permanent}", "Permanent = 0"},
        {"{Reservation.Permanent} <> True", "Permanent = 0"},
        {"{Asset.AssetID} >= 256", "AssetID >= 256"},
        {"{Reservation.Attendees} > -1.5", "Attendees > -1.5"},
        {"{Reservation.LastName} = 'o\"hara'", "LastName = 'O\"Hara'"},
        {"{Reservation.LastName} = \"O\"\"Hara\"", "LastName = 'O\"Hara'"},
        {"{Asset.Name} < {Reservation.Name}", "Asset.Name < Reservation.Name"},
        {"{Asset.Description} = {Asset.Description}", "Description IS NOT NULL"},
        // Not before And before Or.
        {"{Asset.AssetID} = 12 Or {Asset.AssetID} = 300 And {Reservation.Permanent} = Yes",
         "AssetID = 12 OR (AssetID = 300 AND Permanent <> 0)"},
        {"({Asset.AssetID} = 12 Or {Asset.AssetID} = 300) And {Reservation.Permanent} = Yes",
         "(AssetID = 12 OR AssetID = 300) AND Permanent <> 0"},
        {"Not {Asset.AssetID} = 12 And Not Not {Reservation.Attendees} = 1", "AssetID <> 12 AND Attendees = 1"},
        {"Not ({Asset.AssetID} = 12 Or {Reservation.Attendees} = 2)", "NOT (AssetID = 12 OR Attendees = 2)"},
    };
    for (const auto& [formula, where] : cases) {
        const QString expected = SelectBySql(QString::fromLatin1(where));
        EXPECT_FALSE(expected.isEmpty()) << where;
        EXPECT_EQ(Select(QString::fromLatin1(formula)).toStdString(), expected.toStdString()) << formula;
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
    struct Case {
        QString formula;
        qsizetype at;
        QString says;
    };
    const Case cases[] = {
        {u"{Reservation.Strat} = Date(2026,3,6)"_s, 0,
         u"no field {Reservation.Strat}; the fields of Reservation are ID, Asset"_s},
        {u"{Person.Name} = 1"_s, 0, u"the tables are Reservation, Asset, Asset/Event"_s},
        {u"{Name} = 'x'"_s, 0, u"no field {Name}"_s},
        {u"{Reservation.Start"_s, 0, u"\"}\" is missing"_s},
        {u"{Reservation.Start} < Date(2026,2,30)"_s, 22, u"no such date"_s},
        {u"{Reservation.Start} < Date(2026,99999,1)"_s, 32, u"no such date"_s},
        {u"{Reservation.Start} < Date(2026,3)"_s, 33, u"Date(year, month, day)"_s},
        {u"{Reservation.Start} < Date()"_s, 27, u"Date(year, month, day)"_s},
        {u"{Reservation.Start} < Date(2026,3.5,1)"_s, 32, u"Date(year, month, day)"_s},
        {u"{Reservation.Start} < #3/6/2026#"_s, 22, u"no \"#\""_s},
        {u"{Reservation.Start} < 5"_s, 0, u"a date cannot be compared with a number"_s},
        {u"{Reservation.Permanent} = 1"_s, 0, u"a yes/no value cannot be compared with a number"_s},
        {u"{Reservation.Name} = Date(2026,3,6)"_s, 0, u"a text cannot be compared with a date"_s},
        {u"{Asset.AssetID}"_s, 15, u"a comparison"_s},
        {u"{Asset.AssetID} >="_s, 18, u"at its end"_s},
        {u"{Asset.AssetID} >= 256 {Asset.AssetID} = 1"_s, 23, u"And or Or is missing"_s},
        {u"({Asset.AssetID} >= 256"_s, 23, u"the closing \")\" is missing"_s},
        {u"{Asset.AssetID} >= 256)"_s, 22, u"this \")\" closes nothing"_s},
        {u"{Asset.AssetID} = 99999999999999999999"_s, 18, u"too large"_s},
        {u"{Asset.AssetID} = 1e5"_s, 18, u"no number"_s},
        {u"{Asset.AssetID} = 1 And"_s, 23, u"a field, a value or a date is missing"_s},
        {u"{Asset.Name} = 'open"_s, 15, u"closing quote"_s},
        {u"{Asset.Name} Like 'A*'"_s, 13, u"a comparison"_s},
        {u"{Asset.Name} = Chr(65)"_s, 15, u"\"Chr\" means nothing in a formula"_s},
        {u"{Asset.AssetID} = 1; SELECT 1"_s, 19, u"no \";\""_s},
        {u"{Asset.AssetID} = -'1'"_s, 19, u"a number is missing"_s},
    };
    for (const Case& c : cases) {
        try {
            ParseFormula(c.formula, scope_);
            ADD_FAILURE() << "not refused: " << c.formula.toStdString();
        } catch (const FormulaError& error) {
            EXPECT_EQ(error.At(), c.at) << c.formula.toStdString();
            EXPECT_TRUE(error.Description().contains(c.says)) << error.what();
            const QString place = c.at >= c.formula.size() ? u"at its end"_s : u"at position %1 "_s.arg(c.at + 1);
            EXPECT_TRUE(error.Description().contains(place)) << error.what();
        }
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
