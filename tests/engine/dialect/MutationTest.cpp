#include "engine/dialect/Compiler.h"
#include "engine/dialect/Lexer.h"
#include "tests/engine/dialect/Corpus.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <random>

namespace velmora::engine::test {
namespace {

QStringList TextsOfTheCorpus() {
    QStringList texts;
    for (const char* file : corpusFiles) {
        for (const CorpusCase& one : ReadCorpus(QString::fromLatin1(file))) {
            texts += one.text;
        }
    }
    return texts;
}

TEST(QuickScanTest, FindsTheLiteralsThatTheLexerFinds) {
    dialect::TextShape shape;
    for (const QString& text : TextsOfTheCorpus()) {
        dialect::ScanShape(text, shape);
        try {
            const dialect::SourceText source{text, {}};
            const dialect::TokenList list = dialect::Tokenize(source);
            EXPECT_TRUE(shape.recognised) << text.toStdString();
            EXPECT_TRUE(shape.literals == list.literals) << text.toStdString();
        } catch (const EngineError&) {
            // A text that is no dialect may have any shape.
        }
    }
}

QStringList WordsOf(const QString& text) {
    QStringList words;
    try {
        const dialect::SourceText source{text, {}};
        const dialect::TokenList tokens = dialect::Tokenize(source);
        for (const dialect::Token& token : tokens.tokens) {
            const QString word = token.text.toString();
            words += token.kind == dialect::TokenKind::BracketedName ? u'[' + word + u']' : word;
        }
    } catch (const EngineError&) {
        words = text.split(u' ');
    }
    return words;
}

// Makes texts of the corpus with words dropped, doubled, exchanged and taken from other texts; the same in every run.
class Mutator {
public:
    QString Next() {
        QStringList list = WordsOf(AnyText());
        for (qsizetype changes = 1 + Pick(3); changes > 0; --changes) {
            Change(list);
        }
        return list.join(u' ');
    }

private:
    qsizetype Pick(qsizetype count) {
        return static_cast<qsizetype>(random_() % static_cast<unsigned>(std::max<qsizetype>(count, 1)));
    }
    const QString& AnyText() { return texts_[Pick(texts_.size())]; }
    void Change(QStringList& list) {
        static const QString strange = QStringLiteral("'\"[]#();*%?\\`\r\n\t\x01-/&|!@{}~^$,.<>=0e") + QChar(0xD800);
        const qsizetype at = Pick(list.size());
        const QStringList other = WordsOf(AnyText());
        switch (Pick(5)) {
        case 0:
            list.removeAt(at);
            break;
        case 1:
            list.insert(at, list.value(Pick(list.size())));
            break;
        case 2:
            list.replace(at, other.value(Pick(other.size())));
            break;
        case 3:
            list = list.mid(0, at) + other.mid(Pick(other.size()));
            break;
        default:
            list.insert(at, QString(strange[Pick(strange.size())]));
        }
        if (list.isEmpty()) {
            list += QStringLiteral("SELECT");
        }
    }

    const QStringList texts_ = TextsOfTheCorpus();
    std::mt19937 random_{20260307}; // NOLINT: the same texts in every run
};

class MutationTest : public testing::TestWithParam<TestedStore> {};

// Either an error that the dialect words, or a statement that the store runs; never one that the store refuses as a
// text, and never a crash.
TEST_P(MutationTest, WhatCompilesRuns) {
    const QTemporaryDir folder;
    const auto database = GetParam().open(folder.path());
    for (const char* file : corpusFiles) {
        for (const CorpusCase& one : ReadCorpus(QString::fromLatin1(file))) {
            if (!one.queryName.isEmpty()) {
                OutcomeOf(*database, one);
            }
        }
    }
    Mutator mutator;
    constexpr int rounds = 4000;
    for (int round = 0; round < rounds; ++round) {
        const QString text = mutator.Next();
        try {
            const auto query = database->CreateQueryDef(text);
            for (const auto& parameter : query->Parameters()) {
                query->SetParameter(parameter.name, Value());
            }
            if (query->IsAction()) {
                const Transaction undone(*database);
                query->Execute();
            } else {
                query->OpenRecordset(RecordsetKind::Updatable);
            }
        } catch (const EngineError& error) {
            // A function that refuses its argument says so in a sentence; the store's own words are none.
            EXPECT_TRUE(error.Description().endsWith(u'.')) << text.toStdString() << '\n' << error.what();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Stores, MutationTest, testing::ValuesIn(testedStores),
                         [](const auto& store) { return std::string(store.param.name); });

} // namespace
} // namespace velmora::engine::test
