#include "engine/EngineError.h"
#include "engine/dialect/Lexer.h"
#include "engine/dialect/Parser.h"
#include "engine/dialect/Printer.h"
#include "tests/engine/dialect/Corpus.h"

#include <gtest/gtest.h>

#include <random>

namespace velmora::engine::dialect {
namespace {

// What holds for every text of the corpus.
class CorpusPropertiesTest : public testing::Test {
protected:
    CorpusPropertiesTest() {
        for (const char* file : corpusFiles) {
            for (const CorpusCase& one : ReadCorpus(QString::fromLatin1(file))) {
                if (!one.queryName.isEmpty()) {
                    store_.AddQuery(one.queryName, one.text);
                }
                texts_ += one.text;
            }
        }
    }

    std::optional<CompiledStatement> TryCompile(const QString& text) {
        try {
            return Compile(text, store_, Purpose::Read);
        } catch (const EngineError&) {
            return std::nullopt;
        }
    }
    // Whatever compiles is a text that the store takes.
    void ExpectPrepares(const QString& text) {
        try {
            for (const Purpose purpose : {Purpose::Read, Purpose::Update}) {
                const CompiledStatement compiled = Compile(text, store_, purpose);
                store_.Prepare(compiled.sql);
                if (compiled.updatable) {
                    store_.Prepare(compiled.rereadSql);
                }
            }
        } catch (const EngineError& error) {
            EXPECT_FALSE(error.Description().isEmpty());
        } catch (const std::exception& error) {
            ADD_FAILURE() << text.toStdString() << "\n" << error.what();
        }
    }

    TestStore store_;
    QStringList texts_;
};

TEST_F(CorpusPropertiesTest, PrintsToATextThatMeansTheSame) {
    int printed = 0;
    for (const QString& text : texts_) {
        const auto compiled = TryCompile(text);
        if (!compiled || text == u"Query 7" || !text.contains(u' ')) {
            continue;
        }
        const SourceText source{text, {}};
        const QString once = Print(Parse(source));
        const SourceText again{once, {}};
        EXPECT_EQ(Print(Parse(again)).toStdString(), once.toStdString());
        const auto compiledAgain = TryCompile(once);
        ASSERT_TRUE(compiledAgain) << once.toStdString();
        EXPECT_EQ(compiledAgain->sql.toStdString(), compiled->sql.toStdString());
        EXPECT_EQ(compiledAgain->columns.size(), compiled->columns.size());
        ++printed;
    }
    EXPECT_GT(printed, 150);
}

TEST_F(CorpusPropertiesTest, QuickScanFindsTheLiteralsThatTheLexerFinds) {
    TextShape shape;
    for (const QString& text : texts_) {
        ScanShape(text, shape);
        try {
            const SourceText source{text, {}};
            const TokenList list = Tokenize(source);
            EXPECT_TRUE(shape.recognised) << text.toStdString();
            EXPECT_TRUE(shape.literals == list.literals) << text.toStdString();
        } catch (const EngineError&) {
            // A text that is no dialect may have any shape.
        }
    }
}

// A statement compiled for one text serves every text of the same shape: the other literals change its bindings only.
TEST_F(CorpusPropertiesTest, OneShapeIsOneStatement) {
    int shared = 0;
    for (const QString& text : texts_) {
        const auto compiled = TryCompile(text);
        if (!compiled || compiled->literalsShapeText) {
            continue;
        }
        const SourceText source{text, {}};
        const TokenList list = Tokenize(source);
        QString other = text;
        for (auto token = list.tokens.rbegin(); token != list.tokens.rend(); ++token) {
            if (token->literal < 0) {
                continue;
            }
            const Value& value = list.literals[static_cast<size_t>(token->literal)];
            const QString changed = value.IsText()       ? QStringLiteral("'d'")
                                    : value.IsDateTime() ? QStringLiteral("#12/24/2031 6:07 PM#")
                                    : value.IsReal()     ? QStringLiteral("3.25")
                                                         : QStringLiteral("4");
            other.replace(token->at, token->text.size(), changed);
        }
        TextShape first;
        TextShape second;
        ScanShape(text, first);
        ScanShape(other, second);
        EXPECT_EQ(first.key.toStdString(), second.key.toStdString());
        const auto compiledOther = TryCompile(other);
        ASSERT_TRUE(compiledOther) << other.toStdString();
        if (!compiledOther->literalsShapeText) {
            EXPECT_EQ(compiledOther->sql.toStdString(), compiled->sql.toStdString());
            shared += list.literals.empty() ? 0 : 1;
        }
    }
    EXPECT_GT(shared, 80);
}

TEST_F(CorpusPropertiesTest, EveryTextThatCompilesPrepares) {
    for (const QString& text : texts_) {
        ExpectPrepares(text);
    }
}

// Texts of the corpus with words dropped, doubled, exchanged and taken from other texts: either an EngineError or a
// statement that the store takes; never a crash.
TEST_F(CorpusPropertiesTest, SurvivesMutatedTexts) {
    std::mt19937 random(20260307); // NOLINT: the same texts in every run
    const auto pick = [&](qsizetype count) {
        return static_cast<qsizetype>(random() % static_cast<unsigned>(std::max<qsizetype>(count, 1)));
    };
    const auto words = [](const QString& text) {
        QStringList list;
        try {
            const SourceText source{text, {}};
            const TokenList tokens = Tokenize(source);
            for (const Token& token : tokens.tokens) {
                list += token.kind == TokenKind::BracketedName ? u'[' + token.text.toString() + u']'
                                                               : token.text.toString();
            }
        } catch (const EngineError&) {
            list = text.split(u' ');
        }
        return list;
    };
    QString strange = QStringLiteral("'\"[]#();*%?\\`\r\n\t\x01-/&|!@{}~^$,.<>=0e");
    strange += QChar(0xD800);
    constexpr int rounds = 6000;
    for (int round = 0; round < rounds; ++round) {
        QStringList list = words(texts_[pick(texts_.size())]);
        const int changes = 1 + static_cast<int>(pick(3));
        for (int change = 0; change < changes; ++change) {
            const qsizetype at = pick(list.size());
            const QStringList other = words(texts_[pick(texts_.size())]);
            switch (pick(5)) {
            case 0:
                list.removeAt(at);
                break;
            case 1:
                list.insert(at, list.value(pick(list.size())));
                break;
            case 2:
                list.replace(at, other.value(pick(other.size())));
                break;
            case 3:
                list = list.mid(0, at) + other.mid(pick(other.size()));
                break;
            default:
                list.insert(at, QString(strange[pick(strange.size())]));
            }
            if (list.isEmpty()) {
                list += QStringLiteral("SELECT");
            }
        }
        const QString text = list.join(u' ');
        ExpectPrepares(text);
        TextShape shape;
        ScanShape(text, shape);
    }
}

} // namespace
} // namespace velmora::engine::dialect
