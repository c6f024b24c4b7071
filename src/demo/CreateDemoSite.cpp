#include "demo/CreateDemoSite.h"

#include "data/CreateSite.h"
#include "demo/DemoSite.h"
#include "demo/Resources.h"

namespace velmora::demo {

namespace {

class DatabaseSink : public RowSink {
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

QString CreateDemoSite(const QString& folder, const Options& options) {
    RegisterResources();
    const auto addRows = [&](engine::NewDatabase& database) {
        DatabaseSink sink(database);
        WriteDemoSite(options, sink);
    };
    return CreateSite(folder, {.addRows = addRows,
                               .files = {QStringLiteral("demo/htmlpre.txt"), QStringLiteral("demo/htmlpost.txt")}});
}

} // namespace velmora::demo
