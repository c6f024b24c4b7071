#include "engine/records/UpdatableRecordset.h"

#include "engine/records/Session.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::records {

namespace {

std::size_t KeySize(const dialect::BaseTable& base) {
    return base.keyPositions.size();
}

bool IsSameKey(const RecordKey& a, const RecordKey& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const StoredValue& one, const StoredValue& other) {
        return SameContent(one.AsField(), other.AsField(), FieldType::Unknown);
    });
}

} // namespace

UpdatableRecordset::UpdatableRecordset(Session& session, QueryInput input)
    : CursorRecordset(session, std::move(input)) {
    Fill();
}

void UpdatableRecordset::Fill() {
    DropEdit();
    lastModified_ = {};
    keys_.clear();
    record_.clear();
    cursor_.Open(0, session_.NextOpening());
    const std::size_t shown = Query().types.size();
    std::vector<Field> row(shown + static_cast<std::size_t>(Query().compiled.hiddenColumns));
    const auto statement = session_.Start(input_);
    while (statement->Step(Text())) {
        statement->ReadRow(row);
        if (keys_.empty()) {
            // Most sets are opened for one record: its fields come with its key.
            record_ = CopyOf(std::span(row).first(shown));
        }
        keys_.push_back(KeyIn(row));
    }
    cursor_.Open(static_cast<qint64>(keys_.size()), session_.NextOpening());
}

RecordKey UpdatableRecordset::KeyIn(std::span<const Field> row) const {
    RecordKey key;
    key.reserve(Query().keyPositions.size());
    for (const int position : Query().keyPositions) {
        key.emplace_back(row[static_cast<std::size_t>(position)]);
    }
    return key;
}

void UpdatableRecordset::ReadRecord() {
    std::vector<StoredValue> record;
    if (cursor_.IsOnRecord() && !cursor_.IsOnErased()) {
        const dialect::CompiledStatement& compiled = Query().compiled;
        const auto statement = session_.Statements().Acquire(compiled.rereadSql, Text());
        BindValues(*statement, compiled.rereadBindings, input_);
        int place = static_cast<int>(compiled.rereadBindings.size());
        for (const StoredValue& part : CurrentKey()) {
            statement->Bind(++place, part.AsField());
        }
        if (statement->Step(Text())) {
            std::vector<Field> row(Query().types.size());
            statement->ReadRow(row);
            record = CopyOf(row);
        }
    }
    record_ = std::move(record);
    DropEdit();
}

Field UpdatableRecordset::ValueAt(int index) const {
    if (mode_ != Mode::None) {
        if (const auto value = assigned_.find(index); value != assigned_.end()) {
            return value->second.AsField(TypeOf(index));
        }
        if (mode_ == Mode::Add) {
            return {};
        }
    }
    Position();
    if (record_.empty()) {
        ThrowDeleted();
    }
    return record_[static_cast<std::size_t>(index)].AsField(TypeOf(index));
}

void UpdatableRecordset::ThrowDeleted() const {
    Fail(EngineErrorNumber::RecordDeleted, u"The record has been deleted."_s);
}

RecordKey UpdatableRecordset::KeyOf(const RecordKey& key, std::size_t base) const {
    std::size_t first = 0;
    for (std::size_t i = 0; i < base; ++i) {
        first += KeySize(Bases()[i]);
    }
    const auto begin = key.begin() + static_cast<std::ptrdiff_t>(first);
    return {begin, begin + static_cast<std::ptrdiff_t>(KeySize(Bases()[base]))};
}

void UpdatableRecordset::Edit() {
    CancelUpdate();
    Position();
    if (record_.empty()) {
        ThrowDeleted();
    }
    mode_ = Mode::Edit;
}

void UpdatableRecordset::AddNew() {
    DropEdit();
    mode_ = Mode::Add;
}

void UpdatableRecordset::Set(std::string_view utf8Name, const Value& value) {
    if (mode_ == Mode::None) {
        Fail(EngineErrorNumber::InvalidArgument, u"A field was assigned without Edit or AddNew before it."_s);
    }
    const int index = IndexOf(utf8Name);
    const auto position = static_cast<std::size_t>(index);
    const QString& name = Query().fields[position].name;
    if (Query().compiled.columns[position].base < 0) {
        Fail(EngineErrorNumber::ReadOnly, u"The field \"%1\" is worked out and cannot be changed."_s.arg(name));
    }
    const FieldType type = TypeOf(index);
    auto stored = StoredValue::From(value, type);
    if (!stored) {
        Fail(EngineErrorNumber::TypeMismatch,
             u"The field \"%1\" takes %2; \"%3\" is none."_s.arg(name, DescribeValues(type), value.ToText()));
    }
    assigned_[index] = std::move(*stored);
}

void UpdatableRecordset::Update() {
    switch (mode_) {
    case Mode::Edit:
        return WriteEdit();
    case Mode::Add:
        return WriteAddition();
    case Mode::None:
        Fail(EngineErrorNumber::InvalidArgument, u"Update was called without Edit or AddNew before it."_s);
    }
}

void UpdatableRecordset::CancelUpdate() {
    const bool wasEdit = mode_ == Mode::Edit;
    DropEdit();
    if (wasEdit) {
        // The edit may be given up because another user was first: show what the database holds now.
        ReadRecord();
    }
}

void UpdatableRecordset::DropEdit() {
    mode_ = Mode::None;
    assigned_.clear();
}

UpdatableRecordset::ChangesByBase UpdatableRecordset::Changes() const {
    ChangesByBase changes(Bases().size());
    for (const auto& [field, value] : assigned_) {
        const auto position = static_cast<std::size_t>(field);
        const FieldType type = TypeOf(field);
        FieldChange change{field, {}, value};
        if (mode_ == Mode::Edit) {
            change.before = record_[position];
            if (SameContent(change.before.AsField(type), value.AsField(type), type)) {
                continue;
            }
        }
        changes[static_cast<std::size_t>(Query().compiled.columns[position].base)].push_back(std::move(change));
    }
    return changes;
}

void UpdatableRecordset::WriteEdit() {
    const ChangesByBase changes = Changes();
    if (std::any_of(changes.begin(), changes.end(), [](const auto& of) { return !of.empty(); })) {
        WriteScope scope(session_, Text());
        RecordWriter writer(session_, Query(), Text());
        for (std::size_t base = 0; base < changes.size(); ++base) {
            if (!changes[base].empty()) {
                writer.Update(base, KeyOf(CurrentKey(), base), changes[base]);
                session_.NoteChange(Bases()[base].table);
            }
        }
        scope.Commit();
        CurrentKey() = KeyAfter(std::move(CurrentKey()), changes);
        ShowWritten(changes);
    }
    lastModified_ = cursor_.Mark();
    DropEdit();
}

// A key field that was changed names the record from now on.
RecordKey UpdatableRecordset::KeyAfter(RecordKey key, const ChangesByBase& changes) const {
    std::size_t place = 0;
    for (std::size_t base = 0; base < changes.size(); ++base) {
        for (const QString& column : Bases()[base].keyColumns) {
            for (const FieldChange& change : changes[base]) {
                if (Query().compiled.columns[static_cast<std::size_t>(change.field)].baseColumn == column) {
                    key[place] = change.after;
                }
            }
            ++place;
        }
        place += Bases()[base].keyColumns.empty() ? KeySize(Bases()[base]) : 0;
    }
    return key;
}

// Every field that shows a column that was written.
void UpdatableRecordset::ShowWritten(const ChangesByBase& changes) {
    const std::vector<dialect::ResultColumn>& columns = Query().compiled.columns;
    for (std::size_t field = 0; field < columns.size(); ++field) {
        if (columns[field].base < 0) {
            continue;
        }
        for (const FieldChange& change : changes[static_cast<std::size_t>(columns[field].base)]) {
            if (columns[static_cast<std::size_t>(change.field)].baseColumn == columns[field].baseColumn) {
                record_[field] = change.after;
            }
        }
    }
}

std::size_t UpdatableRecordset::BaseOfAddition(const ChangesByBase& changes) const {
    if (changes.size() == 1) {
        return 0;
    }
    QStringList tables;
    std::size_t found = 0;
    for (std::size_t base = 0; base < changes.size(); ++base) {
        if (!changes[base].empty()) {
            found = base;
            tables.append(Bases()[base].table);
        }
    }
    if (tables.size() != 1) {
        Fail(EngineErrorNumber::InvalidArgument,
             u"A new record belongs to one table; fields were assigned of: %1."_s.arg(
                 tables.isEmpty() ? u"none"_s : tables.join(u", "_s)));
    }
    return found;
}

void UpdatableRecordset::WriteAddition() {
    const ChangesByBase changes = Changes();
    const std::size_t base = BaseOfAddition(changes);
    const std::size_t known = keys_.size();
    try {
        WriteScope scope(session_, Text());
        AppendNewRecords(base, RecordWriter(session_, Query(), Text()).Insert(base, changes[base]));
        session_.NoteChange(Bases()[base].table);
        scope.Commit();
    } catch (...) {
        keys_.resize(known);
        throw;
    }
    DropEdit();
    lastModified_ = {};
    for (std::size_t position = known; position < keys_.size(); ++position) {
        cursor_.Append();
        lastModified_ = cursor_.MarkOf(static_cast<qint64>(position));
    }
}

// In a join the new record shows only together with the other tables' records, which the query itself has to find.
void UpdatableRecordset::AppendNewRecords(std::size_t base, const RecordKey& newKey) {
    if (Bases().size() == 1) {
        keys_.push_back(newKey);
        return;
    }
    std::vector<Field> row(Query().types.size() + static_cast<std::size_t>(Query().compiled.hiddenColumns));
    const auto statement = session_.Start(input_);
    while (statement->Step(Text())) {
        statement->ReadRow(row);
        RecordKey key = KeyIn(row);
        if (IsSameKey(KeyOf(key, base), newKey)) {
            keys_.push_back(std::move(key));
        }
    }
}

void UpdatableRecordset::Delete() {
    CancelUpdate();
    Position();
    if (Bases().size() != 1) {
        Fail(EngineErrorNumber::ReadOnly,
             u"A record joined from several tables cannot be deleted: it is not clear from which one. "
             "Delete it through a query on one table."_s);
    }
    if (cursor_.IsOnErased()) {
        ThrowDeleted();
    }
    WriteScope scope(session_, Text());
    RecordWriter(session_, Query(), Text()).Delete(0, CurrentKey());
    session_.NoteChange(Bases().front().table);
    scope.Commit();
    record_.clear();
    cursor_.EraseCurrent();
}

Bookmark UpdatableRecordset::LastModified() const {
    if (lastModified_ == Bookmark()) {
        Fail(EngineErrorNumber::InvalidArgument,
             u"No record of this set has been written, or the new record does not belong to the set."_s);
    }
    return lastModified_;
}

} // namespace velmora::engine::records
