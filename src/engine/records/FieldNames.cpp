#include "engine/records/FieldNames.h"

#include "engine/EngineError.h"

#include <QStringList>

#include <algorithm>
#include <bit>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::records {

namespace {

constexpr int ambiguous = -1;

std::string Folded(const QString& name) {
    return name.toCaseFolded().toStdString();
}

QString FullName(const auto& field) {
    return field.qualifier.isEmpty() ? field.name : field.qualifier + u'.' + field.name;
}

// Letters to insert, drop or replace to turn one name into the other.
qsizetype EditDistance(QStringView a, QStringView b) {
    std::vector<qsizetype> row(static_cast<std::size_t>(b.size()) + 1);
    for (std::size_t j = 0; j < row.size(); ++j) {
        row[j] = static_cast<qsizetype>(j);
    }
    for (qsizetype i = 0; i < a.size(); ++i) {
        qsizetype diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 1; j < row.size(); ++j) {
            const qsizetype replaced = diagonal + (a[i] == b[static_cast<qsizetype>(j) - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row.back();
}

bool IsNear(const QString& wanted, const QString& name) {
    constexpr qsizetype fewLetters = 2;
    constexpr qsizetype longEnough = 4;
    const QString a = wanted.toCaseFolded();
    const QString b = name.toCaseFolded();
    if (a.size() >= longEnough && b.size() >= longEnough && (a.contains(b) || b.contains(a))) {
        return true;
    }
    return std::abs(a.size() - b.size()) <= fewLetters && EditDistance(a, b) <= fewLetters;
}

} // namespace

FieldNames::FieldNames(const dialect::CompiledStatement& compiled) {
    for (const dialect::ResultColumn& column : compiled.columns) {
        fields_.push_back({column.name, column.table, {}, {}});
        if (column.base >= 0) {
            fields_.back().table = compiled.bases[static_cast<std::size_t>(column.base)].table;
            fields_.back().origin = QString::number(column.base) + u'.' + column.baseColumn;
        }
    }
    std::vector<QString> spellings;
    std::size_t named = 0;
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        const NamedField& field = fields_[i];
        const int index = static_cast<int>(i);
        spellings.push_back(field.name);
        for (const QString& qualifier : {field.qualifier, field.table}) {
            if (!qualifier.isEmpty()) {
                spellings.push_back(qualifier + u'.' + field.name);
            }
        }
        for (; named < spellings.size(); ++named) {
            Add(spellings[named], index, field.origin);
        }
    }
    spelt_.resize(std::bit_ceil(2 * spellings.size() + 1));
    for (const QString& spelling : spellings) {
        if (const int place = folded_.at(Folded(spelling)); place != ambiguous) {
            Spell(spelling.toStdString(), place);
        }
    }
}

void FieldNames::Spell(std::string name, int place) {
    std::size_t slot = SlotOf(name) & (spelt_.size() - 1);
    while (spelt_[slot].place != none && spelt_[slot].name != name) {
        slot = (slot + 1) & (spelt_.size() - 1);
    }
    spelt_[slot] = {std::move(name), place};
}

void FieldNames::Add(const QString& name, int index, const QString& origin) {
    const auto [place, isNew] = folded_.try_emplace(Folded(name), index);
    if (isNew || place->second == index || place->second == ambiguous) {
        return;
    }
    const QString& known = fields_[static_cast<std::size_t>(place->second)].origin;
    if (origin.isEmpty() || known != origin) {
        place->second = ambiguous;
    }
}

int FieldNames::FindFolded(std::string_view utf8Name) const {
    const QString name = QString::fromUtf8(utf8Name.data(), static_cast<qsizetype>(utf8Name.size()));
    const auto place = folded_.find(Folded(name));
    if (place == folded_.end()) {
        ThrowUnknown(name);
    }
    if (place->second == ambiguous) {
        ThrowAmbiguous(name);
    }
    return place->second;
}

void FieldNames::ThrowUnknown(const QString& name) const {
    QStringList near;
    for (const NamedField& field : fields_) {
        if (IsNear(name, field.name) || IsNear(name, FullName(field))) {
            near.append(FullName(field));
        }
    }
    near.removeDuplicates();
    const QString hint =
        near.isEmpty() ? u"The query has no such field."_s : u"The query has: %1."_s.arg(near.join(u", "_s));
    throw EngineError(EngineErrorNumber::UnknownItem, u"There is no field named \"%1\". %2"_s.arg(name, hint));
}

void FieldNames::ThrowAmbiguous(const QString& name) const {
    QStringList candidates;
    for (const NamedField& field : fields_) {
        if (field.name.compare(name, Qt::CaseInsensitive) == 0 ||
            FullName(field).compare(name, Qt::CaseInsensitive) == 0) {
            candidates.append(FullName(field));
        }
    }
    throw EngineError(EngineErrorNumber::AmbiguousField,
                      u"The name \"%1\" stands for more than one field: %2. Put the table's name in front."_s.arg(
                          name, candidates.join(u", "_s)));
}

} // namespace velmora::engine::records
