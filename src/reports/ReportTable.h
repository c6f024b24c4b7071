#pragma once

#include "base/Steps.h"
#include "reports/ReportContext.h"

#include <array>

namespace velmora {

// The table of five columns that the exception, directory and occupant reports print. It is kept until all records are
// read, for each column takes a share of the page's width in proportion to its widest text.
class ReportTable {
public:
    static constexpr size_t columns = 5;
    // Texts in UTF-8.
    using Row = std::array<QByteArray, columns>;

    // `captions` are the header row's texts in English.
    explicit ReportTable(const std::array<const char*, columns>& captions);

    void Append(const Row& row);

    // Prints the header row and the rows in the order in which they were appended, in the report that is open, and
    // shows the progress of it. A first cell that says the same as the one above it is left out; the others have a rule
    // above them. Failures are reported through `steps`.
    void Print(ReportContext& context, Steps& steps) const;

private:
    print::Text Cell(size_t row, size_t column) const;
    size_t RowCount() const { return ends_.size() / columns; }
    // The row's first cell as it is printed.
    print::Text FirstCell(size_t row) const;
    void SetTabStops(print::PrintJob& job) const;

    // All texts in one piece, row after row, and where each of them ends.
    QByteArray pool_;
    std::vector<qsizetype> ends_;
};

} // namespace velmora
