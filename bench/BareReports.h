#pragma once

#include "base/DateTime.h"
#include "bench/BareStore.h"

#include <sqlite3.h>

#include <string>
#include <string_view>
#include <vector>

namespace velmora::bench {

// The queries of the management reports as a program would prepare them by hand, each run with its columns read and the
// records below its rows looked up. All return how many rows their report lists.
class BareReports {
public:
    BareReports(const QString& path, Date day);

    qint64 Occupants();
    qint64 Directory();
    // Persons outside of their space type.
    qint64 Exceptions();
    qint64 NotCheckedIn();
    qint64 LocationUsage() { return ReadAll(locations_); }
    qint64 PersonUsage() { return ReadAll(persons_); }

    // One pass over a covering index from the day on.
    qint64 Pass() { return ReadAll(pass_); }
    // Keeps the reading from being optimised away.
    qint64 BytesRead() const { return bytes_; }

private:
    sqlite3_stmt* PrepareOverDay(const char* sql);
    std::string_view Text(sqlite3_stmt* statement, int column);
    void BindText(sqlite3_stmt* statement, int index, std::string_view text);
    void ReadRow(sqlite3_stmt* statement);
    // Reads every row; returns their number.
    qint64 ReadAll(sqlite3_stmt* statement);
    bool IsMisplaced(sqlite3_stmt* person);

    BareStore store_;
    std::string start_;
    std::string end_;
    qint64 bytes_ = 0;
    sqlite3_stmt* occupants_ = nullptr;
    sqlite3_stmt* phone_ = nullptr;
    sqlite3_stmt* directory_ = nullptr;
    sqlite3_stmt* byType_ = nullptr;
    sqlite3_stmt* ofPerson_ = nullptr;
    sqlite3_stmt* allowed_ = nullptr;
    sqlite3_stmt* asset_ = nullptr;
    sqlite3_stmt* notCheckedIn_ = nullptr;
    sqlite3_stmt* locations_ = nullptr;
    sqlite3_stmt* persons_ = nullptr;
    sqlite3_stmt* pass_ = nullptr;
};

} // namespace velmora::bench
