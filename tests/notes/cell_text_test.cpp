// What cells show and what they take, by locale.
#include "notes/CellText.h"
#include "tests/notes/NoteSite.h"
#include "tests/support/Folders.h"

namespace velmora {
namespace {

const BoundColumn money{u"Cost"_s, "Cost", CellKind::Money};
const BoundColumn choice{u"NoteCategory"_s, "NoteCategory", CellKind::Choice};
const BoundColumn lines{u"Note"_s, "Note", CellKind::Lines};

LocaleText Locale(const QString& name) {
    return *LocaleText::ByName(name);
}

TEST(CellTexts, MoneyIsShownAndReadInTheLocalesForm) {
    for (const QStringList& each : TestRows(u"notes/money.txt"_s, u'|')) {
        const LocaleText locale = Locale(each[0]);
        const CellText texts(locale);
        const Value read = texts.Read(each[1], money);
        EXPECT_EQ(read, Value(each[2].toDouble())) << each[1].toStdString();
        EXPECT_EQ(texts.Shown(read, CellKind::Money), each[3]);
        // What an editor begins with reads back as the same amount.
        EXPECT_EQ(texts.Read(texts.Typed(read, CellKind::Money), money), read);
        EXPECT_EQ(texts.Read(each[3], money), read);
    }
}

TEST(CellTexts, WhatAColumnDoesNotTakeIsNamed) {
    for (const QStringList& each : TestRows(u"notes/refused.txt"_s, u'|')) {
        const LocaleText locale = Locale(each[0]);
        const BoundColumn& column = each[1] == u"Cost" ? money : choice;
        try {
            const Value taken = CellText(locale).Read(each[2], column, {u"Catering"_s, u"Setup"_s});
            ADD_FAILURE() << each[2].toStdString() << " was taken as " << taken.ToText().toStdString();
        } catch (const Error& error) {
            EXPECT_TRUE(error.Description().startsWith(u"\"%1\" "_s.arg(each[2]))) << error.what();
            EXPECT_TRUE(error.Description().contains(column.caption) || column.kind == CellKind::Money) << error.what();
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
