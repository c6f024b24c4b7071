#pragma once

#include "engine/dialect/Compiler.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace velmora::engine::records {

// Finds the fields of a query by name. Letter case does not matter; a name as the schema spells it is found fastest.
class FieldNames {
public:
    explicit FieldNames(const dialect::CompiledStatement& compiled);

    // The position of the field `name`, a plain name or "Table.Field". Throws UnknownItem, AmbiguousField.
    int Find(std::string_view utf8Name) const {
        const int place = FindSpelt(utf8Name);
        return place == none ? FindFolded(utf8Name) : place;
    }
    // The same for a name as the schema spells it; `none` for any other.
    int FindSpelt(std::string_view utf8Name) const {
        std::size_t slot = SlotOf(utf8Name) & (spelt_.size() - 1);
        while (spelt_[slot].place != none && spelt_[slot].name != utf8Name) {
            slot = (slot + 1) & (spelt_.size() - 1);
        }
        return spelt_[slot].place;
    }
    static constexpr int none = -2;

private:
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
    struct Spelling {
        std::string name;
        int place = none;
    };

    // Names of one query differ in these: a set is asked for a dozen names with each row.
    static std::size_t SlotOf(std::string_view text) {
        return text.empty() ? 0
                            : text.size() + size_t{31} * static_cast<unsigned char>(text.front()) +
                                  size_t{37} * static_cast<unsigned char>(text.back()) +
                                  size_t{41} * static_cast<unsigned char>(text[text.size() / 2]);
    }
    int FindFolded(std::string_view utf8Name) const;
    void Spell(std::string name, int place);
    void Add(const QString& name, int index, const QString& origin);
    [[noreturn]] void ThrowUnknown(const QString& name) const;
    [[noreturn]] void ThrowAmbiguous(const QString& name) const;

    std::vector<NamedField> fields_;
    // The names as the schema or the query spells them, only those that stand for one field: a power of two of slots,
    // at least half of them free.
    std::vector<Spelling> spelt_;
    // By the name in folded letters; -1: more than one field has it.
    std::unordered_map<std::string, int> folded_;
};

} // namespace velmora::engine::records
