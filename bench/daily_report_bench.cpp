// Measures the daily list of starts, with notes and telephones, as text into memory, against the store's plain C
// interface running the same queries and reading the same columns, side by side in one run; fails when the ratio is
// above its limit. Without an argument the large demo site is made for it; an argument names a site's folder that is
// there already, made for the day in the second argument.
#include "bench/BareStore.h"
#include "bench/BenchDesk.h"
#include "bench/LargeSite.h"
#include "site/Site.h"

#include <sqlite3.h>

#include <cstdio>
#include <string_view>

using namespace Qt::Literals::StringLiterals;
using namespace velmora;
using namespace velmora::bench;

namespace {

constexpr double limit = 1.6;
constexpr int rounds = 15;

// The report's queries as a program would prepare them by hand.
class BareReport {
public:
    BareReport(const QString& path, Date day) : store_(path) {
        rows_ = store_.Prepare(R"(
            SELECT a.AssetID, a.Name, a.Location, r.EventType, r.Name, r.Start, r."End", r.Organization, r.Permanent,
                r.Attendees, r.LastName, r.FirstName, p.Storage, p.Extension, a.DefaultExtension, a.Jack, a.Port,
                a.StationType, a.SwitchInterface, r.ID, r.SLockStart, r.SLockEnd, r.TLockStart, r.TLockEnd
            FROM Reservation r JOIN Asset a ON a.AssetID = r.Asset
                LEFT JOIN Person p ON p.LastName = r.LastName AND p.FirstName = r.FirstName
            WHERE r.Start >= ?1 AND r.Start < ?2 ORDER BY r.Start, a.Name, r.ID)");
        person_ = store_.Prepare("SELECT * FROM Person WHERE LastName = ?1 AND FirstName = ?2");
        guest_ = store_.Prepare("SELECT * FROM Reservation WHERE EventType = 'Guest Extension' AND Link = ?1");
        asset_ = store_.Prepare("SELECT * FROM Asset WHERE AssetID = ?1");
        notes_ = store_.Prepare("SELECT * FROM Note WHERE Reservation = ?1 ORDER BY ID");
        start_ = StorageText(StartOfDay(day)).toStdString();
        end_ = StorageText(StartOfDay(day + std::chrono::days(1))).toStdString();
    }

    // Returns how much was read, in bytes.
    qint64 Run() {
        constexpr int location = 2;
        constexpr int lastName = 10;
        constexpr int firstName = 11;
        constexpr int id = 19;
        qint64 size = 0;
        printed_ = 0;
        sqlite3_bind_text(rows_, 1, start_.data(), static_cast<int>(start_.size()), SQLITE_STATIC);
        sqlite3_bind_text(rows_, 2, end_.data(), static_cast<int>(end_.size()), SQLITE_STATIC);
        while (store_.Step(rows_)) {
            for (int column = 0; column < sqlite3_column_count(rows_); ++column) {
                size += ReadColumn(rows_, column);
            }
            if (Text(1).starts_with("Unused") || sqlite3_column_int(rows_, location) == 0 || Text(3) == "UNUSED") {
                continue;
            }
            ++printed_;
            BindText(person_, 1, Text(lastName));
            BindText(person_, 2, Text(firstName));
            size += ReadAll(person_, personColumns_);
            sqlite3_bind_int64(guest_, 1, sqlite3_column_int64(rows_, id));
            if (store_.Step(guest_)) {
                sqlite3_bind_int64(asset_, 1, sqlite3_column_int64(guest_, guestAsset));
                size += ReadAll(asset_, assetColumns_);
            }
            sqlite3_reset(guest_);
            sqlite3_bind_int64(notes_, 1, sqlite3_column_int64(rows_, id));
            size += ReadAll(notes_, noteColumns_);
        }
        sqlite3_reset(rows_);
        return size;
    }
    int Printed() const { return printed_; }

private:
    std::string_view Text(int column) {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(rows_, column));
        return text == nullptr ? std::string_view()
                               : std::string_view(text, static_cast<size_t>(sqlite3_column_bytes(rows_, column)));
    }
    static void BindText(sqlite3_stmt* statement, int index, std::string_view text) {
        sqlite3_bind_text(statement, index, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
    }
    static qint64 ReadColumn(sqlite3_stmt* statement, int column) {
        if (sqlite3_column_type(statement, column) == SQLITE_INTEGER) {
            return sqlite3_column_int64(statement, column) != 0 ? 1 : 0;
        }
        const auto* text = sqlite3_column_text(statement, column);
        return text == nullptr ? 0 : sqlite3_column_bytes(statement, column) + (*text == 0 ? 1 : 0);
    }
    qint64 ReadAll(sqlite3_stmt* statement, const std::vector<int>& columns) {
        qint64 size = 0;
        while (store_.Step(statement)) {
            for (const int column : columns) {
                size += ReadColumn(statement, column);
            }
        }
        sqlite3_reset(statement);
        return size;
    }

    // Where the columns that the report reads stand in "SELECT *".
    const std::vector<int> personColumns_{0, 1, 6, 7, 8, 9, 10, 11, 12, 13};
    const std::vector<int> assetColumns_{1, 2, 7, 8, 9, 10};
    const std::vector<int> noteColumns_{2, 3, 4};
    static constexpr int guestAsset = 1;

    bench::BareStore store_;
    sqlite3_stmt* rows_ = nullptr;
    sqlite3_stmt* person_ = nullptr;
    sqlite3_stmt* guest_ = nullptr;
    sqlite3_stmt* asset_ = nullptr;
    sqlite3_stmt* notes_ = nullptr;
    std::string start_;
    std::string end_;
    int printed_ = 0;
};

int Measure(const QString& folder, Date day) {
    const Site site(folder);
    BareReport bare(site.Location(), day);
    BenchDesk desk(day);
    const auto database = site.Open();
    const DailyRequest request{.days = {.choice = DayChoice::CurrentDay}, .includeNotes = true, .includePhone = true};
    qint64 read = bare.Run();
    desk.Run(*database, request);
    const qsizetype listed = desk.Text().count(": From ");
    if (read == 0 || listed != bare.Printed()) {
        std::fprintf(stderr, "The two sides do not list the same reservations: %d and %lld\n", bare.Printed(),
                     static_cast<long long>(listed));
        return 1;
    }
    std::vector<double> bareTimes;
    std::vector<double> reportTimes;
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        bareTimes.push_back(Milliseconds([&] { read += bare.Run(); }));
        reportTimes.push_back(Milliseconds([&] { desk.Run(*database, request); }));
        ratios.push_back(reportTimes.back() / bareTimes.back());
    }
    const double ratio = Median(ratios);
    std::printf("%-52s %12s %12s %6s %6s\n", "", "bare store", "report", "ratio", "limit");
    const std::string what = std::to_string(bare.Printed()) + " starts with notes and telephones, " +
                             std::to_string(desk.Text().size() / 1024) + " KiB";
    std::printf("%-52s %9.2f ms %9.2f ms %6.2f %6.2f %s\n", what.c_str(), Median(bareTimes), Median(reportTimes), ratio,
                limit, ratio <= limit ? "" : "ABOVE");
    return ratio <= limit ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    return OnLargeSite(argc, argv, &Measure);
}
