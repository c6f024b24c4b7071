#pragma once

#include "base/services/Printers.h"

#include <QStringList>

#include <array>
#include <functional>
#include <vector>

namespace velmora::print {

enum class Alignment { Left, Center, Right };

// One column of a table of records.
struct RecordColumn {
    enum class Kind { Value, Tick, Blank };
    Kind kind = Kind::Value;
    QString heading;
    // In proportion to the other columns.
    double width = 10;
    Alignment alignment = Alignment::Left;
    bool bold = false;
};

// One piece of a record that is written as text and not as a row of columns.
struct RecordItem {
    enum class Kind { Paragraph, LabelValue, Space, Rule };
    Kind kind = Kind::Paragraph;
    QString label;
    bool bold = false;
    // In proportion to the document's font.
    double size = 1;
    // Of a Space, in points.
    double points = 0;
};

// The left, middle and right text at the top or foot of a page.
using PageStrip = std::function<std::array<QString, 3>(int page, int pages)>;

// What all records of a document have in common. Every text is a value to show, never markup.
struct RecordForm {
    QString title;
    // May be empty.
    QString subtitle;
    // A record is a row of these columns, or else these items below each other.
    std::vector<RecordColumn> columns;
    std::vector<RecordItem> items;
    // By the groups' levels: each group begins a page.
    std::vector<bool> groupsBeginPage;
    // Pages are counted anew from each group that begins a page.
    bool numberPagesPerGroup = false;
    // Lines between the rows.
    bool rowLines = true;
    // Empty functions where pages have none.
    PageStrip pageHeader;
    PageStrip pageFooter;
};

// What stands in one column of a record, or in one of its items.
struct RecordCell {
    QString value;
    // In smaller letters below the value.
    QString below;
    // Of a tick box.
    bool ticked = false;
    // The same as in the row before, and not to be shown again on the same page.
    bool repeated = false;
};

struct Record {
    // Parallel to the form's columns, or to its items.
    std::vector<RecordCell> cells;
    // Lines of what belongs to the record, below it.
    QStringList details;
};

// The pages of a document that does not take them as the printer is set.
struct PageForm {
    Orientation orientation = Orientation::Portrait;
    // At all four edges of the paper.
    double marginInches = 0.5;
    double fontPoints = 9.5;
};

} // namespace velmora::print
