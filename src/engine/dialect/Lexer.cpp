#include "engine/dialect/Lexer.h"

#include "engine/dialect/Literals.h"

#include <algorithm>
#include <array>

namespace velmora::engine::dialect {

namespace {

struct Entry {
    QStringView word;
    TokenKind kind;
};

// Sorted by word.
constexpr std::array keywords = std::to_array<Entry>({
    {u"all", TokenKind::All},
    {u"and", TokenKind::And},
    {u"as", TokenKind::As},
    {u"between", TokenKind::Between},
    {u"by", TokenKind::By},
    {u"delete", TokenKind::Delete},
    {u"distinct", TokenKind::Distinct},
    {u"exists", TokenKind::Exists},
    {u"false", TokenKind::False},
    {u"from", TokenKind::From},
    {u"group", TokenKind::Group},
    {u"having", TokenKind::Having},
    {u"in", TokenKind::In},
    {u"inner", TokenKind::Inner},
    {u"insert", TokenKind::Insert},
    {u"into", TokenKind::Into},
    {u"is", TokenKind::Is},
    {u"join", TokenKind::Join},
    {u"left", TokenKind::Left},
    {u"like", TokenKind::Like},
    {u"mod", TokenKind::Mod},
    {u"no", TokenKind::No},
    {u"not", TokenKind::Not},
    {u"null", TokenKind::Null},
    {u"on", TokenKind::On},
    {u"or", TokenKind::Or},
    {u"order", TokenKind::Order},
    {u"right", TokenKind::Right},
    {u"select", TokenKind::Select},
    {u"set", TokenKind::Set},
    {u"true", TokenKind::True},
    {u"union", TokenKind::Union},
    {u"update", TokenKind::Update},
    {u"values", TokenKind::Values},
    {u"where", TokenKind::Where},
    {u"yes", TokenKind::Yes},
});

// Longer ones first.
constexpr std::array marks = std::to_array<Entry>({
    {u"<>", TokenKind::NotEqual},
    {u"<=", TokenKind::LessEqual},
    {u">=", TokenKind::GreaterEqual},
    {u"<", TokenKind::Less},
    {u">", TokenKind::Greater},
    {u"=", TokenKind::Equal},
    {u",", TokenKind::Comma},
    {u"(", TokenKind::Open},
    {u")", TokenKind::Close},
    {u";", TokenKind::Semicolon},
    {u"*", TokenKind::Star},
    {u"/", TokenKind::Slash},
    {u"+", TokenKind::Plus},
    {u"-", TokenKind::Minus},
    {u"&", TokenKind::Ampersand},
});

TokenKind KindOfWord(QStringView word) {
    const auto found =
        std::lower_bound(keywords.begin(), keywords.end(), word, [](const Entry& entry, QStringView text) {
            return entry.word.compare(text, Qt::CaseInsensitive) < 0;
        });
    const bool known = found != keywords.end() && found->word.compare(word, Qt::CaseInsensitive) == 0;
    return known ? found->kind : TokenKind::Name;
}

class Lexer {
public:
    explicit Lexer(const SourceText& source) : source_(source), text_(source.text) {}

    TokenList Run() {
        while (at_ < text_.size()) {
            ReadToken();
        }
        Add(TokenKind::End, 0);
        return std::move(list_);
    }

private:
    [[noreturn]] void FailHere(const QString& what) const { Fail(EngineErrorNumber::Syntax, what, source_, at_); }

    void Add(TokenKind kind, qsizetype length) {
        list_.tokens.push_back({kind, at_, text_.mid(at_, length), -1});
        at_ += length;
    }

    void ReadToken() {
        switch (ClassOf(text_[at_].unicode())) {
        case CharClass::Blank:
            ++at_;
            break;
        case CharClass::Word:
            ReadWord();
            break;
        case CharClass::Digit:
            ReadLiteral(ScanNumber(text_, at_));
            break;
        case CharClass::Dot:
            if (PointStartsNumber(text_, at_)) {
                ReadLiteral(ScanNumber(text_, at_));
            } else {
                Add(TokenKind::Point, 1);
            }
            break;
        case CharClass::Quote:
            ReadLiteral(ScanText(text_, at_));
            break;
        case CharClass::Hash:
            ReadLiteral(ScanDate(text_, at_));
            break;
        case CharClass::Bracket:
            ReadBracketedName();
            break;
        case CharClass::Other:
            ReadMark();
            break;
        case CharClass::Control:
            FailHere(QStringLiteral("A control character"));
        }
    }

    void ReadWord() {
        qsizetype end = at_ + 1;
        while (end < text_.size() && IsWordPart(text_[end].unicode())) {
            ++end;
        }
        const QStringView word = text_.mid(at_, end - at_);
        Add(KindOfWord(word), word.size());
    }

    void ReadBracketedName() {
        const qsizetype end = text_.indexOf(u']', at_);
        if (end < 0) {
            FailHere(QStringLiteral("The bracket has no closing bracket: it opens"));
        }
        const QStringView name = text_.mid(at_ + 1, end - at_ - 1);
        if (name.trimmed().isEmpty() || std::any_of(name.begin(), name.end(), [](QChar c) { return c < u' '; })) {
            FailHere(QStringLiteral("The brackets hold no name"));
        }
        list_.tokens.push_back({TokenKind::BracketedName, at_, name.trimmed(), -1});
        at_ = end + 1;
    }

    void ReadLiteral(ScannedLiteral literal) {
        switch (literal.fault) {
        case LiteralFault::None:
            break;
        case LiteralFault::Unterminated:
            FailHere(text_[at_] == u'#' ? QStringLiteral("The date has no closing \"#\": it begins")
                                        : QStringLiteral("The text has no closing quote: it begins"));
        case LiteralFault::BadNumber:
            FailHere(QStringLiteral("\"%1\" is no number").arg(text_.mid(at_, literal.end + 1 - at_)));
        case LiteralFault::BadDate: {
            const QStringView date = text_.mid(at_, literal.end - at_);
            FailHere(QStringLiteral("%1 is no date (%2)").arg(date, DateFault(date.mid(1, date.size() - 2))));
        }
        }
        Token token{TokenKind::Literal, at_, text_.mid(at_, literal.end - at_),
                    static_cast<int>(list_.literals.size())};
        list_.tokens.push_back(token);
        list_.literals.push_back(std::move(literal.value));
        at_ = literal.end;
    }

    void ReadMark() {
        const QStringView rest = text_.mid(at_);
        if (rest.startsWith(u"/*")) {
            FailHere(QStringLiteral("Comments are not part of the dialect: \"/*\""));
        }
        if (rest.startsWith(u"--")) {
            FailHere(QStringLiteral("Comments are not part of the dialect (and two minus signs need a blank "
                                    "between them): \"--\""));
        }
        const auto* const mark =
            std::find_if(marks.begin(), marks.end(), [&](const Entry& entry) { return rest.startsWith(entry.word); });
        if (mark == marks.end()) {
            FailHere(QStringLiteral("\"%1\" is not part of the dialect").arg(text_[at_]));
        }
        Add(mark->kind, mark->word.size());
    }

    const SourceText& source_;
    QStringView text_;
    qsizetype at_ = 0;
    TokenList list_;
};

} // namespace

TokenList Tokenize(const SourceText& source) {
    return Lexer(source).Run();
}

bool IsKeyword(QStringView word) {
    return KindOfWord(word) != TokenKind::Name;
}

} // namespace velmora::engine::dialect
