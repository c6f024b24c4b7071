#include "print/PrintGrid.h"

#include "base/Steps.h"
#include "base/Translate.h"

#include <cmath>
#include <numeric>

namespace velmora::print {

using namespace Qt::StringLiterals;

namespace {

constexpr qint16 spaceBelowRow = 20;
constexpr qint16 roomForRow = 5;

// Rounded as a whole, the sum being what is compared with the page.
int TotalWidth(const GridSelection& grid) {
    int total = 0;
    for (const GridSelection::Column& column : grid.columns) {
        total = static_cast<int>(std::lrint(total + column.width));
    }
    return total;
}

void PreparePrinter(Printers& printers, const GridSelection& grid) {
    PrinterFont font = printers.CurrentFont();
    font.family = grid.font.family;
    font.points = grid.font.points;
    font.bold = grid.font.bold;
    font.italic = grid.font.italic;
    printers.SetFont(font);
    if (printers.PageWidth() < TotalWidth(grid)) {
        printers.SetOrientation(Orientation::Landscape);
    }
}

void PrintRow(PrintJob& job, const QStringList& texts, RowStyle style) {
    job.PrintTableRow(std::vector<Text>(texts.begin(), texts.end()), style);
    job.AddVerticalSpace(spaceBelowRow);
}

void PrintRows(PrintJob& job, const GridSelection& grid) {
    QStringList cells;
    for (const GridSelection::Column& column : grid.columns) {
        cells += column.caption;
    }
    job.PrintRule(5, 20, 20);
    PrintRow(job, cells, RowStyle::CutHeading);
    for (int row = 0; row < grid.rowCount; ++row) {
        for (qsizetype i = 0; i < cells.size(); ++i) {
            cells[i] = grid.text(row, static_cast<int>(i));
        }
        job.EnsureRoom(roomForRow);
        PrintRow(job, cells, RowStyle::Cut);
    }
}

bool IsWanted(const Program& program, const GridSelection& grid) {
    Dialogs& dialogs = program.services().dialogs;
    if (grid.rowCount == 0) {
        dialogs.ShowMessage({Translate(u"No rows selected for Printing.\r\n"
                                       "Select rows by clicking on the row selectors at the left of each row.\r\n"
                                       "Select multiple rows by holding the Ctrl key.\r\n"
                                       "Select all rows by clicking on the grid caption."_s),
                             program.Title(), Buttons::Ok, Icon::None});
        return false;
    }
    const QString question = Translate(u"Print %1 Rows?"_s).arg(grid.rowCount);
    return dialogs.ShowMessage({question, program.Title(), Buttons::YesNo, Icon::None}) == Answer::Yes;
}

} // namespace

std::vector<int> GridPrintWidths(const GridSelection& grid, int room) {
    const int total = TotalWidth(grid);
    const double scale = total <= room ? 1.0 : static_cast<double>(room) / total;
    std::vector<int> widths;
    for (const GridSelection::Column& column : grid.columns) {
        widths.push_back(static_cast<int>(std::lrint(column.width * scale)));
    }
    return widths;
}

void PrintGridSelection(const Program& program, PrintJob& job, const GridSelection& grid) {
    const Services& services = program.services();
    if (!IsWanted(program, grid)) {
        return;
    }
    BusyPointer busy(services.eventLoop);
    Steps steps(services.errors, u"Printing"_s, u"Print Grid Selection"_s);
    const bool printed = steps.Step(u"Printing Rows"_s, [&] {
        PreparePrinter(services.printers, grid);
        const int room = services.printers.CurrentPage().width;
        job.BeginReport();
        std::vector<int> ends = GridPrintWidths(grid, room);
        std::partial_sum(ends.begin(), ends.end(), ends.begin());
        job.PlaceTabStops(ends);
        job.PrintReportTitle(grid.caption, QStringView(), QStringView());
        PrintRows(job, grid);
    });
    if (printed) {
        job.EndReport();
    } else {
        job.AbandonReport();
    }
}

} // namespace velmora::print
