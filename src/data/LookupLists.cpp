#include "data/LookupLists.h"

#include "base/Program.h"
#include "base/Steps.h"
#include "base/Translate.h"
#include "data/Helpers.h"

#include <array>
#include <limits>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

using Int16 = std::numeric_limits<qint16>;

// The fields of an asset. Where they stand in the rows is looked up once, since the start waits for all assets.
enum AssetField { AssetID, Name, Description, Location, LocationLvl, LocationX, LocationY };
constexpr std::array fieldNames = {u"AssetID",     u"Name",      u"Description", u"Location",
                                   u"LocationLvl", u"LocationX", u"LocationY"};
using FieldPlaces = std::array<int, fieldNames.size()>;

FieldPlaces PlacesIn(const engine::Recordset& rows) {
    FieldPlaces places{};
    for (size_t i = 0; i < places.size(); ++i) {
        const auto isIt = [i](const engine::FieldDescription& field) {
            return field.name.compare(QStringView(fieldNames[i]), Qt::CaseInsensitive) == 0;
        };
        places[i] = static_cast<int>(std::ranges::find_if(rows.Fields(), isIt) - rows.Fields().begin());
    }
    return places;
}

// Adds the asset under its name's key, or under another name where that key is taken.
void AddAsset(const AssetCollection::Item& asset) {
    AssetCollection& assets = Assets();
    if (assets.Add(asset, AssetKey(asset->strName()))) {
        return;
    }
    // Another asset may have the substitute for its own name.
    const QString substitute = u"ERROR "_s + QString::number(asset->nAsset());
    asset->SetstrName(substitute);
    for (int i = 2; !assets.Add(asset, AssetKey(asset->strName())); ++i) {
        asset->SetstrName(substitute + u' ' + QString::number(i));
    }
    const Program& program = CurrentProgram();
    program.services().dialogs.ShowMessage(
        {Translate(u"Duplicate Asset Name, Asset Temporarily renamed to"_s) + u' ' + asset->strName(), program.Title(),
         Buttons::Ok, Icon::None});
}

void AddPlaceholder(qint16 number) {
    auto asset = std::make_shared<AssetInfo>();
    asset->SetnAsset(number);
    asset->SetstrName(u"Missing "_s + QString::number(number));
    asset->SetDescription(u"Missing Asset "_s + QString::number(number));
    AddAsset(asset);
}

// Adds the asset of a row, and placeholders for the numbers between `expected` and its own.
void AddRow(const engine::Recordset& row, const FieldPlaces& places, int& expected) {
    const auto at = [&](AssetField field) { return row.FieldAt(places[field]); };
    const qint64 number = at(AssetID).ToInteger();
    if (number > Int16::max() || number < Int16::min()) {
        throw ProgramError(
            ErrorNumber::InvalidCall,
            u"The asset number %1 is outside -32768 to 32767. The asset is left out; give it another number."_s.arg(
                number));
    }
    while (expected < number) {
        AddPlaceholder(static_cast<qint16>(expected++));
    }
    const auto small = [&](AssetField field) {
        return static_cast<int>(std::clamp<qint64>(at(field).ToInteger(), Int16::min(), Int16::max()));
    };
    auto asset = std::make_shared<AssetInfo>();
    asset->SetnAsset(static_cast<qint16>(number));
    asset->SetstrName(at(Name).ToText());
    asset->SetDescription(at(Description).ToText());
    asset->SetnLocation(at(Location).ToBool());
    asset->SetLocationLevel(small(LocationLvl));
    asset->SetLocationX(small(LocationX));
    asset->SetLocationY(small(LocationY));
    AddAsset(asset);
    ++expected;
}

struct LookupStep {
    const char16_t* text;
    // The part of the whole that is done when the step begins.
    double fraction;
};

// Other programs of the suite load the other lists.
constexpr std::array lookupSteps = {
    LookupStep{u"Loading Persons", 0},           LookupStep{u"Loading Event/Space Types", 0.15},
    LookupStep{u"Loading Organizations", 0.3},   LookupStep{u"Loading Areas", 0.45},
    LookupStep{u"Loading Locations", 0.55},      LookupStep{u"Loading Storage Names", 0.7},
    LookupStep{u"Loading Search Profiles", 0.85}};
constexpr size_t locationStep = 4;

} // namespace

bool AssetCollection::Add(const Item& item, const QString& key) {
    int& position = byKey_[key.toCaseFolded()];
    if (position != 0) {
        return false;
    }
    items_.push_back(item);
    position = Count();
    return true;
}

void AssetCollection::Clear() {
    items_.clear();
    byKey_.clear();
}

AssetCollection& Assets() {
    return CurrentProgram().Part<AssetCollection>();
}

void LoadLookupLists(engine::Database& database, double startPercent, double endPercent) {
    const Services& services = CurrentProgram().services();
    const BusyPointer busy(services.eventLoop);
    for (size_t i = 0; i < lookupSteps.size(); ++i) {
        services.progress.Show(Translate(QString::fromUtf16(lookupSteps[i].text)),
                               startPercent + lookupSteps[i].fraction * (endPercent - startPercent));
        if (i == locationStep) {
            FillAssetCollection(database);
        }
    }
}

void FillAssetCollection(engine::Database& database) {
    const Services& services = CurrentProgram().services();
    const BusyPointer busy(services.eventLoop);
    Steps steps(services.errors, u"Internal Data"_s, u"Fill Asset Collection"_s);
    Assets().Clear();
    std::unique_ptr<engine::Recordset> rows;
    if (!steps.Step({}, [&] { rows = database.OpenRecordset(u"Select * from Asset order by AssetID"); })) {
        return;
    }
    const FieldPlaces places = PlacesIn(*rows);
    Assets().Reserve(rows->RecordCount());
    int expected = 1;
    while (!rows->EndOfFile()) {
        steps.Step({}, [&] { AddRow(*rows, places, expected); });
        if (!steps.Step({}, [&] { rows->MoveNext(); })) {
            return;
        }
    }
}

} // namespace velmora
