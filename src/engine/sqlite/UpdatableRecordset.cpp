#include "engine/sqlite/UpdatableRecordset.h"

#include "engine/sqlite/WriteScope.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::sqlite {

namespace {

int FieldCount(const Plan& plan) {
    return static_cast<int>(plan.types.size());
}

std::size_t KeySize(const dialect::BaseTable& base) {
    return base.keyPositions.size();
}

std::vector<Field> FieldsOf(const RowReader& reader, std::size_t count) {
    std::vector<Field> fields(count);
    for (std::size_t i = 0; i < count; ++i) {
        fields[i] = reader.At(static_cast<int>(i));
    }
    return fields;
}

bool IsSameKey(const Field& a, const Field& b) {
    return SameContent(a, b, FieldType::Unknown);
}

} // namespace

UpdatableRecordset::UpdatableRecordset(Session& session, std::unique_ptr<RecordsetStorage> storage)
    : CursorRecordset(session, std::move(storage)) {
    Fill();
}

void UpdatableRecordset::Fill() {
    const Plan& plan = ThePlan();
    edit_.Drop();
    lastModified_ = {};
    loaded_ = false;
    reread_ = {};
    keys_.Reset(static_cast<int>(plan.keyPositions.size()));
    keyReader_.SetTypes(plan.keyTypes);
    record_.row.Reset(FieldCount(plan));
    record_.reader.SetTypes(plan.types);
    cursor_.Open(0, session_.NextOpening());
    Statement statement = plan.statement->Acquire(Text());
    storage_->binder.Bind(statement, plan.compiled.bindings, storage_->input);
    while (statement.Step(Text())) {
        if (keys_.Size() == 0) {
            // Most sets are opened for one record: its fields come with its key.
            record_.row.Append(statement.Handle());
            record_.reader.Show(record_.row.At(0));
            loaded_ = true;
        }
        keys_.Append(statement.Handle(), plan.keyPositions);
    }
    cursor_.Open(keys_.Size(), session_.NextOpening());
}

void UpdatableRecordset::Arrive() {
    edit_.Drop();
    loaded_ = false;
}

Field UpdatableRecordset::operator[](std::string_view utf8Name) const {
    return Show(IndexOf(utf8Name));
}

Field UpdatableRecordset::FieldAt(int index) const {
    CheckIndex(index);
    return Show(index);
}

Field UpdatableRecordset::Show(int index) const {
    if (edit_.Pending() != EditBuffer::Mode::None) {
        if (const StoredValue* value = edit_.Find(index)) {
            return value->AsField(ThePlan().types[static_cast<std::size_t>(index)]);
        }
        if (edit_.Pending() == EditBuffer::Mode::Add) {
            return {};
        }
    }
    Load();
    return record_.reader.At(index);
}

void UpdatableRecordset::Load() const {
    if (loaded_) {
        return;
    }
    WithText([this] { cursor_.Position(); });
    if (cursor_.IsOnErased() || !Read(CurrentKey(), record_)) {
        ThrowDeleted();
    }
    loaded_ = true;
}

bool UpdatableRecordset::Read(const std::vector<Field>& key, Record& into) const {
    const Plan& plan = ThePlan();
    const auto& bindings = plan.compiled.rereadBindings;
    if (!reread_) {
        reread_ = plan.reread->Acquire(Text());
        rereadBinder_.Bind(reread_, bindings, storage_->input);
    }
    reread_.Reset();
    int place = static_cast<int>(bindings.size());
    for (const Field& part : key) {
        reread_.Bind(++place, part);
    }
    const bool found = reread_.Step(Text());
    if (found) {
        into.row.Reset(FieldCount(plan));
        into.row.Append(reread_.Handle());
        into.reader.SetTypes(plan.types);
        into.reader.Show(into.row.At(0));
    }
    reread_.Reset();
    return found;
}

void UpdatableRecordset::ThrowDeleted() const {
    Fail(EngineErrorNumber::RecordDeleted, u"The record has been deleted."_s);
}

std::vector<Field> UpdatableRecordset::CurrentKey() const {
    keyReader_.Show(keys_.At(cursor_.Position()));
    return FieldsOf(keyReader_, ThePlan().keyPositions.size());
}

std::vector<Field> UpdatableRecordset::KeyOf(const std::vector<Field>& keys, std::size_t base) const {
    std::size_t first = 0;
    for (std::size_t i = 0; i < base; ++i) {
        first += KeySize(Bases()[i]);
    }
    const auto begin = keys.begin() + static_cast<std::ptrdiff_t>(first);
    return {begin, begin + static_cast<std::ptrdiff_t>(KeySize(Bases()[base]))};
}

void UpdatableRecordset::Edit() {
    if (edit_.Pending() != EditBuffer::Mode::None) {
        CancelUpdate();
    }
    Load();
    edit_.Begin(EditBuffer::Mode::Edit, ThePlan().types.size());
}

void UpdatableRecordset::AddNew() {
    edit_.Begin(EditBuffer::Mode::Add, ThePlan().types.size());
}

void UpdatableRecordset::Set(std::string_view utf8Name, const Value& value) {
    if (edit_.Pending() == EditBuffer::Mode::None) {
        Fail(EngineErrorNumber::InvalidArgument, u"A field was assigned without Edit or AddNew before it."_s);
    }
    const int index = IndexOf(utf8Name);
    const auto position = static_cast<std::size_t>(index);
    const QString& name = ThePlan().fields[position].name;
    if (ThePlan().compiled.columns[position].base < 0) {
        Fail(EngineErrorNumber::ReadOnly, u"The field \"%1\" is worked out and cannot be changed."_s.arg(name));
    }
    const FieldType type = ThePlan().types[position];
    auto stored = StoredValue::From(value, type);
    if (!stored) {
        Fail(EngineErrorNumber::TypeMismatch,
             u"The field \"%1\" takes %2; \"%3\" is none."_s.arg(name, TypeInWords(type), value.ToText()));
    }
    edit_.Set(index, std::move(*stored));
}

void UpdatableRecordset::Update() {
    switch (edit_.Pending()) {
    case EditBuffer::Mode::Edit:
        return WriteEdit();
    case EditBuffer::Mode::Add:
        return WriteAddition();
    case EditBuffer::Mode::None:
        Fail(EngineErrorNumber::InvalidArgument, u"Update was called without Edit or AddNew before it."_s);
    }
}

void UpdatableRecordset::CancelUpdate() {
    if (edit_.Pending() == EditBuffer::Mode::Edit) {
        // The edit may be given up because another user was first: show what the database holds now.
        loaded_ = false;
    }
    edit_.Drop();
}

std::vector<std::vector<FieldChange>> UpdatableRecordset::Changes() const {
    const Plan& plan = ThePlan();
    std::vector<std::vector<FieldChange>> changes(Bases().size());
    for (int i = 0; i < FieldCount(plan); ++i) {
        const StoredValue* value = edit_.Find(i);
        if (value == nullptr) {
            continue;
        }
        const auto position = static_cast<std::size_t>(i);
        const dialect::ResultColumn& column = plan.compiled.columns[position];
        const FieldType type = plan.types[position];
        FieldChange change{column.baseColumn, type, {}, value->AsField(type)};
        if (edit_.Pending() == EditBuffer::Mode::Edit) {
            change.before = record_.reader.At(i);
            if (SameContent(change.before, change.after, type)) {
                continue;
            }
        }
        changes[static_cast<std::size_t>(column.base)].push_back(std::move(change));
    }
    return changes;
}

void UpdatableRecordset::WriteEdit() {
    const auto changes = Changes();
    if (std::all_of(changes.begin(), changes.end(), [](const auto& of) { return of.empty(); })) {
        lastModified_ = cursor_.Mark();
        edit_.Drop();
        return;
    }
    const std::vector<Field> keys = CurrentKey();
    const std::vector<Field> keysAfter = KeyAfter(keys, changes);
    Record written;
    bool found = false;
    {
        WriteScope scope(session_, Text());
        RecordWriter writer(session_, Text());
        for (std::size_t base = 0; base < changes.size(); ++base) {
            if (!changes[base].empty()) {
                writer.Update(Bases()[base], KeyOf(keys, base), changes[base]);
                session_.NoteChange(Bases()[base].table);
            }
        }
        found = Read(keysAfter, written);
        scope.Commit();
    }
    loaded_ = found;
    if (!std::equal(keys.begin(), keys.end(), keysAfter.begin(), IsSameKey)) {
        keys_.Append(keysAfter);
        keys_.MoveLastTo(cursor_.Position());
    }
    record_ = std::move(written);
    lastModified_ = cursor_.Mark();
    edit_.Drop();
}

// A key field that was changed names the record from now on.
std::vector<Field> UpdatableRecordset::KeyAfter(std::vector<Field> keys,
                                                const std::vector<std::vector<FieldChange>>& changes) const {
    std::size_t place = 0;
    for (std::size_t base = 0; base < changes.size(); ++base) {
        for (const QString& column : Bases()[base].keyColumns) {
            for (const FieldChange& change : changes[base]) {
                if (change.column == column) {
                    keys[place] = change.after;
                }
            }
            ++place;
        }
        place += Bases()[base].keyColumns.empty() ? KeySize(Bases()[base]) : 0;
    }
    return keys;
}

std::size_t UpdatableRecordset::BaseOfAddition(const std::vector<std::vector<FieldChange>>& changes) const {
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
    const auto changes = Changes();
    const std::size_t base = BaseOfAddition(changes);
    const qint64 known = keys_.Size();
    try {
        WriteScope scope(session_, Text());
        RecordWriter writer(session_, Text());
        const std::vector<FieldType> untyped(KeySize(Bases()[base]), FieldType::Unknown);
        Record newKey;
        newKey.row.Reset(static_cast<int>(untyped.size()));
        writer.Insert(Bases()[base], changes[base], [&newKey](sqlite3_stmt* key) { newKey.row.Append(key); });
        newKey.reader.SetTypes(untyped);
        newKey.reader.Show(newKey.row.At(0));
        AppendNewRecords(base, FieldsOf(newKey.reader, untyped.size()));
        session_.NoteChange(Bases()[base].table);
        scope.Commit();
    } catch (...) {
        keys_.Truncate(known);
        throw;
    }
    edit_.Drop();
    lastModified_ = {};
    for (qint64 position = known; position < keys_.Size(); ++position) {
        cursor_.Append();
        lastModified_ = cursor_.MarkOf(position);
    }
}

// In a join the new record shows only together with the other tables' records, which the query itself has to find.
void UpdatableRecordset::AppendNewRecords(std::size_t base, const std::vector<Field>& newKey) {
    if (Bases().size() == 1) {
        keys_.Append(newKey);
        return;
    }
    const Plan& plan = ThePlan();
    Statement statement = plan.statement->Acquire(Text());
    storage_->binder.Bind(statement, plan.compiled.bindings, storage_->input);
    while (statement.Step(Text())) {
        keys_.Append(statement.Handle(), plan.keyPositions);
        keyReader_.Show(keys_.At(keys_.Size() - 1));
        const std::vector<Field> here = KeyOf(FieldsOf(keyReader_, plan.keyPositions.size()), base);
        if (!std::equal(newKey.begin(), newKey.end(), here.begin(), IsSameKey)) {
            keys_.Truncate(keys_.Size() - 1);
        }
    }
}

void UpdatableRecordset::Delete() {
    CancelUpdate();
    WithText([this] { cursor_.Position(); });
    if (Bases().size() != 1) {
        Fail(EngineErrorNumber::ReadOnly,
             u"A record joined from several tables cannot be deleted: it is not clear from which one. "
             "Delete it through a query on one table."_s);
    }
    if (cursor_.IsOnErased()) {
        ThrowDeleted();
    }
    WriteScope scope(session_, Text());
    RecordWriter(session_, Text()).Delete(Bases().front(), CurrentKey());
    session_.NoteChange(Bases().front().table);
    scope.Commit();
    loaded_ = false;
    cursor_.EraseCurrent();
}

Bookmark UpdatableRecordset::LastModified() const {
    if (lastModified_ == Bookmark()) {
        Fail(EngineErrorNumber::InvalidArgument,
             u"No record of this set has been written, or the new record does not belong to the set."_s);
    }
    return lastModified_;
}

} // namespace velmora::engine::sqlite
