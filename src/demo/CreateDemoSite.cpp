#include "demo/CreateDemoSite.h"

#include "demo/DemoSite.h"
#include "demo/Resources.h"
#include "site/Resource.h"

namespace velmora::demo {

namespace {

class DatabaseSink : public RowSink {
public:
    explicit DatabaseSink(engine::NewDatabase& database) : database_(database) {}
    void BeginTable(const QString& table, const QStringList& columns) override {
        loader_ = database_.Load(table, columns);
    }
    void Add(std::span<const Value> row) override { loader_->Add(row); }

private:
    engine::NewDatabase& database_;
    std::shared_ptr<engine::Loader> loader_;
};

} // namespace

Site CreateDemoSite(const QString& folder, const Options& options) {
    RegisterResources();
    SiteContents contents;
    contents.addRows = [&](engine::NewDatabase& database) {
        DatabaseSink sink(database);
        WriteDemoSite(options, sink);
    };
    for (const QString& name : {QStringLiteral("htmlpre.txt"), QStringLiteral("htmlpost.txt")}) {
        contents.files[name] = ReadResourceBytes(QStringLiteral("demo/") + name);
    }
    return CreateSite(folder, contents);
}

} // namespace velmora::demo
