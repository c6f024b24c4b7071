#pragma once

#include "base/Program.h"
#include "print/PrintJob.h"

#include <functional>

namespace velmora::print {

// The rows that are selected in a grid, as they are to be printed.
struct GridSelection {
    struct Column {
        QString caption;
        // Twips.
        double width = 0;
    };

    QString caption;
    FontChoice font;
    std::vector<Column> columns;
    // Of the selected rows, in the order in which they were selected.
    int rowCount = 0;
    std::function<QString(int row, int column)> text;
};

// The width of each column in print: as it is, or all of them narrowed by one factor where they are together wider than
// `room`. Twips.
std::vector<int> GridPrintWidths(const GridSelection& grid, int room);

// Prints the selected rows as a table on the job's target: headings, then a line per row. Asks before; without a
// selection says how to select instead. The printer keeps the grid's font, and landscape where the grid is wider than
// its page. Failures are reported, not thrown.
void PrintGridSelection(const Program& program, PrintJob& job, const GridSelection& grid);

} // namespace velmora::print
