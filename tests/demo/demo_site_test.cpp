#include "demo/Calendar.h"
#include "demo/DemoSite.h"
#include "site/SiteSchema.h"

#include <QSet>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <tuple>

namespace velmora {
namespace {

using std::chrono::days;

// A Tuesday.
const Date today = *MakeDate(2026, 3, 10);

// A hash of every value in its order.
class Fingerprint : public demo::RowSink {
public:
    void BeginTable(const QString& table, const QStringList& columns) override {
        hash = qHash(table, qHash(columns, hash));
    }
    void Add(std::span<const Value> row) override {
        for (const Value& value : row) {
            hash = qHash(value.ToText(), hash);
        }
    }
    size_t hash = 0;
};

// Keeps what the checks need of each row.
class Collector : public demo::RowSink {
public:
    struct Booking {
        int asset;
        DateTime start, end;
    };

    void BeginTable(const QString& table, const QStringList&) override { table_ = table; }

    void Add(std::span<const Value> row) override {
        ++counts[table_];
        if (table_ == QLatin1String("Reservation")) {
            AddReservation(row);
        } else if (table_ == QLatin1String("Asset")) {
            assets[static_cast<int>(row[0].ToInteger())] = row[1].ToText();
        } else if (table_ == QLatin1String("Person")) {
            persons.insert((row[0].ToText() + u'|' + row[1].ToText()).toLower());
        }
    }

    std::map<QString, int> counts;
    std::vector<Booking> bookings;
    std::map<int, QString> assets;
    QSet<QString> persons;
    std::map<Date, int> starts, ends;
    int duePast = 0;
    int donePast = 0;

private:
    void AddReservation(std::span<const Value> row) {
        const Booking booking{static_cast<int>(row[1].ToInteger()), *row[2].ToDateTime(), *row[3].ToDateTime()};
        bookings.push_back(booking);
        ++starts[DateOf(booking.start)];
        // An end at midnight belongs to the day before.
        ++ends[DateOf(booking.end - std::chrono::seconds(1))];
        // What is done when it starts and when it ends, in turn.
        for (size_t n = 0; n < 4; ++n) {
            const DateTime due = n % 2 == 0 ? booking.start : booking.end;
            if (due < StartOfDay(today) && !row[12 + n].IsNull()) {
                ++duePast;
                donePast += row[12 + n].ToBool();
            }
        }
    }

    QString table_;
};

struct TierCase {
    const char* name;
    demo::Tier tier;
    int assets, persons, reservations, perDay;
};

class DemoTier : public testing::TestWithParam<TierCase> {
protected:
    void ExpectSize();
    void ExpectWorkingDays();
    void ExpectNoRoomBookedTwice();

    Collector site_;
};

void DemoTier::ExpectSize() {
    EXPECT_EQ(site_.counts[QStringLiteral("Asset")], GetParam().assets);
    EXPECT_EQ(site_.counts[QStringLiteral("Person")], GetParam().persons);
    EXPECT_EQ(site_.counts[QStringLiteral("Reservation")], GetParam().reservations);
    for (const engine::TableDefinition& table : SiteSchema().TablesOf(1)) {
        EXPECT_TRUE(table.name == QLatin1String("StoredQuery") || site_.counts[table.name] > 0)
            << table.name.toStdString();
    }

    EXPECT_EQ(site_.persons.size(), GetParam().persons);
    EXPECT_LE(site_.assets.rbegin()->first, 32767);
    QSet<QString> names;
    for (const auto& [number, name] : site_.assets) {
        EXPECT_TRUE(!name.isEmpty() && name.size() <= 15) << name.toStdString();
        names.insert(name.toLower());
    }
    EXPECT_EQ(names.size(), GetParam().assets);
    // Conference rooms are numbered below 256, with gaps.
    const auto firstOther = site_.assets.lower_bound(256);
    const auto rooms = std::distance(site_.assets.begin(), firstOther);
    EXPECT_GT(rooms, 20);
    EXPECT_GT(std::prev(firstOther)->first, rooms);

    EXPECT_NEAR(1.0 * site_.donePast / site_.duePast, 2.0 / 3, 0.01);
}

void DemoTier::ExpectWorkingDays() {
    const double expected = GetParam().perDay;
    const Date last = site_.starts.rbegin()->first - days(1);
    EXPECT_GT(last, today + days(60));
    for (Date day = today - days(120); day < last; day += days(1)) {
        const double starts = site_.starts[day];
        const double ends = site_.ends[day];
        if (demo::IsWorkingDay(day)) {
            EXPECT_NEAR(starts / expected, 1, 0.12) << StorageText(StartOfDay(day)).toStdString();
            EXPECT_NEAR(ends / expected, 1, 0.35) << StorageText(StartOfDay(day)).toStdString();
        } else {
            EXPECT_LT(starts / expected, 0.2) << StorageText(StartOfDay(day)).toStdString();
        }
    }
}

void DemoTier::ExpectNoRoomBookedTwice() {
    auto& bookings = site_.bookings;
    std::sort(bookings.begin(), bookings.end(), [](const auto& one, const auto& other) {
        return std::tie(one.asset, one.start) < std::tie(other.asset, other.start);
    });
    int overlaps = 0;
    for (size_t n = 1; n < bookings.size(); ++n) {
        ASSERT_LT(bookings[n].start, bookings[n].end);
        overlaps += bookings[n].asset == bookings[n - 1].asset && bookings[n].start < bookings[n - 1].end;
    }
    EXPECT_EQ(overlaps, 0);
}

TEST_P(DemoTier, IsAsPromised) {
    demo::WriteDemoSite({.tier = GetParam().tier, .today = today, .seed = 1}, site_);
    ExpectSize();
    ExpectWorkingDays();
    ExpectNoRoomBookedTwice();
}

INSTANTIATE_TEST_SUITE_P(Tiers, DemoTier,
                         testing::Values(TierCase{"Typical", demo::Tier::Typical, 300, 600, 75'000, 60},
                                         TierCase{"Large", demo::Tier::Large, 5'000, 10'000, 1'000'000, 1'000},
                                         TierCase{"Stress", demo::Tier::Stress, 32'000, 60'000, 2'200'000, 9'000}),
                         [](const auto& tier) { return tier.param.name; });

TEST(DemoSite, IsTheSameForASeedAndADay) {
    const auto hashOf = [](Date day, std::uint64_t seed) {
        Fingerprint site;
        demo::WriteDemoSite({.tier = demo::Tier::Typical, .today = day, .seed = seed}, site);
        return site.hash;
    };
    const size_t hash = hashOf(today, 1);
    EXPECT_EQ(hash, hashOf(today, 1));
    EXPECT_NE(hash, hashOf(today, 2));
    EXPECT_NE(hash, hashOf(today + days(1), 1));
}

// Any day can be today, a weekend or a leap day too.
TEST(DemoSite, ComesOutForEveryDay) {
    for (const Date day : {*MakeDate(2026, 3, 14), *MakeDate(2028, 2, 29), *MakeDate(2031, 12, 31)}) {
        Collector site;
        demo::WriteDemoSite({.tier = demo::Tier::Typical, .today = day, .seed = 7}, site);
        EXPECT_EQ(site.counts[QStringLiteral("Reservation")], 75'000);
        EXPECT_GT(site.starts[demo::WorkingDayFrom(day)], 50);
        EXPECT_GT(site.ends[demo::WorkingDayFrom(day)], 35);
    }
}

} // namespace
} // namespace velmora
