#pragma once

#include <QByteArray>
#include <QString>

namespace velmora::engine::sqlite {

// Owns one file descriptor.
class FileHandle {
public:
    FileHandle() = default;
    explicit FileHandle(int descriptor) : descriptor_(descriptor) {}
    ~FileHandle();
    FileHandle(FileHandle&& other) noexcept;
    FileHandle& operator=(FileHandle&& other) noexcept;
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;

    explicit operator bool() const { return descriptor_ >= 0; }
    int Get() const { return descriptor_; }
    void Close();

private:
    int descriptor_ = -1;
};

// Opens with close-on-exec; an empty handle, and errno, when that fails.
FileHandle OpenFile(const QByteArray& path, int flags, unsigned mode = 0666);

// The path in the system's encoding with its symbolic links resolved: side files belong beside the file itself,
// whatever name it was opened by. A path that does not exist is returned as it is.
QByteArray ResolvedPath(const QString& path);

// Waits until the file, or the names in the folder that holds `path`, are on the disk. Throws DiskError.
void SyncFile(const QByteArray& path);
void SyncFolderOf(const QByteArray& path);

// Throws the engine's error for a failed file operation: DiskFull, CannotOpen or DiskError. `action` completes
// "could not ...".
[[noreturn]] void ThrowFileError(int systemError, const QString& action, const QByteArray& path);

} // namespace velmora::engine::sqlite
