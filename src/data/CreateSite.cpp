#include "data/CreateSite.h"

#include "data/demo/DemoSite.h"
#include "site/Resource.h"

#include <QDir>

namespace velmora {

namespace {

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

} // namespace

Site CreateSite(const QString& folder, const std::optional<demo::Options>& demo) {
    Site site(QDir(folder).path());
    SiteContents contents;
    if (demo) {
        contents.addRows = [&](engine::NewDatabase& database) {
            DatabaseSink sink(database);
            demo::WriteDemoSite(*demo, sink);
        };
        for (const QString& name : {QStringLiteral("htmlpre.txt"), QStringLiteral("htmlpost.txt")}) {
            contents.files[name] = ReadResourceBytes(QStringLiteral("demo/") + name);
        }
    }
    site.Create(contents);
    return site;
}

} // namespace velmora
