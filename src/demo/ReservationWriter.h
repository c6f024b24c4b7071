#pragma once

#include "base/DateTime.h"
#include "base/LocaleText.h"
#include "demo/Persons.h"
#include "demo/Random.h"
#include "demo/RowSink.h"
#include "demo/Scale.h"

#include <QHash>
#include <QString>

#include <vector>

namespace velmora::demo {

// A reservation as somebody made it.
struct Booking {
    int assetId = 0;
    DateTime start{};
    DateTime end{};
    QString name;
    QString eventType;
    const Person* person = nullptr;
    QString organization;
    int attendees = 0; // 0: not given
    bool permanent = false;
    int link = 0; // the reservation that it belongs to; 0: none
};

// What later rows need to know of a reservation.
struct WrittenReservation {
    int id = 0;
    DateTime start{};
};

// Writes the rows of [Reservation], numbers them, says what the staff has done, and lets a few rows be as careless as
// real ones: names, types and persons left out or typed in capitals, flags never set, persons nobody knows.
class ReservationWriter {
public:
    ReservationWriter(const Options& options, const Staff& staff, Random random, RowSink& sink);

    // Writes it under the next number and returns that.
    int Write(const Booking& booking);

    // Reservations with notes.
    const std::vector<WrittenReservation>& Noted() const { return noted_; }

private:
    enum Column {
        Id,
        AssetId,
        Start,
        End,
        Name,
        EventType,
        LastName,
        FirstName,
        Organization,
        Attendees,
        Permanent,
        Link,
        SLockStart,
        SLockEnd,
        TLockStart,
        TLockEnd,
        TextStart,
        TextEnd,
        ColumnCount
    };

    void SetFlags(const Booking& booking);
    void SetTexts(const Booking& booking);
    void BeCareless(const Booking& booking);
    QString GeneralDate(DateTime moment);

    DateTime today_;
    const Staff& staff_;
    Random random_;
    RowSink& sink_;
    int id_ = 0;
    std::vector<Value> row_;
    std::vector<WrittenReservation> noted_;

    LocaleText english_;
    QHash<qint64, QString> dayTexts_;
    std::vector<QString> timeTexts_; // by quarter hour
};

} // namespace velmora::demo
