#pragma once

#include "engine/sqlite/StoredValue.h"

#include <optional>
#include <vector>

namespace velmora::engine::sqlite {

// The values assigned to a record between Edit or AddNew and Update, by field position.
class EditBuffer {
public:
    enum class Mode { None, Edit, Add };

    void Begin(Mode mode, std::size_t fields) {
        mode_ = mode;
        values_.assign(fields, std::nullopt);
    }
    void Drop() { mode_ = Mode::None; }

    Mode Pending() const { return mode_; }
    void Set(int field, StoredValue value) { values_[static_cast<std::size_t>(field)] = std::move(value); }
    // Null when nothing was assigned to the field. Only while an edit or addition is pending.
    const StoredValue* Find(int field) const {
        const auto& value = values_[static_cast<std::size_t>(field)];
        return value ? &*value : nullptr;
    }

private:
    Mode mode_ = Mode::None;
    std::vector<std::optional<StoredValue>> values_;
};

} // namespace velmora::engine::sqlite
