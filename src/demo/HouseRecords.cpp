#include "demo/HouseRecords.h"

#include "demo/Calendar.h"
#include "demo/WordFile.h"

#include <algorithm>

namespace velmora::demo {

namespace {

using std::chrono::days;
using std::chrono::minutes;

} // namespace

void WriteOwners(const std::vector<Asset>& assets, const Staff& staff, Random random, RowSink& sink) {
    std::vector<std::pair<int, const Person*>> owners;
    for (const Asset& asset : assets) {
        const bool owned =
            asset.kind == AssetKind::Lab || asset.kind == AssetKind::Equipment || asset.kind == AssetKind::TrainingRoom;
        if (owned || (asset.kind == AssetKind::MeetingRoom && random.Percent(25))) {
            owners.emplace_back(asset.id, &random.Pick(staff.persons));
        }
    }
    sink.BeginTable("Asset/Organization", "AssetID Organization");
    for (const auto& [asset, person] : owners) {
        sink.Add({Value(asset), Value(person->organization)});
    }
    sink.BeginTable("Asset/Person", "AssetID LastName FirstName");
    for (const auto& [asset, person] : owners) {
        if (random.Percent(80)) {
            sink.Add({Value(asset), Value(person->lastName), Value(person->firstName)});
        }
    }
}

void WriteWorkOrders(const Options& options, const Scale& scale, const std::vector<Asset>& assets, const Staff& staff,
                     Random random, RowSink& sink) {
    const WordFile words = WordFile::Load(QStringLiteral("work-orders.txt"));
    const QStringList& descriptions = words.Entries(QStringLiteral("work orders"));
    // The last two years.
    std::vector<DateTime> requested;
    for (int n = 0; n < scale.workOrders; ++n) {
        const Date day = WorkingDayFrom(options.today + days(random.Between(-730, -3)));
        requested.push_back(StartOfDay(day) + minutes(7 * 60 + random.Below(600)));
    }
    std::sort(requested.begin(), requested.end());

    sink.BeginTable("WorkOrder", "Requested Completed Asset Description RequestedBy");
    for (const DateTime moment : requested) {
        const Asset& asset = random.Pick(assets);
        const Person& person = random.Pick(staff.persons);
        const bool past = moment < StartOfDay(options.today);
        const bool known = asset.kind != AssetKind::Gone && !random.Percent(4);
        sink.Add({Value(moment), Value(past && random.Below(3) < 2), known ? Value(asset.id) : Value(),
                  Value(random.Pick(descriptions)), Value(person.firstName + u' ' + person.lastName)});
    }
}

void WritePrintAttributes(RowSink& sink) {
    sink.BeginTable("PrintAttributes", "Caption PrintAttributes");
    const WordFile words = WordFile::Load(QStringLiteral("print-attributes.txt"));
    for (const QStringList& attribute : words.Rows(QStringLiteral("print attributes"))) {
        const QStringList styles = attribute[1].split(u' ');
        const int bits =
            (styles.contains(QLatin1String("bold")) ? 1 : 0) | (styles.contains(QLatin1String("italic")) ? 2 : 0) |
            (styles.contains(QLatin1String("underlined")) ? 4 : 0) | (styles.contains(QLatin1String("grey")) ? 8 : 0);
        sink.Add({Value(attribute[0]), Value(bits)});
    }
}

} // namespace velmora::demo
