#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace velmora::layouts {

// A value of a JSON text, with its line (from 1), so that whoever checks what it means can name the place.
struct JsonNode {
    enum class Kind { Null, Bool, Number, Text, List, Object };
    Kind kind = Kind::Null;
    // Where it begins; for a value of an object where its key stands.
    int line = 1;
    QString key; // of a value of an object
    bool yes = false;
    double number = 0;
    QString text;
    std::vector<JsonNode> items; // of a list or an object

    // An object's value; null without the key.
    const JsonNode* Find(QStringView name) const;
};

// Why a text is not JSON, in words for a person, and where: line and column from 1.
struct JsonFault {
    QString what;
    int line = 1;
    int column = 1;
};

// Reads a JSON text strictly: UTF-8, no comments, no comma behind the last item, no key twice in an object, nothing
// behind the value, no nesting that no sensible file has. Throws JsonFault.
JsonNode ParseJson(const QByteArray& bytes);

} // namespace velmora::layouts
