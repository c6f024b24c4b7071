#include "notes/StandardNotes.h"

#include "base/Translate.h"
#include "data/Helpers.h"

namespace velmora {

using namespace Qt::StringLiterals;

std::vector<BoundColumn> StandardNoteColumns() {
    return {{u"Name"_s, "Name", CellKind::Text, Editing::ReadOnly, 22},
            {u"NoteCategory"_s, "NoteCategory", CellKind::Text, Editing::ReadOnly, 16},
            {u"Note"_s, "Note", CellKind::Lines, Editing::ReadOnly, 46},
            {u"Cost"_s, "Cost", CellKind::Money, Editing::ReadOnly, 11}};
}

std::optional<StandardNoteList> FindStandardNoteList(const QString& mode, const QString& key) {
    const QString order = u" Order by NoteCategory, Name"_s;
    if (mode == u"1") {
        return StandardNoteList{u"Select Asset Standard Notes"_s,
                                u"Select * from AssetStdNoteSelect where AssetID = "_s + key + order};
    }
    if (mode == u"2") {
        return StandardNoteList{u"Select Event Standard Notes"_s,
                                u"Select * from EventStdNoteSelect where EventType = "_s + SqlText(key) + order};
    }
    return std::nullopt;
}

QString StandardNoteKeyOf(engine::Database& database, qint32 reservation, const QString& mode) {
    const auto rows = database.OpenRecordset(u"Select Asset, EventType from Reservation where ID = "_s +
                                             QString::number(reservation));
    if (mode == u"2") {
        return rows->EndOfFile() ? QString() : (*rows)["EventType"].ToText();
    }
    const bool known = !rows->EndOfFile() && !(*rows)["Asset"].IsNull();
    return known ? QString::number((*rows)["Asset"].ToInteger()) : u"Null"_s;
}

void AddStandardNote(engine::Database& database, qint32 reservation, const QString& name) {
    const auto standard = database.OpenRecordset(u"Select * from StandardNotes where Name = "_s + SqlText(name));
    if (standard->EndOfFile()) {
        throw ProgramError(ErrorNumber::Unavailable,
                           Translate(u"The standard note \"%1\" was deleted by another desk meanwhile. Nothing was "
                                     "added. Open the selection again."_s)
                               .arg(name));
    }
    // No row of the table is read for the addition.
    const auto notes = database.OpenRecordset(u"Select * from [Note] where ID = 0", engine::RecordsetKind::Updatable);
    notes->AddNew();
    notes->Set("Reservation", Value(qint64{reservation}));
    for (const char* field : {"Name", "NoteCategory", "Note", "Cost"}) {
        notes->Set(field, (*standard)[field].ToValue());
    }
    notes->Update();
}

} // namespace velmora
