#include "data/CreateSite.h"

#include "data/Resource.h"
#include "data/SiteSchema.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <cstring>

namespace velmora {

namespace {

// Folders and files made on the way, taken away again unless all went well.
class Leftovers {
public:
    Leftovers() = default;
    ~Leftovers() {
        for (const QString& file : files_) {
            QFile::remove(file);
        }
        for (const QString& folder : folders_) {
            QDir().rmdir(folder);
        }
    }
    Leftovers(const Leftovers&) = delete;
    Leftovers& operator=(const Leftovers&) = delete;

    void MakeFolder(const QString& path) {
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

    void WriteFile(const QString& path, const QByteArray& content) {
        QSaveFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit()) {
            throw ProgramError(ErrorNumber::FileAccess,
                               QStringLiteral("Cannot write \"%1\": %2").arg(path, file.errorString()));
        }
        files_.append(path);
    }

    void Keep() {
        files_.clear();
        folders_.clear();
    }

private:
    QStringList files_;
    QStringList folders_; // the innermost first
};

void WriteStoredQueries(engine::NewDatabase& database) {
    engine::Loader queries =
        database.Load(QStringLiteral("StoredQuery"), {QStringLiteral("Name"), QStringLiteral("Text")});
    for (const StoredQueryText& query : StoredQueryTexts()) {
        queries.Add({query.name, query.text});
    }
}

} // namespace

QString CreateSite(const QString& folder, const SiteContent& content) {
    const QString path = SiteDatabasePath(folder);
    Leftovers leftovers;
    leftovers.MakeFolder(folder);
    engine::NewDatabase database(path, SiteSchemaText());
    WriteStoredQueries(database);
    if (content.addRows) {
        content.addRows(database);
    }
    QStringList files = content.files;
    for (const QString& layout : ResourceNames(QStringLiteral("layouts"))) {
        files.append(QStringLiteral("layouts/") + layout);
    }
    for (const QString& file : files) {
        const QString target = QDir(folder).filePath(QFileInfo(file).fileName());
        // Files that the site has already are its own.
        if (!QFileInfo::exists(target)) {
            leftovers.WriteFile(target, ReadResourceBytes(file));
        }
    }
    database.Finish();
    leftovers.Keep();
    return path;
}

QString SiteDatabasePath(const QString& folder) {
    return QDir(folder).filePath(QStringLiteral("Velmora.MDB"));
}

} // namespace velmora
