#pragma once

#include "base/Value.h"
#include "demo/KindTable.h"
#include "demo/Random.h"
#include "demo/Scale.h"

#include <array>
#include <span>

namespace velmora::demo {

struct Asset {
    int id = 0;
    AssetKind kind = AssetKind::Gone;
    QString name{};
    QString description{};
    int building = 0; // 1, 2, ...; 0 for what has no fixed place
    int floor = 0;
    int room = 0; // its number on the floor
    int seats = 0;
};

struct Person {
    QString lastName;
    QString firstName;
    QString organization{};
    // The office that the person occupies, as an index into the assets; -1 without one.
    int office = -1;
};

struct Staff {
    std::vector<Person> persons;
    // Persons of reservations who have left, or never were, in the list of persons.
    std::vector<Person> strangers;
};

enum class OccupancyKind { Office, Telephone, Vacant };

// Somebody's office or telephone line for years, or the time in which a place stands empty.
struct Occupancy {
    OccupancyKind kind = OccupancyKind::Office;
    int asset = 0;                  // index into the assets
    const Person* person = nullptr; // none when vacant
    DateTime start{};
    DateTime end{};
};

// What the rows of a demo site are about.
struct House {
    Options options;
    Scale scale = ScaleOf(options.tier);
    KindTable kinds{};
    // In the order of their numbers, those that are gone included.
    std::vector<Asset> assets{};
    Staff staff{};
    // The earliest start first; those of one asset do not overlap.
    std::vector<Occupancy> occupancies{};

    // Each subject draws from a stream of its own. Days of the calendar are streams too, and far smaller numbers.
    enum class Subject : std::uint64_t {
        Assets = 1'000'001,
        AssetRows,
        Staff,
        PersonRows,
        Occupancies,
        Bookings,
        ReservationRows,
        Notes,
        StandardNotes,
        Owners,
        WorkOrders,
    };
    Random Draws(Subject subject) const { return {options.seed, static_cast<std::uint64_t>(subject)}; }
};

// Makes the house without the rest. Every pair of a person's names occurs once, strangers included, letter case apart.
std::vector<Asset> MakeAssets(const House& house);
Staff MakeStaff(const House& house);
// Who sat, sits and will sit in the offices and has the lines. Gives the present occupants their office.
std::vector<Occupancy> PlanOccupancies(House& house);

// The three areas a place belongs to: its building, its floor and its evacuation zone. All empty without a building.
std::array<QString, 3> AreasOf(const Asset& asset);

// Where the rows of a demo site go: a new database, or a test's own record.
class RowSink {
public:
    virtual ~RowSink() = default;
    // The rows that follow belong to this table and hold these columns in this order. Each table begins once.
    virtual void BeginTable(const QString& table, const QStringList& columns) = 0;
    virtual void Add(std::span<const Value> row) = 0;

    // The same with the columns separated by blanks, and with a row as it is written down.
    void BeginTable(const char* table, const char* columns) {
        BeginTable(QString::fromLatin1(table), QString::fromLatin1(columns).split(u' '));
    }
    void Add(std::initializer_list<Value> row) { Add(std::span<const Value>(row.begin(), row.size())); }
};

// A text's field, which is empty for an empty text.
inline Value TextOrEmpty(const QString& text) {
    return text.isEmpty() ? Value() : Value(text);
}

// What later rows need to know of a reservation.
struct WrittenReservation {
    int id = 0;
    DateTime start{};
};

// The rows of [Asset] and the link tables that say what an asset may be used for.
void WriteAssets(const House& house, RowSink& sink);
// The rows of [Person]. One person in twelve is assigned to another area or space type than that of their office.
void WritePersons(const House& house, RowSink& sink);
// The rows of [Asset/Organization] and [Asset/Person]: whose room it is, and who looks after it.
void WriteOwners(const House& house, RowSink& sink);
// The rows of [NoteCategory], [StandardNotes], [Event/StandardNote], [Asset/StandardNote] and [RequestNote].
void WriteStandardNotes(const House& house, RowSink& sink);
// The rows of [PrintAttributes].
void WritePrintAttributes(RowSink& sink);
// The rows of [WorkOrder], two thirds of the past ones completed.
void WriteWorkOrders(const House& house, RowSink& sink);
// The rows of [Reservation]: the occupancies, and what people booked day by day until the scale's number is reached.
// Returns the reservations that have notes.
std::vector<WrittenReservation> WriteReservations(const House& house, RowSink& sink);
// The rows of [Note], one to three for each of these reservations.
void WriteNotes(const House& house, const std::vector<WrittenReservation>& reservations, RowSink& sink);

} // namespace velmora::demo
