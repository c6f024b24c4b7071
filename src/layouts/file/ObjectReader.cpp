#include "layouts/file/ObjectReader.h"

#include "base/Error.h"

namespace velmora::layouts {

using namespace Qt::StringLiterals;

void LayoutPlace::Fail(const QString& what) const {
    const QString at = key.isEmpty() ? u"line %1"_s.arg(line) : u"line %1, %2"_s.arg(line).arg(key);
    throw ProgramError(ErrorNumber::InvalidCall, u"The report layout %1 is wrong in %2: %3."_s.arg(file, at, what));
}

ObjectReader::ObjectReader(const JsonNode& node, LayoutPlace place) : node_(node), place_(std::move(place)) {
    if (node.kind != JsonNode::Kind::Object) {
        place_.Fail(u"an object in braces is wanted here"_s);
    }
}

LayoutPlace ObjectReader::PlaceOf(const QString& key) const {
    const JsonNode* node = node_.Find(key);
    return node == nullptr ? place_
                           : LayoutPlace{place_.file, node->line, place_.key.isEmpty() ? key : place_.key + u'.' + key};
}

const JsonNode* ObjectReader::Find(const QString& key) {
    if (!known_.contains(key)) {
        known_.append(key);
    }
    return node_.Find(key);
}

const JsonNode* ObjectReader::FindKind(const QString& key, JsonNode::Kind kind, const QString& what) {
    const JsonNode* node = Find(key);
    if (node != nullptr && node->kind != kind) {
        PlaceOf(key).Fail(u"%1 is wanted here"_s.arg(what));
    }
    return node;
}

QString ObjectReader::Text(const QString& key) {
    const JsonNode* node = FindKind(key, JsonNode::Kind::Text, u"a text in double quotes"_s);
    return node == nullptr ? QString() : node->text;
}

QString ObjectReader::RequiredText(const QString& key) {
    const QString text = Text(key);
    if (text.isEmpty()) {
        Has(key) ? PlaceOf(key).Fail(u"the text is empty"_s) : place_.Fail(u"the key \"%1\" is missing"_s.arg(key));
    }
    return text;
}

bool ObjectReader::Flag(const QString& key, bool otherwise) {
    const JsonNode* node = FindKind(key, JsonNode::Kind::Bool, u"true or false"_s);
    return node == nullptr ? otherwise : node->yes;
}

double ObjectReader::Number(const QString& key, double otherwise, double least, double most) {
    const JsonNode* node = FindKind(key, JsonNode::Kind::Number, u"a number"_s);
    if (node == nullptr) {
        return otherwise;
    }
    if (node->number < least || node->number > most) {
        PlaceOf(key).Fail(u"the number is from %1 to %2"_s.arg(least).arg(most));
    }
    return node->number;
}

int ObjectReader::OneOf(const QString& key, const QStringList& words) {
    const JsonNode* node = FindKind(key, JsonNode::Kind::Text, u"a text in double quotes"_s);
    if (node == nullptr) {
        return 0;
    }
    const auto index = words.indexOf(node->text);
    if (index < 0) {
        PlaceOf(key).Fail(u"\"%1\" is none of: %2"_s.arg(node->text, words.join(u", "_s)));
    }
    return static_cast<int>(index);
}

std::vector<std::pair<const JsonNode*, LayoutPlace>> ObjectReader::List(const QString& key, size_t most) {
    const JsonNode* node = FindKind(key, JsonNode::Kind::List, u"a list in square brackets"_s);
    std::vector<std::pair<const JsonNode*, LayoutPlace>> items;
    if (node == nullptr) {
        return items;
    }
    const LayoutPlace list = PlaceOf(key);
    if (node->items.size() > most) {
        list.Fail(u"there are %1 items and may be %2"_s.arg(node->items.size()).arg(most));
    }
    for (size_t i = 0; i < node->items.size(); ++i) {
        const JsonNode& item = node->items[i];
        items.emplace_back(&item, LayoutPlace{list.file, item.line, u"%1[%2]"_s.arg(list.key).arg(i + 1)});
    }
    return items;
}

void ObjectReader::EachObject(const QString& key, size_t most, const Read& read) {
    for (const auto& [node, place] : List(key, most)) {
        ObjectReader reader(*node, place);
        read(reader);
        reader.Finish();
    }
}

void ObjectReader::Object(const QString& key, const Read& read) {
    if (const JsonNode* node = Find(key)) {
        ObjectReader reader(*node, PlaceOf(key));
        read(reader);
        reader.Finish();
    }
}

void ObjectReader::Finish() const {
    for (const JsonNode& item : node_.items) {
        if (!known_.contains(item.key)) {
            PlaceOf(item.key).Fail(u"there is no such key; the keys here are %1"_s.arg(known_.join(u", "_s)));
        }
    }
}

} // namespace velmora::layouts
