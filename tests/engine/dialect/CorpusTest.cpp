#include "tests/engine/dialect/Corpus.h"
#include "engine/EngineError.h"
#include "tests/engine/dialect/TestStore.h"

#include <gtest/gtest.h>

namespace velmora::engine::dialect {
namespace {

// One file of statements against a fresh store; they run in their order, so that an action shows in the next select.
class CorpusTest : public testing::TestWithParam<const char*> {};

TEST_P(CorpusTest, GivesTheRowsOrTheError) {
    TestStore store;
    for (const CorpusCase& one : ReadCorpus(QString::fromLatin1(GetParam()))) {
        SCOPED_TRACE(
            QStringLiteral("%1:%2\n%3").arg(QString::fromLatin1(GetParam())).arg(one.line).arg(one.text).toStdString());
        if (!one.queryName.isEmpty()) {
            store.AddQuery(one.queryName, one.text);
            continue;
        }
        QString outcome;
        QString words;
        try {
            const TestStore::Result result = store.Run(one.text, one.parameters);
            outcome = Outcome(result, one);
        } catch (const EngineError& error) {
            outcome = QStringLiteral("error %1").arg(error.Number());
            words = error.Description();
        } catch (const std::exception& error) {
            outcome = QString::fromUtf8(error.what());
        }
        EXPECT_EQ(outcome.toStdString(), one.expected.toStdString()) << words.toStdString();
        for (const QString& part : one.errorParts) {
            EXPECT_TRUE(words.contains(part)) << words.toStdString() << "\nlacks: " << part.toStdString();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Files, CorpusTest, testing::ValuesIn(corpusFiles), [](const auto& file) {
    return QString::fromLatin1(file.param).section(u'.', 0, 0).toStdString();
});

} // namespace
} // namespace velmora::engine::dialect
