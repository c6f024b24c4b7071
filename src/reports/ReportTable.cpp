#include "reports/ReportTable.h"

#include "base/Translate.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace velmora {

using namespace Qt::StringLiterals;

ReportTable::ReportTable(const std::vector<const char*>& captions) : columns_(captions.size()) {
    for (const char* caption : captions) {
        AddCell([&](QByteArray& cell) { cell += Translate(QString::fromLatin1(caption)).toUtf8(); });
    }
}

print::Text ReportTable::Cell(size_t row, size_t column) const {
    const size_t index = row * columns_ + column;
    const qsizetype begin = index == 0 ? 0 : ends_[index - 1];
    return QUtf8StringView(pool_.constData() + begin, ends_[index] - begin);
}

void ReportTable::SetTabStops(print::PrintJob& job) const {
    std::vector<int> widths(columns_);
    for (size_t row = 0; row < RowCount(); ++row) {
        for (size_t column = 0; column < columns_; ++column) {
            widths[column] = std::max(widths[column], job.TextWidth(Cell(row, column)));
        }
    }
    const double total = std::accumulate(widths.begin(), widths.end(), 0.0);
    if (total == 0) {
        // Nothing has a width on this target: the tab stops that there are do as well as any.
        return;
    }
    std::vector<double> stops(columns_);
    std::partial_sum(widths.begin(), widths.end(), stops.begin());
    std::for_each(stops.begin(), stops.end(), [&](double& stop) { stop /= total; });
    // The last column ends where the page does.
    job.SetTabStops(std::span(stops).first(columns_ - 1));
}

void ReportTable::Print(ReportContext& context) const {
    print::PrintJob& job = context.job;
    SetTabStops(job);
    const QString sending = Translate(u"Sending Report"_s);
    std::vector<print::Text> cells(columns_);
    const size_t last = RowCount() - 1;
    for (size_t row = 0; row <= last; ++row) {
        for (size_t column = 0; column < columns_; ++column) {
            cells[column] = Cell(row, column);
        }
        if (row > 0 && cells[0] == Cell(row - 1, 0)) {
            cells[0] = {};
        }
        if (row > 0 && !cells[0].isEmpty()) {
            job.PrintRule(row == 1 ? 10 : 5, 15, 15);
        }
        job.PrintTableRow(cells);
        if (last > 0) {
            const double percent = 100.0 * static_cast<double>(row) / static_cast<double>(last);
            ShowReportProgress(context.view, sending, static_cast<qint16>(std::lrint(percent)));
        }
    }
}

} // namespace velmora
