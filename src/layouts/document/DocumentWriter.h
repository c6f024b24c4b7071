#pragma once

#include "layouts/file/Layout.h"

#include <QStringList>

namespace velmora::layouts {

// One column of a record, or one item of its body, filled in.
struct FilledCell {
    QString value;
    QString below;
    // Of a tick box.
    bool ticked = false;
    // The same as in the row before, and not to be shown again on the same page.
    bool repeated = false;
};

// One record, filled in.
struct FilledRecord {
    // Parallel to the layout's columns, or to the items of its body.
    std::vector<FilledCell> cells;
    // The lines of the records below it.
    QStringList details;
};

// Writes the records of one layout in their order as a document of one kind. Every text is a value to show, never
// markup.
class DocumentWriter {
public:
    virtual ~DocumentWriter() = default;
    DocumentWriter(const DocumentWriter&) = delete;
    DocumentWriter& operator=(const DocumentWriter&) = delete;

    // Called once, first. `specials` has what titles can name.
    virtual void Begin(const SpecialTexts& specials) = 0;
    // `level` is the group's place in the layout; groups below it have ended.
    virtual void BeginGroup(size_t level, const QString& heading) = 0;
    virtual void Record(const FilledRecord& record) = 0;
    // `footer` may be empty.
    virtual void EndGroup(size_t level, const QString& footer) = 0;
    // Called once, last: `closing` stands below all records, and may be empty.
    virtual void Finish(const QString& closing) = 0;

protected:
    DocumentWriter() = default;
};

} // namespace velmora::layouts
