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

// Reads the assets into the collection, one step per statement.
class AssetFill {
public:
    AssetFill(engine::Database& database, Steps& steps) : database_(database), steps_(steps) {}

    void Run() {
        assets_.Clear();
        if (!Step([this] { Open(); })) {
            return;
        }
        while (!rows_->EndOfFile()) {
            Step([this] { AddRow(); });
            if (!Step([this] { rows_->MoveNext(); })) {
                return;
            }
        }
    }

private:
    void Open();
    void AddRow();
    void AddPlaceholder(qint16 number);
    // Adds the asset under its name's key, or under another name where that key is taken.
    static void Add(AssetCollection& assets, const AssetCollection::Item& asset);

    template <typename Function>
    bool Step(Function&& statement) {
        return steps_.Step(QString(), std::forward<Function>(statement));
    }

    engine::Database& database_;
    Steps& steps_;
    AssetCollection& assets_ = Assets();
    std::unique_ptr<engine::Recordset> rows_;
    int expected_ = 1;

    // Where the fields stand in the rows.
    struct Columns {
        int AssetID = 0;
        int Name = 0;
        int Description = 0;
        int Location = 0;
        int LocationLvl = 0;
        int LocationX = 0;
        int LocationY = 0;
    } columns_;
};

void AssetFill::Open() {
    rows_ = database_.OpenRecordset(u"Select * from Asset order by AssetID");
    const auto place = [this](const QString& name) {
        const auto& fields = rows_->Fields();
        for (size_t i = 0; i < fields.size(); ++i) {
            if (fields[i].name.compare(name, Qt::CaseInsensitive) == 0) {
                return static_cast<int>(i);
            }
        }
        throw ProgramError(ErrorNumber::InvalidCall, u"The table Asset has no field \"%1\"."_s.arg(name));
    };
    columns_ = {place(u"AssetID"_s),     place(u"Name"_s),      place(u"Description"_s), place(u"Location"_s),
                place(u"LocationLvl"_s), place(u"LocationX"_s), place(u"LocationY"_s)};
    if (!rows_->EndOfFile()) {
        rows_->MoveLast();
        rows_->MoveFirst();
        assets_.Reserve(rows_->RecordCount());
    }
}

void AssetFill::AddRow() {
    const qint64 number = rows_->FieldAt(columns_.AssetID).ToInteger();
    if (number > std::numeric_limits<qint16>::max() || number < std::numeric_limits<qint16>::min()) {
        throw ProgramError(
            ErrorNumber::InvalidCall,
            u"The asset number %1 is outside -32768 to 32767. The asset is left out; give it another number."_s.arg(
                number));
    }
    while (expected_ < number) {
        AddPlaceholder(static_cast<qint16>(expected_++));
    }
    const auto small = [this](int column) {
        return static_cast<int>(std::clamp<qint64>(rows_->FieldAt(column).ToInteger(),
                                                   std::numeric_limits<qint16>::min(),
                                                   std::numeric_limits<qint16>::max()));
    };
    auto asset = std::make_shared<AssetInfo>();
    asset->SetnAsset(static_cast<qint16>(number));
    asset->SetstrName(rows_->FieldAt(columns_.Name).ToText());
    asset->SetDescription(rows_->FieldAt(columns_.Description).ToText());
    asset->SetnLocation(rows_->FieldAt(columns_.Location).ToBool());
    asset->SetLocationLevel(small(columns_.LocationLvl));
    asset->SetLocationX(small(columns_.LocationX));
    asset->SetLocationY(small(columns_.LocationY));
    Add(assets_, asset);
    ++expected_;
}

void AssetFill::AddPlaceholder(qint16 number) {
    auto asset = std::make_shared<AssetInfo>();
    asset->SetnAsset(number);
    asset->SetstrName(u"Missing "_s + QString::number(number));
    asset->SetDescription(u"Missing Asset "_s + QString::number(number));
    Add(assets_, asset);
}

void AssetFill::Add(AssetCollection& assets, const AssetCollection::Item& asset) {
    if (assets.Add(asset, AssetKey(asset->strName()))) {
        return;
    }
    // Another asset may have the substitute for its own name.
    const QString substitute = u"ERROR "_s + QString::number(asset->nAsset());
    asset->SetstrName(substitute);
    for (int i = 2; assets.Find(AssetKey(asset->strName())) != nullptr; ++i) {
        asset->SetstrName(substitute + u' ' + QString::number(i));
    }
    const Program& program = CurrentProgram();
    program.services().dialogs.ShowMessage(
        {Translate(u"Duplicate Asset Name, Asset Temporarily renamed to"_s) + u' ' + asset->strName(), program.Title(),
         Buttons::Ok, Icon::None});
    (void)assets.Add(asset, AssetKey(asset->strName()));
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
    AssetFill(database, steps).Run();
}

} // namespace velmora
