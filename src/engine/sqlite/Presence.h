#pragma once

#include "engine/sqlite/FileHandle.h"

#include <QByteArray>
#include <QString>

#include <fcntl.h>
#include <optional>

namespace velmora::engine::sqlite {

// Says that this copy has a database open, so that a repair can tell whether it is alone.
//
// The sign is a lock on a side file "<database>.lock": shared by every open copy, exclusive for a repair. It belongs to
// the open file, not to the process, so two openings in one process count as two, and the system takes it away from a
// copy that is killed. The last one out removes the side file.
class Presence {
public:
    // Throws RecordLocked while a repair is at work. Where the side file cannot be made or locked (a read-only folder,
    // a file system without locks) the presence is held without a lock.
    static Presence Join(const QString& databasePath);
    // None while any other presence is held, and where the side file cannot be made or locked.
    static std::optional<Presence> TryExclusive(const QString& databasePath);

    ~Presence();
    Presence(Presence&&) noexcept = default;
    Presence& operator=(Presence&& other) noexcept;
    Presence(const Presence&) = delete;
    Presence& operator=(const Presence&) = delete;

    // False for a presence that had to do without its lock.
    bool IsLocked() const { return static_cast<bool>(file_); }

private:
    Presence() = default;
    Presence(QByteArray sidePath, FileHandle file) : sidePath_(std::move(sidePath)), file_(std::move(file)) {}
    void Leave() noexcept;

    QByteArray sidePath_;
    FileHandle file_;
};

// The lock on all bytes that the store locks to say what it does with a file.
struct flock StoreLocks();

// True while another program holds one of the store's locks on the file. Ask only while nobody in this process has it
// open: looking would take this process's own locks away.
bool HasStoreLocks(const QByteArray& path);

} // namespace velmora::engine::sqlite
