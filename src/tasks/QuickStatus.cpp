#include "tasks/QuickStatus.h"

#include "base/Steps.h"
#include "base/Translate.h"
#include "data/AssetRules.h"
#include "data/Helpers.h"

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

constexpr qint16 locations = 1;

std::vector<StatusEntry> Locations(engine::Database& database) {
    std::vector<StatusEntry> entries;
    const auto rows = database.OpenRecordset(u"Select * from Asset order by Name");
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        const engine::Field name = (*rows)["Name"];
        if (!IsUnusedName(name.Utf8())) {
            entries.push_back({name.ToText(), static_cast<int>((*rows)["AssetID"].ToInteger())});
        }
    }
    return entries;
}

std::vector<StatusEntry> Persons(engine::Database& database) {
    std::vector<StatusEntry> entries;
    const auto rows = database.OpenRecordset(u"Select * from Person");
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        QString name = (*rows)["LastName"].ToText();
        const auto length = static_cast<int>(name.size());
        name += u", "_s + (*rows)["FirstName"].ToText();
        entries.push_back({std::move(name), length});
    }
    return entries;
}

QString SummaryQuery(qint16 statusType, const StatusEntry& entry, DateTime now) {
    QString text = u"SELECT * FROM Asset INNER JOIN Reservation ON Asset.AssetID = Reservation.Asset where End > "_s +
                   SqlDateTime(now) + u' ';
    if (statusType == locations) {
        text += u" and Asset.AssetID = "_s + QString::number(entry.itemData);
    } else {
        constexpr int separatorLength = 2;
        text += u" and "_s +
                PersonCondition(entry.text.left(entry.itemData), entry.text.mid(entry.itemData + separatorLength));
    }
    return text + u" order by End"_s;
}

QString SummaryLine(const engine::Recordset& row, const LocaleText& locale) {
    const auto date = [&](const char* field) {
        const auto moment = row[field].ToDateTime();
        return moment ? locale.GeneralDate(*moment) : QString();
    };
    return Translate(u"From"_s) + u' ' + date("Start") + u' ' + Translate(u"Until"_s) + u' ' + date("End") + u' ' +
           Translate(u"in"_s) + u' ' + row["Asset.Name"].ToText() + u" - "_s + row["EventType"].ToText() + u" : "_s +
           row["Reservation.Name"].ToText();
}

} // namespace

std::vector<StatusEntry> FillStatusList(const Program& program, qint16 statusType, engine::Database& database) {
    const Services& services = program.services();
    QString failure;
    try {
        const BusyPointer busy(services.eventLoop);
        return statusType == locations ? Locations(database) : Persons(database);
    } catch (const std::exception&) {
        failure = CurrentError().Description();
    }
    services.dialogs.ShowMessage({Translate(u"Error occured filling select list:"_s) + u' ' + failure, program.Title(),
                                  Buttons::Ok, Icon::None});
    return {};
}

QStringList StatusSummary(const Program& program, qint16 statusType, engine::Database& database,
                          const StatusEntry& entry) {
    const Services& services = program.services();
    const BusyPointer busy(services.eventLoop);
    Steps steps(services.errors, u"Service Administration"_s, u"Status Summary"_s, QString());
    QStringList lines{Translate(u"Summary for"_s) + u' ' + entry.text};
    std::unique_ptr<engine::Recordset> rows;
    const bool opened =
        steps.Step({}, [&] { rows = database.OpenRecordset(SummaryQuery(statusType, entry, services.clock.Now())); });
    while (opened && !rows->EndOfFile()) {
        steps.Step({}, [&] { lines += SummaryLine(*rows, services.localeText); });
        if (!steps.Step({}, [&] { rows->MoveNext(); })) {
            break;
        }
    }
    return lines;
}

} // namespace velmora
