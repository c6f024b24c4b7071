#include "desk/windows/StatusList.h"

namespace velmora {

void StatusList::SetEntries(std::vector<StatusEntry> entries) {
    beginResetModel();
    entries_ = std::move(entries);
    Select();
    endResetModel();
}

void StatusList::SetFilter(const QString& typed) {
    if (typed == filter_) {
        return;
    }
    beginResetModel();
    filter_ = typed;
    Select();
    endResetModel();
}

void StatusList::Select() {
    shown_.clear();
    shown_.reserve(entries_.size());
    for (size_t i = 0; i < entries_.size(); ++i) {
        if (filter_.isEmpty() || entries_[i].text.contains(filter_, Qt::CaseInsensitive)) {
            shown_.push_back(static_cast<int>(i));
        }
    }
}

const StatusEntry& StatusList::Entry(int row) const {
    return entries_.at(static_cast<size_t>(shown_.at(static_cast<size_t>(row))));
}

int StatusList::RowOf(const StatusEntry& entry) const {
    for (size_t row = 0; row < shown_.size(); ++row) {
        const StatusEntry& other = entries_[static_cast<size_t>(shown_[row])];
        if (other.itemData == entry.itemData && other.text == entry.text) {
            return static_cast<int>(row);
        }
    }
    return -1;
}

int StatusList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

QVariant StatusList::data(const QModelIndex& index, int role) const {
    return role == Qt::DisplayRole && index.isValid() ? QVariant(Entry(index.row()).text) : QVariant();
}

} // namespace velmora
