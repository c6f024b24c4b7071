#pragma once

#include "engine/Database.h"

#include <QByteArray>
#include <QString>

#include <chrono>
#include <functional>

struct sqlite3;

namespace velmora::engine::sqlite {

// The open database file. Waits for other users' locks for the time that the options name.
class Connection {
public:
    // Opens an existing file for reading and writing; never creates one. Does not read it yet, so that it can be
    // checked first; until SetWriting changes are not to be made. Throws CannotOpen.
    Connection(const QString& path, const OpenOptions& options);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // Sets how changes are written. Throws Damaged, DiskError.
    void SetWriting();

    sqlite3* Handle() const { return handle_; }

    // Called before the error is thrown whenever the store finds the file damaged.
    void SetDamageHook(std::function<void()> hook) { onDamage_ = std::move(hook); }

    // Throws the error for `code`; `sql` is the text in the caller's dialect.
    [[noreturn]] void Fail(int code, const QString& sql = {}) const;
    void Check(int code, const QString& sql = {}) const {
        if (code != 0) {
            Fail(code, sql);
        }
    }

    // Runs a statement of the store's own that returns nothing of interest.
    void Run(const char* sql) const;
    // The whole number in the first column of the first row.
    qint64 Number(const char* sql) const;

    // True while no transaction is open in the store.
    bool InAutocommit() const;

private:
    static int WaitForLock(void* self, int attempts);
    void Configure();

    sqlite3* handle_ = nullptr;
    std::function<void()> onDamage_;
    std::chrono::milliseconds patience_;
    std::chrono::steady_clock::time_point deadline_;
};

} // namespace velmora::engine::sqlite
