#include "engine/sqlite/Plan.h"

#include "engine/sqlite/StoredValue.h"

namespace velmora::engine::sqlite {

namespace {

constexpr std::size_t plansKept = 256;

std::vector<FieldDescription> DescribeFields(const dialect::CompiledStatement& compiled) {
    std::vector<FieldDescription> fields;
    for (const dialect::ResultColumn& column : compiled.columns) {
        fields.push_back({column.name, column.table, FieldTypeOf(column.type)});
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

FieldType KeyType(const dialect::CompiledStatement& compiled, int position) {
    const auto index = static_cast<std::size_t>(position);
    return index < compiled.columns.size() ? FieldTypeOf(compiled.columns[index].type) : FieldType::Unknown;
}

} // namespace

Plan::Plan(const Connection& connection, dialect::CompiledStatement text)
    : compiled(std::move(text)), fields(DescribeFields(compiled)), names(NameFields(compiled)),
      statement(std::make_shared<PreparedText>(connection, compiled.sql)) {
    for (const FieldDescription& field : fields) {
        types.push_back(field.type);
    }
    if (!compiled.updatable) {
        return;
    }
    reread = std::make_shared<PreparedText>(connection, compiled.rereadSql);
    for (const dialect::BaseTable& base : compiled.bases) {
        keyPositions.insert(keyPositions.end(), base.keyPositions.begin(), base.keyPositions.end());
    }
    for (const int position : keyPositions) {
        keyTypes.push_back(KeyType(compiled, position));
    }
}

PlanCache::PlanCache() : reading_{Plans(plansKept), Plans(plansKept)}, updating_{Plans(plansKept), Plans(plansKept)} {}

std::shared_ptr<const Plan> PlanCache::Find(const Connection& connection, const dialect::Catalog& catalog,
                                            QStringView text, const dialect::TextShape& shape,
                                            dialect::Purpose purpose) {
    Purposes& plans = purpose == dialect::Purpose::Read ? reading_ : updating_;
    const auto* byShape = shape.recognised ? plans.byShape.Find(shape.key) : nullptr;
    if (byShape != nullptr && *byShape != nullptr) {
        return *byShape;
    }
    if (const auto* byText = plans.byText.Find(text)) {
        return *byText;
    }
    auto plan = std::make_shared<const Plan>(connection, dialect::Compile(text, catalog, purpose));
    if (!shape.recognised || plan->compiled.literalsShapeText) {
        plans.byText.Insert(text.toString(), plan);
        if (shape.recognised && byShape == nullptr) {
            plans.byShape.Insert(shape.key, nullptr);
        }
    } else if (byShape == nullptr) {
        plans.byShape.Insert(shape.key, plan);
    } else {
        // Literals shape some texts of this shape but not this one.
        plans.byText.Insert(text.toString(), plan);
    }
    return plan;
}

void PlanCache::Clear() {
    for (Purposes* plans : {&reading_, &updating_}) {
        plans->byShape.Clear();
        plans->byText.Clear();
    }
}

} // namespace velmora::engine::sqlite
