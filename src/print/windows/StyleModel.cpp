#include "print/windows/StyleModel.h"

#include "base/Translate.h"

#include <algorithm>
#include <array>

namespace velmora::print {

namespace {

constexpr std::array<qint16, StyleModel::ColumnCount> columnBits = {0, Bold, Italic, Underlined, GreyBox, 0};

} // namespace

void StyleModel::SetRows(StyleRows rows) {
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
}

int StyleModel::Add() {
    const int row = rowCount();
    beginInsertRows({}, row, row);
    rows_.push_back({});
    endInsertRows();
    return row;
}

bool StyleModel::IsLaterDuplicate(size_t row) const {
    return std::any_of(rows_.begin(), rows_.begin() + static_cast<std::ptrdiff_t>(row),
                       [&](const PrintAttribute& other) { return other.caption == rows_[row].caption; });
}

QStringList StyleModel::Duplicates() const {
    QStringList captions;
    for (size_t row = 0; row < rows_.size(); ++row) {
        if (!rows_[row].caption.isEmpty() && IsLaterDuplicate(row)) {
            captions.append(rows_[row].caption);
        }
    }
    captions.removeDuplicates();
    return captions;
}

int StyleModel::RowWithoutCaption() const {
    const auto found =
        std::find_if(rows_.begin(), rows_.end(), [](const PrintAttribute& row) { return row.caption.isEmpty(); });
    return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

int StyleModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int StyleModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(ColumnCount);
}

QVariant StyleModel::data(const QModelIndex& index, int role) const {
    const auto row = static_cast<size_t>(index.row());
    const qint16 bit = columnBits[static_cast<size_t>(index.column())];
    if (bit != 0) {
        return role == Qt::CheckStateRole ? QVariant((rows_[row].style & bit) != 0 ? Qt::Checked : Qt::Unchecked)
                                          : QVariant();
    }
    if (index.column() != Caption) {
        return {};
    }
    if (role == Qt::DisplayRole || role == Qt::EditRole) {
        return rows_[row].caption;
    }
    if (role == Qt::ToolTipRole && IsLaterDuplicate(row)) {
        return Translate(QStringLiteral("Not used: an earlier row has the same caption"));
    }
    return {};
}

bool StyleModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    PrintAttribute& row = rows_[static_cast<size_t>(index.row())];
    const qint16 bit = columnBits[static_cast<size_t>(index.column())];
    if (bit != 0 && role == Qt::CheckStateRole) {
        // Other bits that the table holds stay.
        row.style = static_cast<qint16>(value.toInt() == Qt::Checked ? row.style | bit : row.style & ~bit);
    } else if (index.column() == Caption && role == Qt::EditRole) {
        row.caption = value.toString();
    } else {
        return false;
    }
    Q_EMIT dataChanged(index.siblingAtColumn(0), index.siblingAtColumn(SampleColumn));
    return true;
}

QVariant StyleModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return QAbstractTableModel::headerData(section, orientation, role);
    }
    const std::array<QString, ColumnCount> names = {QStringLiteral("Caption"),  QStringLiteral("Bold"),
                                                    QStringLiteral("Italic"),   QStringLiteral("Underlined"),
                                                    QStringLiteral("Grey Box"), QStringLiteral("Sample")};
    return Translate(names[static_cast<size_t>(section)]);
}

Qt::ItemFlags StyleModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags plain = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (index.column() == Caption) {
        return plain | Qt::ItemIsEditable;
    }
    return columnBits[static_cast<size_t>(index.column())] != 0 ? plain | Qt::ItemIsUserCheckable : plain;
}

bool StyleModel::removeRows(int row, int count, const QModelIndex& parent) {
    if (parent.isValid() || row < 0 || count < 1 || row + count > rowCount()) {
        return false;
    }
    beginRemoveRows(parent, row, row + count - 1);
    rows_.erase(rows_.begin() + row, rows_.begin() + row + count);
    endRemoveRows();
    return true;
}

} // namespace velmora::print
