// Measures what a clerk waits for at the desk, against the store's plain C interface doing the bare work with
// statements prepared once, side by side in one run: loading the assets, selecting a day's tasks, ticking one, filling
// the status list. Fails when a ratio is above its limit. Without an argument the large demo site is made for it; an
// argument names a site's folder that is there already, made for the day in the second argument.
#include "bench/BareStore.h"
#include "bench/LargeSite.h"
#include "bench/Measure.h"
#include "data/LookupLists.h"
#include "site/Site.h"
#include "tasks/QuickStatus.h"
#include "tasks/Tasks.h"
#include "tests/support/Fakes.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <ctime>

using namespace Qt::Literals::StringLiterals;
using namespace velmora;

namespace {

constexpr int rounds = 25;

struct NoView : TaskView {
    void ShowTask(const ShownTask& task) override { shown = task; }
    void HideTask(const QString&) override { shown = {}; }
    ShownTask shown;
};

// The bare side: as safe against a power failure as the desk.
class BareDesk {
public:
    BareDesk(const QString& path, Date day) : store_(path) {
        store_.Run("PRAGMA synchronous = FULL");
        assets_ = store_.Prepare("SELECT * FROM Asset ORDER BY AssetID");
        persons_ = store_.Prepare("SELECT * FROM Person");
        tasks_ = store_.Prepare("SELECT * FROM Asset JOIN Reservation ON Asset.AssetID = Reservation.Asset "
                                "WHERE Start > ?1 AND Start < ?2");
        tick_ = store_.Prepare("UPDATE Reservation SET SLockStart = ?1 WHERE ID = ?2 AND SLockStart = ?3");
        begin_ = store_.Prepare("BEGIN IMMEDIATE");
        commit_ = store_.Prepare("COMMIT");
        after_ = StorageText(StartOfDay(day) - std::chrono::minutes(3)).toStdString();
        before_ = StorageText(StartOfDay(day + std::chrono::days(1)) - std::chrono::minutes(2)).toStdString();
        sqlite3_bind_text(tasks_, 1, after_.data(), static_cast<int>(after_.size()), SQLITE_STATIC);
        sqlite3_bind_text(tasks_, 2, before_.data(), static_cast<int>(before_.size()), SQLITE_STATIC);
    }
    // Each returns the number of rows.
    int ReadAssets() { return ReadAll(assets_); }
    int ReadPersons() { return ReadAll(persons_); }
    int ReadTasks() { return ReadAll(tasks_); }

    void Tick(qint32 id, bool done) {
        Do(begin_);
        sqlite3_bind_int(tick_, 1, done ? 1 : 0);
        sqlite3_bind_int(tick_, 2, id);
        sqlite3_bind_int(tick_, 3, done ? 0 : 1);
        Do(tick_);
        Do(commit_);
    }

private:
    void Do(sqlite3_stmt* statement) {
        store_.Step(statement);
        sqlite3_reset(statement);
    }
    int ReadAll(sqlite3_stmt* statement) {
        int count = 0;
        while (store_.Step(statement)) {
            ++count;
            for (int column = 0; column < sqlite3_column_count(statement); ++column) {
                read_ += sqlite3_column_type(statement, column) == SQLITE_INTEGER
                             ? sqlite3_column_int64(statement, column)
                             : (sqlite3_column_text(statement, column), sqlite3_column_bytes(statement, column));
            }
        }
        sqlite3_reset(statement);
        return count;
    }

    bench::BareStore store_;
    sqlite3_stmt* assets_ = nullptr;
    sqlite3_stmt* persons_ = nullptr;
    sqlite3_stmt* tasks_ = nullptr;
    sqlite3_stmt* tick_ = nullptr;
    sqlite3_stmt* begin_ = nullptr;
    sqlite3_stmt* commit_ = nullptr;
    std::string after_;
    std::string before_;
    qint64 read_ = 0;
};

// A tick waits for the disk; all else is the processor's, which other programs do not disturb.
enum class Time { Processor, Wall };

double Now(Time time) {
    timespec now{};
    clock_gettime(time == Time::Wall ? CLOCK_MONOTONIC : CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

double Milliseconds(Time time, const std::function<void()>& work) {
    const double start = Now(time);
    work();
    return Now(time) - start;
}

// Runs both sides in turn, `prepare` before each round, and prints a line; false when the ratio is above the limit.
bool Compare(
    const std::string& what, double limit, Time time, const std::function<void()>& bare,
    const std::function<void()>& desk, const std::function<void()>& prepare = [] {}) {
    std::vector<double> bareTimes;
    std::vector<double> deskTimes;
    std::vector<double> ratios;
    bare();
    desk();
    for (int round = 0; round < rounds; ++round) {
        prepare();
        bareTimes.push_back(Milliseconds(time, bare));
        deskTimes.push_back(Milliseconds(time, desk));
        ratios.push_back(deskTimes.back() / bareTimes.back());
    }
    const double ratio = bench::Median(ratios);
    std::printf("%-52s %9.3f ms %9.3f ms %6.2f %6.2f %s\n", what.c_str(), bench::Median(bareTimes),
                bench::Median(deskTimes), ratio, limit, ratio <= limit ? "" : "ABOVE");
    return ratio <= limit;
}

bool SameCount(const char* what, int bare, int desk) {
    if (bare == 0 || bare != desk) {
        std::fprintf(stderr, "The two sides do not read the same %s: %d and %d\n", what, bare, desk);
        return false;
    }
    return true;
}

int Measure(const QString& folder, Date day) {
    const Site site(folder);
    fakes::TestProgram fakes;
    const auto database = site.Open();
    TaskChoices choices;
    choices.DateRange1 = {day, day + std::chrono::days(1)};
    NoView view;
    Tasks tasks(fakes.program, choices, *database, view);
    BareDesk bare(site.Location(), day);

    FillAssetCollection(*database);
    tasks.ShowTasks();
    const auto persons = FillStatusList(fakes.program, 0, *database);
    const auto assets = static_cast<int>(std::count_if(Assets().begin(), Assets().end(), [](const auto& asset) {
        return !asset->strName().startsWith(u"Missing "_s);
    }));
    if (!SameCount("tasks", bare.ReadTasks(), view.shown.count) ||
        !SameCount("persons", bare.ReadPersons(), static_cast<int>(persons.size())) ||
        !SameCount("assets", bare.ReadAssets(), assets)) {
        return 1;
    }
    std::printf("%-52s %12s %12s %6s %6s\n", "", "bare store", "desk", "ratio", "limit");
    const auto count = [](int number, const char* of) { return std::to_string(number) + of; };
    bool good = Compare(
        count(assets, " assets into memory"), 2.0, Time::Processor, [&] { bare.ReadAssets(); },
        [&] { FillAssetCollection(*database); }, [] { Assets().Clear(); });
    good &= Compare(
        count(view.shown.count, " moves in of a day, the first shown"), 2.0, Time::Processor, [&] { bare.ReadTasks(); },
        [&] { tasks.ShowTasks(); });
    const qint32 id = *tasks.ShownReservation();
    const bool done = view.shown.details.Done(TaskKind::MoveIn);
    good &= Compare(
        "two ticks in their transactions, shown", 1.2, Time::Wall,
        [&] {
            bare.Tick(id, !done);
            bare.Tick(id, done);
        },
        [&] {
            tasks.StoreTick(TaskKind::MoveIn, !done);
            tasks.StoreTick(TaskKind::MoveIn, done);
        });
    good &= Compare(
        count(static_cast<int>(persons.size()), " persons into the status list"), 2.0, Time::Processor,
        [&] { bare.ReadPersons(); }, [&] { (void)FillStatusList(fakes.program, 0, *database); });
    constexpr int steps = 100;
    const double stepping = Milliseconds(Time::Wall, [&] {
        for (int i = 0; i < steps; ++i) {
            tasks.Next();
        }
    });
    const double summing = Milliseconds(Time::Wall, [&] {
        for (size_t i = 0; i < steps; ++i) {
            (void)StatusSummary(fakes.program, 0, *database, persons[i * persons.size() / steps]);
        }
    });
    std::printf("one step to the next task %.3f ms, one summary of a person %.3f ms\n", stepping / steps,
                summing / steps);
    return good ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    return bench::OnLargeSite(argc, argv, &Measure);
}
