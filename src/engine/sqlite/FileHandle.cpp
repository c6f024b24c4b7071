#include "engine/sqlite/FileHandle.h"

#include "engine/EngineError.h"

#include <QFile>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

namespace velmora::engine::sqlite {

FileHandle::~FileHandle() {
    Close();
}

FileHandle::FileHandle(FileHandle&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}

FileHandle& FileHandle::operator=(FileHandle&& other) noexcept {
    if (this != &other) {
        Close();
        descriptor_ = std::exchange(other.descriptor_, -1);
    }
    return *this;
}

void FileHandle::Close() {
    if (descriptor_ >= 0) {
        ::close(std::exchange(descriptor_, -1));
    }
}

FileHandle OpenFile(const QByteArray& path, int flags, unsigned mode) {
    int descriptor = -1;
    do {
        descriptor = ::open(path.constData(), flags | O_CLOEXEC, mode);
    } while (descriptor < 0 && errno == EINTR);
    return FileHandle(descriptor);
}

QByteArray ResolvedPath(const QString& path) {
    const QByteArray given = QFile::encodeName(path);
    struct Free {
        void operator()(char* memory) const { std::free(memory); }
    };
    const std::unique_ptr<char, Free> resolved(::realpath(given.constData(), nullptr));
    return resolved ? QByteArray(resolved.get()) : given;
}

void ThrowFileError(int systemError, const QString& action, const QByteArray& path) {
    auto number = EngineErrorNumber::DiskError;
    if (systemError == ENOSPC || systemError == EDQUOT || systemError == EFBIG) {
        number = EngineErrorNumber::DiskFull;
    } else if (systemError == EACCES || systemError == EPERM || systemError == EROFS) {
        number = EngineErrorNumber::CannotOpen;
    }
    throw EngineError(number,
                      QStringLiteral("Could not %1 \"%2\": %3.")
                          .arg(action, QFile::decodeName(path), QString::fromLocal8Bit(std::strerror(systemError))));
}

namespace {

void Sync(const QByteArray& path, int flags) {
    const FileHandle file = OpenFile(path, flags);
    // Some network file systems cannot sync a folder; their names are safe once the call that made them returns.
    if (!file || (::fsync(file.Get()) != 0 && errno != EINVAL && errno != ENOTSUP)) {
        ThrowFileError(errno, QStringLiteral("write"), path);
    }
}

} // namespace

void SyncFile(const QByteArray& path) {
    Sync(path, O_RDONLY);
}

void SyncFolderOf(const QByteArray& path) {
    const qsizetype slash = path.lastIndexOf('/');
    Sync(slash < 0 ? QByteArray(".") : path.left(slash + 1), O_RDONLY | O_DIRECTORY);
}

} // namespace velmora::engine::sqlite
