#include "demo/Calendar.h"
#include "demo/House.h"

#include <algorithm>
#include <numeric>
#include <tuple>

namespace velmora::demo {

namespace {

using std::chrono::days;
using std::chrono::hours;

class Planner {
public:
    explicit Planner(House& house)
        : today_(house.options.today), horizon_(today_ + days(house.scale.futureDays)), assets_(house.assets),
          staff_(house.staff), random_(house.Draws(House::Subject::Occupancies)) {
        homeless_.resize(staff_.persons.size());
        std::iota(homeless_.begin(), homeless_.end(), 0);
        random_.Shuffle(homeless_);
        // "For good" in the rest of the suite: the last day of a far year.
        const int year = Fields(StartOfDay(today_)).year;
        forGood_ = StartOfDay(*MakeDate(year + 20, 12, 31));
    }

    std::vector<Occupancy> Plan() {
        for (size_t n = 0; n < assets_.size(); ++n) {
            const int asset = static_cast<int>(n);
            switch (assets_[n].kind) {
            case AssetKind::Office:
                PlanOffice(asset);
                break;
            case AssetKind::Extension:
                PlanLine(asset);
                break;
            case AssetKind::Unused:
                // Somebody books the others although they are placeholders.
                if (n % 2 == 0) {
                    PlanVacancy(asset, today_ - days(random_.Between(30, 400)));
                }
                break;
            default:
                break;
            }
        }
        std::sort(planned_.begin(), planned_.end(), [](const Occupancy& one, const Occupancy& other) {
            return std::tie(one.start, one.asset) < std::tie(other.start, other.asset);
        });
        return std::move(planned_);
    }

private:
    // One occupant after the other, with some empty days between them.
    void PlanOffice(int asset) {
        const bool vacantNow = random_.Percent(7);
        Date day = WorkingDayFrom(today_ - days(random_.Between(200, 4400)));
        for (;;) {
            Date last = WorkingDayFrom(day + days(random_.Between(300, 2200)));
            const bool present = day <= today_ && last >= today_;
            if (present && vacantNow) {
                PlanVacancy(asset, day);
                return;
            }
            if (present && random_.Percent(10)) {
                last = WorkingDayFrom(today_ + days(random_.Below(static_cast<int>((horizon_ - today_).count()) - 40)));
            } else if (last >= today_) {
                Add(OccupancyKind::Office, asset, Occupant(asset, present), StartOfDay(day) + hours(8), forGood_);
                return;
            }
            // Until five, or until midnight: through that day.
            const DateTime end = StartOfDay(last) + hours(random_.Percent(30) ? 24 : 17);
            Add(OccupancyKind::Office, asset, Occupant(asset, present), StartOfDay(day) + hours(8), end);
            day = WorkingDayFrom(last + days(random_.Between(2, 30)));
        }
    }

    void PlanLine(int asset) {
        if (random_.Percent(80)) {
            const Date day = WorkingDayFrom(today_ - days(random_.Between(1, 3000)));
            Add(OccupancyKind::Telephone, asset, &random_.Pick(staff_.persons), StartOfDay(day) + hours(9), forGood_);
        }
    }

    void PlanVacancy(int asset, Date from) {
        const Date until = today_ + days(random_.Between(10, 300));
        Add(OccupancyKind::Vacant, asset, nullptr, StartOfDay(from), StartOfDay(until));
    }

    // Present occupants get the office as theirs; former ones may have left the house.
    const Person* Occupant(int asset, bool present) {
        if (!present || homeless_.empty()) {
            return random_.Percent(20) ? &random_.Pick(staff_.strangers) : &random_.Pick(staff_.persons);
        }
        if (random_.Percent(2)) {
            return &random_.Pick(staff_.persons); // a second office, or one who shares
        }
        Person& person = staff_.persons[static_cast<size_t>(homeless_.back())];
        homeless_.pop_back();
        person.office = asset;
        return &person;
    }

    void Add(OccupancyKind kind, int asset, const Person* person, DateTime start, DateTime end) {
        planned_.push_back({kind, asset, person, start, end});
    }

    Date today_;
    Date horizon_;
    DateTime forGood_{};
    const std::vector<Asset>& assets_;
    Staff& staff_;
    Random random_;
    std::vector<int> homeless_; // persons without an office
    std::vector<Occupancy> planned_;
};

} // namespace

std::vector<Occupancy> PlanOccupancies(House& house) {
    return Planner(house).Plan();
}

} // namespace velmora::demo
