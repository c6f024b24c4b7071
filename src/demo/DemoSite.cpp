#include "demo/DemoSite.h"

#include "demo/WordFile.h"

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

void WriteDemoSite(const Options& options, RowSink& sink) {
    House house{.options = options};
    house.assets = MakeAssets(house);
    house.staff = MakeStaff(house);
    house.occupancies = PlanOccupancies(house);

    WriteAssets(house, sink);
    WritePersons(house, sink);
    WriteOwners(house, sink);
    WriteStandardNotes(house, sink);
    WritePrintAttributes(sink);
    WriteWorkOrders(house, sink);
    WriteNotes(house, WriteReservations(house, sink), sink);
}

Site CreateDemoSite(const QString& folder, const Options& options) {
    SiteContents contents;
    contents.addRows = [&](engine::NewDatabase& database) {
        DatabaseSink sink(database);
        WriteDemoSite(options, sink);
    };
    for (const QString& name : {QStringLiteral("htmlpre.txt"), QStringLiteral("htmlpost.txt")}) {
        contents.files[name] = ReadDemoFile(name);
    }
    return CreateSite(folder, contents);
}

} // namespace velmora::demo
