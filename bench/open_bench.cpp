// Opens a database of the largest demo tier and one of the typical tier: what opening costs must not grow with the
// data.
#include "bench/Measure.h"
#include "demo/DemoSite.h"

#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

using namespace velmora;

namespace {

Site MakeSite(const QString& folder, demo::Tier tier) {
    return demo::CreateDemoSite(folder, {.tier = tier, .today = *MakeDate(2026, 3, 10)});
}

double OpeningMilliseconds(const Site& site) {
    const auto start = std::chrono::steady_clock::now();
    const auto database = site.Open();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

int main() {
    const QTemporaryDir folder;
    const Site typical = MakeSite(folder.filePath(QStringLiteral("typical")), demo::Tier::Typical);
    const Site stress = MakeSite(folder.filePath(QStringLiteral("stress")), demo::Tier::Stress);
    std::vector<double> small;
    std::vector<double> large;
    for (int round = 0; round < 21; ++round) {
        small.push_back(OpeningMilliseconds(typical));
        large.push_back(OpeningMilliseconds(stress));
    }
    const double ratio = bench::Median(large) / bench::Median(small);
    const bool good = ratio <= 1.5 && bench::Median(large) < 100;
    std::printf("%-52s %12s %12s %6s %6s\n", "", "typical", "stress", "ratio", "limit");
    std::printf("%-52s %9.2f ms %9.2f ms %6.2f %6.2f %s\n", "Opening a database", bench::Median(small),
                bench::Median(large), ratio, 1.5, good ? "" : "ABOVE");
    return good ? 0 : 1;
}
