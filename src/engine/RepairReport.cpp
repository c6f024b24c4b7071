#include "engine/RepairReport.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine {

bool RepairReport::LostNothing() const {
    return std::all_of(tables.begin(), tables.end(), [](const TableRepair& table) { return table.LostNothing(); });
}

QString RepairReport::ToText() const {
    QStringList lines;
    for (const TableRepair& table : tables) {
        QString line = u"%1: %2 rows saved, %3%4 lost."_s.arg(table.table)
                           .arg(table.rowsSaved)
                           .arg(table.mayHaveLostMore ? u"at least "_s : QString())
                           .arg(table.rowsLost);
        for (const QString& remark : table.remarks) {
            line += u' ' + remark;
        }
        lines.append(line);
    }
    lines += remarks;
    if (!keptAs.isEmpty()) {
        lines.append(u"The damaged file is kept as \"%1\"."_s.arg(keptAs));
    }
    return lines.join(u'\n') + u'\n';
}

} // namespace velmora::engine
