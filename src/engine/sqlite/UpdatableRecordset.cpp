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
    Keys().Reset(static_cast<int>(plan.keyPositions.size()));
    storage_->keyReader.SetTypes(plan.keyTypes);
    storage_->reader.SetTypes(plan.types);
    cursor_.Open(0, session_.NextOpening());
    Statement statement = plan.statement->Acquire(Text());
    storage_->binder.Bind(statement, plan.compiled.bindings, storage_->input);
    while (statement.Step(Text())) {
        if (Keys().Size() == 0) {
            // Most sets are opened for one record: its fields come with its key.
            ShowRow(statement.Handle());
            loaded_ = true;
        }
        Keys().Append(statement.Handle(), plan.keyPositions);
    }
    cursor_.Open(Keys().Size(), session_.NextOpening());
}

void UpdatableRecordset::ShowRow(sqlite3_stmt* row) const {
    storage_->rows.Reset(FieldCount(ThePlan()));
    storage_->rows.Append(row);
    storage_->reader.Show(storage_->rows.At(0));
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
    return storage_->reader.At(index);
}

void UpdatableRecordset::Load() const {
    if (loaded_) {
        return;
    }
    WithText([this] { cursor_.Position(); });
    if (cursor_.IsOnErased() || !Read()) {
        ThrowDeleted();
    }
    loaded_ = true;
}

bool UpdatableRecordset::Read() const {
    const Plan& plan = ThePlan();
    const auto& bindings = plan.compiled.rereadBindings;
    if (!reread_) {
        reread_ = plan.reread->Acquire(Text());
        rereadBinder_.Bind(reread_, bindings, storage_->input);
    }
    reread_.Reset();
    int place = static_cast<int>(bindings.size());
    for (const Field& part : CurrentKey()) {
        reread_.Bind(++place, part);
    }
    const bool found = reread_.Step(Text());
    if (found) {
        ShowRow(reread_.Handle());
    }
    reread_.Reset();
    return found;
}

void UpdatableRecordset::ThrowDeleted() const {
    Fail(EngineErrorNumber::RecordDeleted, u"The record has been deleted."_s);
}

std::vector<Field> UpdatableRecordset::CurrentKey() const {
    storage_->keyReader.Show(Keys().At(cursor_.Position()));
    return FieldsOf(storage_->keyReader, ThePlan().keyPositions.size());
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
             u"The field \"%1\" takes %2; \"%3\" is none."_s.arg(name, DescribeValues(type), value.ToText()));
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
        const FieldType type = plan.types[position];
        FieldChange change{i, {}, value->AsField(type)};
        if (edit_.Pending() == EditBuffer::Mode::Edit) {
            change.before = storage_->reader.At(i);
            if (SameContent(change.before, change.after, type)) {
                continue;
            }
        }
        changes[static_cast<std::size_t>(plan.compiled.columns[position].base)].push_back(change);
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
    {
        WriteScope scope(session_, Text());
        RecordWriter writer(session_, ThePlan(), Text());
        for (std::size_t base = 0; base < changes.size(); ++base) {
            if (!changes[base].empty()) {
                writer.Update(base, KeyOf(keys, base), changes[base]);
                session_.NoteChange(Bases()[base].table);
            }
        }
        scope.Commit();
    }
    loaded_ = false;
    if (!std::equal(keys.begin(), keys.end(), keysAfter.begin(), IsSameKey)) {
        Keys().Append(keysAfter);
        Keys().MoveLastTo(cursor_.Position());
    }
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
                if (ThePlan().compiled.columns[static_cast<std::size_t>(change.field)].baseColumn == column) {
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
    const qint64 known = Keys().Size();
    try {
        WriteScope scope(session_, Text());
        RecordWriter writer(session_, ThePlan(), Text());
        RowArena newKey;
        newKey.Reset(static_cast<int>(KeySize(Bases()[base])));
        writer.Insert(base, changes[base], [&newKey](sqlite3_stmt* key) { newKey.Append(key); });
        AppendNewRecords(base, newKey);
        session_.NoteChange(Bases()[base].table);
        scope.Commit();
    } catch (...) {
        Keys().Truncate(known);
        throw;
    }
    edit_.Drop();
    lastModified_ = {};
    for (qint64 position = known; position < Keys().Size(); ++position) {
        cursor_.Append();
        lastModified_ = cursor_.MarkOf(position);
    }
}

// In a join the new record shows only together with the other tables' records, which the query itself has to find.
void UpdatableRecordset::AppendNewRecords(std::size_t base, const RowArena& newRow) {
    const std::vector<FieldType> untyped(KeySize(Bases()[base]), FieldType::Unknown);
    RowReader reader;
    reader.SetTypes(untyped);
    reader.Show(newRow.At(0));
    const std::vector<Field> newKey = FieldsOf(reader, untyped.size());
    if (Bases().size() == 1) {
        Keys().Append(newKey);
        return;
    }
    const Plan& plan = ThePlan();
    Statement statement = plan.statement->Acquire(Text());
    storage_->binder.Bind(statement, plan.compiled.bindings, storage_->input);
    while (statement.Step(Text())) {
        Keys().Append(statement.Handle(), plan.keyPositions);
        storage_->keyReader.Show(Keys().At(Keys().Size() - 1));
        const std::vector<Field> here = KeyOf(FieldsOf(storage_->keyReader, plan.keyPositions.size()), base);
        if (!std::equal(newKey.begin(), newKey.end(), here.begin(), IsSameKey)) {
            Keys().Truncate(Keys().Size() - 1);
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
    RecordWriter(session_, ThePlan(), Text()).Delete(0, CurrentKey());
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
