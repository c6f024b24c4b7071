#include "engine/sqlite/Plan.h"

#include "engine/sqlite/StoredValue.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace velmora::engine::sqlite {

namespace {

constexpr std::size_t plansKept = 256;
constexpr std::size_t recentKept = 4;

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

FieldType KeyType(const dialect::CompiledStatement& compiled, int position) {
    const auto index = static_cast<std::size_t>(position);
    return index < compiled.columns.size() ? compiled.columns[index].type : FieldType::Unknown;
}

QByteArray Quoted(const QString& name) {
    QByteArray quoted = name.toUtf8();
    quoted.replace('"', "\"\"");
    return '"' + quoted + '"';
}

} // namespace

WrittenTable::WrittenTable(const dialect::BaseTable& base) : name(Quoted(base.table)) {
    std::vector<QByteArray> key;
    for (const QString& column : base.keyColumns) {
        key.push_back(Quoted(column));
    }
    if (key.empty()) {
        key.push_back("rowid");
    }
    for (const QByteArray& column : key) {
        keyList += (keyList.isEmpty() ? "" : ", ") + column;
        whereKey += (whereKey.isEmpty() ? " WHERE " : " AND ") + column + " IS ?";
    }
}

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
        tables.emplace_back(base);
    }
    for (const dialect::ResultColumn& column : compiled.columns) {
        columns.push_back(Quoted(column.baseColumn));
    }
    for (const int position : keyPositions) {
        keyTypes.push_back(KeyType(compiled, position));
    }
}

// Takes four letters at a time: the texts are long, and every opening of a recordset hashes one.
std::size_t PlanCache::Hash::operator()(QStringView text) const {
    constexpr quint64 factor = 0x9E3779B97F4A7C15u;
    constexpr qsizetype step = sizeof(quint64) / sizeof(char16_t);
    quint64 hash = static_cast<quint64>(text.size());
    const auto mix = [&hash](quint64 bits) { hash = std::rotl((hash ^ bits) * factor, 29); };
    const char16_t* at = text.utf16();
    const char16_t* const end = at + text.size();
    for (; end - at >= step; at += step) {
        quint64 bits;
        std::memcpy(&bits, at, sizeof bits);
        mix(bits);
    }
    for (; at < end; ++at) {
        mix(*at);
    }
    return static_cast<std::size_t>(hash);
}

PlanCache::PlanCache()
    : reading_{{}, Plans(plansKept), Plans(plansKept)}, updating_{{}, Plans(plansKept), Plans(plansKept)} {}

std::shared_ptr<const Plan> PlanCache::FindRecent(Purposes& plans, QStringView text, dialect::TextShape& shape) {
    const auto found = std::find_if(plans.recent.begin(), plans.recent.end(),
                                    [&](const Recent& recent) { return recent.shape.Match(text, shape.literals); });
    return found == plans.recent.end() ? nullptr : found->plan;
}

std::shared_ptr<const Plan> PlanCache::Find(const Connection& connection, const Catalog& catalog, QStringView text,
                                            dialect::TextShape& shape, dialect::Purpose purpose) {
    Purposes& plans = purpose == dialect::Purpose::Read ? reading_ : updating_;
    if (auto recent = FindRecent(plans, text, shape)) {
        return recent;
    }
    dialect::ScanShape(text, shape);
    const auto* byShape = shape.recognised ? plans.byShape.Find(shape.key) : nullptr;
    if (byShape != nullptr && *byShape != nullptr) {
        if (plans.recent.size() == recentKept) {
            plans.recent.pop_back();
        }
        plans.recent.insert(plans.recent.begin(), {dialect::KnownShape(shape.key), *byShape});
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
        plans->recent.clear();
        plans->byShape.Clear();
        plans->byText.Clear();
    }
}

} // namespace velmora::engine::sqlite
