#include "notes/BoundRows.h"

#include "data/StoreAgainstOthers.h"

#include <algorithm>

namespace velmora {

using engine::EngineError;
using engine::EngineErrorNumber;

namespace {

// Rows read together when one of them is shown: about a screenful.
constexpr int rowsTogether = 64;

bool IsDeletion(const EngineError& error) {
    return error.Kind() == EngineErrorNumber::RecordDeleted;
}

std::string_view Name(const QByteArray& field) {
    return {field.constData(), static_cast<size_t>(field.size())};
}

} // namespace

BoundRows::BoundRows(engine::Database& database, std::vector<BoundColumn> columns, std::vector<FixedValue> fixed)
    : database_(database), columns_(std::move(columns)), fixed_(std::move(fixed)), emptyRow_(columns_.size()) {
    for (const FixedValue& each : fixed_) {
        const int column = ColumnOf(each.field);
        if (column >= 0) {
            emptyRow_[static_cast<size_t>(column)] = each.value;
        }
    }
}

int BoundRows::ColumnOf(const char* field) const {
    const auto found = std::find_if(columns_.begin(), columns_.end(),
                                    [&](const BoundColumn& column) { return column.field == field; });
    return found == columns_.end() ? -1 : static_cast<int>(found - columns_.begin());
}

void BoundRows::Open(const QString& source) {
    Close();
    source_ = source;
    const bool fixed = std::all_of(columns_.begin(), columns_.end(),
                                   [](const BoundColumn& column) { return column.editing == Editing::ReadOnly; });
    auto set =
        database_.OpenRecordset(source, fixed ? engine::RecordsetKind::Snapshot : engine::RecordsetKind::Updatable);
    for (; !set->EndOfFile(); set->MoveNext()) {
        rows_.push_back({set->CurrentBookmark(), false, false, {}});
    }
    set_ = std::move(set);
}

void BoundRows::Close() {
    EndEdit();
    rows_.clear();
    set_.reset();
}

std::vector<Value> BoundRows::ReadFields() const {
    std::vector<Value> values;
    values.reserve(columns_.size());
    for (const BoundColumn& column : columns_) {
        values.push_back((*set_)[Name(column.field)].ToValue());
    }
    return values;
}

std::optional<std::vector<Value>> BoundRows::ReadNow(const Row& row) {
    try {
        set_->GoTo(row.place);
        return ReadFields();
    } catch (const EngineError& error) {
        if (!IsDeletion(error)) {
            throw;
        }
        return std::nullopt;
    }
}

void BoundRows::Load(Row& row) {
    auto values = ReadNow(row);
    row.loaded = true;
    row.gone = !values.has_value();
    if (values) {
        row.values = std::move(*values);
    } else if (row.values.empty()) {
        row.values.resize(columns_.size());
    }
}

void BoundRows::LoadAround(int row) {
    const engine::ReadScope together(database_);
    const int first = row - row % rowsTogether;
    const int end = std::min(first + rowsTogether, Count());
    for (int i = first; i < end; ++i) {
        if (Row& each = rows_[static_cast<size_t>(i)]; !each.loaded) {
            Load(each);
        }
    }
}

BoundRows::Row& BoundRows::Loaded(int row) {
    Row& wanted = rows_.at(static_cast<size_t>(row));
    if (!wanted.loaded) {
        LoadAround(row);
    }
    return wanted;
}

const Value& BoundRows::Stored(int row, int column) {
    return row == Count() ? emptyRow_.at(static_cast<size_t>(column))
                          : Loaded(row).values.at(static_cast<size_t>(column));
}

const Value& BoundRows::At(int row, int column) {
    if (pending_ == row) {
        const auto edited = edits_.find(column);
        if (edited != edits_.end()) {
            return edited->second;
        }
    }
    return Stored(row, column);
}

bool BoundRows::IsGone(int row) const {
    return row < Count() && rows_[static_cast<size_t>(row)].gone;
}

void BoundRows::Set(int row, int column, const Value& value) {
    if (pending_ && *pending_ != row) {
        throw std::logic_error("another row is being edited");
    }
    const Value& stored = Stored(row, column);
    // A tick box that was never set shows no tick either.
    const bool stillNoTick =
        columns_.at(static_cast<size_t>(column)).kind == CellKind::YesNo && stored.IsNull() && !value.ToBool();
    if (stored == value || stillNoTick) {
        edits_.erase(column);
    } else {
        edits_[column] = value;
    }
    pending_ = edits_.empty() ? std::nullopt : std::optional(row);
}

void BoundRows::Undo() {
    if (pending_ && !IsAdding()) {
        rows_[static_cast<size_t>(*pending_)].loaded = false;
    }
    EndEdit();
}

void BoundRows::EndEdit() {
    pending_.reset();
    edits_.clear();
    conflicts_.clear();
    theirs_.clear();
}

void BoundRows::FindConflicts(const Row& row, const std::vector<Value>& now) {
    conflicts_.clear();
    for (const auto& [column, mine] : edits_) {
        const auto i = static_cast<size_t>(column);
        if (now[i] != row.values[i] && now[i] != mine) {
            conflicts_.push_back({column, row.values[i], mine, now[i]});
        }
    }
}

void BoundRows::AssignEdits() {
    for (const FixedValue& each : fixed_) {
        set_->Set(Name(each.field), each.value);
    }
    for (const auto& [column, value] : edits_) {
        set_->Set(Name(columns_[static_cast<size_t>(column)].field), value);
    }
}

void BoundRows::WriteNew() {
    try {
        set_->AddNew();
        AssignEdits();
        set_->Update();
    } catch (...) {
        set_->CancelUpdate();
        throw;
    }
    rows_.push_back({set_->LastModified(), false, false, {}});
    EndEdit();
}

BoundRows::Outcome BoundRows::Write() {
    if (!pending_) {
        return Outcome::Done;
    }
    if (IsAdding()) {
        WriteNew();
        return Outcome::Done;
    }
    Row& row = rows_[static_cast<size_t>(*pending_)];
    Outcome outcome = Outcome::Done;
    const auto find = [&]() -> engine::Recordset* {
        auto now = ReadNow(row);
        if (!now) {
            outcome = Outcome::Gone;
            return nullptr;
        }
        FindConflicts(row, *now);
        if (!conflicts_.empty()) {
            theirs_ = std::move(*now);
            outcome = Outcome::Changed;
            return nullptr;
        }
        return set_.get();
    };
    if (StoreAgainstOthers(find, [this](engine::Recordset&) { AssignEdits(); })) {
        EndEdit();
        row.loaded = false;
    }
    return outcome;
}

void BoundRows::KeepMine() {
    rows_[static_cast<size_t>(pending_.value())].values = theirs_;
    conflicts_.clear();
}

void BoundRows::AddAgain() {
    Row& lost = rows_[static_cast<size_t>(pending_.value())];
    for (size_t i = 0; i < columns_.size(); ++i) {
        // What the store or the program assigns is assigned anew.
        if (columns_[i].editing == Editing::Allowed && !lost.values[i].IsNull()) {
            edits_.emplace(static_cast<int>(i), lost.values[i]);
        }
    }
    lost.gone = true;
    pending_ = Count();
}

BoundRows::Outcome BoundRows::Delete(int row, Force force) {
    Row& record = rows_.at(static_cast<size_t>(row));
    const auto now = ReadNow(record);
    if (now && force == Force::No && record.loaded && !record.gone && *now != record.values) {
        conflicts_.clear();
        for (size_t i = 0; i < columns_.size(); ++i) {
            if ((*now)[i] != record.values[i]) {
                conflicts_.push_back({static_cast<int>(i), record.values[i], {}, (*now)[i]});
            }
        }
        return Outcome::Changed;
    }
    if (now) {
        try {
            set_->Delete();
        } catch (const EngineError& error) {
            // Deleted by another desk in the same moment: gone is what was asked for.
            if (!IsDeletion(error)) {
                throw;
            }
        }
    }
    record.gone = true;
    return Outcome::Done;
}

} // namespace velmora
