#pragma once

#include <time.h>

#include <algorithm>
#include <vector>

// What every benchmark counts with.
namespace velmora::bench {

// Processor time of the work: the clock on the wall tells of the machine's other programs too.
inline double Milliseconds(const auto& work) {
    const auto now = [] {
        timespec time{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return 1e3 * static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e6;
    };
    const double start = now();
    work();
    return now() - start;
}

inline double Median(std::vector<double> numbers) {
    std::sort(numbers.begin(), numbers.end());
    return numbers[numbers.size() / 2];
}

} // namespace velmora::bench
