// What cells show and what they take, by locale.
#include "notes/CellText.h"
#include "tests/notes/NoteSite.h"

namespace velmora {
namespace {

const BoundColumn money{u"Cost"_s, "Cost", CellKind::Money};
const BoundColumn choice{u"NoteCategory"_s, "NoteCategory", CellKind::Choice};
const BoundColumn lines{u"Note"_s, "Note", CellKind::Lines};

LocaleText Locale(const QString& name) {
    return *LocaleText::ByName(name);
}

TEST(CellTexts, MoneyIsShownAndReadInTheLocalesForm) {
    struct Case {
        QString locale;
        QString typed;
        double amount;
        QString shown;
    };
    for (const Case& c :
         {Case{u"en_US"_s, u"1234.5"_s, 1234.5, u"$1,234.50"_s},
          Case{u"en_US"_s, u" $1,234.50 "_s, 1234.5, u"$1,234.50"_s}, Case{u"en_US"_s, u"-3"_s, -3, u"($3.00)"_s},
          Case{u"en_US"_s, u".1"_s, 0.1, u"$0.10"_s}, Case{u"de_DE"_s, u"1.234,50"_s, 1234.5, u"1.234,50 €"_s},
          Case{u"de_DE"_s, u"12,5 €"_s, 12.5, u"12,50 €"_s}, Case{u"fr_FR"_s, u"1 234,5"_s, 1234.5, u"1 234,50 €"_s},
          Case{u"en_US"_s, u"999999999999.99"_s, 999999999999.99, u"$999,999,999,999.99"_s}}) {
        const LocaleText locale = Locale(c.locale);
        const CellText texts(locale);
        const Value read = texts.Read(c.typed, money);
        EXPECT_EQ(read, Value(c.amount)) << c.typed.toStdString();
        EXPECT_EQ(texts.Shown(read, CellKind::Money), c.shown);
        // What an editor begins with reads back as the same amount.
        EXPECT_EQ(texts.Read(texts.Typed(read, CellKind::Money), money), read);
        EXPECT_EQ(texts.Read(c.shown, money), read);
    }
}

TEST(CellTexts, WhatAColumnDoesNotTakeIsNamed) {
    struct Case {
        QString locale;
        const BoundColumn& column;
        QString typed;
    };
    for (const Case& c :
         {Case{u"en_US"_s, money, u"1e5"_s}, Case{u"en_US"_s, money, u"nan"_s}, Case{u"en_US"_s, money, u"inf"_s},
          Case{u"en_US"_s, money, u"1.005"_s}, Case{u"en_US"_s, money, u"12,5"_s}, Case{u"de_DE"_s, money, u"12.50"_s},
          Case{u"en_US"_s, money, u"1000000000000"_s}, Case{u"en_US"_s, money, u"5 %1"_s},
          Case{u"en_US"_s, money, u"$"_s}, Case{u"en_US"_s, choice, u"Cater"_s}}) {
        const LocaleText locale = Locale(c.locale);
        try {
            const Value taken = CellText(locale).Read(c.typed, c.column, {u"Catering"_s, u"Setup"_s});
            ADD_FAILURE() << c.typed.toStdString() << " was taken as " << taken.ToText().toStdString();
        } catch (const Error& error) {
            EXPECT_TRUE(error.Description().startsWith(u"\"%1\" "_s.arg(c.typed))) << error.what();
            EXPECT_TRUE(error.Description().contains(c.column.caption) || c.column.kind == CellKind::Money)
                << error.what();
        }
    }
}

TEST(CellTexts, EntriesBecomeValues) {
    const LocaleText locale = Locale(u"de_DE"_s);
    const CellText texts(locale);
    EXPECT_EQ(texts.Read(u" setUP "_s, choice, {u"Catering"_s, u"Setup"_s}), Value(u"Setup"_s));
    EXPECT_EQ(texts.Read(u"  two\n lines "_s, lines), Value(u"  two\n lines "_s));
    for (const BoundColumn* column : {&money, &choice, &lines}) {
        EXPECT_TRUE(texts.Read({}, *column).IsNull());
    }
    EXPECT_EQ(texts.Shown(Value(*MakeDateTime({2026, 7, 3, 14, 5, 0})), CellKind::Moment), u"03.07.2026 14:05"_s);
    EXPECT_EQ(texts.Shown(Value(true), CellKind::YesNo) + texts.Shown(Value(false), CellKind::YesNo), u"TrueFalse"_s);
    EXPECT_EQ(texts.Shown(Value(), CellKind::YesNo), QString());
}

} // namespace
} // namespace velmora
