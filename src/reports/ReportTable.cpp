#include "reports/ReportTable.h"

#include "base/Translate.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace velmora {

using namespace Qt::StringLiterals;

ReportTable::ReportTable(const std::array<const char*, columns>& captions) {
    Row header;
    for (size_t i = 0; i < columns; ++i) {
        header[i] = Translate(QString::fromLatin1(captions[i])).toUtf8();
    }
    Append(header);
}

void ReportTable::Append(const Row& row) {
    for (const QByteArray& cell : row) {
        pool_ += cell;
        ends_.push_back(pool_.size());
    }
}

print::Text ReportTable::Cell(size_t row, size_t column) const {
    const size_t index = row * columns + column;
    const qsizetype begin = index == 0 ? 0 : ends_[index - 1];
    return QUtf8StringView(pool_.constData() + begin, ends_[index] - begin);
}

print::Text ReportTable::FirstCell(size_t row) const {
    const bool repeats = row > 0 && Cell(row, 0) == Cell(row - 1, 0);
    return repeats ? print::Text() : Cell(row, 0);
}

void ReportTable::SetTabStops(print::PrintJob& job) const {
    std::array<int, columns> widths{};
    for (size_t row = 0; row < RowCount(); ++row) {
        for (size_t column = 0; column < columns; ++column) {
            widths[column] = std::max(widths[column], job.TextWidth(Cell(row, column)));
        }
    }
    const double total = std::accumulate(widths.begin(), widths.end(), 0.0);
    if (total == 0) {
        // Nothing has a width on this target: the tab stops that there are do as well as any.
        return;
    }
    std::array<double, columns> behind{};
    std::partial_sum(widths.begin(), widths.end(), behind.begin());
    job.SetTabStops(behind[0] / total, behind[1] / total, behind[2] / total, behind[3] / total);
}

void ReportTable::Print(ReportContext& context, Steps& steps) const {
    print::PrintJob& job = context.job;
    steps.Step({}, [&] { SetTabStops(job); });
    const QString sending = Translate(u"Sending Report"_s);
    const size_t last = RowCount() - 1;
    for (size_t row = 0; row <= last; ++row) {
        const print::Text first = FirstCell(row);
        if (row > 0 && !first.isEmpty()) {
            steps.Step({}, [&] { job.PrintRule(row == 1 ? 10 : 5, 15, 15); });
        }
        steps.Step({}, [&] { job.PrintTableRow({first, Cell(row, 1), Cell(row, 2), Cell(row, 3), Cell(row, 4)}); });
        if (last > 0) {
            const double percent = 100.0 * static_cast<double>(row) / static_cast<double>(last);
            ShowReportProgress(context.view, sending, static_cast<qint16>(std::lrint(percent)));
        }
    }
}

} // namespace velmora
