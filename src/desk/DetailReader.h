#pragma once

#include "desk/DailyFilter.h"
#include "desk/DetailRecords.h"

#include <vector>

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

// Reads the records below the rows of a daily report some rows ahead, under one read lock: on a file that several desks
// share, taking the lock anew for every small record costs more than reading it. The lock is gone before the report
// lets events through.
//
// Reading ahead fails silently: what could not be read is asked for again when it is printed, and told then.
class DetailReader {
public:
    DetailReader(engine::Database& database, const DailyFilter& filter, DetailChoice choice)
        : database_(database), filter_(filter), choice_(choice) {}

    // The details of the current row; null when they were not read. Call it for every row in turn, before its fields
    // are read: the set moves meanwhile and comes back. Good until the next call.
    ReservationDetails* Next(engine::Recordset& rows);

private:
    void ReadAhead(engine::Recordset& rows);

    engine::Database& database_;
    const DailyFilter& filter_;
    DetailChoice choice_;
    // Of the rows from the last reading on; none for a row that is left out or could not be read.
    std::vector<std::unique_ptr<ReservationDetails>> ahead_;
    size_t next_ = 0;
};

} // namespace velmora
