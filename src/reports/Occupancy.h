#pragma once

#include "base/LocaleText.h"
#include "engine/Recordset.h"

#include <QStringView>

namespace velmora {

// Who is where and when, as rows of tables say it. Texts are UTF-8.
struct Occupancy {
    QUtf8StringView location;
    QUtf8StringView lastName;
    QUtf8StringView firstName;
    std::optional<DateTime> start;
    std::optional<DateTime> end;
    bool permanent = false;
    // False for a location without an occupant, of which nothing but the name is known.
    bool occupied = true;

    // Reads `start` and `end`.
    void ReadPeriod(const engine::Recordset& record);
};

inline void Append(QByteArray& cell, QUtf8StringView text) {
    cell.append(text.data(), text.size());
}
// "Last, First".
void AppendPersonName(QByteArray& cell, const Occupancy& occupancy);
// The period as ReservationTimeText has it; nothing when a date is missing.
void AppendPeriod(QByteArray& cell, const Occupancy& occupancy, const LocaleText& locale);

} // namespace velmora
