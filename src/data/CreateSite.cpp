#include "data/CreateSite.h"

#include "data/Resource.h"
#include "data/SiteSchema.h"
#include "data/demo/DemoSite.h"
#include "engine/NewDatabase.h"

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

// Hands a demo site's rows on to the database in the making.
class DatabaseSink : public demo::RowSink {
public:
    explicit DatabaseSink(engine::NewDatabase& database) : database_(database) {}
    void BeginTable(const QString& table, const QStringList& columns) override {
        loader_.emplace(database_.Load(table, columns));
    }
    void Add(std::span<const Value> row) override { loader_->Add(row); }

private:
    engine::NewDatabase& database_;
    std::optional<engine::Loader> loader_;
};

void WriteStoredQueries(engine::NewDatabase& database) {
    engine::Loader queries =
        database.Load(QStringLiteral("StoredQuery"), {QStringLiteral("Name"), QStringLiteral("Text")});
    for (const StoredQueryText& query : StoredQueryTexts()) {
        queries.Add({query.name, query.text});
    }
}

// Files that the site has already are its own.
void WriteMissingFiles(const QDir& folder, const QString& source, const QStringList& names, Leftovers& leftovers) {
    for (const QString& name : names) {
        if (!folder.exists(name)) {
            leftovers.WriteFile(folder.filePath(name), ReadResourceBytes(source + name));
        }
    }
}

} // namespace

QString CreateSite(const QString& folder, const std::optional<demo::Options>& demo) {
    const QString path = SiteDatabasePath(folder);
    Leftovers leftovers;
    leftovers.MakeFolder(folder);
    engine::NewDatabase database(path, SiteSchemaText());
    WriteStoredQueries(database);
    if (demo) {
        DatabaseSink sink(database);
        demo::WriteDemoSite(*demo, sink);
        WriteMissingFiles(QDir(folder), QStringLiteral("demo/"),
                          {QStringLiteral("htmlpre.txt"), QStringLiteral("htmlpost.txt")}, leftovers);
    }
    WriteMissingFiles(QDir(folder), QStringLiteral("layouts/"), ResourceNames(QStringLiteral("layouts")), leftovers);
    database.Finish();
    leftovers.Keep();
    return path;
}

QString SiteDatabasePath(const QString& folder) {
    return QDir(folder).filePath(QStringLiteral("Velmora.MDB"));
}

} // namespace velmora
