#pragma once

#include "engine/dialect/Compiler.h"
#include "engine/dialect/SqlWriter.h"
#include "engine/records/FieldNames.h"
#include "engine/records/StoreConnection.h"

#include <QByteArrayList>
#include <QCache>
#include <QString>

#include <memory>
#include <vector>

namespace velmora::engine::records {

// The store's texts for writing to one base table: quoted names.
struct WrittenTable {
    WrittenTable(const dialect::BaseTable& base, const dialect::SqlWriter& writer);

    QByteArray name;
    QByteArrayList key;
};

// A compiled text with what its recordsets need to know of it. Never changes; shared by all sets on texts of its shape.
struct CompiledQuery {
    CompiledQuery(dialect::CompiledStatement statement, const dialect::SqlWriter& writer);

    bool IsAction() const { return compiled.kind != dialect::StatementKind::Select; }

    dialect::CompiledStatement compiled;
    std::vector<FieldDescription> fields;
    std::vector<FieldType> types;
    FieldNames names;

    // The rest for updatable sets only. The keys of one row are those of its first base table, then the second's, ...
    std::vector<int> keyPositions;
    std::vector<WrittenTable> tables; // one for each base
    std::vector<QByteArray> columns;  // the quoted column of each field
};

// Compiled queries by the text that they were compiled from. Texts that differ only in their literals share one.
class QueryCache {
public:
    QueryCache(dialect::Purpose purpose, const dialect::SqlWriter& writer);

    // Compiles the text when no query is known for it. `literals` are then those of the text.
    std::shared_ptr<const CompiledQuery> Find(QStringView text, const Catalog& catalog, std::vector<Value>& literals);
    void Clear();

private:
    using Shared = std::shared_ptr<const CompiledQuery>;
    using Queries = QCache<QString, Shared>;

    dialect::Purpose purpose_;
    const dialect::SqlWriter& writer_;
    // The query that serves every text of a shape; of a shape whose literals are part of the statement, any one.
    Queries byShape_;
    // The queries of such shapes, and of texts without a shape, that serve one text each.
    Queries byText_;
    // Of the text that was looked for last; kept for its storage.
    dialect::TextShape shape_;
};

// A text as its caller gave it, with all that is needed to run it again.
struct QueryInput {
    QString text;
    std::shared_ptr<const CompiledQuery> query;
    std::vector<Value> literals;   // those of the text
    std::vector<Value> parameters; // by their position in the query
};

// Binds the places 1, 2, ... of a statement of the input's query.
void BindValues(StoreStatement& statement, const std::vector<dialect::Binding>& bindings, const QueryInput& input);

} // namespace velmora::engine::records
