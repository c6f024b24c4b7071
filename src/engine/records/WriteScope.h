#pragma once

#include "engine/records/Session.h"

namespace velmora::engine::records {

// The transaction of one change: a real one that takes the write lock at once, or a savepoint inside the transaction
// that the caller holds open. Undone when the scope is left without Commit.
class WriteScope {
public:
    // `sql` is the text that the change belongs to, for the errors.
    WriteScope(Session& session, const QString& sql);
    ~WriteScope();
    WriteScope(const WriteScope&) = delete;
    WriteScope& operator=(const WriteScope&) = delete;

    // Throws RecordLocked when readers keep the file for longer than the store waits; the change is then undone.
    void Commit();

private:
    Session& session_;
    const QString& sql_;
    const bool nested_;
    bool open_ = true;
};

} // namespace velmora::engine::records
