#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace velmora::engine::sqlite {

// The statements of a schema script, in the order in which a database is filled fastest: tables and whatever else the
// rows need before the rows, indexes behind them.
struct SchemaScript {
    // UTF-8, in the script's order, without what is only comment.
    std::vector<QByteArray> beforeRows;
    std::vector<QByteArray> uniqueIndexes;
    std::vector<QByteArray> otherIndexes;

    explicit SchemaScript(const QString& text);

    size_t StatementCount() const { return beforeRows.size() + uniqueIndexes.size() + otherIndexes.size(); }
};

enum class SchemaStatement { Table, VirtualTable, UniqueIndex, Index, Other };

// What a statement creates, by its first words.
SchemaStatement KindOf(const QByteArray& statement);

} // namespace velmora::engine::sqlite
