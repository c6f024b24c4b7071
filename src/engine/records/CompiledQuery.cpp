#include "engine/records/CompiledQuery.h"

#include "engine/records/StoredValue.h"

namespace velmora::engine::records {

namespace {

constexpr int queriesKept = 256;

std::vector<FieldDescription> DescribeFields(const dialect::CompiledStatement& compiled) {
    std::vector<FieldDescription> fields;
    for (const dialect::ResultColumn& column : compiled.columns) {
        fields.push_back({column.name, column.table, column.type});
    }
    return fields;
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
    : compiled(std::move(statement)), fields(DescribeFields(compiled)), names(compiled) {
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
    dialect::TextShape& shape = shape_;
    dialect::ScanShape(text, shape);
    literals.swap(shape.literals);
    const auto* ofShape = shape.recognised ? byShape_.object(shape.key) : nullptr;
    if (ofShape != nullptr && !(*ofShape)->compiled.literalsShapeText) {
        return *ofShape;
    }
    if (const auto* ofText = byText_.object(QString::fromRawData(text.data(), text.size()))) {
        return *ofText;
    }
    const bool hasShape = ofShape != nullptr;
    const Shared query =
        std::make_shared<const CompiledQuery>(dialect::Compile(text, catalog, purpose_, writer_), writer_);
    if (shape.recognised && !hasShape) {
        byShape_.insert(shape.key, new Shared(query));
    }
    if (!shape.recognised || hasShape || query->compiled.literalsShapeText) {
        byText_.insert(text.toString(), new Shared(query));
    }
    return query;
}

void QueryCache::Clear() {
    byShape_.clear();
    byText_.clear();
}

namespace {

const Value& ValueOf(const dialect::Binding& binding, const QueryInput& input) {
    const auto index = static_cast<std::size_t>(binding.index);
    switch (binding.source) {
    case dialect::Binding::Source::Literal:
        return input.literals[index];
    case dialect::Binding::Source::Parameter:
        return input.parameters[index];
    case dialect::Binding::Source::Constant:
        break;
    }
    return binding.constant;
}

// A text in a date-time's place is stored as one where it reads as one.
StoredValue StoredForm(const Value& value, FieldType type) {
    const auto moment = type == FieldType::DateTime ? StoredValue::From(value, type) : std::nullopt;
    return moment ? *moment : StoredValue::From(value, FieldType::Unknown).value_or(StoredValue());
}

} // namespace

void BindValues(StoreStatement& statement, const std::vector<dialect::Binding>& bindings, const QueryInput& input) {
    int place = 0;
    for (const dialect::Binding& binding : bindings) {
        statement.Bind(++place, StoredForm(ValueOf(binding, input), binding.type).AsField());
    }
}

} // namespace velmora::engine::records
