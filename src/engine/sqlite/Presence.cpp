#include "engine/sqlite/Presence.h"

#include "engine/EngineError.h"

#include <cerrno>
#include <chrono>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace velmora::engine::sqlite {

namespace {

using namespace std::chrono_literals;

enum class LockResult { Locked, Refused, Impossible };

struct flock WholeFile(short type) {
    struct flock lock = {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    return lock;
}

LockResult Lock(int descriptor, short type) {
    struct flock lock = WholeFile(type);
    if (::fcntl(descriptor, F_OFD_SETLK, &lock) == 0) {
        return LockResult::Locked;
    }
    return errno == EAGAIN || errno == EACCES ? LockResult::Refused : LockResult::Impossible;
}

// True when what stands in the way of an exclusive lock is a shared one.
bool IsShared(int descriptor) {
    struct flock lock = WholeFile(F_WRLCK);
    return ::fcntl(descriptor, F_OFD_GETLK, &lock) == 0 && lock.l_type == F_RDLCK;
}

// A copy that leaves removes the side file: a lock on a removed one says nothing to those who come later.
bool IsStillInPlace(int descriptor, const QByteArray& path) {
    struct stat opened = {};
    struct stat named = {};
    return ::fstat(descriptor, &opened) == 0 && ::stat(path.constData(), &named) == 0 &&
           opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
}

// For reading only where this user may not write to a side file that another user made.
FileHandle OpenSideFile(const QByteArray& sidePath, const QByteArray& databasePath) {
    FileHandle file = OpenFile(sidePath, O_RDWR | O_CREAT);
    if (!file) {
        return OpenFile(sidePath, O_RDONLY);
    }
    // Whoever may write to the database must be able to lock it, whatever this user's default for new files is.
    struct stat database = {};
    struct stat side = {};
    if (::stat(databasePath.constData(), &database) == 0 && ::fstat(file.Get(), &side) == 0) {
        const mode_t wanted = database.st_mode & mode_t{0666};
        if ((side.st_mode & mode_t{0777}) != wanted) {
            static_cast<void>(::fchmod(file.Get(), wanted));
        }
    }
    return file;
}

// How long to wait for one who holds the side file alone before believing in a repair: a copy that leaves does so too,
// for the moment in which it removes the file.
constexpr auto patience = 400ms;
constexpr auto pause = 5ms;

} // namespace

Presence Presence::Join(const QString& databasePath) {
    const QByteArray path = ResolvedPath(databasePath);
    const QByteArray sidePath = path + ".lock";
    const auto deadline = std::chrono::steady_clock::now() + patience;
    for (;;) {
        FileHandle file = OpenSideFile(sidePath, path);
        const LockResult result = file ? Lock(file.Get(), F_RDLCK) : LockResult::Impossible;
        if (result == LockResult::Impossible) {
            return Presence();
        }
        if (result == LockResult::Locked && IsStillInPlace(file.Get(), sidePath)) {
            return Presence(sidePath, std::move(file));
        }
        if (std::chrono::steady_clock::now() > deadline) {
            throw EngineError(
                EngineErrorNumber::RecordLocked,
                QStringLiteral("The database \"%1\" is being repaired. Try again when the repair is done.")
                    .arg(databasePath));
        }
        std::this_thread::sleep_for(pause);
    }
}

std::optional<Presence> Presence::TryExclusive(const QString& databasePath) {
    const QByteArray path = ResolvedPath(databasePath);
    const QByteArray sidePath = path + ".lock";
    const auto deadline = std::chrono::steady_clock::now() + patience;
    for (;;) {
        FileHandle file = OpenSideFile(sidePath, path);
        const LockResult result = file ? Lock(file.Get(), F_WRLCK) : LockResult::Impossible;
        if (result == LockResult::Impossible) {
            return std::nullopt;
        }
        if (result == LockResult::Locked && IsStillInPlace(file.Get(), sidePath)) {
            return Presence(sidePath, std::move(file));
        }
        if (IsShared(file.Get()) || std::chrono::steady_clock::now() > deadline) {
            return std::nullopt;
        }
        std::this_thread::sleep_for(pause);
    }
}

Presence::~Presence() {
    Leave();
}

Presence& Presence::operator=(Presence&& other) noexcept {
    if (this != &other) {
        Leave();
        sidePath_ = std::move(other.sidePath_);
        file_ = std::move(other.file_);
    }
    return *this;
}

void Presence::Leave() noexcept {
    if (file_ && Lock(file_.Get(), F_WRLCK) == LockResult::Locked && IsStillInPlace(file_.Get(), sidePath_)) {
        ::unlink(sidePath_.constData());
    }
    file_.Close();
}

struct flock StoreLocks() {
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = 0x40000000;
    lock.l_len = 512;
    return lock;
}

bool HasStoreLocks(const QByteArray& path) {
    const FileHandle file = OpenFile(path, O_RDONLY);
    struct flock lock = StoreLocks();
    return file && ::fcntl(file.Get(), F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

} // namespace velmora::engine::sqlite
