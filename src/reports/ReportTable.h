#pragma once

#include "reports/Occupancy.h"
#include "reports/ReportContext.h"

#include <span>

namespace velmora {

// The table that the exception, directory and occupant reports print. All its cells are there before it is printed, for
// each column takes a share of the page's width in proportion to its widest text.
class ReportTable {
public:
    // `captions` are the header row's texts in English.
    explicit ReportTable(const std::vector<const char*>& captions);

    // Cells are added in UTF-8, row after row: whatever `append` appends is the next one.
    template <typename Append>
    void AddCell(Append&& append) {
        append(pool_);
        ends_.push_back(pool_.size());
    }

    // Prints the header row and the other rows in the report that is open, and shows the progress of it. A first cell
    // that says the same as the one above it is left out; the others have a rule above them.
    void Print(ReportContext& context) const;

private:
    print::Text Cell(size_t row, size_t column) const;
    size_t RowCount() const { return ends_.size() / columns_; }
    void SetTabStops(print::PrintJob& job) const;

    size_t columns_;
    // All texts in one piece, row after row, and where each of them ends.
    QByteArray pool_;
    std::vector<qsizetype> ends_;
};

// A column of a table: its caption in English, and what appends a row's cell in UTF-8.
template <typename Row>
struct Column {
    const char* caption;
    void (*append)(QByteArray& cell, const Row& row, const LocaleText& locale);
};

template <typename Row>
void PrintTable(ReportContext& context, std::span<const Column<Row>> columns, const std::vector<Row>& rows) {
    std::vector<const char*> captions;
    for (const Column<Row>& column : columns) {
        captions.push_back(column.caption);
    }
    ReportTable table(captions);
    const LocaleText& locale = context.program.services().localeText;
    for (const Row& row : rows) {
        for (const Column<Row>& column : columns) {
            table.AddCell([&](QByteArray& cell) { column.append(cell, row, locale); });
        }
    }
    table.Print(context);
}

} // namespace velmora
