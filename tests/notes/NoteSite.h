#pragma once

#include "engine/Stores.h"
#include "site/Site.h"
#include "tests/support/Fakes.h"

#include <QTemporaryDir>

// Readable in a failure's message.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace velmora {

using namespace Qt::StringLiterals;

// A site with one reservation that has three notes, and two desks on its file.
//
//     Reservation 7 (asset 12, event type Party "A"): notes Chairs, Coffee, Cable
//     Reservation 8 (no asset, no event type): no notes
class NoteSite {
public:
    NoteSite() {
        const Site site = CreateSite(folder_.path() + u"/site"_s);
        // Does not wait long for a lock that a test holds.
        desk = engine::PlaceIn(folder_.path() + u"/site/"_s)->Open({.busyMilliseconds = 100});
        other = site.Open();
        engine::Transaction together(*desk);
        for (const char16_t* sql : rows) {
            desk->Execute(QStringView(sql));
        }
        together.Commit();
    }

    // All rows of a query, fields joined by '|', rows by " / ", as the other desk sees them.
    QString Shown(const QString& source) const {
        QStringList lines;
        const auto set = other->OpenRecordset(source);
        for (; !set->EndOfFile(); set->MoveNext()) {
            QStringList fields;
            for (int i = 0; i < static_cast<int>(set->Fields().size()); ++i) {
                fields.append(set->FieldAt(i).ToText());
            }
            lines.append(fields.join(u'|'));
        }
        return lines.join(u" / "_s);
    }
    QString Names() const { return Shown(u"Select Name from [Note] where Reservation = 7"_s); }

    std::unique_ptr<engine::Database> desk;
    std::unique_ptr<engine::Database> other;

private:
    static constexpr const char16_t* rows[] = {
        u"Insert into Reservation (ID, Asset, EventType) Values (7, 12, \"Party \"\"A\"\"\")",
        u"Insert into Reservation (ID) Values (8)",
        u"Insert into NoteCategory (Name) Values (\"Catering\")",
        u"Insert into NoteCategory (Name) Values (\"Setup\")",
        u"Insert into NoteCategory (Name) Values (\"Unused\")",
        u"Insert into [Note] (Reservation, Name, NoteCategory, [Note], Cost) Values (7, 'Chairs', 'Setup', 'ten', 5)",
        u"Insert into [Note] (Reservation, Name, NoteCategory, [Note]) Values (7, \"Coffee\", \"Catering\", \"hot\")",
        u"Insert into [Note] (Reservation, Name, NoteCategory) Values (7, \"Cable\", \"Setup\")",
        u"Insert into [Note] (Reservation, Name, NoteCategory) Values (9, \"Elsewhere\", \"Setup\")",
        u"Insert into StandardNotes (Name, NoteCategory, [Note], Cost) Values (\"Cake\", \"Catering\", \"big\", 12.5)",
        u"Insert into StandardNotes (Name, NoteCategory, [Note]) Values (\"Arch\", \"Setup\", \"tall\")",
        u"Insert into StandardNotes (Name, NoteCategory, [Note]) Values (\"Bench\", \"Setup\", \"long\")",
        u"Insert into [Asset/StandardNote] (AssetID, StandardNote) Values (12, \"Cake\")",
        u"Insert into [Asset/StandardNote] (AssetID, StandardNote) Values (12, \"Arch\")",
        u"Insert into [Asset/StandardNote] (AssetID, StandardNote) Values (12, \"Bench\")",
        u"Insert into [Asset/StandardNote] (AssetID, StandardNote) Values (13, \"Cake\")",
        u"Insert into [Event/StandardNote] (EventType, StandardNote) Values (\"Party \"\"A\"\"\", \"Cake\")",
    };

    QTemporaryDir folder_;
};

} // namespace velmora
