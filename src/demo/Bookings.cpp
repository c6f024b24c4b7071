#include "demo/Bookings.h"

#include "demo/Calendar.h"
#include "demo/EventNames.h"
#include "demo/EventTimes.h"
#include "demo/RoomDiary.h"
#include "demo/WordFile.h"

#include <array>

namespace velmora::demo {

namespace {

class DayByDay {
public:
    DayByDay(const Options& options, const Scale& scale, const std::vector<Asset>& assets, const Staff& staff,
             const std::vector<Occupancy>& occupancies, Random random, ReservationWriter& writer)
        : options_(options), scale_(scale), assets_(assets), staff_(staff), occupancies_(occupancies), random_(random),
          writer_(writer), diary_(static_cast<int>(assets.size())) {
        guests_ = WordFile::Load(QStringLiteral("organizations.txt")).Entries(QStringLiteral("guests"));
        std::vector<bool> occupied(assets.size(), false);
        for (const Occupancy& occupancy : occupancies) {
            occupied[static_cast<size_t>(occupancy.asset)] = true;
        }
        for (size_t n = 0; n < assets.size(); ++n) {
            if (!occupied[n]) {
                rooms_[static_cast<size_t>(assets[n].kind)].push_back(static_cast<int>(n));
            }
        }
        for (const KindTraits& kind : kinds_.All()) {
            demand_ += DemandOf(kind);
        }
    }

    void Run() {
        std::vector<DateTime> fixed;
        for (const Occupancy& occupancy : occupancies_) {
            fixed.push_back(occupancy.start);
        }
        const std::vector<DayPlan> plan = PlanDays(options_, scale_, fixed);
        WriteOccupanciesBefore(plan.front().day);
        int missing = 0; // what did not fit into a full house is made up for on the next day
        for (const DayPlan& day : plan) {
            missing += day.starts - WriteOccupanciesBefore(day.day + std::chrono::days(1));
            missing = FillDay(day.day, missing);
        }
    }

private:
    int DemandOf(const KindTraits& kind) const {
        return static_cast<int>(rooms_[static_cast<size_t>(kind.kind)].size()) * kind.eventsInHundredDays;
    }

    int WriteOccupanciesBefore(Date day) {
        int written = 0;
        while (next_ < occupancies_.size() && occupancies_[next_].start < StartOfDay(day)) {
            WriteOccupancy(occupancies_[next_++]);
            ++written;
        }
        return written;
    }

    void WriteOccupancy(const Occupancy& occupancy) {
        Booking booking;
        booking.assetId = AssetAt(occupancy.asset).id;
        booking.start = occupancy.start;
        booking.end = occupancy.end;
        booking.person = occupancy.person;
        booking.permanent = occupancy.kind != OccupancyKind::Vacant;
        switch (occupancy.kind) {
        case OccupancyKind::Office:
            booking.name = QStringLiteral("Office ") + occupancy.person->lastName;
            booking.eventType = QStringLiteral("Office");
            booking.attendees = 1;
            break;
        case OccupancyKind::Telephone:
            booking.name = QStringLiteral("Line ") + occupancy.person->lastName;
            booking.eventType = QStringLiteral("Telephone");
            break;
        case OccupancyKind::Vacant:
            booking.eventType = QStringLiteral("UNUSED");
            booking.name = names_.Next(booking.eventType, DateOf(booking.start), random_);
            break;
        }
        if (occupancy.person != nullptr) {
            booking.organization = occupancy.person->organization;
        }
        writer_.Write(booking);
    }

    // Books `count` reservations that start on the day; returns how many did not fit.
    int FillDay(Date day, int count) {
        int attempts = 40 * count + 200;
        while (count > 0 && attempts-- > 0) {
            const int luck = random_.Below(1000);
            count -= luck < 10 ? Close(day) : BookEvent(day, count);
        }
        return count;
    }

    // A room that cannot be used for some days, or a desk that is kept free.
    int Close(Date day) {
        static constexpr AssetKind closable[] = {AssetKind::ConferenceRoom, AssetKind::MeetingRoom,
                                                 AssetKind::TrainingRoom, AssetKind::Lab, AssetKind::Desk};
        const AssetKind kind = closable[random_.Below(static_cast<int>(std::size(closable)))];
        const std::vector<int>& rooms = rooms_[static_cast<size_t>(kind)];
        const int room = random_.Pick(rooms);
        const EventTimes times = DrawTimes(Span::Closure, day, random_);
        if (!diary_.Take(room, day, times.startQuarter, times.end)) {
            return 0;
        }
        Booking booking;
        booking.assetId = AssetAt(room).id;
        booking.start = StartOfDay(day);
        booking.end = times.end;
        booking.eventType = kind == AssetKind::Desk ? QStringLiteral("UNUSED") : QStringLiteral("UNAVAILABLE");
        booking.name = names_.Next(booking.eventType, DateOf(booking.start), random_);
        booking.organization = QStringLiteral("Facilities");
        writer_.Write(booking);
        return 1;
    }

    // One of the items, each as often as its part of `total`.
    template <typename Item, typename Part>
    const Item& Draw(const std::vector<Item>& items, int total, Part part) {
        int left = random_.Below(total);
        for (const Item& item : items) {
            left -= part(item);
            if (left < 0) {
                return item;
            }
        }
        return items.front();
    }

    // An event, and sometimes the guest telephone for it. Returns the reservations written, at most `limit`.
    int BookEvent(Date day, int limit) {
        const KindTraits& kind = Draw(kinds_.All(), demand_, [this](const KindTraits& each) { return DemandOf(each); });
        const EventRule& event = Draw(kind.events, 100, [](const EventRule& each) { return each.share; });
        const EventTimes times = DrawTimes(event.span, day, random_);
        const int room = random_.Pick(rooms_[static_cast<size_t>(kind.kind)]);
        if (!diary_.Take(room, day, times.startQuarter, times.end)) {
            return 0;
        }
        const Asset& asset = AssetAt(room);
        Booking booking;
        booking.assetId = asset.id;
        booking.start = StartOfDay(day) + std::chrono::minutes(15 * times.startQuarter);
        booking.end = times.end;
        booking.eventType = event.type;
        booking.name = names_.Next(event.type, day, random_);
        booking.person = &DrawPerson();
        booking.organization =
            random_.Percent(event.guestPercent) ? random_.Pick(guests_) : booking.person->organization;
        booking.attendees = DrawAttendees(event, booking.name, asset.seats);
        const int id = writer_.Write(booking);
        if (limit > 1 && random_.Percent(event.phonePercent)) {
            return 1 + BookGuestTelephone(booking, id, times.startQuarter);
        }
        return 1;
    }

    // Half of a room's meetings are small; an interview, and a talk of two, never fill a hall.
    int DrawAttendees(const EventRule& rule, const QString& name, int seats) {
        if (name.startsWith(QLatin1String("1:1"))) {
            return std::min(2, seats);
        }
        int most = rule.span == Span::Interview ? std::min(5, seats) : seats;
        if (rule.span == Span::Meeting && random_.Percent(50)) {
            most = std::min(10, seats);
        }
        return most > 2 ? random_.Between(2, most) : most;
    }

    int BookGuestTelephone(Booking booking, int reservation, int startQuarter) {
        const int line = random_.Pick(rooms_[static_cast<size_t>(AssetKind::GuestExtension)]);
        if (!diary_.Take(line, DateOf(booking.start), startQuarter, booking.end)) {
            return 0;
        }
        booking.assetId = AssetAt(line).id;
        booking.eventType = QStringLiteral("Guest Extension");
        booking.attendees = 0;
        booking.link = reservation;
        writer_.Write(booking);
        return 1;
    }

    // Assistants, who stand first in the list, book for others too.
    const Person& DrawPerson() {
        const int persons = static_cast<int>(staff_.persons.size());
        const int index = random_.Percent(20) ? random_.Below(persons / 15) : random_.Below(persons);
        return staff_.persons[static_cast<size_t>(index)];
    }

    const Asset& AssetAt(int index) const { return assets_[static_cast<size_t>(index)]; }

    const Options& options_;
    const Scale& scale_;
    const std::vector<Asset>& assets_;
    const Staff& staff_;
    const std::vector<Occupancy>& occupancies_;
    Random random_;
    ReservationWriter& writer_;
    RoomDiary diary_;
    EventNames names_;
    QStringList guests_;
    std::array<std::vector<int>, KindCount> rooms_;
    KindTable kinds_;
    int demand_ = 0;
    size_t next_ = 0; // the first occupancy that is not written yet
};

} // namespace

void WriteReservations(const Options& options, const Scale& scale, const std::vector<Asset>& assets, const Staff& staff,
                       const std::vector<Occupancy>& occupancies, Random random, ReservationWriter& writer) {
    DayByDay(options, scale, assets, staff, occupancies, random, writer).Run();
}

} // namespace velmora::demo
