#include "reports/DetailRecords.h"

#include "data/Helpers.h"

namespace velmora {

using namespace Qt::StringLiterals;
using engine::Database;
using engine::Recordset;

std::unique_ptr<Recordset> OpenPerson(Database& database, const QString& lastName, const QString& firstName) {
    return database.OpenRecordset(u"Select * from Person where LastName = "_s + SqlText(lastName) +
                                  u" and FirstName = "_s + SqlText(firstName));
}

std::unique_ptr<Recordset> OpenLocation(Database& database, qint16 asset) {
    return database.OpenRecordset(u"Select * from Asset where AssetID = "_s + QString::number(asset));
}

std::unique_ptr<Recordset> OpenGuestLocation(Database& database, qint32 reservation) {
    const auto extensions =
        database.OpenRecordset(u"Select * from Reservation where EventType = \"Guest Extension\" and Link = "_s +
                               QString::number(reservation));
    if (extensions->EndOfFile()) {
        return nullptr;
    }
    return OpenLocation(database, static_cast<qint16>((*extensions)["Asset"].ToInteger()));
}

std::unique_ptr<Recordset> OpenNotes(Database& database, qint32 reservation) {
    return database.OpenRecordset(u"Select * from [Note] where Reservation = "_s + QString::number(reservation));
}

} // namespace velmora
