#pragma once

#include "engine/dialect/Compiler.h"
#include "engine/sqlite/FieldNames.h"
#include "engine/sqlite/LruCache.h"
#include "engine/sqlite/Statement.h"

#include <memory>
#include <vector>

namespace velmora::engine::sqlite {

// A compiled text with its prepared statements and all that its recordsets share.
struct Plan {
    Plan(const Connection& connection, dialect::CompiledStatement text);

    bool IsAction() const { return compiled.kind != dialect::StatementKind::Select; }

    dialect::CompiledStatement compiled;
    std::vector<FieldDescription> fields;
    std::vector<FieldType> types;
    FieldNames names;
    std::shared_ptr<PreparedText> statement;

    // The rest for updatable sets only. The keys of one row are those of its first base table, then the second's, ...
    std::shared_ptr<PreparedText> reread;
    std::vector<int> keyPositions;
    std::vector<FieldType> keyTypes;
};

// Plans by the text that they were compiled from: one plan serves all texts that differ only in their literals.
class PlanCache {
public:
    PlanCache();

    // Compiles the text when no plan is known for it. `shape` must be the text's.
    std::shared_ptr<const Plan> Find(const Connection& connection, const dialect::Catalog& catalog, QStringView text,
                                     const dialect::TextShape& shape, dialect::Purpose purpose);
    void Clear();

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(QStringView text) const { return qHash(text); }
    };
    using Plans = LruCache<QString, std::shared_ptr<const Plan>, Hash>;
    struct Purposes {
        Plans byShape; // null: literals shape the statement, so that each text has its own
        Plans byText;
    };

    Purposes reading_;
    Purposes updating_;
};

} // namespace velmora::engine::sqlite
