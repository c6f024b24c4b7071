#pragma once

#include "engine/dialect/Compiler.h"
#include "engine/sqlite/FieldNames.h"
#include "engine/sqlite/LruCache.h"
#include "engine/sqlite/Statement.h"

#include <memory>
#include <vector>

namespace velmora::engine::sqlite {

// The store's texts for writing to one base table: quoted names.
struct WrittenTable {
    explicit WrittenTable(const dialect::BaseTable& base);

    QByteArray name;
    QByteArray keyList;  // the key's columns: "LastName", "FirstName"
    QByteArray whereKey; // a condition with a place for each of them:  WHERE "LastName" IS ? AND ...
};

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
    std::vector<WrittenTable> tables; // one for each base
    std::vector<QByteArray> columns;  // the quoted column of each field
    // The updates made so far, by the fields that they assign.
    struct FieldUpdate {
        std::vector<int> fields;
        std::shared_ptr<PreparedText> text;
    };
    mutable std::vector<FieldUpdate> updates;
};

// Plans by the text that they were compiled from: one plan serves all texts that differ only in their literals.
class PlanCache {
public:
    PlanCache();

    // Compiles the text when no plan is known for it. The text's literals are then in `shape`, whose storage is
    // reused.
    std::shared_ptr<const Plan> Find(const Connection& connection, const Catalog& catalog, QStringView text,
                                     dialect::TextShape& shape, dialect::Purpose purpose);
    void Clear();

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(QStringView text) const;
    };
    using Plans = LruCache<QString, std::shared_ptr<const Plan>, Hash>;
    // A program that looks something up again and again does so with one text or two.
    struct Recent {
        dialect::KnownShape shape;
        std::shared_ptr<const Plan> plan;
    };
    struct Purposes {
        std::vector<Recent> recent; // the last used first
        Plans byShape;              // null: literals shape the statement, so that each text has its own
        Plans byText;
    };

    static std::shared_ptr<const Plan> FindRecent(Purposes& plans, QStringView text, dialect::TextShape& shape);

    Purposes reading_;
    Purposes updating_;
};

} // namespace velmora::engine::sqlite
