#include "layouts/file/JsonText.h"

#include <QByteArrayList>
#include <QStringView>

#include <algorithm>
#include <cmath>

namespace velmora::layouts {

using namespace Qt::StringLiterals;

namespace {

constexpr int deepest = 20;

class JsonParser {
public:
    explicit JsonParser(QStringView text) : text_(text) {}

    JsonNode Parse() {
        JsonNode node = ParseValue(0);
        SkipBlanks();
        if (at_ < text_.size()) {
            Fail(u"nothing may stand behind the last \"}\""_s);
        }
        return node;
    }

private:
    [[noreturn]] void Fail(const QString& what) const {
        throw JsonFault{what, line_, static_cast<int>(at_ - lineStart_) + 1};
    }

    QChar Peek() const { return at_ < text_.size() ? text_[at_] : QChar(); }

    void SkipBlanks() {
        while (at_ < text_.size() &&
               (text_[at_] == u' ' || text_[at_] == u'\t' || text_[at_] == u'\r' || text_[at_] == u'\n')) {
            if (text_[at_] == u'\n') {
                ++line_;
                lineStart_ = at_ + 1;
            }
            ++at_;
        }
    }

    void Expect(QChar mark, const QString& what) {
        SkipBlanks();
        if (Peek() != mark) {
            Fail(what);
        }
        ++at_;
    }

    JsonNode ParseValue(int depth) {
        SkipBlanks();
        if (depth > deepest) {
            Fail(u"the values nest more than %1 levels deep"_s.arg(deepest));
        }
        JsonNode node;
        node.line = line_;
        if (at_ >= text_.size()) {
            Fail(u"the file ends in the middle"_s);
        }
        switch (Peek().unicode()) {
        case u'{':
            ParseObject(node, depth);
            return node;
        case u'[':
            ParseList(node, depth);
            return node;
        case u'"':
            node.kind = JsonNode::Kind::Text;
            node.text = ParseText();
            return node;
        default:
            ParseWord(node);
            return node;
        }
    }

    // Another item follows; otherwise the closing mark was taken.
    bool AnotherItem(QChar closing) {
        SkipBlanks();
        if (Peek() == u',') {
            ++at_;
            return true;
        }
        Expect(closing, at_ >= text_.size() ? u"the file ends in the middle: \"%1\" is missing"_s.arg(closing)
                                            : u"\",\" or \"%1\" is missing"_s.arg(closing));
        return false;
    }

    void ParseObject(JsonNode& node, int depth) {
        node.kind = JsonNode::Kind::Object;
        ++at_;
        SkipBlanks();
        if (Peek() == u'}') {
            ++at_;
            return;
        }
        do {
            SkipBlanks();
            if (Peek() != u'"') {
                Fail(u"a key in double quotes is missing"_s);
            }
            const int line = line_;
            QString key = ParseText();
            if (std::find(node.keys.begin(), node.keys.end(), key) != node.keys.end()) {
                Fail(u"the key \"%1\" stands here twice"_s.arg(key));
            }
            Expect(u':', u"\":\" is missing behind the key \"%1\""_s.arg(key));
            node.items.push_back(ParseValue(depth + 1));
            node.keys.push_back(std::move(key));
            node.keyLines.push_back(line);
        } while (AnotherItem(u'}'));
    }

    void ParseList(JsonNode& node, int depth) {
        node.kind = JsonNode::Kind::List;
        ++at_;
        SkipBlanks();
        if (Peek() == u']') {
            ++at_;
            return;
        }
        do {
            node.items.push_back(ParseValue(depth + 1));
        } while (AnotherItem(u']'));
    }

    QString ParseText() {
        QString text;
        ++at_;
        for (;;) {
            if (at_ >= text_.size() || text_[at_] == u'\n') {
                Fail(u"a text's closing quote is missing"_s);
            }
            const QChar c = text_[at_];
            if (c == u'"') {
                ++at_;
                return text;
            }
            if (c < u' ') {
                Fail(u"a text holds a control character; write it as \\t or \\u0000"_s);
            }
            ++at_;
            text += c == u'\\' ? ParseEscape() : c;
        }
    }

    QChar ParseEscape() {
        constexpr QStringView letters = u"\"\\/bfnrt";
        constexpr QStringView meanings = u"\"\\/\b\f\n\r\t";
        const QChar letter = Peek();
        if (letter == u'u') {
            const QStringView digits = text_.mid(at_ + 1, 4);
            bool isNumber = digits.size() == 4 && std::all_of(digits.begin(), digits.end(), [](QChar c) {
                                return QStringView(u"0123456789abcdefABCDEF").contains(c);
                            });
            const ushort code = isNumber ? digits.toUShort(&isNumber, 16) : ushort{0};
            if (!isNumber) {
                Fail(u"four hexadecimal digits are missing behind \\u"_s);
            }
            at_ += 5;
            return QChar(code);
        }
        const qsizetype index = at_ < text_.size() ? letters.indexOf(letter) : -1;
        if (index < 0) {
            Fail(u"a text has no \\%1; a backslash is written \\\\"_s.arg(letter));
        }
        ++at_;
        return meanings[index];
    }

    void ParseWord(JsonNode& node) {
        const qsizetype start = at_;
        while (at_ < text_.size() && (text_[at_].isLetterOrNumber() || QStringView(u"+-.").contains(text_[at_]))) {
            ++at_;
        }
        const QStringView word = text_.sliced(start, at_ - start);
        if (word == u"true" || word == u"false") {
            node.kind = JsonNode::Kind::Bool;
            node.yes = word == u"true";
            return;
        }
        if (word == u"null") {
            return;
        }
        bool isNumber = false;
        node.kind = JsonNode::Kind::Number;
        node.number = word.toDouble(&isNumber);
        const bool plain = !word.isEmpty() && (word[0] == u'-' || (word[0] >= u'0' && word[0] <= u'9'));
        if (!plain || !isNumber || !std::isfinite(node.number)) {
            at_ = start;
            Fail(word.isEmpty() ? u"a value is missing"_s
                                : u"\"%1\" is no value; a text stands in double quotes"_s.arg(word));
        }
    }

    QStringView text_;
    qsizetype at_ = 0;
    int line_ = 1;
    qsizetype lineStart_ = 0;
};

} // namespace

JsonNode ParseJson(const QByteArray& bytes) {
    const QByteArrayView plain = QByteArrayView(bytes).sliced(bytes.startsWith("\xEF\xBB\xBF") ? 3 : 0);
    if (!QUtf8StringView(plain).isValidUtf8()) {
        const auto before = QUtf8StringView(plain);
        int line = 1;
        // The first line that is not well formed.
        for (const QByteArray& each : QByteArray(before.data(), before.size()).split('\n')) {
            if (!QUtf8StringView(each).isValidUtf8()) {
                break;
            }
            ++line;
        }
        throw JsonFault{u"the line is not UTF-8"_s, line, 1};
    }
    const QString text = QString::fromUtf8(plain);
    return JsonParser(text).Parse();
}

} // namespace velmora::layouts
