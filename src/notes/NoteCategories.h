#pragma once

#include "notes/RowRules.h"

#include <QStringList>

namespace velmora {

// The names of the categories, in table order.
QStringList CategoryNames(engine::Database& database);

// How many records have that category.
struct CategoryUse {
    qint64 notes = 0;
    qint64 standardNotes = 0;
    bool Any() const { return notes + standardNotes > 0; }
};
CategoryUse UseOfCategory(engine::Database& database, const QString& name);

std::vector<BoundColumn> CategoryColumns();

// Categories: each has a name. One that notes use is renamed or deleted only after a question that says how many; the
// notes get the new name together with the category.
class CategoryRules : public RowRules {
public:
    std::optional<Refusal> Refuse(BoundRows& rows) override;
    QString QuestionBeforeWriting(BoundRows& rows) override;
    QString QuestionBeforeDeleting(BoundRows& rows, const std::vector<int>& deleted) override;
    BoundRows::Outcome Write(BoundRows& rows) override;
};

} // namespace velmora
