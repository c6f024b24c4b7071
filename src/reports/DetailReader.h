#pragma once

#include "reports/DailyFilter.h"
#include "reports/DetailRecords.h"
#include "reports/LookAhead.h"

namespace velmora {

// What a daily report needs of the records below its reservations.
struct DetailChoice {
    bool persons = false;
    bool guestExtensions = false;
    bool notes = false;
};

// The records below one reservation, as far as they are wanted.
struct ReservationDetails {
    std::unique_ptr<engine::Recordset> person;
    std::unique_ptr<engine::Recordset> guestLocation;
    std::unique_ptr<engine::Recordset> notes;
};

// Reads the records below the rows of a daily report, some rows ahead.
class DetailReader {
public:
    DetailReader(engine::Database& database, const DailyFilter& filter, DetailChoice choice);

    // The details of the current row; null when they were not read, or the row is left out. As LookAhead::Next.
    ReservationDetails* Next(engine::Recordset& rows);

private:
    std::unique_ptr<ReservationDetails> Read(const engine::Recordset& rows) const;

    engine::Database& database_;
    const DailyFilter& filter_;
    DetailChoice choice_;
    LookAhead<std::unique_ptr<ReservationDetails>> ahead_;
};

} // namespace velmora
