#pragma once

#include <QString>

#include <string>

struct sqlite3;
struct sqlite3_stmt;

namespace velmora::bench {

// The store's plain C interface, as a program would use it by hand; ends the program on any error.
class BareStore {
public:
    // Creates the file when there is none; the same settings as the engine's connection otherwise.
    explicit BareStore(const QString& path);
    ~BareStore();
    BareStore(const BareStore&) = delete;
    BareStore& operator=(const BareStore&) = delete;

    void Run(const std::string& sql);
    // Stays prepared until the store goes.
    sqlite3_stmt* Prepare(const char* sql);
    // One step; true on a row.
    bool Step(sqlite3_stmt* statement);

private:
    void Check(int code);
    sqlite3* handle_ = nullptr;
};

} // namespace velmora::bench
