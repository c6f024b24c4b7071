#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace velmora::layouts {

// A value of a JSON text, with the line that it begins on (from 1), so that whoever checks what it means can name the
// place.
struct JsonNode {
    enum class Kind { Null, Bool, Number, Text, List, Object };
    Kind kind = Kind::Null;
    int line = 1;
    bool yes = false;
    double number = 0;
    QString text;
    // Of a list its items, of an object its values; `keys` are parallel to the latter.
    std::vector<JsonNode> items;
    std::vector<QString> keys;
    // The line of each key.
    std::vector<int> keyLines;
};

// What is no JSON, as words for a person, and where: line and column from 1.
struct JsonFault {
    QString what;
    int line = 1;
    int column = 1;
};

// Reads a JSON text strictly: UTF-8, no comments, no comma behind the last item, no key twice in an object, nothing
// behind the value, no nesting that no sensible file has. Throws JsonFault.
JsonNode ParseJson(const QByteArray& bytes);

} // namespace velmora::layouts
