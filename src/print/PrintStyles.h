#pragma once

#include <QHash>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

namespace velmora::engine {
class Database;
}

namespace velmora::print {

// Style bits of a label and value line on pages; they combine.
enum StyleBit : qint16 { Bold = 1, Italic = 2, Underlined = 4, GreyBox = 8 };

// One row of the table of print attributes: the label it is for, and its style bits.
struct PrintAttribute {
    QString caption;
    qint16 style = 0;
    friend bool operator==(const PrintAttribute&, const PrintAttribute&) = default;
};

using StyleRows = std::vector<PrintAttribute>;
// Reads the rows in table order; may throw.
using AttributeSource = std::function<StyleRows()>;

// The rows of the table "PrintAttributes". A missing caption is the empty one; bits beyond 16 are cut. Throws Error.
StyleRows ReadPrintAttributes(engine::Database& database);
// Puts `rows` in place of the stored ones if those are still `expected`. Returns none when it did, else what is stored
// by now, and changes nothing. Throws Error, with nothing changed.
std::optional<StyleRows> ReplacePrintAttributes(engine::Database& database, const StyleRows& expected,
                                                const StyleRows& rows);

// Styles by caption.
class AttributeTable {
public:
    // Takes the place of what was loaded before. A source that fails or has no rows leaves the table empty.
    void Load(const AttributeSource& source);
    bool HaveAttributeTable() const { return !styles_.isEmpty(); }
    // The style of the first row with exactly that caption, letter case included; 0 without one.
    qint16 Lookup(const QString& caption) const { return styles_.value(caption, 0); }

private:
    QHash<QString, qint16> styles_;
};

// What became of the rows after two people changed them.
struct MergedStyles {
    StyleRows rows;
    // Captions that both changed, each in another way; `rows` has mine.
    QStringList conflicts;
};

// Both people's changes to `base` put together: their rows in their order with my changes in place, my new rows behind.
// Rows belong together by caption, the second of a caption with the second, and so on.
MergedStyles MergeStyles(const StyleRows& base, const StyleRows& mine, const StyleRows& theirs);

} // namespace velmora::print
