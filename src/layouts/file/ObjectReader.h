#pragma once

#include "layouts/file/JsonText.h"

#include <QStringList>

#include <functional>

namespace velmora::layouts {

// A place in a layout file, for messages.
struct LayoutPlace {
    // The file's name without its folder.
    QString file;
    int line = 1;
    // The key with the keys and item numbers (from 1) that lead to it: "columns[2].width".
    QString key;

    // Throws the Error that names file, line and key.
    [[noreturn]] void Fail(const QString& what) const;
};

// Reads the keys of one object. Each throws Error, naming file, line and key, for a value of another kind. Finish,
// called last, throws for a key that was not asked for: a misspelt key is an error. It is called for the objects below
// this one when they are read.
class ObjectReader {
public:
    // Throws when the node is no object. `node` outlives the reader.
    ObjectReader(const JsonNode& node, LayoutPlace place);

    bool Has(const QString& key) { return Find(key) != nullptr; }
    // Empty without the key.
    QString Text(const QString& key);
    // Throws without the key, and for an empty text.
    QString RequiredText(const QString& key);
    bool Flag(const QString& key, bool otherwise);
    // Throws for a number out of the range.
    double Number(const QString& key, double otherwise, double least, double most);
    // The place of the value among the words, of the first one without the key. Throws listing them.
    int OneOf(const QString& key, const QStringList& words);
    // The items of a list, none without the key. Throws for more than `most`.
    std::vector<std::pair<const JsonNode*, LayoutPlace>> List(const QString& key, size_t most);
    using Read = std::function<void(ObjectReader& reader)>;
    // Each object of a list; no call without the key.
    void EachObject(const QString& key, size_t most, const Read& read);
    // The object of a key; no call without it.
    void Object(const QString& key, const Read& read);
    void Finish() const;

    // The object's own place, and the place of one of its keys (its own when the key is missing).
    const LayoutPlace& Place() const { return place_; }
    LayoutPlace PlaceOf(const QString& key) const;

private:
    const JsonNode* Find(const QString& key);
    const JsonNode* FindKind(const QString& key, JsonNode::Kind kind, const QString& what);

    const JsonNode& node_;
    LayoutPlace place_;
    // In the order in which they were asked for.
    QStringList known_;
};

} // namespace velmora::layouts
