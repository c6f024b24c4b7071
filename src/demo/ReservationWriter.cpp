#include "demo/ReservationWriter.h"

#include <cstdlib>

namespace velmora::demo {

namespace {

using std::chrono::days;
using std::chrono::minutes;

// Notes are made for one reservation in twenty, more often for those that are near.
constexpr int NotePercent = 5;
constexpr int NearNotePercent = 30;
constexpr auto NearDays = days(10);

} // namespace

ReservationWriter::ReservationWriter(const Options& options, const Staff& staff, Random random, RowSink& sink)
    : today_(StartOfDay(options.today)), staff_(staff), random_(random), sink_(sink), row_(ColumnCount),
      english_(QLocale(QLocale::English, QLocale::UnitedStates)) {
    timeTexts_.emplace_back();
    for (int quarter = 1; quarter < 96; ++quarter) {
        timeTexts_.push_back(u' ' + english_.MediumTime(today_ + minutes(15 * quarter)));
    }
    sink_.BeginTable("Reservation", "ID Asset Start End Name EventType LastName FirstName Organization Attendees "
                                    "Permanent Link SLockStart SLockEnd TLockStart TLockEnd TextStart TextEnd");
}

int ReservationWriter::Write(const Booking& booking) {
    // Some numbers belonged to reservations that were cancelled.
    id_ += random_.Percent(3) ? 2 : 1;
    const auto text = [](const QString& value) { return value.isEmpty() ? Value() : Value(value); };
    row_[Id] = id_;
    row_[AssetId] = booking.assetId;
    row_[Start] = booking.start;
    row_[End] = booking.end;
    row_[Name] = text(booking.name);
    row_[EventType] = text(booking.eventType);
    row_[LastName] = booking.person != nullptr ? Value(booking.person->lastName) : Value();
    row_[FirstName] = booking.person != nullptr ? Value(booking.person->firstName) : Value();
    row_[Organization] = text(booking.organization);
    row_[Attendees] = booking.attendees > 0 ? Value(booking.attendees) : Value();
    row_[Permanent] = booking.permanent;
    row_[Link] = booking.link > 0 ? Value(booking.link) : Value();
    SetFlags(booking);
    SetTexts(booking);
    BeCareless(booking);
    sink_.Add(row_);

    if (booking.person == nullptr || booking.link > 0) {
        return id_;
    }
    const auto distance = booking.start > today_ ? booking.start - today_ : today_ - booking.start;
    if (random_.Percent(distance <= NearDays ? NearNotePercent : NotePercent)) {
        noted_.push_back({id_, booking.start});
    }
    return id_;
}

// Two thirds of the tasks that were due before today are done: mostly all of a reservation's or none.
void ReservationWriter::SetFlags(const Booking& booking) {
    const int diligence = random_.Below(100);
    const auto done = [&](DateTime due) {
        if (due >= today_) {
            return false;
        }
        return diligence < 55 || (diligence < 80 && random_.Percent(47));
    };
    row_[SLockStart] = done(booking.start);
    row_[SLockEnd] = done(booking.end);
    row_[TLockStart] = done(booking.start);
    row_[TLockEnd] = done(booking.end);
}

// The texts of the latest changes are still missing or old.
void ReservationWriter::SetTexts(const Booking& booking) {
    const bool current = !random_.Percent(1);
    row_[TextStart] = current ? Value(GeneralDate(booking.start)) : Value();
    row_[TextEnd] = current || random_.Percent(50) ? Value(GeneralDate(booking.end)) : Value();
}

void ReservationWriter::BeCareless(const Booking& booking) {
    const int slip = random_.Below(10000);
    const bool marker = booking.person == nullptr || booking.link > 0;
    if (slip < 80) {
        row_[Name] = Value();
    } else if (slip < 140 && !marker) {
        row_[EventType] = Value();
    } else if (slip < 500) {
        row_[Organization] = Value();
    } else if (slip < 520) {
        row_[Organization] = QString(QLatin1String(""));
    } else if (slip < 590) {
        row_[LastName] = row_[FirstName] = Value();
    } else if (slip < 600) {
        row_[FirstName] = Value();
    } else if (slip < 670 && !marker) {
        const Person& stranger = random_.Pick(staff_.strangers);
        row_[LastName] = stranger.lastName;
        row_[FirstName] = stranger.firstName;
    } else if (slip < 700 && !marker) {
        row_[LastName] = booking.person->lastName.toUpper();
    } else if (slip < 730 && !marker) {
        row_[EventType] = booking.eventType.toLower();
    } else if (slip < 740 && !marker) {
        row_[Name] = row_[Organization] = row_[LastName] = row_[FirstName] = row_[EventType] = Value();
    } else if (slip < 755) {
        row_[SLockStart] = row_[SLockEnd] = row_[TLockStart] = row_[TLockEnd] = Value();
    }
}

// The two halves of the text are made once for each day and each quarter hour.
QString ReservationWriter::GeneralDate(DateTime moment) {
    const Date day = DateOf(moment);
    QString& text = dayTexts_[day.time_since_epoch().count()];
    if (text.isEmpty()) {
        text = english_.ShortDate(day);
    }
    const auto quarter = std::chrono::duration_cast<minutes>(moment - StartOfDay(day)).count() / 15;
    return text + timeTexts_[static_cast<size_t>(quarter)];
}

} // namespace velmora::demo
