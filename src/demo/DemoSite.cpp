#include "demo/DemoSite.h"

#include "demo/Assets.h"
#include "demo/Bookings.h"
#include "demo/HouseRecords.h"
#include "demo/Notes.h"
#include "demo/Occupancies.h"
#include "demo/Persons.h"
#include "demo/ReservationWriter.h"

namespace velmora::demo {

namespace {

// Each subject's stream of random numbers. Days of the calendar are streams of their own and far smaller numbers.
enum Stream : std::uint64_t {
    AssetStream = 1'000'001,
    AssetRowStream,
    StaffStream,
    PersonRowStream,
    OccupancyStream,
    BookingStream,
    ReservationRowStream,
    NoteStream,
    StandardNoteStream,
    OwnerStream,
    WorkOrderStream,
};

} // namespace

void WriteDemoSite(const Options& options, RowSink& sink) {
    const Scale scale = ScaleOf(options.tier);
    const auto stream = [&](Stream number) { return Random(options.seed, number); };

    const std::vector<Asset> assets = MakeAssets(scale, stream(AssetStream));
    Staff staff = MakeStaff(scale, stream(StaffStream));
    const std::vector<Occupancy> occupancies = PlanOccupancies(options, scale, assets, staff, stream(OccupancyStream));

    WriteAssets(assets, stream(AssetRowStream), sink);
    WritePersons(staff.persons, assets, stream(PersonRowStream), sink);
    WriteOwners(assets, staff, stream(OwnerStream), sink);
    WriteStandardNotes(scale, assets, stream(StandardNoteStream), sink);
    WritePrintAttributes(sink);
    WriteWorkOrders(options, scale, assets, staff, stream(WorkOrderStream), sink);

    ReservationWriter writer(options, staff, stream(ReservationRowStream), sink);
    WriteReservations(options, scale, assets, staff, occupancies, stream(BookingStream), writer);
    WriteNotes(options, writer.Noted(), staff, stream(NoteStream), sink);
}

} // namespace velmora::demo
