#include "base/Steps.h"
#include "base/Translate.h"
#include "base/Value.h"
#include "tests/support/Fakes.h"
#include "tests/support/Folders.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using namespace Qt::StringLiterals;

DateTime At(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return *MakeDateTime({year, month, day, hour, minute, second});
}

LocaleText Locale(const char* name) {
    return *LocaleText::ByName(QString::fromLatin1(name));
}

TEST(DateTimeTest, RefusesWhatDoesNotExist) {
    EXPECT_FALSE(MakeDate(2026, 2, 29));
    EXPECT_TRUE(MakeDate(2028, 2, 29));
    EXPECT_FALSE(MakeDate(2026, 13, 1));
    EXPECT_FALSE(MakeDate(2026, 0, 1));
    EXPECT_FALSE(MakeDate(99, 1, 1));
    EXPECT_FALSE(MakeDateTime({2026, 3, 7, 24, 0, 0}));
    EXPECT_FALSE(MakeDateTime({2026, 3, 7, 23, 60, 0}));
    for (const char* text : {"2026-02-30", "2026-3-07", "2026-03-07 9:00", "2026-03-07 09:00:0", "2026-03-07x09:00",
                             "2026-03-07 09:00:60", "", "+026-03-07", "2026-03-07 09:00:00 "}) {
        EXPECT_FALSE(ParseStorageText(QString::fromLatin1(text))) << text;
    }
}

TEST(DateTimeTest, StorageTextReadsBackAndKeepsWallClockHours) {
    // 02:30 on the night the clocks go forward exists on the wall of a schedule.
    for (const DateTime moment : {At(2026, 3, 29, 2, 30), At(100, 1, 1), At(9999, 12, 31, 23, 59, 59)}) {
        EXPECT_EQ(ParseStorageText(StorageText(moment)), moment);
    }
    EXPECT_EQ(StorageText(At(2026, 3, 7)), u"2026-03-07 00:00:00"_s);
    EXPECT_EQ(ParseStorageText(u"2026-03-07"_s), At(2026, 3, 7));
    EXPECT_EQ(ParseStorageText("2026-03-07 14:15", 16), At(2026, 3, 7, 14, 15));
}

TEST(DateTimeTest, DifferencesCountBoundaries) {
    EXPECT_EQ(MinutesBetween(At(2026, 5, 3, 10, 59, 50), At(2026, 5, 3, 11, 0, 5)), 1);
    EXPECT_EQ(MinutesBetween(At(2026, 5, 3, 11, 0, 5), At(2026, 5, 3, 11, 0, 55)), 0);
    EXPECT_EQ(DaysBetween(At(2026, 5, 3, 23, 50), At(2026, 5, 4, 0, 10)), 1);
    EXPECT_EQ(DaysBetween(At(2026, 5, 4), At(2026, 5, 3)), -1);
    EXPECT_EQ(Weekday(*MakeDate(2026, 3, 7)), 7);
    EXPECT_EQ(Weekday(*MakeDate(2026, 3, 8)), 1);
}

TEST(ValueTest, ConversionsAreTotal) {
    EXPECT_TRUE(Value(-1).ToBool());
    EXPECT_FALSE(Value(u"1"_s).ToBool());
    EXPECT_EQ(Value(true).ToInteger(), -1);
    EXPECT_EQ(Value(2.5).ToInteger(), 2);
    EXPECT_EQ(Value(3.5).ToInteger(), 4);
    EXPECT_EQ(Value(1e300).ToInteger(), std::numeric_limits<qint64>::max());
    EXPECT_EQ(Value(u" 12 "_s).ToInteger(), 12);
    EXPECT_EQ(Value(2.0).ToText(), u"2"_s);
    EXPECT_EQ(Value(0.1).ToText(), u"0.1"_s);
    EXPECT_EQ(Value(At(2026, 3, 7)).ToText(), u"2026-03-07 00:00:00"_s);
    EXPECT_EQ(Value().ToText(), QString());
    EXPECT_FALSE(Value(u"soon"_s).ToDateTime());
}

TEST(LocaleTextTest, RendersForTheLocale) {
    for (const QStringList& c : TestRows(u"base/locales.txt"_s)) {
        const LocaleText text = *LocaleText::ByName(c[0]);
        const DateTime moment = At(2026, 3, 7, 14, 15);
        EXPECT_EQ(text.ShortDate(DateOf(moment)), c[1]);
        EXPECT_EQ(text.GeneralDate(moment), c[2]);
        EXPECT_EQ(text.GeneralDate(moment + std::chrono::seconds(9)), c[3]);
        EXPECT_EQ(text.GeneralDate(At(2026, 3, 7)), c[1]);
        EXPECT_EQ(text.MediumTime(moment), c[4]);
        EXPECT_EQ(text.LongDate(DateOf(moment)), c[5]);
    }
    EXPECT_EQ(Locale("en_US").GeneralDate(At(2026, 12, 31, 0, 0, 1)), u"12/31/2026 12:00:01 AM"_s);
    for (const char* unknown : {"", "xx_YY", "english", "en_ZZ", "../etc"}) {
        EXPECT_FALSE(LocaleText::ByName(QString::fromLatin1(unknown))) << unknown;
    }
}

TEST(LocaleTextTest, EveryLocaleRendersPlainBlanksAndReadsItsOwnDates) {
    const Date day = *MakeDate(2026, 11, 5);
    for (const char* name : {"en_US", "en_GB", "de_DE", "fr_FR", "fr_CA", "sv_SE", "ja_JP", "nl_NL", "es_MX", "pl_PL",
                             "hu_HU", "lt_LT", "ko_KR", "fi_FI", "cs_CZ"}) {
        const LocaleText text = Locale(name);
        const QString general = text.GeneralDate(At(2026, 11, 5, 15, 4, 5));
        for (const QChar c : general) {
            EXPECT_TRUE(!c.isSpace() || c == u' ') << name;
        }
        EXPECT_TRUE(text.ShortDate(day).contains(u"2026"_s)) << name;
        EXPECT_EQ(text.ParseDate(text.ShortDate(day)), day) << name << " " << text.ShortDate(day).toStdString();
    }
}

TEST(LocaleTextTest, ReadsTypedDatesAndRefusesTheImpossible) {
    const LocaleText us = Locale("en_US");
    const Date day = *MakeDate(2026, 3, 7);
    for (const char* typed : {"3/7/2026", "03/07/26", " 3-7-2026 ", "3.7.26", "2026-03-07", "3 7 2026"}) {
        EXPECT_EQ(us.ParseDate(QString::fromLatin1(typed)), day) << typed;
    }
    EXPECT_EQ(Locale("de_DE").ParseDate(u"7.3.2026"_s), day);
    EXPECT_EQ(us.ParseDate(u"1/1/30"_s), MakeDate(1930, 1, 1));
    for (const char* typed : {"2/30/2026", "13/1/2026", "3/7", "3/7/026", "7 March 2026", "", "3/7/2026 2:15 PM"}) {
        EXPECT_FALSE(us.ParseDate(QString::fromLatin1(typed))) << typed;
    }
}

TEST(StepsTest, RetryRunsTheStepAgainIgnoreGoesOn) {
    fakes::FakeErrorReporter errors;
    Steps steps(errors, u"Internal Data"_s, u"Fill Asset Collection"_s);
    int runs = 0;
    errors.answers = {Answer::Retry, Answer::Retry};
    EXPECT_TRUE(steps.Step(u"Opening Assets"_s, [&] {
        if (++runs < 3) {
            throw ProgramError(ErrorNumber::FileNotFound, u"File not found"_s);
        }
    }));
    EXPECT_EQ(runs, 3);

    errors.answers = {Answer::Ignore};
    EXPECT_FALSE(steps.Step(QString(), [] { throw std::runtime_error("plain"); }));
    ASSERT_EQ(errors.reports.size(), 3U);
    EXPECT_EQ(errors.reports[0].place.task, u"Opening Assets"_s);
    EXPECT_EQ(errors.reports[2].place.task, u"undefined"_s);
    EXPECT_EQ(errors.reports[2].error.Description(), u"plain"_s);
}

TEST(StepsTest, TheEndOfTheProgramPassesThrough) {
    fakes::FakeErrorReporter errors;
    Steps steps(errors, u"M"_s, u"P"_s);
    EXPECT_THROW(steps.Step(u"T"_s, [] { throw StopProgram{1}; }), StopProgram);
    EXPECT_TRUE(errors.reports.empty());
}

TEST(ProgramTest, KeepsOnePartOfAKindAndRefusesASecondInstall) {
    fakes::TestProgram test;
    test.program.Part<TranslationDictionary>().Add(u"Delete"_s, u"Löschen"_s);
    EXPECT_EQ(Translate(u"delete"_s), u"Löschen"_s);
    EXPECT_EQ(Translate(u"Close"_s), u"Close"_s);
    EXPECT_EQ(Translate(QString()), QString());
    EXPECT_EQ(&test.program.Part<TranslationDictionary>(), &CurrentProgram().Part<TranslationDictionary>());
    EXPECT_THROW(ProgramInstaller second(test.program), std::logic_error);
    EXPECT_EQ(&CurrentProgram(), &test.program);
}

TEST(ProgramTest, WithoutAProgramTextsStayAndServicesAreRefused) {
    EXPECT_EQ(Translate(u"Close"_s), u"Close"_s);
    EXPECT_THROW(CurrentProgram(), std::logic_error);
}

} // namespace
} // namespace velmora
