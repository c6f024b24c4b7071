#pragma once

#include "notes/BoundRows.h"

#include <QStringList>

namespace velmora {

// The names of the categories, in table order.
QStringList CategoryNames(engine::Database& database);

std::vector<BoundColumn> CategoryColumns();

// Categories: each has a name. One that notes use is renamed or deleted only after a question that says how many; the
// notes get the new name together with the category.
class CategoryRules : public RowRules {
public:
    std::optional<Refusal> Refuse(BoundRows& rows) override;
    QString QuestionBeforeWriting(BoundRows& rows) override;
    QString QuestionBeforeDeleting(BoundRows& rows, const QList<int>& deleted) override;
    BoundRows::Outcome Write(BoundRows& rows) override;
};

} // namespace velmora
