#include "engine/sqlite/salvage/SchemaEntries.h"

#include "engine/sqlite/salvage/TableShape.h"

#include <QStringDecoder>

#include <sqlite3.h>

namespace velmora::engine::salvage {

namespace {

using Kind = RecordField::Kind;

constexpr size_t fieldCount = 5;

// The encoding in which a text is one of the words for an entry's type; 0 for none.
unsigned char EncodingOfType(Bytes type) {
    constexpr unsigned char encodings[] = {SQLITE_UTF8, SQLITE_UTF16LE, SQLITE_UTF16BE};
    for (const unsigned char encoding : encodings) {
        const QByteArray word = Utf8Text(type, encoding);
        if (word == "table" || word == "index" || word == "view" || word == "trigger") {
            return encoding;
        }
    }
    return 0;
}

// False for a record that is no entry.
bool ReadEntry(const std::vector<RecordField>& values, unsigned char& encoding, SchemaEntry& entry) {
    if (values.size() != fieldCount || values[0].kind != Kind::Text || values[1].kind != Kind::Text ||
        values[2].kind != Kind::Text || (values[3].kind != Kind::Integer && values[3].kind != Kind::Null) ||
        (values[4].kind != Kind::Text && values[4].kind != Kind::Null)) {
        return false;
    }
    encoding = EncodingOfType(values[0].bytes);
    if (encoding == 0) {
        return false;
    }
    entry.type = Utf8Text(values[0].bytes, encoding);
    entry.name = Utf8Text(values[1].bytes, encoding);
    entry.table = Utf8Text(values[2].bytes, encoding);
    entry.root = static_cast<quint32>(values[3].integer);
    entry.sql = Utf8Text(values[4].bytes, encoding);
    return !entry.name.isEmpty();
}

} // namespace

QByteArray Utf8Text(Bytes text, unsigned char encoding) {
    const QByteArrayView bytes(text.data(), static_cast<qsizetype>(text.size()));
    if (encoding == SQLITE_UTF8) {
        return bytes.toByteArray();
    }
    QStringDecoder decoder(encoding == SQLITE_UTF16LE ? QStringDecoder::Utf16LE : QStringDecoder::Utf16BE,
                           QStringConverter::Flag::Stateless);
    const QString decoded = decoder(bytes);
    return decoded.toUtf8();
}

SchemaEntries ReadSchemaEntries(TreeReader& reader) {
    SchemaEntries result;
    std::vector<RecordField> values;
    // A page whose every row is none of the schema's is another table's.
    const TreeReader::TakeLeaf take = [&](const BtreePage& leaf) {
        bool isSchema = leaf.cells.empty();
        for (const Cell& cell : leaf.cells) {
            const std::optional<Bytes> record = reader.Record(cell);
            SchemaEntry entry;
            unsigned char encoding = 0;
            if (record && DecodeRecord(*record, values) && ReadEntry(values, encoding, entry)) {
                result.textEncoding = encoding;
                result.entries.push_back(std::move(entry));
                isSchema = true;
            } else if (isSchema) {
                result.isComplete = false;
            }
        }
        return isSchema;
    };
    constexpr quint32 schemaRoot = 1;
    if (!reader.WalkTable(schemaRoot, take).empty()) {
        result.isComplete = false;
        for (const StrayLeaf& leaf : reader.StrayLeaves()) {
            reader.TakeStray(leaf.page, take);
        }
    }
    return result;
}

} // namespace velmora::engine::salvage
