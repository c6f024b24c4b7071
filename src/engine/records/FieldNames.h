#pragma once

#include "engine/Recordset.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace velmora::engine::records {

// One field of a select list, with the names that qualify it.
struct NamedField {
    QString name;
    // Table name or alias as the text writes it; empty for an expression.
    QString qualifier;
    // The schema's name of the table, where it is another one.
    QString table;
    // Fields with the same origin show the same column, so that naming either means both.
    QString origin;
};

// Finds the fields of a query by name. Letter case does not matter; a name as the schema spells it is found fastest.
class FieldNames {
public:
    explicit FieldNames(std::vector<NamedField> fields);

    // The position of the field `name`, a plain name or "Table.Field". Throws UnknownItem, AmbiguousField.
    int Find(std::string_view utf8Name) const {
        const auto found = spelt_.find(utf8Name);
        return found != spelt_.end() ? found->second : FindFolded(utf8Name);
    }

private:
    struct Hash {
        using is_transparent = void;
        // Names of one query differ in these: a set is asked for a dozen names with each row.
        std::size_t operator()(std::string_view text) const {
            return text.empty() ? 0
                                : text.size() + 31U * static_cast<unsigned char>(text.front()) +
                                      1021U * static_cast<unsigned char>(text.back()) +
                                      8191U * static_cast<unsigned char>(text[text.size() / 2]);
        }
    };
    using Places = std::unordered_map<std::string, int, Hash, std::equal_to<>>;

    int FindFolded(std::string_view utf8Name) const;
    void Add(const QString& name, int index, const QString& origin);
    [[noreturn]] void ThrowUnknown(const QString& name) const;
    [[noreturn]] void ThrowAmbiguous(const QString& name) const;

    std::vector<NamedField> fields_;
    // By the name as the schema or the query spells it; only names that stand for one field.
    Places spelt_;
    // By the name in folded letters; -1: more than one field has it.
    Places folded_;
};

} // namespace velmora::engine::records
