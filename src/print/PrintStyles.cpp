#include "print/PrintStyles.h"

#include "engine/Database.h"

#include <map>

namespace velmora::print {

namespace {

// A caption, and which of its rows is meant.
using RowKey = std::pair<QString, int>;

struct KeyedRow {
    RowKey key;
    qint16 style = 0;
};

std::vector<KeyedRow> Keyed(const StyleRows& rows) {
    std::map<QString, int> seen;
    std::vector<KeyedRow> keyed;
    for (const PrintAttribute& row : rows) {
        keyed.push_back({{row.caption, seen[row.caption]++}, row.style});
    }
    return keyed;
}

std::map<RowKey, qint16> ByKey(const std::vector<KeyedRow>& rows) {
    std::map<RowKey, qint16> result;
    for (const KeyedRow& row : rows) {
        result.emplace(row.key, row.style);
    }
    return result;
}

std::optional<qint16> Find(const std::map<RowKey, qint16>& rows, const RowKey& key) {
    const auto found = rows.find(key);
    return found == rows.end() ? std::nullopt : std::optional(found->second);
}

} // namespace

StyleRows ReadPrintAttributes(engine::Database& database) {
    StyleRows attributes;
    const auto rows = database.OpenRecordset(u"PrintAttributes");
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        attributes.push_back(
            {(*rows)["Caption"].ToText(), static_cast<qint16>((*rows)["PrintAttributes"].ToInteger())});
    }
    return attributes;
}

std::optional<StyleRows> ReplacePrintAttributes(engine::Database& database, const StyleRows& expected,
                                                const StyleRows& rows) {
    engine::Transaction transaction(database);
    StyleRows stored = ReadPrintAttributes(database);
    if (stored != expected) {
        return stored;
    }
    database.Execute(u"DELETE FROM PrintAttributes");
    const auto insert = database.CreateQueryDef(
        QStringLiteral("PARAMETERS NewCaption Text, NewStyle Long; "
                       "INSERT INTO PrintAttributes (Caption, PrintAttributes) VALUES (NewCaption, NewStyle)"));
    for (const PrintAttribute& row : rows) {
        insert->SetParameter(u"NewCaption", row.caption.isEmpty() ? Value() : Value(row.caption));
        insert->SetParameter(u"NewStyle", Value(qint64{row.style}));
        insert->Execute();
    }
    transaction.Commit();
    return std::nullopt;
}

void AttributeTable::Load(const AttributeSource& source) {
    styles_.clear();
    try {
        for (const PrintAttribute& attribute : source()) {
            if (!styles_.contains(attribute.caption)) {
                styles_.insert(attribute.caption, attribute.style);
            }
        }
    } catch (const std::exception&) {
        // Styles only adorn a report; without the table it is printed plain.
        styles_.clear();
    }
}

MergedStyles MergeStyles(const StyleRows& base, const StyleRows& mine, const StyleRows& theirs) {
    const auto baseRows = ByKey(Keyed(base));
    const std::vector<KeyedRow> myRows = Keyed(mine);
    const std::vector<KeyedRow> theirRows = Keyed(theirs);
    const auto mineByKey = ByKey(myRows);
    const auto theirsByKey = ByKey(theirRows);
    MergedStyles merged;
    const auto take = [&](const RowKey& key) {
        const auto was = Find(baseRows, key);
        const auto my = Find(mineByKey, key);
        const auto their = Find(theirsByKey, key);
        if (my != was && their != was && my != their) {
            merged.conflicts.append(key.first);
        }
        if (const auto kept = my == was ? their : my) {
            merged.rows.push_back({key.first, *kept});
        }
    };
    for (const KeyedRow& row : theirRows) {
        take(row.key);
    }
    for (const KeyedRow& row : myRows) {
        if (!theirsByKey.contains(row.key)) {
            take(row.key);
        }
    }
    merged.conflicts.removeDuplicates();
    return merged;
}

} // namespace velmora::print
