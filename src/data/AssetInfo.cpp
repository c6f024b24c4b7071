#include "data/AssetInfo.h"

#include "base/Program.h"
#include "base/Translate.h"
#include "data/AssetRules.h"
#include "data/Helpers.h"

#include <array>

namespace velmora {

using namespace Qt::StringLiterals;
using engine::EngineError;
using engine::EngineErrorNumber;
using engine::RecordsetKind;

namespace {

// What hangs on an asset besides its reservations, and the asset itself; each text takes the asset's number.
constexpr std::array deletions = {
    u"Delete from [Asset/Event] where AssetID = ",        u"Delete from [Asset/Organization] where AssetID = ",
    u"Delete from [Asset/Person] where AssetID = ",       u"Delete from [Asset/Area] where AssetID = ",
    u"Delete from [Asset/StandardNote] where AssetID = ", u"Delete from [Asset] where AssetID =",
};

Answer Ask(const QString& text, Buttons buttons, Icon icon) {
    const Program& program = CurrentProgram();
    return program.services().dialogs.ShowMessage({text, program.Title(), buttons, icon});
}

void ReportNotFound() {
    Ask(Translate(u"Record not found, possibly deleted by another user"_s), Buttons::Ok, Icon::None);
}

qint64 CountOf(engine::Recordset& rows) {
    if (rows.EndOfFile()) {
        return 0;
    }
    rows.MoveLast();
    rows.MoveFirst();
    return rows.RecordCount();
}

bool ConfirmReservations(qint64 count) {
    return count == 0 ||
           Ask(QString::number(count) + u' ' +
                   Translate(u"reservations exist for this asset in the database and will be deleted too.  Do you wish "
                             "to continue?"_s),
               Buttons::YesNo, Icon::None) == Answer::Yes;
}

} // namespace

int AssetInfo::nListImage() const {
    if (nLocation_) {
        return IsConferenceRoom(nAsset_) ? 2 : 1;
    }
    return description_.contains(u"Guest Extension"_s) ? 4 : 3;
}

bool AssetInfo::Rename(engine::Database& database, const std::optional<QString>& newName) {
    const auto given = newName ? newName
                               : CurrentProgram().services().dialogs.AskText(Translate(u"Enter new location name"_s),
                                                                             Translate(u"Rename Asset"_s), strName_);
    // A cancelled question changes nothing, and an asset without a name could not be distinguished from others.
    if (!given || given->trimmed().isEmpty() || *given == strName_) {
        return false;
    }
    if (!database.OpenRecordset(u"Select * from Asset where Name = "_s + SqlText(*given))->EndOfFile()) {
        Ask(*given + u' ' + Translate(u"already exists. Each asset must have a unique name"_s), Buttons::Ok,
            Icon::None);
        return false;
    }
    try {
        const auto row = database.OpenRecordset(u"Select * from Asset where AssetID = "_s + QString::number(nAsset_),
                                                RecordsetKind::Updatable);
        if (row->EndOfFile()) {
            ReportNotFound();
            return false;
        }
        row->Edit();
        row->Set("Name", *given);
        row->Update();
    } catch (const EngineError& error) {
        if (error.Kind() != EngineErrorNumber::RecordDeleted) {
            throw;
        }
        ReportNotFound();
        return false;
    }
    strName_ = *given;
    return true;
}

bool AssetInfo::ConfirmDelete() const {
    if (IsConferenceRoom(nAsset_)) {
        Ask(Translate(u"Deleting this asset may cause problems with Velmora (the asset number is less than 256).  "
                      "Rename instead."_s),
            Buttons::Ok, Icon::Exclamation);
        return false;
    }
    return Ask(Translate(u"Delete"_s) + u' ' + strName_, Buttons::YesNo, Icon::Question) == Answer::Yes;
}

bool AssetInfo::Delete(engine::Database& database) const {
    if (!ConfirmDelete()) {
        return false;
    }
    const QString number = QString::number(nAsset_);
    const auto reservations =
        database.OpenRecordset(u"Select * from Reservation where Asset = "_s + number, RecordsetKind::Updatable);
    for (;;) {
        const qint64 agreed = CountOf(*reservations);
        if (!ConfirmReservations(agreed)) {
            return false;
        }
        engine::Transaction transaction(database);
        reservations->Requery();
        if (CountOf(*reservations) != agreed) {
            // Another desk booked the asset, or gave a booking up, while the question was open.
            continue;
        }
        for (; !reservations->EndOfFile(); reservations->MoveNext()) {
            reservations->Delete();
        }
        for (const auto* deletion : deletions) {
            database.Execute(QString::fromUtf16(deletion) + number);
        }
        transaction.Commit();
        return true;
    }
}

} // namespace velmora
