#include "reports/Occupancy.h"

#include "data/ReservationTime.h"

namespace velmora {

void Occupancy::ReadPeriod(const engine::Recordset& record) {
    start = record["Start"].ToDateTime();
    end = record["End"].ToDateTime();
}

void AppendPersonName(QByteArray& cell, const Occupancy& occupancy) {
    Append(cell, occupancy.lastName);
    cell += ", ";
    Append(cell, occupancy.firstName);
}

void AppendPeriod(QByteArray& cell, const Occupancy& occupancy, const LocaleText& locale) {
    if (occupancy.start && occupancy.end) {
        cell += ReservationTimeText(locale, *occupancy.start, *occupancy.end, occupancy.permanent).toUtf8();
    }
}

} // namespace velmora
