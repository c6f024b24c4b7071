#pragma once

#include "layouts/Formula.h"
#include "layouts/Template.h"
#include "print/RecordForm.h"

#include <optional>
#include <vector>

namespace velmora::layouts {

// A report layout as its file describes it (docs/layouts.md has the meaning of every key). Fields are places in a
// FieldList.

struct LayoutTable {
    QString table;
    QString alias;
    // Rows of the tables before it stay without a partner of this one.
    bool optional = false;
    // The first table has none.
    Formula on;
};

struct SortKey {
    FieldName field;
    bool descending = false;
};

// What of a field makes a group: its value, its day, the day that it closes (exactly midnight belongs to the day
// before), its first letter.
enum class GroupUnit { Value, Day, ClosingDay, Initial };

struct LayoutGroup {
    FieldName field;
    GroupUnit unit = GroupUnit::Value;
    Template heading;
    // The heading of records whose field is empty; the ordinary one without it.
    Template none;
    Template footer;
    bool newPage = false;
};

using print::Alignment;

struct LayoutColumn : print::RecordColumn {
    Template value;
    Template below;
    // Of a tick box, the yes/no field that ticks it.
    int tick = 0;
    // False: an equal value in the next row is left out.
    bool repeat = true;
};

struct BodyItem : print::RecordItem {
    Template text;
};

// Records of another table below each record.
struct LayoutDetails {
    QString table;
    // The table's field that equals the record's field `parent`.
    FieldName key;
    int parent = 0;
    Formula select;
    std::vector<SortKey> sort;
    Template text;
    FieldList fields;
};

// A line at the top or foot of every page.
struct PageStrip {
    Template left;
    Template center;
    Template right;
    bool IsEmpty() const { return left.IsEmpty() && center.IsEmpty() && right.IsEmpty(); }
};

struct Layout {
    // The file's name without its folder.
    QString file;
    Template title;
    Template subtitle;
    Template total;
    // What stands in place of the records where there are none.
    Template empty;
    print::PageForm pages;
    // Pages are counted anew from each group that begins a page.
    bool numberPagesPerGroup = false;
    // Lines between the rows.
    bool rowLines = true;

    FieldScope scope;
    std::vector<LayoutTable> tables;
    Formula select;
    std::vector<SortKey> sort;
    std::vector<LayoutGroup> groups;
    std::vector<LayoutColumn> columns;
    std::vector<BodyItem> body;
    std::optional<LayoutDetails> details;
    PageStrip pageHeader;
    PageStrip pageFooter;
    FieldList fields;
};

// Reads a layout file's bytes. `file` is its name for messages. The layout's scope refers to the catalog's tables.
// Throws Error naming file, line and key for whatever is not as docs/layouts.md has it.
Layout ReadLayout(const QByteArray& bytes, const QString& file, const engine::Catalog& catalog);

// Reads the file at a native path. Throws Error, also when there is no such file.
Layout ReadLayoutFile(const QString& path, const engine::Catalog& catalog);

} // namespace velmora::layouts
