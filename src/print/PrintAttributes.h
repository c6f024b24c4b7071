#pragma once

#include <QHash>
#include <QString>

#include <functional>
#include <vector>

namespace velmora::print {

// Style bits of a label and value line on pages; they combine.
enum StyleBit : qint16 { Bold = 1, Italic = 2, Underlined = 4, GreyBox = 8 };

// One row of the table of print attributes: the label it is for, and its style bits.
struct PrintAttribute {
    QString caption;
    qint16 style = 0;
    friend bool operator==(const PrintAttribute&, const PrintAttribute&) = default;
};

// Reads the rows in table order; may throw.
using AttributeSource = std::function<std::vector<PrintAttribute>()>;

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

} // namespace velmora::print
