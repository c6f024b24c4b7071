#include "base/LocaleText.h"
#include "data/AssetRules.h"
#include "demo/Calendar.h"
#include "demo/Events.h"
#include "demo/House.h"
#include "demo/WordFile.h"

#include <algorithm>
#include <bitset>

namespace velmora::demo {

namespace {

using std::chrono::days;
using std::chrono::minutes;

// Notes are made for one reservation in twenty, more often for those that are near.
constexpr int NotePercent = 5;
constexpr int NearNotePercent = 30;
constexpr auto NearDays = days(10);

// A reservation as somebody made it. Null texts are empty fields.
struct Booking {
    int assetId = 0;
    DateTime start{};
    DateTime end{};
    QString name{};
    QString eventType{};
    const Person* person = nullptr;
    QString organization{};
    int attendees = 0; // 0: not given
    bool permanent = false;
    int link = 0; // the reservation that it belongs to; 0: none
};

// Its row: what the staff has done, and what was typed.
struct ReservationRow : Booking {
    QString lastName{};
    QString firstName{};
    // Moved in and out, telephone connected and disconnected.
    std::array<Value, 4> done{};
    Value textStart{};
    Value textEnd{};
};

// Writes the rows of [Reservation], numbers them, says what the staff has done, and lets a few rows be as careless as
// real ones: names, types and persons left out or typed in capitals, flags never set, persons nobody knows.
class ReservationWriter {
public:
    ReservationWriter(const House& house, RowSink& sink)
        : today_(StartOfDay(house.options.today)), strangers_(house.staff.strangers),
          random_(house.Draws(House::Subject::ReservationRows)), sink_(sink) {
        sink_.BeginTable("Reservation", "ID Asset Start End Name EventType LastName FirstName Organization Attendees "
                                        "Permanent Link SLockStart SLockEnd TLockStart TLockEnd TextStart TextEnd");
    }

    // Writes it under the next number and returns that.
    int Write(const Booking& booking) {
        // Some numbers belonged to reservations that were cancelled.
        id_ += random_.Percent(3) ? 2 : 1;
        ReservationRow row{booking};
        if (row.person != nullptr) {
            row.lastName = row.person->lastName;
            row.firstName = row.person->firstName;
        }
        SetDone(row);
        // The texts of the latest changes are still missing or old.
        const bool current = !random_.Percent(1);
        row.textStart = current ? Value(english_.GeneralDate(row.start)) : Value();
        row.textEnd = current || random_.Percent(50) ? Value(english_.GeneralDate(row.end)) : Value();
        BeCareless(row);
        const auto text = [](const QString& value) { return value.isNull() ? Value() : Value(value); };
        const auto number = [](int value) { return value > 0 ? Value(value) : Value(); };
        sink_.Add({id_, row.assetId, row.start, row.end, text(row.name), text(row.eventType), text(row.lastName),
                   text(row.firstName), text(row.organization), number(row.attendees), row.permanent, number(row.link),
                   row.done[0], row.done[1], row.done[2], row.done[3], row.textStart, row.textEnd});

        const auto distance = row.start > today_ ? row.start - today_ : today_ - row.start;
        if (row.person != nullptr && row.link == 0 &&
            random_.Percent(distance <= NearDays ? NearNotePercent : NotePercent)) {
            noted_.push_back({id_, row.start});
        }
        return id_;
    }

    const std::vector<WrittenReservation>& Noted() const { return noted_; }

private:
    // Two thirds of the tasks that were due before today are done: mostly all of a reservation's or none.
    void SetDone(ReservationRow& row) {
        const int diligence = random_.Below(100);
        for (size_t task = 0; task < row.done.size(); ++task) {
            const bool due = (task % 2 == 0 ? row.start : row.end) < today_;
            row.done[task] = due && (diligence < 55 || (diligence < 80 && random_.Percent(47)));
        }
    }

    void BeCareless(ReservationRow& row) {
        const int slip = random_.Below(10000);
        const bool marker = row.person == nullptr || row.link > 0;
        if (slip < 80) {
            row.name = QString();
        } else if (slip < 140 && !marker) {
            row.eventType = QString();
        } else if (slip < 500) {
            row.organization = QString();
        } else if (slip < 520) {
            row.organization = QStringLiteral("");
        } else if (slip < 590) {
            row.lastName = row.firstName = QString();
        } else if (slip < 600) {
            row.firstName = QString();
        } else if (slip < 670 && !marker) {
            const Person& stranger = random_.Pick(strangers_);
            row.lastName = stranger.lastName;
            row.firstName = stranger.firstName;
        } else if (slip < 700 && !marker) {
            row.lastName = row.lastName.toUpper();
        } else if (slip < 730 && !marker) {
            row.eventType = row.eventType.toLower();
        } else if (slip < 740 && !marker) {
            row.name = row.organization = row.lastName = row.firstName = row.eventType = QString();
        } else if (slip < 755) {
            row.done = {};
        }
    }

    DateTime today_;
    const std::vector<Person>& strangers_;
    Random random_;
    RowSink& sink_;
    LocaleText english_{QLocale(QLocale::English, QLocale::UnitedStates)};
    int id_ = 0;
    std::vector<WrittenReservation> noted_;
};

// When each room is taken, so that no two reservations of one room meet. Asked day by day, never backwards: it knows
// one day's times and, for what lasts longer, until when.
class RoomDiary {
public:
    explicit RoomDiary(size_t rooms) : rooms_(rooms) {}

    // Takes the room from a quarter hour of the day until `end`, on the same day or later, when it is free then.
    bool Take(int room, Date day, int startQuarter, DateTime end) {
        Room& state = rooms_[static_cast<size_t>(room)];
        if (state.busyUntil > StartOfDay(day) + minutes(startQuarter * 15)) {
            return false;
        }
        if (state.day != day) {
            state.day = day;
            state.taken.reset();
        }
        const bool untilLater = end >= StartOfDay(day) + days(1);
        const auto sameDay = std::chrono::duration_cast<minutes>(end - StartOfDay(day)).count() / 15;
        std::bitset<quartersOfDay> wanted;
        for (int quarter = startQuarter; quarter < (untilLater ? quartersOfDay : sameDay); ++quarter) {
            wanted.set(static_cast<size_t>(quarter));
        }
        if ((state.taken & wanted).any()) {
            return false;
        }
        state.taken |= wanted;
        if (untilLater) {
            state.busyUntil = end;
        }
        return true;
    }

private:
    struct Room {
        DateTime busyUntil{}; // for what lasts longer than a day
        Date day{};           // the day that `taken` is about
        std::bitset<quartersOfDay> taken;
    };

    std::vector<Room> rooms_;
};

struct DayPlan {
    Date day{};
    int starts = 0; // reservations that begin on this day
};

int StartsOn(const House& house, Date day) {
    Random random(house.options.seed, static_cast<std::uint64_t>(day.time_since_epoch().count()));
    const int percent = IsWorkingDay(day) ? random.Between(94, 106) : random.Between(4, 10);
    return house.scale.startsPerDay * percent / 100;
}

// The days on which reservations start, oldest first, up to the last day that is planned ahead. A working day has about
// the scale's number of starts, a weekend day a few. The occupancies that start before the first day come on top, so
// that all together are exactly the scale's number of reservations.
std::vector<DayPlan> PlanDays(const House& house) {
    std::vector<DayPlan> plan;
    Date day = house.options.today + days(house.scale.futureDays);
    int planned = 0;
    // Backwards from the last day until the days and the occupancies before them make up the number.
    for (;; day -= days(1)) {
        const auto startsBefore = [&](Date end) {
            const auto found = std::ranges::lower_bound(house.occupancies, StartOfDay(end), {}, &Occupancy::start);
            return static_cast<int>(found - house.occupancies.begin());
        };
        const int before = startsBefore(day);
        const int left = house.scale.reservations - planned - before;
        const int starts = std::max(StartsOn(house, day), startsBefore(day + days(1)) - before);
        plan.push_back({day, std::min(starts, left)});
        planned += plan.back().starts;
        if (starts >= left) {
            break;
        }
    }
    std::reverse(plan.begin(), plan.end());
    return plan;
}

class DayByDay {
public:
    DayByDay(const House& house, RowSink& sink)
        : house_(house), random_(house.Draws(House::Subject::Bookings)), writer_(house, sink),
          diary_(house.assets.size()) {
        std::vector<bool> occupied(house.assets.size(), false);
        for (const Occupancy& occupancy : house.occupancies) {
            occupied[static_cast<size_t>(occupancy.asset)] = true;
        }
        for (size_t n = 0; n < house.assets.size(); ++n) {
            if (!occupied[n]) {
                rooms_[static_cast<size_t>(house.assets[n].kind)].push_back(static_cast<int>(n));
            }
        }
        for (const KindTraits& kind : house.kinds.All()) {
            demand_ += DemandOf(kind);
        }
    }

    // Returns the reservations that have notes.
    std::vector<WrittenReservation> Run() {
        const std::vector<DayPlan> plan = PlanDays(house_);
        WriteOccupanciesBefore(plan.front().day);
        int missing = 0; // what did not fit into a full house is made up for on the next day
        for (const DayPlan& day : plan) {
            missing += day.starts - WriteOccupanciesBefore(day.day + days(1));
            missing = FillDay(day.day, missing);
        }
        return writer_.Noted();
    }

private:
    int DemandOf(const KindTraits& kind) const {
        return static_cast<int>(rooms_[static_cast<size_t>(kind.kind)].size()) * kind.eventsInHundredDays;
    }

    int WriteOccupanciesBefore(Date day) {
        int written = 0;
        while (next_ < house_.occupancies.size() && house_.occupancies[next_].start < StartOfDay(day)) {
            WriteOccupancy(house_.occupancies[next_++]);
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
            booking.eventType = unusedEvent.toString();
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
        const AssetKind kind = random_.Pick(closable);
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
        booking.eventType = (kind == AssetKind::Desk ? unusedEvent : unavailableEvent).toString();
        booking.name = names_.Next(booking.eventType, DateOf(booking.start), random_);
        booking.organization = QStringLiteral("Facilities");
        writer_.Write(booking);
        return 1;
    }

    // An event, and sometimes the guest telephone for it. Returns the reservations written, at most `limit`.
    int BookEvent(Date day, int limit) {
        const KindTraits& kind =
            random_.Draw(house_.kinds.All(), demand_, [this](const KindTraits& each) { return DemandOf(each); });
        const EventRule& event = random_.Draw(kind.events, 100, &EventRule::share);
        const EventTimes times = DrawTimes(event.span, day, random_);
        const int room = random_.Pick(rooms_[static_cast<size_t>(kind.kind)]);
        if (!diary_.Take(room, day, times.startQuarter, times.end)) {
            return 0;
        }
        const Asset& asset = AssetAt(room);
        Booking booking;
        booking.assetId = asset.id;
        booking.start = StartOfDay(day) + minutes(15 * times.startQuarter);
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
        const std::vector<Person>& persons = house_.staff.persons;
        const int count = static_cast<int>(persons.size());
        return persons[static_cast<size_t>(random_.Below(random_.Percent(20) ? count / 15 : count))];
    }

    const Asset& AssetAt(int index) const { return house_.assets[static_cast<size_t>(index)]; }

    const House& house_;
    Random random_;
    ReservationWriter writer_;
    RoomDiary diary_;
    EventNames names_;
    QStringList guests_ = WordFile(QStringLiteral("organizations.txt")).Entries(QStringLiteral("guests"));
    std::array<std::vector<int>, KindCount> rooms_;
    int demand_ = 0;
    size_t next_ = 0; // the first occupancy that is not written yet
};

} // namespace

std::vector<WrittenReservation> WriteReservations(const House& house, RowSink& sink) {
    return DayByDay(house, sink).Run();
}

} // namespace velmora::demo
