#include "notes/NoteRules.h"

#include "base/Translate.h"
#include "notes/NoteCategories.h"

#include <chrono>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

void SetWhereEmpty(BoundRows& rows, int row, const char* field, const Value& value) {
    const int column = rows.ColumnOf(field);
    if (column >= 0 && !value.ToText().isEmpty() && rows.At(row, column).ToText().isEmpty()) {
        rows.Set(row, column, value);
    }
}

} // namespace

std::vector<BoundColumn> NoteColumns() {
    return {{u"Key"_s, "ID", CellKind::Number, Editing::ReadOnly, 7},
            {u"Reservation"_s, "Reservation", CellKind::Number, Editing::ReadOnly, 11},
            {u"Name"_s, "Name", CellKind::Text, Editing::Allowed, 16},
            {u"NoteCategory"_s, "NoteCategory", CellKind::Choice, Editing::Allowed, 13},
            {u"Note"_s, "Note", CellKind::Lines, Editing::Allowed, 38},
            {u"Cost"_s, "Cost", CellKind::Money, Editing::Allowed, 10},
            {u"Confirm"_s, "Confirm", CellKind::YesNo, Editing::Allowed, 9},
            {u"Completed"_s, "Completed", CellKind::YesNo, Editing::Allowed, 11},
            {u"CompletedTime"_s, "CompletedTime", CellKind::Moment, Editing::Allowed, 20},
            {u"CompletedBy"_s, "CompletedBy", CellKind::Text, Editing::Allowed, 12}};
}

QString NotesOf(qint32 reservation) {
    return u"Select * from [Note] where Reservation = "_s + QString::number(reservation);
}

void NoteRules::FillIn(BoundRows& rows, int row, int column) {
    if (column == rows.ColumnOf("Completed") && rows.At(row, column).ToBool()) {
        SetWhereEmpty(rows, row, "CompletedTime", Value(std::chrono::floor<std::chrono::seconds>(clock_.Now())));
        SetWhereEmpty(rows, row, "CompletedBy", Value(userName_));
    }
}

std::optional<RowRules::Refusal> NoteRules::Refuse(BoundRows& rows) {
    const int category = rows.ColumnOf("NoteCategory");
    // A stored note that never had a category can still be ticked and changed otherwise.
    const bool needed = rows.IsAdding() || rows.IsChanged(category);
    if (!needed) {
        return std::nullopt;
    }
    const QString name = rows.At(*rows.PendingRow(), category).ToText();
    if (name.trimmed().isEmpty()) {
        return Refusal{Translate(u"Every note needs a category. Choose one in the column NoteCategory, or press Escape "
                                 "to take the changes of this row back."_s),
                       category,
                       {}};
    }
    // Another desk may have taken it away since it was offered. A stored note has to have chosen it to be asked.
    const QStringList names = CategoryNames(rows.Database());
    if (names.contains(name, Qt::CaseInsensitive)) {
        return std::nullopt;
    }
    return Refusal{Translate(u"The category \"%1\" is no longer defined: another desk renamed or deleted it. Choose "
                             "another one in the column NoteCategory, or press Escape to take the changes of this row "
                             "back."_s)
                       .arg(name),
                   category, names};
}

} // namespace velmora
