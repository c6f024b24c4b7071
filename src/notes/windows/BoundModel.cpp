#include "notes/windows/BoundModel.h"

#include "base/Translate.h"

#include <QScopeGuard>

#include <algorithm>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

// A text as it stands, never read as markup, in lines that fit a screen.
QString InFull(const QString& text) {
    constexpr qsizetype longest = 2000;
    if (text.isEmpty()) {
        return {};
    }
    const QString shown = text.size() > longest ? text.first(longest) + u'\u2026' : text;
    return u"<div style=\"white-space: pre-wrap\">%1</div>"_s.arg(shown.toHtmlEscaped());
}

QVariant AlignmentOf(CellKind kind) {
    const bool right = kind == CellKind::Money || kind == CellKind::Number;
    return QVariant::fromValue(Qt::Alignment((right ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter));
}

} // namespace

BoundModel::BoundModel(BoundRows& rows, const CellText& texts)
    : rows_(rows), texts_(texts),
      canAdd_(std::any_of(rows.Columns().begin(), rows.Columns().end(),
                          [](const BoundColumn& column) { return column.editing == Editing::Allowed; })) {}

Value BoundModel::ValueAt(const QModelIndex& index) const {
    try {
        return rows_.At(index.row(), index.column());
    } catch (const std::exception&) {
        if (!std::exchange(reported_, true)) {
            Q_EMIT ReadFailed();
        }
        return {};
    }
}

void BoundModel::Reset(const std::function<void()>& change) {
    beginResetModel();
    const auto end = qScopeGuard([this] {
        shown_ = rows_.Count();
        endResetModel();
    });
    reported_ = false;
    change();
}

void BoundModel::RowChanged(int row) {
    const int added = rows_.Count() - shown_;
    if (added > 0) {
        // The row that was the empty one is the new record; an empty one follows it.
        beginInsertRows({}, shown_ + 1, shown_ + added);
        shown_ += added;
        endInsertRows();
    }
    Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
    Q_EMIT headerDataChanged(Qt::Vertical, row, rowCount() - 1);
}

int BoundModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() || !rows_.IsOpen() ? 0 : shown_ + (canAdd_ ? 1 : 0);
}

int BoundModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.Columns().size());
}

QString BoundModel::Text(const QModelIndex& index) const {
    const Value value = ValueAt(index);
    if (IsGone(index.row()) && index.column() == 0 && value.IsNull()) {
        return Translate(u"(deleted)"_s);
    }
    return texts_.Shown(value, Column(index.column()).kind);
}

QVariant BoundModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    const CellKind kind = Column(index.column()).kind;
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return Text(index);
    case Qt::ToolTipRole:
        return IsGone(index.row())       ? Translate(u"Another desk deleted this row."_s)
               : kind == CellKind::Lines ? InFull(Text(index))
                                         : QString();
    case Qt::TextAlignmentRole:
        return AlignmentOf(kind);
    default:
        return {};
    }
}

QVariant BoundModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical || (role != Qt::DisplayRole && role != Qt::TextAlignmentRole)) {
        return {};
    }
    return role == Qt::DisplayRole ? Translate(Column(section).caption) : AlignmentOf(Column(section).kind);
}

Qt::ItemFlags BoundModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) {
        return Qt::NoItemFlags;
    }
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | (CanEdit(index.column()) ? Qt::ItemIsEditable : Qt::NoItemFlags);
}

} // namespace velmora
