#include "tests/engine/dialect/Corpus.h"

#include "tests/engine/dialect/TestedStores.h"

#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace velmora::engine::test {
namespace {

// One file of statements against a fresh database of each store; they run in their order, so that an action shows in
// the next select.
class CorpusTest : public testing::TestWithParam<std::tuple<TestedStore, const char*>> {
protected:
    std::unique_ptr<Database> Open() const { return std::get<0>(GetParam()).open(folder_.path()); }
    QString File() const { return QString::fromLatin1(std::get<1>(GetParam())); }
    std::string PlaceOf(const CorpusCase& one) const {
        return QStringLiteral("%1:%2\n%3").arg(File()).arg(one.line).arg(one.text).toStdString();
    }

    QTemporaryDir folder_;
};

TEST_P(CorpusTest, GivesTheRowsOrTheError) {
    const auto database = Open();
    for (const CorpusCase& one : ReadCorpus(File())) {
        SCOPED_TRACE(PlaceOf(one));
        const Outcome outcome = OutcomeOf(*database, one);
        EXPECT_EQ(outcome.result.toStdString(), one.expected.toStdString()) << outcome.words.toStdString();
        if (!one.header.isEmpty()) {
            EXPECT_EQ(outcome.header.toStdString(), one.header.toStdString());
        }
        for (const QString& part : one.errorParts) {
            EXPECT_TRUE(outcome.words.contains(part))
                << outcome.words.toStdString() << "\nlacks: " << part.toStdString();
        }
    }
}

// An updatable set reads each record by its keys when it is moved onto, and shows the same rows.
TEST_P(CorpusTest, UpdatableSetsShowTheSameRows) {
    const auto database = Open();
    for (const CorpusCase& one : ReadCorpus(File())) {
        SCOPED_TRACE(PlaceOf(one));
        const Outcome outcome = OutcomeOf(*database, one, RecordsetKind::Updatable);
        EXPECT_EQ(outcome.result.toStdString(), one.expected.toStdString()) << outcome.words.toStdString();
    }
}

// Texts that differ in their literals alone share one plan; a text that comes second gives its own rows.
TEST_P(CorpusTest, ATextThatFindsThePlanOfAnotherGivesItsOwnRows) {
    const auto database = Open();
    static const QRegularExpression number(QStringLiteral(R"(\b\d+\b(?![\]/: ]))"));
    static const QRegularExpression quoted(QStringLiteral(R"((["'])[^"']*\1)"));
    for (const CorpusCase& one : ReadCorpus(File())) {
        SCOPED_TRACE(PlaceOf(one));
        CorpusCase other = one;
        other.text.replace(number, QStringLiteral("4"));
        other.text.replace(quoted, QStringLiteral("'d'"));
        if (one.queryName.isEmpty() && one.text.startsWith(u"SELECT", Qt::CaseInsensitive)) {
            OutcomeOf(*database, other);
        }
        const Outcome outcome = OutcomeOf(*database, one);
        EXPECT_EQ(outcome.result.toStdString(), one.expected.toStdString()) << outcome.words.toStdString();
    }
}

std::string NameOf(const testing::TestParamInfo<std::tuple<TestedStore, const char*>>& one) {
    const QString file = QString::fromLatin1(std::get<1>(one.param));
    return std::get<0>(one.param).name + file.section(u'.', 0, 0).toStdString();
}

INSTANTIATE_TEST_SUITE_P(Files, CorpusTest,
                         testing::Combine(testing::ValuesIn(testedStores), testing::ValuesIn(corpusFiles)), NameOf);

} // namespace
} // namespace velmora::engine::test
