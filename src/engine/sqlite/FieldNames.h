#pragma once

#include "engine/Recordset.h"

#include <array>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace velmora::engine::sqlite {

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

// Finds the fields of a query by name. Letter case does not matter.
class FieldNames {
public:
    explicit FieldNames(const std::vector<NamedField>& fields);

    // The position of the field `name`, a plain name or "Table.Field". Throws UnknownItem, AmbiguousField.
    int Find(std::string_view utf8Name) const {
        // A caller in a loop passes the same literals again: their address leads straight to the answer. The letters
        // are compared all the same, for the storage may hold another name by now.
        const Recent& recent = recent_[Slot(utf8Name.data())];
        if (recent.address == utf8Name.data() && recent.spelling->first == utf8Name) {
            return recent.spelling->second;
        }
        return FindSpelling(utf8Name);
    }

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
    };
    using Places = std::unordered_map<std::string, int, Hash, std::equal_to<>>;
    struct Recent {
        const char* address = nullptr;
        const Places::value_type* spelling = nullptr;
    };
    static constexpr std::size_t recentBits = 7;

    static std::size_t Slot(const char* address) {
        return static_cast<std::size_t>((reinterpret_cast<quint64>(address) * 0x9E3779B97F4A7C15u) >>
                                        (64 - recentBits));
    }
    int FindSpelling(std::string_view utf8Name) const;
    int FindFolded(std::string_view utf8Name) const;
    void Add(const QString& name, int index, const QString& origin);
    [[noreturn]] void ThrowUnknown(const QString& name) const;
    [[noreturn]] void ThrowAmbiguous(const QString& name) const;

    // By the name in folded letters; -1: more than one field has it.
    Places folded_;
    std::vector<NamedField> fields_;
    // The spellings that callers use, as they use them.
    mutable Places spellings_;
    mutable std::array<Recent, std::size_t{1} << recentBits> recent_{};
};

} // namespace velmora::engine::sqlite
