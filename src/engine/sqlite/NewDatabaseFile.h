#pragma once

#include "engine/NewDatabase.h"
#include "engine/Schema.h"
#include "engine/sqlite/FileBuilder.h"

#include <vector>

namespace velmora::engine::sqlite {

class FileLoader;

// The file grows under a temporary name in the same folder.
class NewDatabaseFile final : public NewDatabase {
public:
    // Throws FileExists when there is something at `path`, CannotOpen, DiskFull.
    NewDatabaseFile(const QString& path, const Schema& schema);

    std::shared_ptr<Loader> Load(const QString& table, const QStringList& columns) override;
    void Finish() override;

private:
    QString path_;
    SchemaSql schema_;
    FileBuilder file_;
    std::vector<std::weak_ptr<FileLoader>> loaders_;
};

} // namespace velmora::engine::sqlite
