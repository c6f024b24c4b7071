#pragma once

#include "engine/Database.h"
#include "print/PrintAttributes.h"

#include <QStringList>

#include <optional>

namespace velmora::print {

using StyleRows = std::vector<PrintAttribute>;

// What became of the rows after two people changed them.
struct MergedStyles {
    StyleRows rows;
    // Captions that both changed, each in another way; `rows` has mine.
    QStringList conflicts;
};

// Both people's changes to `base` put together: their rows in their order with my changes in place, my new rows behind.
// Rows belong together by caption, the second of a caption with the second, and so on.
MergedStyles MergeStyles(const StyleRows& base, const StyleRows& mine, const StyleRows& theirs);

// Where the print styles are kept. Failures are thrown as Error.
class StyleStore {
public:
    virtual ~StyleStore() = default;
    virtual StyleRows Read() = 0;
    // Puts `rows` in place of the stored ones if those are still `expected`. Returns none when it did, else what is
    // stored by now, and changes nothing.
    virtual std::optional<StyleRows> Replace(const StyleRows& expected, const StyleRows& rows) = 0;
};

// The table "PrintAttributes" of a database, which outlives the store.
class DatabaseStyles : public StyleStore {
public:
    explicit DatabaseStyles(engine::Database& database) : database_(database) {}
    StyleRows Read() override;
    std::optional<StyleRows> Replace(const StyleRows& expected, const StyleRows& rows) override;

private:
    engine::Database& database_;
};

} // namespace velmora::print
