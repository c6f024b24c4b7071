#include "reports/OccupancyTable.h"

#include "base/Translate.h"
#include "data/ReservationTime.h"
#include "reports/ReportFrame.h"

#include <cmath>
#include <numeric>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

// The cells of the header row and the others, row after row.
std::vector<QByteArray> Cells(std::span<const OccupancyColumn> columns, const std::vector<OccupancyRow>& rows,
                              const LocaleText& locale) {
    std::vector<QByteArray> cells;
    for (const OccupancyColumn& column : columns) {
        cells.push_back(Translate(QString::fromLatin1(column.caption)).toUtf8());
    }
    for (const OccupancyRow& row : rows) {
        for (const OccupancyColumn& column : columns) {
            cells.push_back(column.cell(row, locale));
        }
    }
    return cells;
}

void SetTabStops(print::PrintJob& job, const std::vector<QByteArray>& cells, size_t columns) {
    std::vector<int> widths(columns);
    for (size_t n = 0; n < cells.size(); ++n) {
        int& width = widths[n % columns];
        width = std::max(width, job.TextWidth(cells[n]));
    }
    const double total = std::accumulate(widths.begin(), widths.end(), 0.0);
    if (total == 0) {
        // Nothing has a width on this target: the tab stops that there are do as well as any.
        return;
    }
    std::vector<double> stops(columns);
    std::partial_sum(widths.begin(), widths.end(), stops.begin());
    std::for_each(stops.begin(), stops.end(), [&](double& stop) { stop /= total; });
    // The last column ends where the page does.
    job.SetTabStops(std::span(stops).first(columns - 1));
}

} // namespace

void OccupancyRow::ReadPeriod(const engine::Recordset& record) {
    start = record["Start"].ToDateTime();
    end = record["End"].ToDateTime();
}

QByteArray LocationCell(const OccupancyRow& row, const LocaleText&) {
    return QByteArrayView(row.location).toByteArray();
}

// "Abel, Anna".
QByteArray PersonCell(const OccupancyRow& row, const LocaleText&) {
    return row.occupied ? (row.lastName.toString() + u", "_s + row.firstName.toString()).toUtf8() : QByteArray();
}

QByteArray OrganizationCell(const OccupancyRow& row, const LocaleText&) {
    return row.occupied ? QByteArrayView(row.organization).toByteArray() : QByteArray();
}

QByteArray PeriodCell(const OccupancyRow& row, const LocaleText& locale) {
    return row.start && row.end ? ReservationTimeText(locale, *row.start, *row.end, row.permanent).toUtf8()
                                : QByteArray();
}

void PrintTable(ReportContext& context, std::span<const OccupancyColumn> columns,
                const std::vector<OccupancyRow>& rows) {
    print::PrintJob& job = context.job;
    const std::vector<QByteArray> texts = Cells(columns, rows, context.program.services().localeText);
    SetTabStops(job, texts, columns.size());
    const QString sending = Translate(u"Sending Report"_s);
    for (size_t row = 0; row <= rows.size(); ++row) {
        const auto first = texts.begin() + static_cast<std::ptrdiff_t>(row * columns.size());
        std::vector<print::Text> cells(first, first + std::ssize(columns));
        if (row > 0 && *first == *(first - std::ssize(columns))) {
            cells[0] = {};
        }
        if (row > 0 && !cells[0].isEmpty()) {
            job.PrintRule(row == 1 ? 10 : 5, 15, 15);
        }
        job.PrintTableRow(cells);
        if (!rows.empty()) {
            const double percent = 100.0 * static_cast<double>(row) / static_cast<double>(rows.size());
            ShowReportProgress(context.view, sending, static_cast<qint16>(std::lrint(percent)));
        }
    }
}

} // namespace velmora
