#pragma once

#include "engine/DatabasePlace.h"

namespace velmora::engine::sqlite {

// A site's database in a file.
class FilePlace final : public DatabasePlace {
public:
    explicit FilePlace(QString path) : path_(std::move(path)) {}

    const QString& Path() const { return path_; }
    QString Location() const override { return path_; }
    bool Exists() const override;
    std::unique_ptr<Database> Open(const OpenOptions& options) const override;
    CheckResult Check(const OpenOptions& options) const override;
    bool IsInUse() const override;
    std::unique_ptr<NewDatabase> Create(const Schema& schema) const override;

private:
    QString path_;
};

} // namespace velmora::engine::sqlite
