#include "engine/sqlite/salvage/RepairFile.h"

#include "base/DateTime.h"
#include "engine/EngineError.h"
#include "engine/sqlite/FileHandle.h"
#include "engine/sqlite/FilePlace.h"
#include "engine/sqlite/Presence.h"
#include "engine/sqlite/Soundness.h"
#include "engine/sqlite/Statement.h"
#include "engine/sqlite/salvage/Salvager.h"

#include <QByteArray>
#include <QFile>
#include <QString>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::salvage {

namespace {

constexpr const char* journalEndings[] = {"-journal", "-wal"};
constexpr const char* sideEndings[] = {"-journal", "-wal", "-shm"};

[[noreturn]] void ThrowInUse(const QString& path) {
    throw EngineError(EngineErrorNumber::RecordLocked,
                      u"The database \"%1\" appears to be open by other users and cannot be repaired."_s.arg(path));
}

sqlite::Presence TakePresence(const QString& path) {
    std::optional<sqlite::Presence> presence = sqlite::Presence::TryExclusive(path);
    if (!presence) {
        ThrowInUse(path);
    }
    return std::move(*presence);
}

bool HasContent(const QByteArray& path) {
    struct stat status = {};
    return ::stat(path.constData(), &status) == 0 && status.st_size > 0;
}

void Rename(const QByteArray& from, const QByteArray& to) {
    if (::rename(from.constData(), to.constData()) != 0) {
        sqlite::ThrowFileError(errno, u"replace"_s, to);
    }
    sqlite::SyncFolderOf(to);
}

void WriteAll(int descriptor, const char* bytes, ssize_t size, const QByteArray& path) {
    while (size > 0) {
        const ssize_t written = ::write(descriptor, bytes, static_cast<size_t>(size));
        if (written < 0 && errno != EINTR) {
            sqlite::ThrowFileError(errno, u"write"_s, path);
        }
        bytes += std::max<ssize_t>(written, 0);
        size -= std::max<ssize_t>(written, 0);
    }
}

// What the disk fails to read becomes zeros: the copy has every byte at its place. `to` must not exist yet (EEXIST).
void CopyFile(const QByteArray& from, const QByteArray& to) {
    const sqlite::FileHandle source = sqlite::OpenFile(from, O_RDONLY);
    const sqlite::FileHandle target = source ? sqlite::OpenFile(to, O_WRONLY | O_CREAT | O_EXCL) : sqlite::FileHandle();
    struct stat status = {};
    if (!target || ::fstat(source.Get(), &status) != 0) {
        sqlite::ThrowFileError(errno, u"copy to"_s, to);
    }
    constexpr qsizetype blockSize = 65536;
    for (qint64 offset = 0; offset < status.st_size; offset += blockSize) {
        const qint64 wanted = std::min<qint64>(blockSize, status.st_size - offset);
        QByteArray block(wanted, '\0');
        for (qint64 got = 0; got < wanted;) {
            const ssize_t count =
                ::pread(source.Get(), block.data() + got, static_cast<size_t>(wanted - got), offset + got);
            if (count <= 0) {
                break;
            }
            got += count;
        }
        WriteAll(target.Get(), block.constData(), wanted, to);
    }
    if (::fsync(target.Get()) != 0) {
        sqlite::ThrowFileError(errno, u"write"_s, to);
    }
}

// True when a file kept earlier, or a journal kept with one, has the name. Nobody else makes such names while the
// exchange has the database for itself.
bool IsTaken(const QByteArray& name) {
    return ::access(name.constData(), F_OK) == 0 ||
           std::any_of(std::begin(journalEndings), std::end(journalEndings),
                       [&](const char* ending) { return ::access((name + ending).constData(), F_OK) == 0; });
}

// A second name for the file; a copy where the file system has no second names. `to` must be free.
void LinkOrCopy(const QByteArray& from, const QByteArray& to) {
    if (::link(from.constData(), to.constData()) != 0) {
        CopyFile(from, to);
    }
}

// A damaged database that is ours alone, and its replacement by a new file.
//
// A writer that crashed leaves a journal beside the file, without which the file is not what it should be. The exchange
// works on a copy into which the journal has been played back; the file and its journal stay as they are until a new
// database is ready.
class FileExchange {
public:
    // Throws FileNotFound, CannotOpen, RecordLocked when anyone has the database open.
    explicit FileExchange(const QString& path);
    ~FileExchange();
    FileExchange(const FileExchange&) = delete;
    FileExchange& operator=(const FileExchange&) = delete;

    // The file to read the rows from.
    const QByteArray& Source() const { return copy_.isEmpty() ? path_ : copy_; }
    // Where to build the new database.
    QByteArray NewPath() const { return path_ + ".repair-new"; }

    // Puts the complete new file at NewPath() in the database's place and clears the damage mark. Returns under which
    // dated name the damaged file is kept.
    QByteArray Replace(DateTime now);

private:
    void MakeCopy();
    void RemoveRemains() const;
    QByteArray KeepOriginal(DateTime now) const;
    void CopyOwnership(const QByteArray& to) const;

    QString givenPath_;
    QByteArray path_;
    sqlite::Presence presence_;
    // Holds every lock of the store's on the file, so that no other program can open it either.
    sqlite::FileHandle file_;
    struct stat status_ = {};
    // Empty where there was no journal.
    QByteArray copy_;
};

FileExchange::FileExchange(const QString& path)
    : givenPath_(path), path_(sqlite::ResolvedPath(path)), presence_(TakePresence(path)) {
    file_ = sqlite::OpenFile(path_, O_RDWR);
    if (!file_ || ::fstat(file_.Get(), &status_) != 0) {
        sqlite::ThrowFileError(errno, u"open"_s, path_);
    }
    struct flock lock = sqlite::StoreLocks();
    if (::fcntl(file_.Get(), F_OFD_SETLK, &lock) != 0 && (errno == EAGAIN || errno == EACCES)) {
        ThrowInUse(path);
    }
    RemoveRemains();
    for (const char* ending : journalEndings) {
        if (HasContent(path_ + ending)) {
            copy_ = path_ + ".repair-copy";
        }
    }
    if (!copy_.isEmpty()) {
        try {
            MakeCopy();
        } catch (...) {
            RemoveRemains();
            throw;
        }
    }
}

FileExchange::~FileExchange() {
    RemoveRemains();
}

// Of this repair, or of one that was killed.
void FileExchange::RemoveRemains() const {
    for (const char* name : {".repair-new", ".repair-copy"}) {
        const QByteArray remains = path_ + name;
        ::unlink(remains.constData());
        for (const char* ending : sideEndings) {
            ::unlink((remains + ending).constData());
        }
    }
}

void FileExchange::MakeCopy() {
    CopyFile(path_, copy_);
    for (const char* ending : journalEndings) {
        if (HasContent(path_ + ending)) {
            CopyFile(path_ + ending, copy_ + ending);
        }
    }
    // The first read plays a journal back, whatever it then thinks of the pages.
    try {
        sqlite::Connection store(copy_, SQLITE_OPEN_READWRITE);
        try {
            sqlite::Statement(store.Handle(), "SELECT count(*) FROM sqlite_schema").Step();
        } catch (const EngineError& error) {
            if (error.Kind() != EngineErrorNumber::Damaged && error.Kind() != EngineErrorNumber::Failed) {
                throw;
            }
        }
        sqlite3_wal_checkpoint_v2(store.Handle(), "main", SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
    } catch (const EngineError& error) {
        if (error.Kind() != EngineErrorNumber::Damaged) {
            throw;
        }
    }
    for (const char* ending : sideEndings) {
        ::unlink((copy_ + ending).constData());
    }
    sqlite::SyncFile(copy_);
}

void FileExchange::CopyOwnership(const QByteArray& to) const {
    // Only the administrator may give a file away; where that fails, this user's file serves as well.
    static_cast<void>(::chown(to.constData(), status_.st_uid, status_.st_gid));
    if (::chmod(to.constData(), status_.st_mode & 07777) != 0) {
        sqlite::ThrowFileError(errno, u"set the permissions of"_s, to);
    }
}

QByteArray FileExchange::KeepOriginal(DateTime now) const {
    QString moment = StorageText(now);
    moment.remove(u'-').remove(u':').replace(u' ', u'-');
    const QByteArray dated = path_ + ".damaged-" + moment.toLatin1();
    QByteArray kept = dated;
    for (int number = 2; IsTaken(kept); ++number) {
        kept = dated + '-' + QByteArray::number(number);
    }
    try {
        LinkOrCopy(path_, kept);
        for (const char* ending : journalEndings) {
            if (HasContent(path_ + ending)) {
                LinkOrCopy(path_ + ending, kept + ending);
            }
        }
        sqlite::SyncFolderOf(path_);
    } catch (...) {
        for (const char* ending : {"", "-journal", "-wal"}) {
            ::unlink((kept + ending).constData());
        }
        throw;
    }
    return kept;
}

QByteArray FileExchange::Replace(DateTime now) {
    CopyOwnership(NewPath());
    if (!copy_.isEmpty()) {
        CopyOwnership(copy_);
    }
    QByteArray kept = KeepOriginal(now);
    // A journal may meet the file it belongs to, or that file with the journal played back, but never another one: so
    // the played-back copy takes the old file's place first, then the journal goes, and only then the new file comes.
    if (!copy_.isEmpty()) {
        Rename(copy_, path_);
    }
    for (const char* ending : sideEndings) {
        ::unlink((path_ + ending).constData());
    }
    sqlite::SyncFolderOf(path_);
    Rename(NewPath(), path_);
    sqlite::ClearDamageMark(givenPath_);
    return kept;
}

} // namespace

RepairReport Repair(const DatabasePlace& place, const Schema& schema, DateTime now) {
    const auto* file = dynamic_cast<const sqlite::FilePlace*>(&place);
    if (file == nullptr) {
        throw EngineError(EngineErrorNumber::CannotOpen, u"%1 cannot be repaired from here."_s.arg(place.Location()));
    }
    const QString& path = file->Path();
    try {
        sqlite::CheckPath(path);
        FileExchange exchange(path);
        Salvager salvager(exchange.Source(), exchange.NewPath(), schema);
        RepairReport report = salvager.Run();
        if (!schema.tables.empty()) {
            sqlite::SchemaVersion(salvager.File().Handle(), path, schema);
        }
        salvager.File().Close();
        report.keptAs = QFile::decodeName(exchange.Replace(now));
        salvager.File().Release();
        return report;
    } catch (const EngineError& error) {
        if (error.Kind() != EngineErrorNumber::Damaged) {
            throw;
        }
        throw EngineError(EngineErrorNumber::Damaged,
                          u"\"%1\" could not be repaired: %2"_s.arg(path, error.Description()));
    }
}

} // namespace velmora::engine::salvage
