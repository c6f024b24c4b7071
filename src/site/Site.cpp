#include "site/Site.h"

#include "base/Error.h"
#include "engine/Stores.h"
#include "site/Resource.h"
#include "site/SiteSchema.h"
#include "site/SiteVersion.h"
#include "site/StoredQueries.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <cstring>

namespace velmora {

namespace {

// Folders and files made on the way to a whole, taken away again with the object unless they are kept. What is there
// already stays as it is.
class NewFiles {
public:
    NewFiles() = default;
    ~NewFiles();
    NewFiles(const NewFiles&) = delete;
    NewFiles& operator=(const NewFiles&) = delete;

    // Makes the folder and those above it. Throws Error (PathNotFound).
    void MakeFolder(const QString& path);
    // Throws Error (FileAccess).
    void WriteUnlessThere(const QString& path, const QByteArray& content);
    void Keep();

private:
    QStringList files_;
    QStringList folders_; // the innermost first
};

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

} // namespace

Site::Site(QString folder) : folder_(std::move(folder)) {
    if (!folder_.endsWith(u'/')) {
        folder_ += u'/';
    }
}

QString Site::Location() const {
    return engine::PlaceIn(folder_)->Location();
}

bool Site::Exists() const {
    return engine::PlaceIn(folder_)->Exists();
}

std::unique_ptr<engine::Database> Site::Open(Log* log) const {
    engine::OpenOptions options{.schema = SiteSchema()};
    const auto place = engine::PlaceIn(folder_);
    auto database = place->Open(options);
    if (IsOutdated(*database)) {
        // Whoever only reads does not wait long for another's lock: the next opening tries again.
        options.busyMilliseconds = 200;
        const QString account = BringUpToDate(*place->Open(options));
        if (log != nullptr && !account.isEmpty()) {
            log->Write(account);
        }
        database->Idle(engine::IdleOption::RefreshCache);
    }
    return database;
}

engine::CheckResult Site::Check() const {
    return engine::PlaceIn(folder_)->Check({.schema = SiteSchema()});
}

bool Site::IsInUse() const {
    return engine::PlaceIn(folder_)->IsInUse();
}

void Site::Create(const SiteContents& contents) const {
    NewFiles files;
    files.MakeFolder(folder_);
    const auto database = engine::PlaceIn(folder_)->Create(SiteSchema());
    WriteSiteVersion(*database);
    const auto queries =
        database->Load(QStringLiteral("StoredQuery"), {QStringLiteral("Name"), QStringLiteral("Text")});
    for (const StoredQueryText& query : StoredQueryTexts()) {
        queries->Add({query.name, query.text});
    }
    if (contents.addRows) {
        contents.addRows(*database);
    }
    for (const auto& [name, content] : contents.files) {
        files.WriteUnlessThere(File(name), content);
    }
    const QString layouts = QStringLiteral("layouts");
    for (const QString& name : ResourceNames(layouts)) {
        files.WriteUnlessThere(File(name), ReadResourceBytes(layouts + u'/' + name));
    }
    database->Finish();
    files.Keep();
}

Site CreateSite(const QString& folder, const SiteContents& contents) {
    Site site(QDir(folder).path());
    site.Create(contents);
    return site;
}

} // namespace velmora
