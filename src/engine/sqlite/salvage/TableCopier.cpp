#include "engine/sqlite/salvage/TableCopier.h"

#include "engine/sqlite/Statement.h"
#include "engine/sqlite/salvage/SchemaEntries.h"

#include <QByteArrayList>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::salvage {

namespace {

using Kind = RecordField::Kind;

// The name of the row number in the store's SQL: one that no column has taken.
QByteArray RowNumberName(const TableShape& shape) {
    if (!shape.hasRowNumbers) {
        return {};
    }
    if (shape.rowNumberColumn >= 0) {
        return sqlite::Quoted(shape.stored[static_cast<size_t>(shape.rowNumberColumn)].name);
    }
    for (const char* name : {"rowid", "_rowid_", "oid"}) {
        const auto hasName = [&](const ColumnShape& column) {
            return column.name.compare(name, Qt::CaseInsensitive) == 0;
        };
        if (std::none_of(shape.stored.begin(), shape.stored.end(), hasName)) {
            return name;
        }
    }
    return {};
}

} // namespace

void RowList::Add(const QString& row) {
    constexpr int mostExamples = 20;
    ++count;
    if (examples.size() < mostExamples) {
        examples.append(row);
    }
}

QString RowList::ToText() const {
    const QString rows = count == 1 ? u"1 row ("_s : QString::number(count) + u" rows ("_s;
    return rows + examples.join(u"; "_s) + (count > examples.size() ? u"; ...)"_s : u")"_s);
}

TableCopier::TableCopier(sqlite3* target, TableShape shape, unsigned char encoding)
    : target_(target), shape_(std::move(shape)), encoding_(encoding), rowNumberName_(RowNumberName(shape_)) {
    const std::optional<TableShape> made = ReadTableShape(target, shape_.name);
    for (int index = 0; index < static_cast<int>(shape_.stored.size()); ++index) {
        const QByteArray& name = shape_.stored[static_cast<size_t>(index)].name;
        const auto takesName = [&](const ColumnShape& column) {
            return !column.isGenerated && column.name.compare(name, Qt::CaseInsensitive) == 0;
        };
        isTaken_.push_back(index != shape_.rowNumberColumn && made &&
                           std::any_of(made->stored.begin(), made->stored.end(), takesName));
    }
}

bool TableCopier::Decode(TreeReader& reader, const Cell& cell) {
    const std::optional<Bytes> record = reader.Record(cell);
    if (!record || !DecodeRecord(*record, values_) || values_.size() > shape_.stored.size()) {
        return false;
    }
    // A page in the middle of a long text carries no structure by which damage shows; the text itself does.
    return cell.overflow == 0 || !HasBrokenText(values_);
}

bool TableCopier::TakeLeaf(TreeReader& reader, const BtreePage& leaf) {
    const bool isOurs = leaf.cells.empty() || std::any_of(leaf.cells.begin(), leaf.cells.end(), [&](const Cell& cell) {
                            return Decode(reader, cell) && shape_.Allows(values_);
                        });
    if (!isOurs) {
        return false;
    }
    for (const Cell& cell : leaf.cells) {
        if (Decode(reader, cell)) {
            TakeRow(cell.key, values_);
        } else {
            unreadable_.insert(cell.key);
        }
    }
    return true;
}

bool TableCopier::FitsLeaf(TreeReader& reader, const BtreePage& leaf) {
    bool anyFits = false;
    for (const Cell& cell : leaf.cells) {
        const bool isReadable = Decode(reader, cell);
        if (isReadable ? !shape_.Fits(values_) : cell.overflow == 0) {
            return false;
        }
        anyFits = anyFits || isReadable;
    }
    return anyFits;
}

void TableCopier::TakeEntry(TreeReader& reader, const Cell& cell) {
    if (Decode(reader, cell)) {
        TakeRow(0, values_);
    } else {
        ++unreadableEntries_;
    }
}

bool TableCopier::TakeRow(qint64 key, std::span<const RecordField> values) {
    sqlite::Statement& insert = InsertFor(values.size());
    int number = 0;
    if (!rowNumberName_.isEmpty()) {
        sqlite3_bind_int64(insert.Handle(), ++number, key);
    }
    for (size_t index = 0; index < values.size(); ++index) {
        if (isTaken_[index]) {
            Bind(insert.Handle(), ++number, values[index]);
        }
    }
    sqlite3_step(insert.Handle());
    const int code = sqlite3_reset(insert.Handle());
    if (code == SQLITE_OK) {
        ++saved_;
        if (HasBrokenText(values)) {
            doubtful_.Add(NameOf(key, values));
        }
        return true;
    }
    if (code == SQLITE_CONSTRAINT_UNIQUE || code == SQLITE_CONSTRAINT_PRIMARYKEY || code == SQLITE_CONSTRAINT_ROWID) {
        duplicates_.Add(NameOf(key, values));
    } else if ((code & 0xff) == SQLITE_CONSTRAINT || (code & 0xff) == SQLITE_MISMATCH) {
        refused_.Add(NameOf(key, values));
    } else {
        sqlite::ThrowStoreError(target_, code, {});
    }
    return false;
}

sqlite::Statement& TableCopier::InsertFor(size_t fields) {
    const auto known = inserts_.find(fields);
    if (known != inserts_.end()) {
        return known->second;
    }
    QByteArrayList names;
    if (!rowNumberName_.isEmpty()) {
        names.append(rowNumberName_);
    }
    for (size_t index = 0; index < fields; ++index) {
        if (isTaken_[index]) {
            names.append(sqlite::Quoted(shape_.stored[index].name));
        }
    }
    const QByteArrayList marks(names.size(), "?");
    const QByteArray columns = names.isEmpty() ? QByteArray(" DEFAULT VALUES")
                                               : " (" + names.join(", ") + ") VALUES (" + marks.join(", ") + ")";
    return inserts_.try_emplace(fields, target_, "INSERT INTO " + sqlite::Quoted(shape_.name) + columns).first->second;
}

void TableCopier::Bind(sqlite3_stmt* insert, int number, const RecordField& value) const {
    const auto* const bytes = reinterpret_cast<const char*>(value.bytes.data());
    switch (value.kind) {
    case Kind::Null:
        sqlite3_bind_null(insert, number);
        break;
    case Kind::Integer:
        sqlite3_bind_int64(insert, number, value.integer);
        break;
    case Kind::Real:
        sqlite3_bind_double(insert, number, value.real);
        break;
    case Kind::Text:
        sqlite3_bind_text64(insert, number, bytes, value.bytes.size(), SQLITE_STATIC, encoding_);
        break;
    case Kind::Blob:
        sqlite3_bind_blob64(insert, number, bytes, value.bytes.size(), SQLITE_STATIC);
        break;
    }
}

bool TableCopier::HasBrokenText(std::span<const RecordField> values) const {
    if (encoding_ != SQLITE_UTF8) {
        return false;
    }
    return std::any_of(values.begin(), values.end(), [](const RecordField& value) {
        const QByteArrayView text(value.bytes.data(), static_cast<qsizetype>(value.bytes.size()));
        return value.kind == Kind::Text && (text.contains('\0') || !text.isValidUtf8());
    });
}

bool TableCopier::HasRow(qint64 key) {
    if (!find_) {
        find_.emplace(target_, "SELECT 1 FROM " + sqlite::Quoted(shape_.name) + " WHERE " + rowNumberName_ + " = ?1");
    }
    find_->BindInteger(1, key);
    const bool found = find_->Step();
    find_->Reset();
    return found;
}

QString TableCopier::NameOf(qint64 key, std::span<const RecordField> values) const {
    QStringList parts;
    for (const int column : shape_.key) {
        const auto index = static_cast<size_t>(column);
        QString part = QString::fromUtf8(shape_.stored[index].name) + u' ';
        if (column == shape_.rowNumberColumn) {
            part += QString::number(key);
        } else if (index < values.size() && values[index].kind == Kind::Integer) {
            part += QString::number(values[index].integer);
        } else if (index < values.size() && values[index].kind == Kind::Text) {
            part += QString::fromUtf8(Utf8Text(values[index].bytes, encoding_));
        } else {
            parts.clear();
            break;
        }
        parts.append(part);
    }
    return parts.isEmpty() ? u"row number %1"_s.arg(key) : parts.join(u", "_s);
}

} // namespace velmora::engine::salvage
