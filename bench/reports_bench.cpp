// Measures the management reports as text into memory: each on the large demo site against the store's plain C
// interface running the same queries; the same day with a long history against a short one; and a day deep in the past
// against the current day and one pass over a covering index. Processor times, the sides in turn; fails when a ratio is
// above its limit. Without an argument the large demo site is made for it; an argument names a site's folder that is
// there already, made for a Wednesday or the day in the second argument. The folder is not changed.
#include "bench/BareReports.h"
#include "bench/BenchDesk.h"
#include "bench/LargeSite.h"
#include "site/Site.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>

using namespace Qt::Literals::StringLiterals;
using namespace velmora;
using namespace velmora::bench;

namespace {

constexpr double bareLimit = 1.3;
constexpr double historyLimit = 1.3;
constexpr double pastLimit = 1.15;
constexpr int rounds = 9;

struct Report {
    const char* name;
    ReportRequest request;
    qint64 (BareReports::*bare)();
};

std::vector<Report> Reports(Date day) {
    const DaySelection days{DayChoice::OtherDay, day};
    return {
        {"occupants", OccupancyRequest{OccupancyList::Occupants, days}, &BareReports::Occupants},
        {"directory", OccupancyRequest{OccupancyList::Directory, days}, &BareReports::Directory},
        {"persons outside of their space type", ExceptionRequest{.date = day}, &BareReports::Exceptions},
        {"reservations not checked in", ExceptionRequest{ExceptionType::NotCheckedIn, day}, &BareReports::NotCheckedIn},
        {"usage by location", UsageRequest{.date = day}, &BareReports::LocationUsage},
        {"usage by first area", UsageRequest{UsageBreakdown::FirstArea, day}, &BareReports::PersonUsage},
    };
}

// What a report lists: the rows of its table, or all that its figures count.
qint64 Listed(const QByteArray& text) {
    qint64 rows = 0;
    qint64 counted = 0;
    for (const QByteArray& line : text.split('\n')) {
        rows += line.count('\t') == 5 ? 1 : 0;
        if (const qsizetype total = line.indexOf(" Total\t"); total > 0) {
            counted += line.mid(total + 7).trimmed().toLongLong();
        }
    }
    return rows > 0 ? rows - 1 : counted;
}

bool Row(const std::string& what, double base, double measured, double ratio, double limit) {
    std::printf("%-58s %9.2f ms %9.2f ms %6.2f %6.2f %s\n", what.c_str(), base, measured, ratio, limit,
                ratio <= limit ? "" : "ABOVE");
    return ratio <= limit;
}

// Times two sides in turn and prints their ratio.
bool Compare(const std::string& what, const std::function<void()>& base, const std::function<void()>& measured,
             double limit) {
    std::vector<double> baseTimes;
    std::vector<double> measuredTimes;
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        baseTimes.push_back(Milliseconds(base));
        measuredTimes.push_back(Milliseconds(measured));
        ratios.push_back(measuredTimes.back() / baseTimes.back());
    }
    return Row(what, Median(baseTimes), Median(measuredTimes), Median(ratios), limit);
}

bool AgainstBareStore(BenchDesk& desk, const Site& site, Date day) {
    BareReports bare(site.Location(), day);
    const auto database = site.Open();
    bool good = true;
    std::printf("%-58s %12s %12s %6s %6s\n", "", "bare store", "report", "ratio", "limit");
    for (const Report& report : Reports(day)) {
        desk.Run(*database, report.request);
        const qint64 listed = (bare.*report.bare)();
        if (listed == 0 || Listed(desk.Text()) != listed) {
            std::fprintf(stderr, "The two sides of \"%s\" do not list the same: %lld and %lld\n", report.name,
                         static_cast<long long>(listed), static_cast<long long>(Listed(desk.Text())));
            return false;
        }
        good &= Compare(
            std::to_string(listed) + ' ' + report.name, [&] { (bare.*report.bare)(); },
            [&] { desk.Run(*database, report.request); }, bareLimit);
    }
    return good;
}

// A copy of the site with that many reservations. What begins two months after the day or later is left out of it;
// those that were over before the day are more or fewer.
Site WithHistory(const Site& site, const QString& folder, Date day, qint64 reservations) {
    Site copy(folder);
    if (!QDir().mkpath(folder) || !QFile::copy(site.Location(), copy.Location())) {
        std::fprintf(stderr, "Cannot copy %s to %s\n", qPrintable(site.Location()), qPrintable(copy.Location()));
        std::exit(1);
    }
    BareStore store(copy.Location());
    const auto moment = [](Date of) { return '\'' + StorageText(StartOfDay(of)).toStdString() + '\''; };
    const std::string over = "\"End\" <= " + moment(day);
    const std::string count = "(SELECT count(*) FROM Reservation)";
    const std::string wanted = std::to_string(reservations);
    store.Run("DELETE FROM Reservation WHERE Start >= " + moment(day + std::chrono::days(60)));
    store.Run("DELETE FROM Reservation WHERE ID IN (SELECT ID FROM Reservation WHERE " + over +
              " ORDER BY \"End\" LIMIT max(0, " + count + " - " + wanted + "))");
    const std::string doubling =
        "INSERT INTO Reservation SELECT NULL, Asset, Start, \"End\", Name, EventType, LastName, FirstName, "
        "Organization, Attendees, Permanent, Link, SLockStart, SLockEnd, TLockStart, TLockEnd, TextStart, TextEnd "
        "FROM Reservation WHERE " +
        over + " LIMIT max(0, " + wanted + " - " + count + ")";
    store.Run(doubling);
    store.Run(doubling);
    return copy;
}

bool AgainstHistory(BenchDesk& desk, const Site& site, Date day) {
    const QTemporaryDir folder;
    const auto fewer = WithHistory(site, folder.filePath(u"fewer"_s), day, 100'000).Open();
    const auto more = WithHistory(site, folder.filePath(u"more"_s), day, 2'200'000).Open();
    bool good = true;
    std::printf("\n%-58s %12s %12s %6s %6s\n", "the same day with a history", "100,000", "2,200,000", "ratio", "limit");
    for (const Report& report : Reports(day)) {
        desk.Run(*more, report.request);
        const qint64 listed = Listed(desk.Text());
        desk.Run(*fewer, report.request);
        if (listed != Listed(desk.Text())) {
            std::fprintf(stderr, "The two sides of \"%s\" do not list the same\n", report.name);
            return false;
        }
        good &= Compare(
            report.name, [&] { desk.Run(*fewer, report.request); }, [&] { desk.Run(*more, report.request); },
            historyLimit);
    }
    return good;
}

bool DeepInThePast(BenchDesk& desk, const Site& site, Date day) {
    const Date past = day - std::chrono::days(4 * 364);
    BareReports bare(site.Location(), past);
    const auto database = site.Open();
    bool good = true;
    std::printf("\n%-58s %12s %12s %6s %6s\n", "a day 4 years ago", "now + pass", "then", "ratio", "limit");
    const std::vector<Report> now = Reports(day);
    const std::vector<Report> then = Reports(past);
    for (size_t i = 0; i < now.size(); ++i) {
        good &= Compare(
            now[i].name,
            [&] {
                desk.Run(*database, now[i].request);
                bare.Pass();
            },
            [&] { desk.Run(*database, then[i].request); }, pastLimit);
    }
    return good;
}

int Measure(const QString& folder, Date day) {
    const Site site(folder);
    BenchDesk desk(day);
    bool good = AgainstBareStore(desk, site, day);
    good &= DeepInThePast(desk, site, day);
    good &= AgainstHistory(desk, site, day);
    return good ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    return OnLargeSite(argc, argv, &Measure);
}
