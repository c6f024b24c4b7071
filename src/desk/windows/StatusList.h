#pragma once

#include "tasks/QuickStatus.h"

#include <QAbstractListModel>

namespace velmora {

// The entries of the quick-status list that contain what was typed into the search box; all while it is empty.
class StatusList : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    void SetEntries(std::vector<StatusEntry> entries);
    // Letter case does not count.
    void SetFilter(const QString& typed);
    // The entry of a row on view.
    const StatusEntry& Entry(int row) const;
    // The row on view of the entry with that item data and text; -1 when there is none.
    int RowOf(const StatusEntry& entry) const;
    int EntryCount() const { return static_cast<int>(entries_.size()); }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    void Select();

    std::vector<StatusEntry> entries_;
    QString filter_;
    // Places of the entries on view.
    std::vector<int> shown_;
};

} // namespace velmora
