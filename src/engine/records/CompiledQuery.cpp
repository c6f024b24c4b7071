#include "engine/records/CompiledQuery.h"

#include "engine/records/StoredValue.h"

namespace velmora::engine::records {

namespace {

constexpr std::size_t queriesKept = 256;

std::vector<FieldDescription> DescribeFields(const dialect::CompiledStatement& compiled) {
    std::vector<FieldDescription> fields;
    for (const dialect::ResultColumn& column : compiled.columns) {
        fields.push_back({column.name, column.table, column.type});
    }
    return fields;
}

std::vector<NamedField> NameFields(const dialect::CompiledStatement& compiled) {
    std::vector<NamedField> names;
    for (const dialect::ResultColumn& column : compiled.columns) {
        NamedField field{column.name, column.table, {}, {}};
        if (column.base >= 0) {
            const dialect::BaseTable& base = compiled.bases[static_cast<std::size_t>(column.base)];
            field.table = base.table;
            field.origin = QString::number(column.base) + u'.' + column.baseColumn;
        }
        names.push_back(std::move(field));
    }
    return names;
}

} // namespace

WrittenTable::WrittenTable(const dialect::BaseTable& base, const dialect::SqlWriter& writer)
    : name(dialect::Quoted(base.table)) {
    for (const QString& column : base.keyColumns) {
        key.append(dialect::Quoted(column));
    }
    if (key.isEmpty()) {
        key.append(writer.RowIdentity());
    }
}

CompiledQuery::CompiledQuery(dialect::CompiledStatement statement, const dialect::SqlWriter& writer)
    : compiled(std::move(statement)), fields(DescribeFields(compiled)), names(NameFields(compiled)) {
    for (const FieldDescription& field : fields) {
        types.push_back(field.type);
    }
    if (!compiled.updatable) {
        return;
    }
    for (const dialect::BaseTable& base : compiled.bases) {
        keyPositions.insert(keyPositions.end(), base.keyPositions.begin(), base.keyPositions.end());
        tables.emplace_back(base, writer);
    }
    for (const dialect::ResultColumn& column : compiled.columns) {
        columns.push_back(dialect::Quoted(column.baseColumn));
    }
}

QueryCache::QueryCache(dialect::Purpose purpose, const dialect::SqlWriter& writer)
    : purpose_(purpose), writer_(writer), byShape_(queriesKept), byText_(queriesKept) {}

std::shared_ptr<const CompiledQuery> QueryCache::Find(QStringView text, const Catalog& catalog,
                                                      std::vector<Value>& literals) {
    dialect::TextShape shape;
    dialect::ScanShape(text, shape);
    literals = std::move(shape.literals);
    const auto* ofShape = shape.recognised ? byShape_.Find(shape.key) : nullptr;
    if (ofShape != nullptr && !(*ofShape)->compiled.literalsShapeText) {
        return *ofShape;
    }
    if (const auto* ofText = byText_.Find(text)) {
        return *ofText;
    }
    auto query = std::make_shared<const CompiledQuery>(dialect::Compile(text, catalog, purpose_, writer_), writer_);
    if (shape.recognised && ofShape == nullptr) {
        byShape_.Insert(shape.key, query);
    }
    if (!shape.recognised || ofShape != nullptr || query->compiled.literalsShapeText) {
        byText_.Insert(text.toString(), query);
    }
    return query;
}

void QueryCache::Clear() {
    byShape_.Clear();
    byText_.Clear();
}

} // namespace velmora::engine::records
