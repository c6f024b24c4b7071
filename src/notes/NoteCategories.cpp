#include "notes/NoteCategories.h"

#include "base/Translate.h"
#include "data/Helpers.h"

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

constexpr int nameColumn = 0;

// How many records have that category.
struct CategoryUse {
    qint64 notes = 0;
    qint64 standardNotes = 0;
    bool Any() const { return notes + standardNotes > 0; }
};

qint64 CountWithCategory(engine::Database& database, const QString& table, const QString& name) {
    return database.OpenRecordset(u"Select Count(*) from %1 where NoteCategory = %2"_s.arg(table, SqlText(name)))
        ->FieldAt(0)
        .ToInteger();
}

CategoryUse UseOfCategory(engine::Database& database, const QString& name) {
    return {CountWithCategory(database, u"[Note]"_s, name), CountWithCategory(database, u"StandardNotes"_s, name)};
}

// "12 notes and 3 standard notes"
QString UseInWords(const CategoryUse& use) {
    return Translate(u"%1 notes and %2 standard notes"_s).arg(use.notes).arg(use.standardNotes);
}

// True when the pending row is a category that was there before, under another name.
bool IsRename(BoundRows& rows) {
    return !rows.IsAdding() && rows.IsChanged(nameColumn);
}

QString OldName(BoundRows& rows) {
    return rows.Stored(*rows.PendingRow(), nameColumn).ToText();
}

QString NewName(BoundRows& rows) {
    return rows.At(*rows.PendingRow(), nameColumn).ToText();
}

} // namespace

QStringList CategoryNames(engine::Database& database) {
    QStringList names;
    const auto rows = database.OpenRecordset(u"NoteCategory");
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        names.append((*rows)["Name"].ToText());
    }
    return names;
}

std::vector<BoundColumn> CategoryColumns() {
    return {{u"Name"_s, "Name", CellKind::Text, Editing::Allowed, 40}};
}

std::optional<RowRules::Refusal> CategoryRules::Refuse(BoundRows& rows) {
    if (!NewName(rows).trimmed().isEmpty()) {
        return std::nullopt;
    }
    return Refusal{
        Translate(u"A category needs a name. Type one, or press Escape to take the change back."_s), nameColumn, {}};
}

QString CategoryRules::QuestionBeforeWriting(BoundRows& rows) {
    if (!IsRename(rows)) {
        return {};
    }
    const CategoryUse use = UseOfCategory(rows.Database(), OldName(rows));
    if (!use.Any()) {
        return {};
    }
    return Translate(u"The category \"%1\" is used by %2. Rename it to \"%3\" there too?\n\n"
                     "No leaves the category as it was."_s)
        .arg(OldName(rows), UseInWords(use), NewName(rows));
}

QString CategoryRules::QuestionBeforeDeleting(BoundRows& rows, const QList<int>& deleted) {
    QStringList lines;
    for (const int row : deleted) {
        const QString name = rows.Stored(row, nameColumn).ToText();
        const CategoryUse use = UseOfCategory(rows.Database(), name);
        if (use.Any()) {
            lines.append(Translate(u"\"%1\" is used by %2."_s).arg(name, UseInWords(use)));
        }
    }
    constexpr qsizetype mostLines = 15;
    if (const qsizetype more = lines.size() - mostLines; more > 0) {
        lines = lines.first(mostLines) << Translate(u"%1 more of them are used."_s).arg(more);
    }
    return lines.isEmpty() ? QString()
                           : Translate(u"%1\n\nThey keep the name, but it can no longer be chosen. Delete all the "
                                       "same?"_s)
                                 .arg(lines.join(u'\n'));
}

BoundRows::Outcome CategoryRules::Write(BoundRows& rows) {
    if (!IsRename(rows)) {
        return rows.Write();
    }
    const QString before = OldName(rows);
    const QString after = NewName(rows);
    const int row = *rows.PendingRow();
    bool written = false;
    try {
        engine::Transaction transaction(rows.Database());
        for (const QString& table : {u"[Note]"_s, u"StandardNotes"_s}) {
            rows.Database().Execute(u"Update %1 Set NoteCategory = %2 Where NoteCategory = %3"_s.arg(
                table, SqlText(after), SqlText(before)));
        }
        const BoundRows::Outcome outcome = rows.Write();
        written = outcome == BoundRows::Outcome::Done;
        if (written) {
            transaction.Commit();
        }
        return outcome;
    } catch (...) {
        if (written) {
            // The failed commit undid the row as well: the edit is still to be written.
            rows.Reopen();
            if (row < rows.Count()) {
                rows.Set(row, nameColumn, Value(after));
            }
        }
        throw;
    }
}

} // namespace velmora
