#include "tests/engine/dialect/Corpus.h"

#include "engine/dialect/FunctionTable.h"

#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::test {
namespace {

// Statements against a fresh database of each store; they run in their order, so that an action shows in the next
// select.
class StoreTest : public testing::TestWithParam<std::tuple<TestedStore, const char*>> {
protected:
    void ExpectOutcome(const CorpusCase& one, RecordsetKind kind = RecordsetKind::Snapshot) {
        SCOPED_TRACE(QStringLiteral("%1:%2\n%3").arg(File()).arg(one.line).arg(one.text).toStdString());
        const Outcome outcome = OutcomeOf(*database_, one, kind);
        EXPECT_EQ(outcome.result.toStdString(), one.expected.toStdString()) << outcome.words.toStdString();
        if (!one.header.isEmpty()) {
            EXPECT_EQ(outcome.header.toStdString(), one.header.toStdString());
        }
        for (const QString& part : one.errorParts) {
            EXPECT_TRUE(outcome.words.contains(part)) << outcome.words.toStdString() << " lacks " << part.toStdString();
        }
    }
    QString File() const { return QString::fromLatin1(std::get<1>(GetParam())); }

    QTemporaryDir folder_;
    std::unique_ptr<Database> database_ = std::get<0>(GetParam()).open(folder_.path());
};

// One file of the corpus.
class CorpusTest : public StoreTest {};

TEST_P(CorpusTest, GivesTheRowsOrTheError) {
    for (const CorpusCase& one : ReadCorpus(File())) {
        ExpectOutcome(one);
    }
}

// An updatable set reads each record by its keys when it is moved onto, and shows the same rows.
TEST_P(CorpusTest, UpdatableSetsShowTheSameRows) {
    for (const CorpusCase& one : ReadCorpus(File())) {
        ExpectOutcome(one, RecordsetKind::Updatable);
    }
}

// Texts that differ in their literals alone share one plan; a text that comes second gives its own rows.
TEST_P(CorpusTest, ATextThatFindsThePlanOfAnotherGivesItsOwnRows) {
    static const QRegularExpression number(QStringLiteral(R"(\b\d+\b(?![\]/: ]))"));
    static const QRegularExpression quoted(QStringLiteral(R"((["'])[^"']*\1)"));
    for (const CorpusCase& one : ReadCorpus(File())) {
        CorpusCase other = one;
        other.changedField.clear();
        other.text.replace(number, QStringLiteral("4"));
        other.text.replace(quoted, QStringLiteral("'d'"));
        if (one.queryName.isEmpty() && one.text.startsWith(u"SELECT", Qt::CaseInsensitive)) {
            OutcomeOf(*database_, other);
        }
        ExpectOutcome(one);
    }
}

std::string NameOf(const testing::TestParamInfo<std::tuple<TestedStore, const char*>>& one) {
    const QString file = QString::fromLatin1(std::get<1>(one.param));
    return std::get<0>(one.param).name + file.section(u'.', 0, 0).toStdString();
}

INSTANTIATE_TEST_SUITE_P(Files, CorpusTest,
                         testing::Combine(testing::ValuesIn(testedStores), testing::ValuesIn(corpusFiles)), NameOf);

CorpusCase CaseOf(const QString& text, const QString& queryName = {}) {
    CorpusCase one;
    one.text = text;
    one.queryName = queryName;
    return one;
}

// The store knows every function of the dialect, with as few and as many arguments as it takes.
TEST_P(StoreTest, RunsEveryFunction) {
    const QStringList arguments = {u"Name"_s, u"Location"_s,   u"Name"_s, u"1"_s,
                                   u"1"_s,    u"#3/7/2026#"_s, u"1"_s,    u"'d'"_s};
    // Those that take no words at these places.
    const QHash<QString, QString> special = {
        {u"Format/2"_s, u"1, '0'"_s}, {u"InStr/3"_s, u"1, Name, Name"_s}, {u"InStr/4"_s, u"1, Name, Name, 1"_s}};
    for (const dialect::FunctionRule& rule : dialect::Functions()) {
        for (const int count : {rule.minimum, rule.maximum}) {
            QStringList list;
            for (int i = 0; i < count; ++i) {
                list += arguments[static_cast<int>(rule.arguments.at(static_cast<size_t>(i)))];
            }
            const QString text = u"SELECT %1(%2) FROM Asset WHERE AssetID = 1"_s.arg(
                rule.name, special.value(u"%1/%2"_s.arg(rule.name).arg(count), list.join(u", ")));
            const Outcome outcome = OutcomeOf(*database_, CaseOf(text));
            EXPECT_TRUE(outcome.words.isEmpty()) << text.toStdString() << ": " << outcome.words.toStdString();
        }
    }
}

TEST_P(StoreTest, ListsDeclaredParametersFirst) {
    OutcomeOf(
        *database_,
        CaseOf(u"PARAMETERS RStart DateTime; SELECT Name, Start FROM Reservation WHERE Start < RStart"_s, u"Early"_s));
    const auto query =
        database_->CreateQueryDef(u"SELECT other, RStart FROM Early WHERE Start > other AND Name Like mask"_s);
    QStringList names;
    for (const auto& parameter : query->Parameters()) {
        names += parameter.name + (parameter.declared ? u'!' : u'?');
    }
    EXPECT_EQ(names.join(u' '), u"RStart! other? mask?");
}

INSTANTIATE_TEST_SUITE_P(Stores, StoreTest, testing::Combine(testing::ValuesIn(testedStores), testing::Values("")),
                         NameOf);

} // namespace
} // namespace velmora::engine::test
