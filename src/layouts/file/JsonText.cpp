#include "layouts/file/JsonText.h"

#include <QByteArrayList>
#include <QStringView>

#include <rapidjson/reader.h>
#include <rapidjson/stream.h>

#include <algorithm>

namespace velmora::layouts {

using namespace Qt::StringLiterals;

namespace {

using Encoding = rapidjson::UTF16<char16_t>;

constexpr size_t deepest = 20;

using Source = rapidjson::GenericStringStream<Encoding>;

// Makes nodes of what the library reads. A function that returns false ends the reading, with `refusal`.
class TreeBuilder : public rapidjson::BaseReaderHandler<Encoding, TreeBuilder> {
public:
    TreeBuilder(QStringView text, const Source& source) : text_(text), source_(source) {}

    bool Null() {
        Add(JsonNode::Kind::Null);
        return true;
    }
    bool Bool(bool yes) {
        Add(JsonNode::Kind::Bool)->yes = yes;
        return true;
    }
    bool Double(double number) {
        Add(JsonNode::Kind::Number)->number = number;
        return true;
    }
    bool Int(int number) { return Double(number); }
    bool Uint(unsigned number) { return Double(number); }
    bool Int64(int64_t number) { return Double(static_cast<double>(number)); }
    bool Uint64(uint64_t number) { return Double(static_cast<double>(number)); }
    bool String(const char16_t* text, rapidjson::SizeType length, bool) {
        Add(JsonNode::Kind::Text)->text = QString(reinterpret_cast<const QChar*>(text), length);
        return true;
    }
    bool StartObject() { return Open(JsonNode::Kind::Object); }
    bool StartArray() { return Open(JsonNode::Kind::List); }
    bool Key(const char16_t* text, rapidjson::SizeType length, bool) {
        lastKey = QString(reinterpret_cast<const QChar*>(text), length);
        keyLine_ = Line();
        if (open_.back()->Find(lastKey) != nullptr) {
            refusal = u"the key \"%1\" stands here twice"_s.arg(lastKey);
            return false;
        }
        return true;
    }
    bool EndObject(rapidjson::SizeType) { return Close(); }
    bool EndArray(rapidjson::SizeType) { return Close(); }

    JsonNode root;
    QString lastKey;
    QString refusal;

private:
    // Where the library reads, from 1.
    int Line() {
        const auto at = std::min(static_cast<qsizetype>(source_.Tell()), text_.size());
        line_ += static_cast<int>(text_.sliced(counted_, at - counted_).count(u'\n'));
        counted_ = at;
        return line_;
    }
    JsonNode* Add(JsonNode::Kind kind) {
        JsonNode* node = open_.empty() ? &root : &open_.back()->items.emplace_back();
        const bool ofObject = !open_.empty() && open_.back()->kind == JsonNode::Kind::Object;
        node->kind = kind;
        node->key = ofObject ? lastKey : QString();
        node->line = ofObject ? keyLine_ : Line();
        return node;
    }
    bool Open(JsonNode::Kind kind) {
        if (open_.size() > deepest) {
            refusal = u"the values nest more than %1 levels deep"_s.arg(deepest);
            return false;
        }
        open_.push_back(Add(kind));
        return true;
    }
    bool Close() {
        open_.pop_back();
        return true;
    }

    QStringView text_;
    const Source& source_;
    // The line at the place up to which line ends are counted.
    int line_ = 1;
    qsizetype counted_ = 0;
    int keyLine_ = 1;
    // The objects and lists that are not closed yet, the innermost last.
    std::vector<JsonNode*> open_;
};

// The word at a place, or that it stands behind, such as a number that cannot be read on.
QStringView WordAt(QStringView text, qsizetype& at) {
    const auto isOfWord = [&](qsizetype n) {
        return text[n].isLetterOrNumber() || QStringView(u"+-.").contains(text[n]);
    };
    while (at > 0 && isOfWord(at - 1)) {
        --at;
    }
    qsizetype end = at;
    while (end < text.size() && isOfWord(end)) {
        ++end;
    }
    return text.sliced(at, end - at);
}

// What is wrong in a text that holds a bad escape or a control character at a place.
QString EscapeFault(QStringView text, qsizetype& at) {
    if (text[at] == u'\n') {
        return u"a text's closing quote is missing"_s;
    }
    if (text[at] != u'\\') {
        return u"a text holds a control character; write it as \\t or \\u0000"_s;
    }
    ++at;
    return u"a text has no \\%1; a backslash is written \\\\"_s.arg(at < text.size() ? text[at] : QChar());
}

// What is wrong, in words for a person. May move `at` to what the words are about.
QString Describe(rapidjson::ParseErrorCode code, QStringView text, const TreeBuilder& tree, qsizetype& at) {
    const bool ended = at >= text.size();
    const auto missing = [&](QChar closing) {
        return (ended ? u"the file ends in the middle: \"%1\" is missing"_s : u"\",\" or \"%1\" is missing"_s)
            .arg(closing);
    };
    switch (code) {
    case rapidjson::kParseErrorDocumentEmpty:
        return u"the file ends in the middle"_s;
    case rapidjson::kParseErrorDocumentRootNotSingular:
        return u"nothing may stand behind the last \"}\""_s;
    case rapidjson::kParseErrorObjectMissName:
        return u"a key in double quotes is missing"_s;
    case rapidjson::kParseErrorObjectMissColon:
        return u"\":\" is missing behind the key \"%1\""_s.arg(tree.lastKey);
    case rapidjson::kParseErrorObjectMissCommaOrCurlyBracket:
        return missing(u'}');
    case rapidjson::kParseErrorArrayMissCommaOrSquareBracket:
        return missing(u']');
    case rapidjson::kParseErrorStringMissQuotationMark:
        return u"a text's closing quote is missing"_s;
    case rapidjson::kParseErrorStringUnicodeEscapeInvalidHex:
    case rapidjson::kParseErrorStringUnicodeSurrogateInvalid:
        ++at;
        return u"four hexadecimal digits are missing behind \\u"_s;
    case rapidjson::kParseErrorStringEscapeInvalid:
        return EscapeFault(text, at);
    case rapidjson::kParseErrorTermination:
        return tree.refusal;
    default:
        break;
    }
    const QStringView word = WordAt(text, at);
    return word.isEmpty() ? (ended ? u"the file ends in the middle"_s : u"a value is missing"_s)
                          : u"\"%1\" is no value; a text stands in double quotes"_s.arg(word);
}

JsonFault FaultAt(const QString& what, QStringView text, qsizetype at) {
    const QStringView before = text.first(std::min(at, text.size()));
    const auto lineStart = before.lastIndexOf(u'\n') + 1;
    return {what, static_cast<int>(before.count(u'\n')) + 1, static_cast<int>(before.size() - lineStart) + 1};
}

} // namespace

const JsonNode* JsonNode::Find(QStringView name) const {
    const auto found = std::find_if(items.begin(), items.end(), [&](const JsonNode& item) { return item.key == name; });
    return kind == Kind::Object && found != items.end() ? &*found : nullptr;
}

JsonNode ParseJson(const QByteArray& bytes) {
    const QByteArrayView plain = QByteArrayView(bytes).sliced(bytes.startsWith("\xEF\xBB\xBF") ? 3 : 0);
    int line = 1;
    for (const QByteArray& each : plain.toByteArray().split('\n')) {
        if (!QUtf8StringView(each).isValidUtf8()) {
            throw JsonFault{u"the line is not UTF-8"_s, line, 1};
        }
        ++line;
    }
    const QString text = QString::fromUtf8(plain);
    Source source(reinterpret_cast<const char16_t*>(text.utf16()));
    TreeBuilder tree(text, source);
    rapidjson::GenericReader<Encoding, Encoding> reader;
    const rapidjson::ParseResult result = reader.Parse<rapidjson::kParseFullPrecisionFlag>(source, tree);
    if (!result) {
        auto at = static_cast<qsizetype>(result.Offset());
        const QString what = Describe(result.Code(), text, tree, at);
        throw FaultAt(what, text, at);
    }
    // The library takes a null character for the end.
    if (static_cast<qsizetype>(source.Tell()) < text.size()) {
        throw FaultAt(u"nothing may stand behind the last \"}\""_s, text, static_cast<qsizetype>(source.Tell()));
    }
    return std::move(tree.root);
}

} // namespace velmora::layouts
