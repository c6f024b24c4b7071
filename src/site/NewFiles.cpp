#include "site/NewFiles.h"

#include "base/Error.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <cstring>

namespace velmora {

NewFiles::~NewFiles() {
    for (const QString& file : files_) {
        QFile::remove(file);
    }
    for (const QString& folder : folders_) {
        QDir().rmdir(folder);
    }
}

void NewFiles::MakeFolder(const QString& path) {
    QStringList missing;
    for (QString folder = QDir::cleanPath(QFileInfo(path).absoluteFilePath()); !QFileInfo::exists(folder);) {
        missing.append(folder);
        folder = QFileInfo(folder).path();
    }
    for (auto folder = missing.crbegin(); folder != missing.crend(); ++folder) {
        if (!QDir().mkdir(*folder)) {
            const QString reason = QString::fromLocal8Bit(std::strerror(errno));
            throw ProgramError(ErrorNumber::PathNotFound,
                               QStringLiteral("Cannot make the folder \"%1\": %2").arg(*folder, reason));
        }
        folders_.prepend(*folder);
    }
}

void NewFiles::WriteUnlessThere(const QString& path, const QByteArray& content) {
    if (QFileInfo::exists(path)) {
        return;
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit()) {
        throw ProgramError(ErrorNumber::FileAccess,
                           QStringLiteral("Cannot write \"%1\": %2").arg(path, file.errorString()));
    }
    files_.append(path);
}

void NewFiles::Keep() {
    files_.clear();
    folders_.clear();
}

} // namespace velmora
