#include "engine/salvage/TableSource.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::salvage {

namespace {

constexpr size_t mostRanges = 20;

QString RangeText(KeyRange range) {
    return range.first == range.last ? QString::number(range.first) : u"%1 to %2"_s.arg(range.first).arg(range.last);
}

// "12 to 40, 55": runs of row numbers without a gap become one range.
QString RunsText(const std::map<qint64, QString>& rows) {
    std::vector<KeyRange> runs;
    for (const auto& [key, name] : rows) {
        if (!runs.empty() && runs.back().last + 1 == key) {
            runs.back().last = key;
        } else {
            runs.push_back({key, key});
        }
    }
    QStringList parts;
    for (size_t index = 0; index < std::min(runs.size(), mostRanges); ++index) {
        parts.append(RangeText(runs[index]));
    }
    return parts.join(u", "_s) + (runs.size() > mostRanges ? u", ..."_s : QString());
}

// The rows by what users know them by: the column that numbers them, or each row's key.
QString LostText(const TableSource& source) {
    const TableShape& shape = source.Shape();
    if (shape.rowNumberColumn >= 0) {
        const QByteArray& column = shape.stored[static_cast<size_t>(shape.rowNumberColumn)].name;
        return QString::fromUtf8(column) + u' ' + RunsText(source.lost);
    }
    RowList names;
    for (const auto& [key, name] : source.lost) {
        names.Add(name);
    }
    return names.ToText();
}

QString HoleText(KeyRange hole) {
    constexpr KeyRange everything;
    const bool isOpenBelow = hole.first == everything.first;
    const bool isOpenAbove = hole.last == everything.last;
    if (isOpenBelow && isOpenAbove) {
        return u"of any value"_s;
    }
    if (isOpenBelow) {
        return u"up to %1"_s.arg(hole.last);
    }
    return isOpenAbove ? u"from %1 on"_s.arg(hole.first) : RangeText(hole);
}

QString HolesText(const TableSource& source) {
    QStringList parts;
    for (size_t index = 0; index < std::min(source.holes.size(), mostRanges); ++index) {
        parts.append(HoleText(source.holes[index]));
    }
    const int column = source.Shape().rowNumberColumn;
    const QString number =
        column >= 0 ? QString::fromUtf8(source.Shape().stored[static_cast<size_t>(column)].name) : u"row number"_s;
    return number + u' ' + parts.join(u", "_s) + (source.holes.size() > mostRanges ? u", ..."_s : QString());
}

void AddLossRemarks(const TableSource& source, QStringList& remarks) {
    const bool isFound = source.root != 0;
    if (!isFound) {
        remarks.append(
            u"The file does not say any more where the table is: rows of it may be lost. It was made anew."_s);
    }
    if (source.restored > 0) {
        remarks.append(u"%1 of the saved rows were taken from an index."_s.arg(source.restored));
    }
    if (!source.lost.empty()) {
        remarks.append(u"Lost: %1."_s.arg(LostText(source)));
    }
    if (isFound && !source.lossIsExact) {
        remarks.append(u"More may be lost: rows with %1."_s.arg(HolesText(source)));
    }
    if (source.copier->UnreadableEntries() > 0 || source.mayMissEntries) {
        remarks.append(u"Parts of the table could not be read; more rows may be lost."_s);
    }
}

} // namespace

TableRepair Describe(const TableSource& source) {
    const TableCopier& copier = *source.copier;
    TableRepair repair;
    repair.table = QString::fromUtf8(source.Shape().name);
    repair.rowsSaved = copier.Saved();
    repair.rowsLost = static_cast<qint64>(source.lost.size()) + copier.UnreadableEntries() + copier.Duplicates().count +
                      copier.Refused().count;
    repair.mayHaveLostMore = !source.lossIsExact || source.mayMissEntries;
    AddLossRemarks(source, repair.remarks);
    if (copier.Duplicates().count > 0) {
        repair.remarks.append(
            u"Left out, because an earlier row has the same key: %1."_s.arg(copier.Duplicates().ToText()));
    }
    if (copier.Refused().count > 0) {
        repair.remarks.append(
            u"Left out, because they break a rule of the table: %1."_s.arg(copier.Refused().ToText()));
    }
    if (copier.Doubtful().count > 0) {
        repair.remarks.append(u"Saved, but with a text that may be damaged: %1."_s.arg(copier.Doubtful().ToText()));
    }
    return repair;
}

} // namespace velmora::engine::salvage
